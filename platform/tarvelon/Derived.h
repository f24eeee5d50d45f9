#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace K7Q::NSInterface {
class ObjectIntf;
}

namespace Tarvelon::metamodel::native {

class Instance;
class Property;

/// What a derived property is computed from.
enum class Derivation : std::uint8_t {
  None,           ///< stored
  Nothing,        ///< never a value: this library has none of that kind
  Model,          ///< the model
  Root,           ///< where the way up ends: the object itself when nothing holds it
  Owner,          ///< the owner, if it is of the property's class
  NearestOwner,   ///< the first of the property's class on the way up
  Owned,          ///< all that the object holds of the property's class, in order of slots
  OwnedPackaged,  ///< those of its packaged elements that are of the property's class
};

/// The rule for a derived row, None if there is none. `metaName` as it stands in the list of meta properties.
constexpr Derivation derivationOf(std::string_view owner, std::string_view metaName) {
  struct Rule {
    std::string_view owner;
    std::string_view metaName;
    Derivation derivation;
  };
  // clang-format off
  constexpr Rule kRules[] = {
      {"K7Q.ClassObject", "AppliedStereotypeInstance", Derivation::Nothing},
      {"K7Q.ClassObject", "ModelK7Q",                  Derivation::Model},
      {"K7Q.ClassObject", "ContainerK7Q",              Derivation::Owner},
      {"K7Q.ClassObject", "ContaineeK7Q",              Derivation::Owned},
      {"K7Q.ClassObject", "RootModel",                 Derivation::Root},
      {"Tarvelon.metamodel.foundation.Element",      "OwnedElement",   Derivation::Owned},
      {"Tarvelon.metamodel.foundation.Element",      "Owner",          Derivation::Owner},
      {"Tarvelon.metamodel.foundation.Element",      "OwnedComment",   Derivation::Owned},
      {"Tarvelon.metamodel.foundation.NamedElement", "Namespace",      Derivation::NearestOwner},
      {"Tarvelon.metamodel.foundation.Namespace",    "OwnedMember",    Derivation::Owned},
      {"Tarvelon.metamodel.foundation.Package",      "OwnedType",      Derivation::OwnedPackaged},
      {"Tarvelon.metamodel.foundation.Package",      "NestedPackage",  Derivation::OwnedPackaged},
      {"Tarvelon.metamodel.foundation.Package",      "NestingPackage", Derivation::Owner},
  };
  // clang-format on
  for (const Rule& rule : kRules) {
    if (rule.owner == owner && rule.metaName == metaName) return rule.derivation;
  }
  return Derivation::None;
}

/// The value of a derived property of one value, null if there is none.
K7Q::NSInterface::ObjectIntf* derivedValue(const Instance& object, const Property& property) noexcept;

/// The values of a derived property of many values.
std::vector<Instance*> derivedValues(const Instance& object, const Property& property);

}  // namespace Tarvelon::metamodel::native
