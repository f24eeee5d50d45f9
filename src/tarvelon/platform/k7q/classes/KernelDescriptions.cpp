#include "tarvelon/platform/k7q/classes/KernelDescriptions.h"

#include <string_view>

#include "tarvelon/platform/k7q/sequences/HostList.h"

namespace K7Q::mi {

namespace {

/// The description that a handle refers to. Raises K7Q::Exception with the text kNullReference for a null
/// handle.
template <class Interface>
const Interface& get(const ImmutableObject& self, int line = __builtin_LINE()) {
  self.requireValid(__FILE__, line);
  return *static_cast<const Interface*>(self.getInterface());
}

const NSInterface::TypeIntf& typeOf(const ImmutableType& self) { return get<NSInterface::TypeIntf>(self); }
const NSInterface::ClassIntf& classOf(const ImmutableClass& self) {
  return get<NSInterface::ClassIntf>(self);
}
const NSInterface::PropertyIntf& propertyOf(const ImmutableProperty& self) {
  return get<NSInterface::PropertyIntf>(self);
}
const NSInterface::PackageIntf& packageOf(const ImmutablePackage& self) {
  return get<NSInterface::PackageIntf>(self);
}

String toText(std::string_view text) { return String::fromUtf8(text); }

DescriptionList newList(Deviant deviant) {
  return {new HostList(kAnyElements, ruvo::InternedName(), false), deviant};
}

void append(const DescriptionList& list, const NSInterface::ObjectIntf* description) {
  auto* element = const_cast<NSInterface::ObjectIntf*>(description);
  list.get().generic_push_back(list.getDeviant(), makeObjectRef(element, list.getDeviant()));
}

template <class Descriptions>
DescriptionList listOf(const Descriptions& descriptions, Deviant deviant) {
  DescriptionList list = newList(deviant);
  for (const auto* description : descriptions) append(list, description);
  return list;
}

}  // namespace

String typeName(const ImmutableType& self) { return typeOf(self).name(); }
String typeFullName(const ImmutableType& self) { return toText(typeOf(self).fullName().view()); }

DescriptionList classSuperclasses(const ImmutableClass& self) {
  const auto& cls = classOf(self);
  DescriptionList list = newList(self.getDeviant());
  for (const auto* base : cls.methods().bases()) append(list, base->metaClass().getInterface());
  return list;
}

DescriptionList classProperties(const ImmutableClass& self) {
  const auto& methods = classOf(self).methods();
  DescriptionList list = newList(self.getDeviant());
  for (unsigned id = 1; id <= methods.numberOfProperties(); ++id) {
    if (const auto* property = methods.descriptor(id)) append(list, property);
  }
  return list;
}

String classPackage(const ImmutableClass& self) {
  const std::string_view name = classOf(self).fullName().view();
  return toText(name.substr(0, name.rfind('.')));
}

bool classIsAbstract(const ImmutableClass& self) { return classOf(self).methods().isAbstract(); }

TextList dataTypeLiterals(const ImmutableDataType& self) {
  const auto literals = get<NSInterface::DataTypeIntf>(self).literals();
  TextList list{new HostList(kTextElements, ruvo::InternedName(), false), self.getDeviant()};
  for (const std::string_view literal : literals) {
    list.get().generic_push_back(self.getDeviant(), makeStringRef(toText(literal)));
  }
  return list;
}

String propertyName(const ImmutableProperty& self) { return toText(propertyOf(self).name()); }
int propertyId(const ImmutableProperty& self) { return static_cast<int>(propertyOf(self).id()); }
ImmutableClass propertyOwner(const ImmutableProperty& self) { return propertyOf(self).owner().metaClass(); }
String propertyType(const ImmutableProperty& self) { return toText(propertyOf(self).typeName().view()); }

int propertyLowerBound(const ImmutableProperty& self) {
  return propertyOf(self).multiplicity() == Multiplicity::One ? 1 : 0;
}

int propertyUpperBound(const ImmutableProperty& self) {
  return propertyOf(self).multiplicity() == Multiplicity::Many ? -1 : 1;
}

bool propertyIsReadOnly(const ImmutableProperty& self) {
  return propertyOf(self).mutability() == Mutability::ReadOnly;
}

bool propertyIsContainment(const ImmutableProperty& self) { return propertyOf(self).isContainment(); }

String packageName(const ImmutablePackage& self) { return packageOf(self).name(); }
String packageFullName(const ImmutablePackage& self) { return toText(packageOf(self).fullName().view()); }
DescriptionList packageClasses(const ImmutablePackage& self) {
  return listOf(packageOf(self).classes(), self.getDeviant());
}
DescriptionList packageDataTypes(const ImmutablePackage& self) {
  return listOf(packageOf(self).dataTypes(), self.getDeviant());
}
DescriptionList packageSubPackages(const ImmutablePackage& self) {
  return listOf(packageOf(self).subPackages(), self.getDeviant());
}

}  // namespace K7Q::mi
