#pragma once

#include <string_view>
#include <vector>

#include "tarvelon/boundary/tarvelon/Rows.h"

/// The metamodel as the naive model knows it: read from the rows alone, by the shortest code that is right.
/// Nothing of the engine's own layout is used, so that a fault in that cannot hide itself.
namespace world {

using Tarvelon::metamodel::PropertyRow;

struct Class;

/// A property as one class declares it.
struct Property {
  const PropertyRow* row = nullptr;
  const K7Q::NSInterface::PropertyIntf* descriptor = nullptr;
  const Class* owner = nullptr;
};

/// One place of a class's objects that stores values. Redefinitions share the place of what they redefine.
struct Slot {
  /// The narrowest declaration: values are checked against it.
  Property narrowest;
  /// Every declaration through which the place is read and written, the widest first.
  std::vector<Property> all;
  /// Of references: the class that values must be of.
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
  /// The slots that its arguments fill.
  std::vector<unsigned> slots;
};

struct Class {
  static constexpr unsigned kNone = ~0U;

  const Tarvelon::metamodel::ClassTable* table = nullptr;
  const K7Q::IntrospectiveMethods* methods = nullptr;
  std::vector<const Class*> bases;
  /// This class and all above it, each behind its bases.
  std::vector<const Class*> ancestors;
  std::vector<Property> own;
  std::vector<Slot> slots;
  /// What the model computes.
  std::vector<Property> derived;
  std::vector<Constructor> constructors;
  /// The slot of the object's name.
  unsigned nameSlot = kNone;

  std::string_view name() const noexcept { return table->name->name; }
  std::string_view shortName() const noexcept { return table->name->shortName(); }
  bool isKindOf(const Class& other) const noexcept;
  /// The slot in which the class stores a property of its own or of a base; kNone if it has none.
  unsigned slotOf(const PropertyRow& row) const noexcept;
  /// The declaration of that meta name that comes first: own ones, then those of each base.
  const Property* find(std::string_view metaName) const noexcept;
};

/// All classes with rows, in the order of registration.
const std::vector<Class>& classes();
/// Those that have constructors.
const std::vector<const Class*>& concrete();
const Class& classOf(const K7Q::NSInterface::ObjectIntf& object);
/// The class of that row.
const Class& classNamed(const Tarvelon::metamodel::ClassName& name);
/// How many literals an enumeration has.
int literalsOf(const Tarvelon::metamodel::EnumerationName& enumeration);

}  // namespace world
