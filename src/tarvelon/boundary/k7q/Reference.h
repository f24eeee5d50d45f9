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

/// Which version of the model a handle sees: one machine word.
///
/// 0 is the model as it stands, writable. A word with kReadOnly or kFrozen refuses writing
/// (DeviantAssertions).
struct Deviant {
  /// The state of one view, which asMutable() takes away (DeviantRegistry::setIsImmutable).
  static constexpr std::uintptr_t kReadOnly = 1;
  /// The version that Model::frozen() shows: every handle that comes of it has the mark, and none loses it.
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

/// The domain of the visitor tags; one type under the names that the libraries use.
struct TARVELON_API VisitationDomain {};
using RootVisitationDomain = VisitationDomain;

namespace CooperativeVisitor {

/// The two numbers by which an object is asked for an interface.
struct TagPair {
  std::size_t domain;
  std::size_t interface;
};

namespace internal {

/// The number of (interface, domain): the same for the same types in every library, dense from 0.
/// Cost: a look-up by type name; keep the result in a function-local static. Throws std::bad_alloc for a pair
/// that is new.
TARVELON_API std::size_t GetTag(const std::type_info& interface, const std::type_info& domain);

/// Types whose tags are their places in the list: such a tag is a constant and needs no memory.
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

/// The domain and the interfaces of the kernel: these are asked for where nothing may fail.
using KernelTags = FixedTags<VisitationDomain, ReferenceCountingIntf, NSInterface::ObjectIntf,
                             NSInterface::ClassObjectIntf, NSInterface::FactoryObjectIntf,
                             NSInterface::FactoryIntf, NSInterface::ModelIntf, NSInterface::TypeIntf,
                             NSInterface::ClassIntf, NSInterface::DataTypeIntf, NSInterface::PropertyIntf,
                             NSInterface::PackageIntf, Generic::SequenceIntf, Generic::IteratorIntf>;

}  // namespace internal
}  // namespace CooperativeVisitor

/// Base of what must be torn down in an orderly way.
class TARVELON_API Cleanup {
 public:
  Cleanup() noexcept = default;
  Cleanup(const Cleanup&) = delete;
  Cleanup& operator=(const Cleanup&) = delete;
  virtual ~Cleanup();
};

/// Root of everything a handle or a host object can hold.
///
/// addRef() and release() do nothing here: who counts overrides them. An object that DeviantRegistry knows is
/// retracted by its destructor. The slot order is fixed.
/// Threads: one at a time, unless it is shared.
class TARVELON_API ReferenceCountingIntf : public Cleanup {
 public:
  ~ReferenceCountingIntf() override;
  virtual void addRef() const;
  virtual void release() const;
  virtual int numRef() const;
  virtual const void* getListOfReferences() const;
  virtual const char* getVisitMethod() const;
  /// The object as the interface of that tag, or null if it has no such interface.
  virtual void* cast(CooperativeVisitor::TagPair tag);

 protected:
  /// Says that all threads may meet in this object: it stays as it is until the process ends, and counts no
  /// references. So do its host objects.
  constexpr void share() noexcept { mIsShared = true; }

 private:
  friend class mi::VariantTable;
  mutable bool mIsRegistered = false;
  bool mIsShared = false;
  /// The first of the object's ids in the registry's table; meaningful while mIsRegistered.
  mutable std::uint32_t mFirstVariant = 0;
};

/// The tags of interface I, found once. Those of the kernel's interfaces are constants; for others the first
/// call may throw std::bad_alloc, and the next one tries again.
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
