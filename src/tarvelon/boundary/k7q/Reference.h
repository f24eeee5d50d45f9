#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <typeinfo>

#include "tarvelon/boundary/Export.h"

namespace K7Q {

namespace mi {
class VariantTable;
}

/// One machine word that says how a handle sees the model.
///
/// 0 means: the current state of the model, writable. If the kReadOnly or the kFrozen bit is set, writing
/// through the handle throws (DeviantAssertions). Objects that are read through a handle get the same
/// deviant.
struct Deviant {
  /// Makes one view read-only. DeviantRegistry::setIsImmutable() sets and clears this bit.
  static constexpr std::uintptr_t kReadOnly = 1;
  /// Marks the view that Model::frozen() returns. All handles that are obtained through that view have this
  /// bit, and no function clears it.
  static constexpr std::uintptr_t kFrozen = 2;
  std::uintptr_t word = 0;
  constexpr bool isWritable() const noexcept { return (word & (kReadOnly | kFrozen)) == 0; }
  friend constexpr bool operator==(Deviant, Deviant) noexcept = default;
};

class ReferenceCountingIntf;

namespace NSInterface {
class ObjectIntf;
class ClassObjectIntf;
class FactoryObjectIntf;
class FactoryIntf;
class ModelIntf;
class TypeIntf;
class ClassIntf;
class DataTypeIntf;
class PropertyIntf;
class PackageIntf;
}  // namespace NSInterface

namespace Generic {
class SequenceIntf;
class IteratorIntf;
}  // namespace Generic

/// The domain to which all visitor tags belong. The type has two names, because some libraries use the second
/// one.
struct TARVELON_API VisitationDomain {};
using RootVisitationDomain = VisitationDomain;

namespace CooperativeVisitor {

/// Two numbers that identify an interface: the argument of ReferenceCountingIntf::cast().
struct TagPair {
  std::size_t domain;
  std::size_t interface;
};

namespace internal {

/// Returns the number of the pair (interface, domain). All libraries get the same number for the same types.
/// Numbers are consecutive and start at 0.
///
/// Errors: std::bad_alloc for a new pair, if memory is exhausted.
/// Cost:   a look-up by type name under a lock. tagsOf() keeps the result.
TARVELON_API std::size_t GetTag(const std::type_info& interface, const std::type_info& domain);

/// A list of types in which the position of a type is its tag. Such a tag is a compile-time constant.
template <class... Types>
struct FixedTags {
  static constexpr std::size_t kCount = sizeof...(Types);
  template <class T>
  static constexpr bool kHas = (std::is_same_v<T, Types> || ...);
  template <class T>
  static constexpr std::size_t placeOf() noexcept {
    std::size_t place = 0;
    static_cast<void>(((std::is_same_v<T, Types> || (++place, false)) || ...));
    return place;
  }
};

/// The types whose tags are constants: the domain and the kernel's interfaces. These tags are needed in
/// places where an allocation must not fail.
using KernelTags = FixedTags<VisitationDomain, ReferenceCountingIntf, NSInterface::ObjectIntf,
                             NSInterface::ClassObjectIntf, NSInterface::FactoryObjectIntf,
                             NSInterface::FactoryIntf, NSInterface::ModelIntf, NSInterface::TypeIntf,
                             NSInterface::ClassIntf, NSInterface::DataTypeIntf, NSInterface::PropertyIntf,
                             NSInterface::PackageIntf, Generic::SequenceIntf, Generic::IteratorIntf>;

}  // namespace internal
}  // namespace CooperativeVisitor

/// A base class with a virtual destructor and without copying.
class TARVELON_API Cleanup {
 public:
  Cleanup() noexcept = default;
  Cleanup(const Cleanup&) = delete;
  Cleanup& operator=(const Cleanup&) = delete;
  virtual ~Cleanup();
};

/// Base of everything that a handle or a host object can refer to.
///
/// The base class does not count references: its addRef() and release() do nothing. Derived classes with a
/// limited lifetime override addRef(), release() and numRef(). The order of the virtual functions is part of
/// the binary interface and must not change.
///
/// Lifetime: the destructor retracts the object's ids from DeviantRegistry.
/// Threads:  one thread at a time uses an object. All threads may use an object after share().
class TARVELON_API ReferenceCountingIntf : public Cleanup {
 public:
  ~ReferenceCountingIntf() override;
  virtual void addRef() const;
  /// The release() of the last reference may destroy the object.
  virtual void release() const;
  /// The reference count, 0 for an object that does not count.
  virtual int numRef() const;
  /// Returns null.
  virtual const void* getListOfReferences() const;
  /// The name of the visitor method for this kind of object.
  virtual const char* getVisitMethod() const;
  /// Returns the object as the interface with that tag, or null if the object does not implement the
  /// interface.
  ///
  /// Example:
  ///   auto* model = static_cast<NSInterface::ModelIntf*>(object->cast(tagsOf<NSInterface::ModelIntf>()));
  virtual void* cast(CooperativeVisitor::TagPair tag);

 protected:
  /// Lets all threads use the object. REQUIRES: the object lives until the process ends, does not change any
  /// more and does not count references. All threads may then use its host objects too, which also live until
  /// the process ends.
  constexpr void share() noexcept { mIsShared = true; }

 private:
  friend class mi::VariantTable;
  /// Whether DeviantRegistry has ids of the object.
  mutable bool mIsRegistered = false;
  bool mIsShared = false;
  /// The index of the object's first id in the table of DeviantRegistry. Undefined unless mIsRegistered.
  mutable std::uint32_t mFirstVariant = 0;
};

/// The tags of interface I. The tags of the kernel's interfaces are constants. For another interface, the
/// first call looks the tag up and may throw std::bad_alloc; a later call then tries again.
template <class I>
const CooperativeVisitor::TagPair& tagsOf() noexcept(CooperativeVisitor::internal::KernelTags::kHas<I>) {
  using CooperativeVisitor::internal::KernelTags;
  constexpr std::size_t kDomain = KernelTags::placeOf<VisitationDomain>();
  if constexpr (KernelTags::kHas<I>) {
    static constexpr CooperativeVisitor::TagPair kTags{kDomain, KernelTags::placeOf<I>()};
    return kTags;
  } else {
    static const CooperativeVisitor::TagPair tags{
        kDomain, CooperativeVisitor::internal::GetTag(typeid(I), typeid(VisitationDomain))};
    return tags;
  }
}

}  // namespace K7Q
