#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/platform/model/api/Metamodel.h"

/// Generic access to objects: for programs that walk any model without knowing its classes.
///
/// Example:
///   for (const auto& property : propertiesOf(element)) {
///     if (property->isContainment() && !property.isReadOnly())
///       for (const auto& child : property.objects()) ...
///   }
namespace Tarvelon::metamodel {

/// Returns the description of the object's class. Raises K7Q::Exception with the text kNullReference if the
/// object is not valid.
inline const K7Q::NSInterface::ClassIntf& classOf(const foundation::Element& object) {
  object.requireValid();
  const K7Q::ImmutableType type = object.getClassObject()->getMetaType(object.getDeviant());
  return static_cast<const K7Q::NSInterface::ClassIntf&>(*type.getInterface());
}

/// Returns the name of the object's class, without its package, in UTF-8.
inline std::string classNameOf(const foundation::Element& object) {
  return K7Q::String::to_string(std::u16string_view(classOf(object).name()));
}

/// A property of one object: the description, through ->, and the values.
/// Lifetime: Keeps the object's model alive.
class ObjectProperty {
 public:
  ObjectProperty(foundation::Element object, const K7Q::NSInterface::PropertyIntf& description)
      : mObject(std::move(object)), mDescription(&description) {}

  const K7Q::NSInterface::PropertyIntf* operator->() const noexcept { return mDescription; }
  bool isMany() const { return mDescription->multiplicity() == K7Q::mi::Multiplicity::Many; }
  bool isRequired() const { return mDescription->multiplicity() == K7Q::mi::Multiplicity::One; }
  bool isReadOnly() const { return mDescription->mutability() == K7Q::mi::Mutability::ReadOnly; }

  /// The number of values: 0 or 1 for a single-valued property.
  int size() const {
    return isMany() ? values().size() : static_cast<int>(methods().has(interface(), deviant(), id()));
  }
  /// The objects that the property contains or refers to, in their order. Empty if the property is not a
  /// reference.
  std::vector<foundation::Element> objects() const {
    std::vector<foundation::Element> found;
    if (!mDescription->isReference()) return found;
    if (isMany()) {
      for (const auto& object : values()) found.push_back(object);
    } else {
      K7Q::Object value;
      methods().get(value, interface(), deviant(), id());
      auto object = foundation::Element::cast(value);
      if (!object.isNull()) found.push_back(std::move(object));
    }
    return found;
  }

 private:
  const K7Q::IntrospectiveMethods& methods() const { return mDescription->owner(); }
  K7Q::NSInterface::ClassObjectIntf* interface() const { return mObject.getClassObject(); }
  K7Q::Deviant deviant() const { return mObject.getDeviant(); }
  unsigned id() const { return mDescription->id(); }
  NativeSequence<foundation::Element> values() const {
    return {methods().getSequence(interface(), deviant(), id(), true), deviant()};
  }

  foundation::Element mObject;
  const K7Q::NSInterface::PropertyIntf* mDescription;
};

namespace reflection {

inline void collect(const foundation::Element& object, const K7Q::IntrospectiveMethods& methods,
                    std::set<std::string_view>& names, std::vector<ObjectProperty>& found) {
  for (unsigned id = 1; id <= methods.numberOfProperties(); ++id) {
    const auto* description = methods.descriptor(id);
    if (!description) continue;
    if (names.insert(description->name()).second) found.emplace_back(object, *description);
    if (description->hiddenName()) names.insert(description->hiddenName());
  }
  for (const auto* base : methods.bases()) collect(object, *base, names, found);
}

}  // namespace reflection

/// Returns the properties of the object's class: its own first, then those of its bases. A property that a
/// subclass redefines is returned once, as the redefinition. Raises K7Q::Exception with the text
/// kNullReference if the object is not valid.
inline std::vector<ObjectProperty> propertiesOf(const foundation::Element& object) {
  std::set<std::string_view> names;
  std::vector<ObjectProperty> found;
  reflection::collect(object, classOf(object).methods(), names, found);
  return found;
}

}  // namespace Tarvelon::metamodel
