#pragma once

#include "tarvelon/arplatform/ecuc/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::ecuc {

constexpr auto shape(Is<EcucBooleanParamDef>) {
  return shapeOf(
      elements(element("ECUC-BOOLEAN-PARAM-DEF")),
      places());
}

constexpr auto shape(Is<EcucContainerValue>) {
  return shapeOf(
      elements(element("ECUC-CONTAINER-VALUE")),
      places(
          inside   ("SubContainer",   "SUB-CONTAINERS"),
          inside   ("ReferenceValue", "REFERENCE-VALUES"),
          inside   ("ParameterValue", "PARAMETER-VALUES"),
          reference("Definition",     "DEFINITION-REF")));
}

constexpr auto shape(Is<EcucEnumerationParamDef>) {
  return shapeOf(
      elements(element("ECUC-ENUMERATION-PARAM-DEF")),
      places());
}

constexpr auto shape(Is<EcucFloatParamDef>) {
  return shapeOf(
      elements(element("ECUC-FLOAT-PARAM-DEF")),
      places());
}

constexpr auto shape(Is<EcucForeignReferenceDef>) {
  return shapeOf(
      elements(element("ECUC-FOREIGN-REFERENCE-DEF")),
      places());
}

constexpr auto shape(Is<EcucIntegerParamDef>) {
  return shapeOf(
      elements(element("ECUC-INTEGER-PARAM-DEF")),
      places());
}

constexpr auto shape(Is<EcucModuleConfigurationValues>) {
  return shapeOf(
      elements(element("ECUC-MODULE-CONFIGURATION-VALUES")),
      places(
          reference("Definition", "DEFINITION-REF"),
          inside   ("Container",  "CONTAINERS")));
}

constexpr auto shape(Is<EcucModuleDef>) {
  return shapeOf(
      elements(element("ECUC-MODULE-DEF")),
      places(
          inside("Container", "CONTAINERS")));
}

constexpr auto shape(Is<EcucNumericalParamValue>) {
  return shapeOf(
      elements(element("ECUC-NUMERICAL-PARAM-VALUE")),
      places(
          text("Value", "VALUE")));
}

constexpr auto shape(Is<EcucParamConfContainerDef>) {
  return shapeOf(
      elements(element("ECUC-PARAM-CONF-CONTAINER-DEF")),
      places(
          inside("Reference", "REFERENCES"),
          inside("Parameter", "PARAMETERS")));
}

constexpr auto shape(Is<EcucReferenceDef>) {
  return shapeOf(
      elements(element("ECUC-REFERENCE-DEF")),
      places());
}

constexpr auto shape(Is<EcucReferenceValue>) {
  return shapeOf(
      elements(element("ECUC-REFERENCE-VALUE")),
      places(
          reference("Value", "VALUE-REF")));
}

constexpr auto shape(Is<EcucTextualParamValue>) {
  return shapeOf(
      elements(element("ECUC-TEXTUAL-PARAM-VALUE")),
      places(
          text("Value", "VALUE")));
}

constexpr auto shape(Is<EcucAbstractExternalReferenceDef>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<EcucAbstractInternalReferenceDef>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<EcucAbstractReferenceDef>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<EcucAbstractReferenceValue>) {
  return shapeOf(
      noElement(),
      places(
          reference("Definition", "DEFINITION-REF")));
}

constexpr auto shape(Is<EcucContainerDef>) {
  return shapeOf(
      noElement(),
      places(
          inside("SubContainer", "SUB-CONTAINERS")));
}

constexpr auto shape(Is<EcucParameterDef>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<EcucParameterValue>) {
  return shapeOf(
      noElement(),
      places(
          reference("Definition", "DEFINITION-REF")));
}

}  // namespace Tarvelon::metamodel::arplatform::ecuc
// clang-format on
