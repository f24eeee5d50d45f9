#pragma once

#include "tarvelon/binding/ClassBinding.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"

/// The three class infos of one metamodel class: the immutable class, the mutable class and the meta-property
/// class. A class info stores a name and a pointer to constant data; defineMembers() does all the work.
namespace binding {

/// The immutable class: superclasses, queries, properties, casts.
class ImmutableClassWrapper final : public K7Q::mi::ClassMetaData {
 public:
  explicit ImmutableClassWrapper(const ClassBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const ClassBinding& mBinding;
};

/// The mutable class: constructors and the methods that change an object. It inherits the properties from the
/// immutable class.
class ClassWrapper final : public K7Q::mi::ClassMetaData {
 public:
  explicit ClassWrapper(const ClassBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const ClassBinding& mBinding;
};

/// The meta-property class: one static entry for each property that the class declares or inherits.
class MetaPropertyWrapper final : public K7Q::mi::MetaPropertyMetaData<MetaPropertyDummy> {
 public:
  explicit MetaPropertyWrapper(const ClassBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const ClassBinding& mBinding;
};

/// The description of all meta-property classes.
inline constexpr const char* kMetaPropertyDescription =
    "This class has static methods to access meta properties";

/// The description of the property with that id. Throws a K7Q::Exception ("invalid meta property id") for an
/// id above owner.numberOfProperties().
K7Q::ImmutableProperty lookUpMetaProperty(const K7Q::IntrospectiveMethods& owner, unsigned id);

/// An entry of the meta-property list of a class.
struct MetaPropertyListEntry {
  const char* name;
  const K7Q::IntrospectiveMethods* owner;
  unsigned id;
};

/// The meta-property list of a class: its own properties by id, then the whole list of each base from left to
/// right. The list leaves out an inherited property if its name is already in the list, or if an own property
/// hides it.
std::vector<MetaPropertyListEntry> metaPropertyList(const K7Q::IntrospectiveMethods& methods);

}  // namespace binding
