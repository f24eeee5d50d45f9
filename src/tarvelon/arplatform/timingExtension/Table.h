#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/component/Names.h"
#include "tarvelon/arplatform/composition/Names.h"
#include "tarvelon/arplatform/timingExtension/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::timingExtension {

constexpr auto row(Is<TimingExtension>) {
  return classRow(
      bases<common::Packageable>(),
      noConstructors(),
      properties(
          many<TimingConstraint>( 1, "TimingRequirement", kHolds)));
}

constexpr auto row(Is<SwcTiming>) {
  return classRow(
      bases<TimingExtension>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<behavior::ApplicationComponentBehavior>( 1, "Behavior", kRefers)));
}

constexpr auto row(Is<VfbTiming>) {
  return classRow(
      bases<TimingExtension>(),
      constructors(create<>(),
                   create<component::AtomicComponentPorts, K7Q::String>(" aComponent, aName")),
      properties(
          one<component::AtomicComponentPorts>( 1, "Component", kRefers)));
}

constexpr auto row(Is<TimingConstraint>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<ExecutionOrderConstraint>) {
  return classRow(
      bases<TimingConstraint>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<EOCExecutionEntityRefAbstract>      ( 1, "OrderedElement",  kHolds),
          optional<component::AtomicComponentPorts>( 2, "BaseComposition", kRefers)));
}

constexpr auto row(Is<EOCExecutionEntityRefAbstract>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<EOCExecutableEntityRef>) {
  return classRow(
      bases<EOCExecutionEntityRefAbstract>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<EOCExecutionEntityRefAbstract>      ( 1, "Successor",  kRefers),
          optional<behavior::Runnable>             ( 2, "Executable", kRefers),
          optional<composition::ComponentPrototype>( 3, "Component",  kRefers)));
}

}  // namespace Tarvelon::metamodel::arplatform::timingExtension
// clang-format on
