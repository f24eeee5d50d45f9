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

/// The signature of a record as type names. Immutable; shared by pointer. Threads: any may read it; its
/// RVOMethodSignaturePtr are copied and dropped where classes are defined, not in calls.
class TARVELON_API RVOMethodSignature {
 public:
  RVOMethodSignature(const RVOMethodSignature&) = delete;
  RVOMethodSignature& operator=(const RVOMethodSignature&) = delete;

  /// The text given at registration, kept as it stands.
  const char* parameterNames() const noexcept { return mParameterNames; }
  const InternedName& result() const noexcept { return mNames[0]; }
  /// The class of self, the empty name for a record without self.
  const InternedName& self() const noexcept { return mNames[1]; }
  /// The names follow the signature in its block.
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

/// A shared signature value; empty until createSignature() fills it.
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

  /// `parameterNames` must outlive the signature (a literal).
  static RVOMethodSignaturePtr make(const char* parameterNames, const InternedName& result,
                                    const InternedName& self, std::span<const InternedName> arguments);

  const RVOMethodSignature* operator->() const noexcept { return mSignature; }
  const RVOMethodSignature& operator*() const noexcept { return *mSignature; }
  explicit operator bool() const noexcept { return mSignature != nullptr; }

 private:
  RVOMethodSignature* mSignature = nullptr;
};

/// What the object system asks of every method, constructor and package function.
/// Threads: any, each on objects of its own.
class TARVELON_API RVOMethodInfo {
 public:
  RVOMethodInfo() = default;
  RVOMethodInfo(const RVOMethodInfo&) = delete;
  RVOMethodInfo& operator=(const RVOMethodInfo&) = delete;
  virtual ~RVOMethodInfo();

  virtual const InternedName& getName() const = 0;
  virtual const char* getDescription() const = 0;
  virtual const char* getDetailedDescription() const;
  virtual const RVOMethodSignaturePtr& getSignature() const = 0;
  virtual std::uint32_t getFlags() const = 0;
  virtual bool isConstructor() const;
  virtual bool isLookupScope() const;
  virtual bool isFirstArgDispatch() const;
  virtual bool isExplicit() const;
  virtual int getExtendedAccess() const;

  /// Calls the method. `resultCount` holds how many results are wanted and becomes at least 1 when there is
  /// one. Result arrays belong to the caller. An exception leaves the slots as they were.
  virtual void invoke(const RVOClient* client, std::uint32_t& resultCount, RVOValue* results,
                      int argumentCount, const RVOValue* arguments) const = 0;

  /// Storage that utFree() can release; throws bedrock::core::except::bad_alloc.
  static void* operator new(std::size_t size);
  static void operator delete(void* storage) noexcept;
};

namespace factory {

/// Bits of a record's flag word.
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

/// A record: name, description, signature and flag word.
class TARVELON_API RuvoMethod : public RVOMethodInfo {
 public:
  /// `description` must outlive the record (a literal).
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

/// A native function as a record keeps it: a free function, or the two words of a pointer to member.
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
  template <class Free>
  Free as() const noexcept {
    return std::bit_cast<Free>(function);
  }
  template <class Member>
  Member asMember() const noexcept {
    return std::bit_cast<Member>(*this);
  }
};

class GeneratedMethod;

/// Converts the slots, calls the record's native function and packs the result.
using InvokerFunction = void (*)(const GeneratedMethod* record, const RVOClient* ignored,
                                 std::uint32_t* resultCount, RVOValue* results, int argumentCount,
                                 const RVOValue* arguments);

/// What methods, constructors and package functions add to a record: the invoker and what it finally calls.
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

class TARVELON_API MethodImpl : public GeneratedMethod {
 public:
  using GeneratedMethod::GeneratedMethod;
  ~MethodImpl() override;
};

/// A constructor: result slot 0 holds the 1 by 1 array of the object under construction.
class TARVELON_API RuvoConstructor : public GeneratedMethod {
 public:
  using GeneratedMethod::GeneratedMethod;
  ~RuvoConstructor() override;
  bool isConstructor() const override;
};

class TARVELON_API Invoker {
 public:
  /// Builds the signature of a record. `selfType` is null for a record without self; `parameterNames` must
  /// outlive the signature.
  static void createSignature(const char* parameterNames, const char* returnType, const char* selfType,
                              std::span<const char* const> argumentTypes, RVOMethodSignaturePtr& signature);
  /// The same for names that are interned already.
  static void createSignature(const char* parameterNames, const InternedName& returnType,
                              const InternedName& selfType, std::span<const InternedName> argumentTypes,
                              RVOMethodSignaturePtr& signature) {
    signature = RVOMethodSignaturePtr::make(parameterNames, returnType, selfType, argumentTypes);
  }
};

/// Raises the object system's error for a missing self; `record` may be null.
[[noreturn]] TARVELON_API void throwNullSelf(const RuvoMethod* record);

/// Refuses a null self.
inline void validateSelfPointer(const void* pointer) {
  if (!pointer) throwNullSelf(nullptr);
}
/// The same, naming the record.
inline void validateSelfPointer(const void* pointer, const RuvoMethod& record) {
  if (!pointer) throwNullSelf(&record);
}

}  // namespace impl

/// A package function.
class TARVELON_API FunctionInfo : public impl::GeneratedMethod {
 public:
  FunctionInfo(const InternedName& name, const MethodAttributes& attributes);
  ~FunctionInfo() override;
};

namespace detail {

/// Readies the vocabulary of type names ("logical scalar", "char vector", ...). Safe to call any number of
/// times.
TARVELON_API void initStringDataTypes();

}  // namespace detail
}  // namespace factory
}  // namespace ruvo
