#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::types {

constexpr auto shape(Is<CompuMethod>) {
  return shapeOf(
      elements(element("COMPU-METHOD")),
      places(
          text   ("Category", "CATEGORY"),
          nowhere("Unit", "the unit is a text here; a COMPU-METHOD refers to a UNIT, which has no class")));
}

constexpr auto shape(Is<SwBaseType>) {
  return shapeOf(
      elements(element("SW-BASE-TYPE")),
      places(
          text("BaseTypeSize",      "BASE-TYPE-SIZE"),
          text("BaseTypeEncoding",  "BASE-TYPE-ENCODING"),
          text("NativeDeclaration", "NATIVE-DECLARATION")));
}

constexpr auto shape(Is<ImplementationDataType>) {
  return shapeOf(
      elements(element("IMPLEMENTATION-DATA-TYPE")),
      places(
          text     ("Category",    "CATEGORY"),
          reference("BaseType",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/BASE-TYPE-REF"),
          reference("CompuMethod",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/COMPU-METHOD-REF")));
}

constexpr auto shape(Is<ApplicationPrimitiveDataType>) {
  return shapeOf(
      elements(element("APPLICATION-PRIMITIVE-DATA-TYPE")),
      places(
          text     ("Category",    "CATEGORY"),
          reference("CompuMethod",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/COMPU-METHOD-REF")));
}

}  // namespace Tarvelon::metamodel::types
// clang-format on
