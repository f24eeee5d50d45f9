#pragma once

#include "tarvelon/binding/ClassBinding.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"

/// The class infos of one metamodel class: the immutable class, the mutable class and the meta-property
/// class. A wrapper is a name and a pointer to constant data; all work waits for defineMembers().
namespace binding {

/// Reads: superclasses, queries, properties, casts.
class ImmutableClassWrapper final : public K7Q::mi::ClassMetaData {
 public:
  explicit ImmutableClassWrapper(const ClassBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const ClassBinding& mBinding;
};

/// Adds construction and what can only be done to a mutable object; properties are inherited.
class ClassWrapper final : public K7Q::mi::ClassMetaData {
 public:
  explicit ClassWrapper(const ClassBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const ClassBinding& mBinding;
};

/// One static entry per property that the class has or inherits.
class MetaPropertyWrapper final : public K7Q::mi::MetaPropertyMetaData<MetaPropertyDummy> {
 public:
  explicit MetaPropertyWrapper(const ClassBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const ClassBinding& mBinding;
};

/// The description that every meta-property class has.
inline constexpr const char* kMetaPropertyDescription =
    "This class has static methods to access meta properties";

/// The property descriptor of that id. Raises "invalid meta property id" for an id beyond the owner's own.
K7Q::ImmutableProperty lookUpMetaProperty(const K7Q::IntrospectiveMethods& owner, unsigned id);

/// One entry of a class's meta-property list.
struct MetaPropertyListEntry {
  const char* name;
  const K7Q::IntrospectiveMethods* owner;
  unsigned id;
};

/// Own entries by id, then each base's whole list from left to right, without names that stand already or
/// that an own entry hides.
std::vector<MetaPropertyListEntry> metaPropertyList(const K7Q::IntrospectiveMethods& methods);

}  // namespace binding
