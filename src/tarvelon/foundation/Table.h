#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id. The properties that follow from containment (owner, owned elements, namespaces)
// are derived: the model computes them.
// clang-format off
namespace Tarvelon::metamodel::kernel {

constexpr auto row(Is<ClassObject>) {
  return classRow(
      bases<>(),
      noConstructors(),
      properties(
          many<ClassObject>     ( 1, "AppliedStereotypeInstance", kRefers).derived(Derivation::Nothing),
          optional<Model>       ( 2, "ModelK7Q",                  kRefers).derived(Derivation::Model),
          optional<ClassObject> ( 3, "ContainerK7Q",              kRefers).derived(Derivation::Owner),
          many<ClassObject>     ( 4, "ContaineeK7Q",              kHolds).derived(Derivation::Owned),
          optional<ClassObject> ( 5, "RootModel",                 kRefers).derived(Derivation::Root),
          optional<K7Q::String> ( 6, "ExternalId"),
          optional<K7Q::String> ( 7, "ExternalToolInfo"),
          optional<K7Q::String> ( 8, "Uri")));
}

}  // namespace Tarvelon::metamodel::kernel

namespace Tarvelon::metamodel::foundation {

constexpr auto row(Is<Element>) {
  return classRow(
      bases<kernel::ClassObject>(),
      noConstructors(),
      properties(
          many<Element>    ( 1, "OwnedElement", kHolds).derived(Derivation::Owned),
          optional<Element>( 2, "Owner",        kRefers).derived(Derivation::Owner),
          many<Comment>    ( 3, "OwnedComment", kHolds).derived(Derivation::Owned)));
}

constexpr auto row(Is<Comment>) {
  return classRow(
      bases<Element>(),
      constructors(create<>(),
                   create<K7Q::String>(" aBody")),
      properties(
          one<K7Q::String>( 1, "Body"),
          many<Element>   ( 2, "AnnotatedElement", kRefers)));
}

constexpr auto row(Is<NamedElement>) {
  return classRow(
      bases<Element>(),
      noConstructors(),
      properties(
          one<K7Q::String>   ( 1, "Name"),
          one<VisibilityKind>( 2, "Visibility"),
          many<NamedElement> ( 3, "ClientDependency", kRefers),
          optional<Namespace>( 4, "Namespace",        kRefers).derived(Derivation::NearestOwner)));
}

constexpr auto row(Is<PackageableElement>) {
  return classRow(
      bases<NamedElement>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<Namespace>) {
  return classRow(
      bases<NamedElement>(),
      noConstructors(),
      properties(
          many<PackageableElement>( 1, "ElementImport", kRefers),
          many<NamedElement>      ( 3, "OwnedMember",   kHolds).derived(Derivation::Owned)));
}

constexpr auto row(Is<Package>) {
  return classRow(
      bases<Namespace, PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<PackageableElement>( 1, "PackagedElement", kHolds),
          many<ValueType>         ( 2, "OwnedType",       kHolds).derived(Derivation::OwnedPackaged),
          many<Package>           ( 3, "NestedPackage",   kHolds).derived(Derivation::OwnedPackaged),
          optional<Package>       ( 4, "NestingPackage",  kRefers).derived(Derivation::Owner),
          many<Package>           ( 5, "PackageImport",   kRefers)));
}

constexpr auto row(Is<Domain>) {
  return classRow(
      bases<NamedElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<DomainRoot>) {
  return classRow(
      bases<Package>(),
      noConstructors(),
      properties(
          optional<Domain>( 1, "Domain", kRefers)));
}

constexpr auto row(Is<ValueType>) {
  return classRow(
      bases<PackageableElement>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ValueSpecification>) {
  return classRow(
      bases<Element>(),
      noConstructors(),
      properties(
          optional<K7Q::String>( 1, "ShortLabel")));
}

constexpr auto row(Is<NumericalValueSpecification>) {
  return classRow(
      bases<ValueSpecification>(),
      constructors(create<>(),
                   create<K7Q::Double>(" aValue")),
      properties(
          one<K7Q::Double>( 1, "Value")));
}

constexpr auto row(Is<TextValueSpecification>) {
  return classRow(
      bases<ValueSpecification>(),
      constructors(create<>(),
                   create<K7Q::String>(" aValue")),
      properties(
          one<K7Q::String>( 1, "Value")));
}

constexpr auto row(Is<ArrayValueSpecification>) {
  return classRow(
      bases<ValueSpecification>(),
      constructors(create<>()),
      properties(
          many<ValueSpecification>( 1, "Element", kHolds)));
}

constexpr auto row(Is<RecordValueSpecification>) {
  return classRow(
      bases<ValueSpecification>(),
      constructors(create<>()),
      properties(
          many<ValueSpecification>( 1, "Field", kHolds)));
}

}  // namespace Tarvelon::metamodel::foundation
// clang-format on
