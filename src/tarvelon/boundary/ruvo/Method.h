#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interface.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Value.h"

namespace ruvo {

/// The signature of a method record: the type names of the result, of self and of the arguments. A type name
/// is the dotted name of a class, or a word such as "int32 scalar" (internal::TypeKind).
///
/// A signature does not change after construction, and RVOMethodSignaturePtr shares it.
/// Threads: any thread may read a signature. The reference count is a plain integer: copy and destroy an
///          RVOMethodSignaturePtr only while a class or package is being defined, not in calls.
class TARVELON_API RVOMethodSignature {
 public:
  RVOMethodSignature(const RVOMethodSignature&) = delete;
  RVOMethodSignature& operator=(const RVOMethodSignature&) = delete;

  /// The declared names of the arguments, such as " aSymbol, aName"; exactly the text given at registration.
  const char* parameterNames() const noexcept { return mParameterNames; }
  /// The type name of the result; "void" for none.
  const InternedName& result() const noexcept { return mNames[0]; }
  /// The class of self. The empty name for a record without self: a constructor, a static method or a
  /// function.
  const InternedName& self() const noexcept { return mNames[1]; }
  /// The type names of the arguments, without self. They are stored behind the signature in the same block.
  std::span<const InternedName> arguments() const noexcept {
    return {reinterpret_cast<const InternedName*>(this + 1), mCount};
  }

 private:
  friend class RVOMethodSignaturePtr;
  RVOMethodSignature() = default;

  const char* mParameterNames = "";
  std::uint32_t mCount = 0;
  std::uint32_t mReferences = 0;
  InternedName mNames[2];
};

/// A smart pointer that holds a reference on a signature. Null at first; Invoker::createSignature() sets it.
class TARVELON_API RVOMethodSignaturePtr {
 public:
  RVOMethodSignaturePtr() noexcept = default;
  RVOMethodSignaturePtr(const RVOMethodSignaturePtr& other) noexcept;
  RVOMethodSignaturePtr(RVOMethodSignaturePtr&& other) noexcept : mSignature(other.mSignature) {
    other.mSignature = nullptr;
  }
  RVOMethodSignaturePtr& operator=(RVOMethodSignaturePtr other) noexcept {
    std::swap(mSignature, other.mSignature);
    return *this;
  }
  ~RVOMethodSignaturePtr();

  /// Creates a signature. Throws bedrock::core::except::bad_alloc. REQUIRES: `parameterNames` outlives the
  /// signature, as a literal does.
  static RVOMethodSignaturePtr make(const char* parameterNames, const InternedName& result,
                                    const InternedName& self, std::span<const InternedName> arguments);

  const RVOMethodSignature* operator->() const noexcept { return mSignature; }
  const RVOMethodSignature& operator*() const noexcept { return *mSignature; }
  explicit operator bool() const noexcept { return mSignature != nullptr; }

 private:
  RVOMethodSignature* mSignature = nullptr;
};

/// The interface of method records. A record describes one overload of a method, a constructor or a package
/// function, and calls it.
///
/// Modules do not derive from this class directly; they use factory::RuvoMethod or the records below. The
/// functions with a default are false or 0 unless a record overrides them.
///
/// Ownership: the class or the package to which the record is added owns the record.
/// Threads:   any thread may call a record, on objects that this thread uses.
class TARVELON_API RVOMethodInfo {
 public:
  RVOMethodInfo() = default;
  RVOMethodInfo(const RVOMethodInfo&) = delete;
  RVOMethodInfo& operator=(const RVOMethodInfo&) = delete;
  virtual ~RVOMethodInfo();

  /// The name of the method; for a constructor, the dotted name of the class.
  virtual const InternedName& getName() const = 0;
  virtual const char* getDescription() const = 0;
  virtual const char* getDetailedDescription() const;
  virtual const RVOMethodSignaturePtr& getSignature() const = 0;
  /// The flag word; factory::MethodFlag lists the bits.
  virtual std::uint32_t getFlags() const = 0;
  virtual bool isConstructor() const;
  virtual bool isLookupScope() const;
  virtual bool isFirstArgDispatch() const;
  virtual bool isExplicit() const;
  virtual int getExtendedAccess() const;

  /// Calls the method.
  ///   resultCount   in: the number of results that the caller wants; out: at least 1 if there is a result
  ///   results       receives the result. The caller owns a result array. For a constructor, results[0]
  ///                 contains the array with the object under construction.
  ///   arguments     self, if the signature has one, and then the arguments. The caller keeps ownership.
  /// REQUIRES: the number and the types of the arguments fit the signature.
  /// If the call throws, `results` is unchanged.
  virtual void invoke(const RVOClient* client, std::uint32_t& resultCount, RVOValue* results,
                      int argumentCount, const RVOValue* arguments) const = 0;

  /// Allocates with utMalloc(), so that either side of the boundary can free the record. Throws
  /// bedrock::core::except::bad_alloc.
  static void* operator new(std::size_t size);
  static void operator delete(void* storage) noexcept;
};

namespace factory {

/// The bits of a record's flag word.
///
/// The object system uses two of them. kOverridesAllSignatures: the methods of that name in superclasses are
/// not candidates for a call. kSelfAsArgument: the signature has no self; the object that the method is
/// called on becomes the first ordinary argument. The other bits are only reported. kUnlocked and
/// kHiddenMethod are inverted: they make RuvoMethod::isLocked() and isVisible() false.
enum MethodFlag : std::uint32_t {
  kUnlocked = 1,
  kHiddenMethod = 2,
  kSealed = 4,
  kStatic = 8,
  kAbstract = 16,
  kDestructible = 32,
  kAccess5 = 64,
  kAccess1 = 128,
  kAccess2 = 256,
  kOverridesAllSignatures = 512,
  kSelfAsArgument = 4096
};

/// A flag word as the argument of a record's constructor.
class TARVELON_API MethodAttributes {
 public:
  explicit MethodAttributes(std::uint32_t word) noexcept : mWord(word) {}
  MethodAttributes(const MethodAttributes&) = default;
  MethodAttributes& operator=(const MethodAttributes&) = default;
  virtual ~MethodAttributes();
  virtual bool isLocked() const;
  virtual bool doesMethodOverrideAllSignatures() const;
  std::uint32_t word() const noexcept { return mWord; }

 private:
  std::uint32_t mWord;
};

/// A method record that stores its name, description, signature and flag word. A derived class overrides
/// invoke(). Its constructor sets the signature with Invoker::createSignature().
///
/// Example:
///   CountElements::CountElements() : RuvoMethod(name.get(), MethodAttributes(0), "") {
///     impl::Invoker::createSignature("", "int32 scalar", kPackageClass, {}, signature());
///   }
class TARVELON_API RuvoMethod : public RVOMethodInfo {
 public:
  /// REQUIRES: `description` outlives the record, as a literal does.
  RuvoMethod(const InternedName& name, const MethodAttributes& attributes, const char* description);
  ~RuvoMethod() override;

  const InternedName& getName() const override { return mName; }
  const char* getDescription() const override { return mDescription; }
  const RVOMethodSignaturePtr& getSignature() const override { return mSignature; }
  std::uint32_t getFlags() const override { return mFlags; }

  bool isLocked() const noexcept { return (mFlags & kUnlocked) == 0; }
  bool isVisible() const noexcept { return (mFlags & kHiddenMethod) == 0; }
  bool isSealed() const noexcept { return (mFlags & kSealed) != 0; }
  bool isStatic() const noexcept { return (mFlags & kStatic) != 0; }
  bool isAbstract() const noexcept { return (mFlags & kAbstract) != 0; }
  bool isDestructible() const noexcept { return (mFlags & kDestructible) != 0; }
  bool doesMethodOverrideAllSignatures() const noexcept { return (mFlags & kOverridesAllSignatures) != 0; }
  /// 1, 2 or 5 if the flag kAccess1, kAccess2 or kAccess5 is set (tested in this order), otherwise 0.
  int getMemberAccess() const noexcept;

  RVOMethodSignaturePtr& signature() noexcept { return mSignature; }
  std::uint32_t& flags() noexcept { return mFlags; }

 protected:
  InternedName mName;
  const char* mDescription;
  RVOMethodSignaturePtr mSignature;
  std::uint32_t mFlags;
};

namespace impl {

/// The pointer to a native function in the form in which a record stores it: the address of a free function,
/// or the two words of a pointer to a member function.
///
/// Example:
///   const auto native = NativeFunction::of(&countElements);
///   const int count = native.as<int (*)(const Package&)>()(package);
struct NativeFunction {
  std::uintptr_t function = 0;
  std::intptr_t thisAdjustment = 0;

  template <class Result, class... Arguments>
  static NativeFunction of(Result (*free)(Arguments...)) noexcept {
    return {std::bit_cast<std::uintptr_t>(free), 0};
  }
  template <class Member>
  static NativeFunction ofMember(Member member) noexcept {
    static_assert(sizeof(Member) == sizeof(NativeFunction));
    return std::bit_cast<NativeFunction>(member);
  }
  /// REQUIRES: `Free` is exactly the type that was given to of().
  template <class Free>
  Free as() const noexcept {
    return std::bit_cast<Free>(function);
  }
  /// REQUIRES: `Member` is exactly the type that was given to ofMember().
  template <class Member>
  Member asMember() const noexcept {
    return std::bit_cast<Member>(*this);
  }
};

class GeneratedMethod;

/// The type of invokers. An invoker converts the argument slots to native values, calls the native function
/// of the record, and converts the result to a slot. The arguments are those of RVOMethodInfo::invoke().
using InvokerFunction = void (*)(const GeneratedMethod* record, const RVOClient* ignored,
                                 std::uint32_t* resultCount, RVOValue* results, int argumentCount,
                                 const RVOValue* arguments);

/// A record that calls a native function through an invoker. It is the base of the records of methods,
/// constructors and package functions.
///
/// REQUIRES: `invoker` and `native` are set before the record is added, and the invoker fits the native
/// function.
class TARVELON_API GeneratedMethod : public RuvoMethod {
 public:
  using RuvoMethod::RuvoMethod;
  ~GeneratedMethod() override;
  void invoke(const RVOClient* client, std::uint32_t& resultCount, RVOValue* results, int argumentCount,
              const RVOValue* arguments) const override {
    invoker(this, client, &resultCount, results, argumentCount, arguments);
  }

  InvokerFunction invoker = nullptr;
  NativeFunction native;
};

/// The record of a method.
class TARVELON_API MethodImpl : public GeneratedMethod {
 public:
  using GeneratedMethod::GeneratedMethod;
  ~MethodImpl() override;
};

/// The record of a constructor. The invoker binds the new native object to the host object in the 1 by 1
/// array of result slot 0 (BindingRegistry::announceForConstructor()).
class TARVELON_API RuvoConstructor : public GeneratedMethod {
 public:
  using GeneratedMethod::GeneratedMethod;
  ~RuvoConstructor() override;
  bool isConstructor() const override;
};

/// Creates the signatures of records.
class TARVELON_API Invoker {
 public:
  /// Sets `signature` to a new signature. `selfType` is null for a record without self. Throws
  /// bedrock::core::except::bad_alloc. REQUIRES: `parameterNames` outlives the signature.
  static void createSignature(const char* parameterNames, const char* returnType, const char* selfType,
                              std::span<const char* const> argumentTypes, RVOMethodSignaturePtr& signature);
  /// The same for interned names; `selfType` is the empty name for a record without self.
  static void createSignature(const char* parameterNames, const InternedName& returnType,
                              const InternedName& selfType, std::span<const InternedName> argumentTypes,
                              RVOMethodSignaturePtr& signature) {
    signature = RVOMethodSignaturePtr::make(parameterNames, returnType, selfType, argumentTypes);
  }
};

/// Throws the K7Q::WrongValue for a method call whose self is null. The text names the method if `record` is
/// not null.
[[noreturn]] TARVELON_API void throwNullSelf(const RuvoMethod* record);

/// Throws K7Q::WrongValue if the pointer to self is null.
inline void validateSelfPointer(const void* pointer) {
  if (!pointer) throwNullSelf(nullptr);
}
/// The same check; the text of the error names the method.
inline void validateSelfPointer(const void* pointer, const RuvoMethod& record) {
  if (!pointer) throwNullSelf(&record);
}

}  // namespace impl

/// The record of a package function. RVOPackage::addFunction() adds it to a package.
class TARVELON_API FunctionInfo : public impl::GeneratedMethod {
 public:
  FunctionInfo(const InternedName& name, const MethodAttributes& attributes);
  ~FunctionInfo() override;
};

namespace detail {

/// Interns the type names that are no classes ("logical scalar", "char vector", ...). Calling it again has no
/// effect.
TARVELON_API void initStringDataTypes();

}  // namespace detail
}  // namespace factory
}  // namespace ruvo
