#pragma once

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/composition/Names.h"
#include "tarvelon/arplatform/system/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::system {

constexpr auto row(Is<SystemMapping>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<SwcToEcuMapping>( 1, "SwMapping", kHolds)));
}

constexpr auto row(Is<SwcToEcuMapping>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<EcuInstance, K7Q::String>(" aEcuInstance, aName")),
      properties(
          one<EcuInstance>                     ( 1, "EcuInstance", kRefers),
          many<composition::ComponentPrototype>( 2, "Component",   kRefers)));
}

constexpr auto row(Is<EcuInstance>) {
  return classRow(
      bases<FibexElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<System>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<SystemMapping>                 ( 1, "Mapping",                 kHolds),
          optional<RootSwCompositionPrototype>( 2, "RootSoftwareComposition", kHolds)));
}

constexpr auto row(Is<FibexElement>) {
  return classRow(
      bases<common::Identifiable, foundation::PackageableElement>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<RootSwCompositionPrototype>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<composition::CompositionComponent, K7Q::String>(" aSwComposition, aName")),
      properties(
          one<composition::CompositionComponent>( 1, "SwComposition", kRefers)));
}

}  // namespace Tarvelon::metamodel::arplatform::system
// clang-format on
