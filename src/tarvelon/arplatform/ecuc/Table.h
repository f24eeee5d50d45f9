#pragma once

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/ecuc/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::ecuc {

constexpr auto row(Is<EcucBooleanParamDef>) {
  return classRow(
      bases<EcucParameterDef>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<EcucContainerValue>) {
  return classRow(
      bases<common::Identifiable>(),
      constructors(create<>(),
                   create<EcucContainerDef, K7Q::String>(" aDefinition, aName")),
      properties(
          many<EcucContainerValue>        ( 1, "SubContainer",   kHolds),
          many<EcucAbstractReferenceValue>( 2, "ReferenceValue", kHolds),
          many<EcucParameterValue>        ( 3, "ParameterValue", kHolds),
          one<EcucContainerDef>           ( 4, "Definition",     kRefers)));
}

constexpr auto row(Is<EcucEnumerationParamDef>) {
  return classRow(
      bases<EcucParameterDef>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<EcucFloatParamDef>) {
  return classRow(
      bases<EcucParameterDef>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<EcucForeignReferenceDef>) {
  return classRow(
      bases<EcucAbstractExternalReferenceDef>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<EcucIntegerParamDef>) {
  return classRow(
      bases<EcucParameterDef>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<EcucModuleConfigurationValues>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<EcucModuleDef, K7Q::String>(" aDefinition, aName")),
      properties(
          one<EcucModuleDef>      ( 1, "Definition", kRefers),
          many<EcucContainerValue>( 2, "Container",  kHolds)));
}

constexpr auto row(Is<EcucModuleDef>) {
  return classRow(
      bases<common::Packageable>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<EcucContainerDef>( 1, "Container", kHolds)));
}

constexpr auto row(Is<EcucNumericalParamValue>) {
  return classRow(
      bases<EcucParameterValue>(),
      constructors(create<>(),
                   create<K7Q::Double, EcucParameterDef>(" aValue, aDefinition")),
      properties(
          one<K7Q::Double>( 1, "Value")));
}

constexpr auto row(Is<EcucParamConfContainerDef>) {
  return classRow(
      bases<EcucContainerDef>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          many<EcucAbstractReferenceDef>( 1, "Reference", kHolds),
          many<EcucParameterDef>        ( 2, "Parameter", kHolds)));
}

constexpr auto row(Is<EcucReferenceDef>) {
  return classRow(
      bases<EcucAbstractInternalReferenceDef>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      noProperties());
}

constexpr auto row(Is<EcucReferenceValue>) {
  return classRow(
      bases<EcucAbstractReferenceValue>(),
      constructors(create<>(),
                   create<common::Identifiable, EcucAbstractReferenceDef>(" aValue, aDefinition")),
      properties(
          one<common::Identifiable>( 1, "Value", kRefers)));
}

constexpr auto row(Is<EcucTextualParamValue>) {
  return classRow(
      bases<EcucParameterValue>(),
      constructors(create<>(),
                   create<K7Q::String, EcucParameterDef>(" aValue, aDefinition")),
      properties(
          one<K7Q::String>( 1, "Value")));
}

constexpr auto row(Is<EcucAbstractExternalReferenceDef>) {
  return classRow(
      bases<EcucAbstractReferenceDef>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<EcucAbstractInternalReferenceDef>) {
  return classRow(
      bases<EcucAbstractReferenceDef>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<EcucAbstractReferenceDef>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<EcucAbstractReferenceValue>) {
  return classRow(
      bases<foundation::Element>(),
      noConstructors(),
      properties(
          one<EcucAbstractReferenceDef>( 1, "Definition", kRefers)));
}

constexpr auto row(Is<EcucContainerDef>) {
  return classRow(
      bases<common::Packageable>(),
      noConstructors(),
      properties(
          many<EcucParamConfContainerDef>( 1, "SubContainer", kHolds)));
}

constexpr auto row(Is<EcucParameterDef>) {
  return classRow(
      bases<common::Identifiable>(),
      noConstructors(),
      noProperties());
}

constexpr auto row(Is<EcucParameterValue>) {
  return classRow(
      bases<foundation::Element>(),
      noConstructors(),
      properties(
          one<EcucParameterDef>( 1, "Definition", kRefers)));
}

}  // namespace Tarvelon::metamodel::arplatform::ecuc
// clang-format on
