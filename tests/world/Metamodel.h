#pragma once

#include <string_view>
#include <vector>

#include "tarvelon/boundary/tarvelon/Rows.h"

/// The metamodel for the naive model. It is read directly from the rows with simple code. It does not use the
/// engine's own layout of classes, because then a fault in that layout would not be detected.
namespace world {

using Tarvelon::metamodel::PropertyRow;

struct Class;

/// A property as one class declares it.
struct Property {
  const PropertyRow* row = nullptr;
  const K7Q::NSInterface::PropertyIntf* descriptor = nullptr;
  const Class* owner = nullptr;
};

/// A storage place of a class's objects. A redefinition has the same slot as the redefined property.
struct Slot {
  /// The narrowest declaration. Values are checked against it.
  Property narrowest;
  /// All declarations that read and write this slot, the widest first.
  std::vector<Property> all;
  /// For references: the class of the values.
  const Class* type = nullptr;

  const PropertyRow& row() const noexcept { return *narrowest.row; }
  bool isMany() const noexcept { return row().isMany(); }
  bool isReference() const noexcept { return row().role != Tarvelon::metamodel::Role::Value; }
  bool holds() const noexcept { return row().role == Tarvelon::metamodel::Role::Holds; }
  bool isRequired() const noexcept { return row().multiplicity == K7Q::mi::Multiplicity::One; }
  bool isWritable() const noexcept { return row().mutability == K7Q::mi::Mutability::Writable; }
};

struct Constructor {
  const Tarvelon::metamodel::ConstructorRow* row = nullptr;
  /// The slots that the arguments set.
  std::vector<unsigned> slots;
};

struct Class {
  static constexpr unsigned kNone = ~0U;

  const Tarvelon::metamodel::ClassTable* table = nullptr;
  const K7Q::IntrospectiveMethods* methods = nullptr;
  std::vector<const Class*> bases;
  /// This class and all its superclasses. A class comes after its bases.
  std::vector<const Class*> ancestors;
  std::vector<Property> own;
  std::vector<Slot> slots;
  /// The derived properties.
  std::vector<Property> derived;
  std::vector<Constructor> constructors;
  /// The slot of the name.
  unsigned nameSlot = kNone;

  std::string_view name() const noexcept { return table->name->name; }
  std::string_view shortName() const noexcept { return table->name->shortName(); }
  bool isKindOf(const Class& other) const noexcept;
  /// The slot of a property of this class or of a base; kNone if there is none.
  unsigned slotOf(const PropertyRow& row) const noexcept;
  /// Finds a property by its meta name: first among the class's own, then in each base.
  const Property* find(std::string_view metaName) const noexcept;
};

/// All classes that have rows, in the order of registration.
const std::vector<Class>& classes();
/// The classes that have constructors.
const std::vector<const Class*>& concrete();
const Class& classOf(const K7Q::NSInterface::ObjectIntf& object);
/// The class with that row.
const Class& classNamed(const Tarvelon::metamodel::ClassName& name);
/// The number of an enumeration's literals.
int literalsOf(const Tarvelon::metamodel::EnumerationName& enumeration);

}  // namespace world
