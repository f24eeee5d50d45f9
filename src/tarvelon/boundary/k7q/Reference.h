#pragma once

#include <cstddef>
#include <cstdint>
#include <typeinfo>

#include "tarvelon/boundary/Export.h"

namespace K7Q {

namespace mi {
class VariantTable;
}

/// Which version of the model a handle sees: one machine word.
///
/// 0 is the model as it stands, writable. A word with kReadOnly refuses writing (DeviantAssertions).
struct Deviant {
  static constexpr std::uintptr_t kReadOnly = 1;
  std::uintptr_t word = 0;
  friend constexpr bool operator==(Deviant, Deviant) noexcept = default;
};

namespace CooperativeVisitor {

/// The two numbers by which an object is asked for an interface.
struct TagPair {
  std::size_t domain;
  std::size_t interface;
};

namespace internal {

/// The number of (interface, domain): the same for the same types in every library, dense from 0.
/// Cost: a look-up by type name; keep the result in a function-local static.
TARVELON_API std::size_t GetTag(const std::type_info& interface, const std::type_info& domain);

}  // namespace internal
}  // namespace CooperativeVisitor

/// The domain of the visitor tags; one type under the names that the libraries use.
struct TARVELON_API VisitationDomain {};
using RootVisitationDomain = VisitationDomain;

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

 private:
  friend class mi::VariantTable;
  mutable bool mIsRegistered = false;
  /// The first of the object's ids in the registry's table; meaningful while mIsRegistered.
  mutable std::uint32_t mFirstVariant = 0;
};

/// The tags of interface I, found once.
template <class I>
const CooperativeVisitor::TagPair& tagsOf() {
  static const CooperativeVisitor::TagPair tags{
      CooperativeVisitor::internal::GetTag(typeid(VisitationDomain), typeid(VisitationDomain)),
      CooperativeVisitor::internal::GetTag(typeid(I), typeid(VisitationDomain))};
  return tags;
}

}  // namespace K7Q
