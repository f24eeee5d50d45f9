#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::kernel {

constexpr auto shape(Is<ClassObject>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("ExternalId",       "the id that a tool outside knows the object by, for which ARXML has no element"),
          nowhere("ExternalToolInfo", "what a tool outside keeps with the object, for which ARXML has no element"),
          nowhere("Uri",              "an address of the object, for which ARXML has no element")));
}

}  // namespace Tarvelon::metamodel::kernel

namespace Tarvelon::metamodel::foundation {

constexpr auto shape(Is<Element>) {
  return shapeOf(
      noElement(),
      places());
}

// The texts of documentation and of special data are comments: their elements have the body as text.
constexpr auto shape(Is<Comment>) {
  return shapeOf(
      noElement("ARXML has no comment that is an object of its own"),
      places(
          body   ("Body"),
          nowhere("AnnotatedElement", "a text in ARXML is about the element that it stands in and refers to no others")));
}

constexpr auto shape(Is<NamedElement>) {
  return shapeOf(
      noElement(),
      places(
          text   ("Name", "SHORT-NAME"),
          nowhere("Visibility",       "names have no visibility in AUTOSAR"),
          nowhere("ClientDependency", "AUTOSAR has no dependencies between elements in general")));
}

constexpr auto shape(Is<PackageableElement>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<Namespace>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("ElementImport", "AUTOSAR has no imports of elements")));
}

// Packages stand in AR-PACKAGES, all other elements in ELEMENTS.
constexpr auto shape(Is<Package>) {
  return shapeOf(
      noElement("the packages of a file are those of arplatform.common"),
      places(
          inside ("PackagedElement", "AR-PACKAGES"),
          inside ("PackagedElement", "ELEMENTS"),
          nowhere("PackageImport", "AUTOSAR has no imports of packages")));
}

constexpr auto shape(Is<Domain>) {
  return shapeOf(
      noElement("ARXML files do not name the domain of a model"),
      places());
}

constexpr auto shape(Is<DomainRoot>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("Domain", "ARXML files do not name the domain of a model")));
}

constexpr auto shape(Is<ValueType>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ValueSpecification>) {
  return shapeOf(
      noElement(),
      places(
          text("ShortLabel", "SHORT-LABEL")));
}

constexpr auto shape(Is<NumericalValueSpecification>) {
  return shapeOf(
      elements(element("NUMERICAL-VALUE-SPECIFICATION")),
      places(
          text("Value", "VALUE")));
}

constexpr auto shape(Is<TextValueSpecification>) {
  return shapeOf(
      elements(element("TEXT-VALUE-SPECIFICATION")),
      places(
          text("Value", "VALUE")));
}

constexpr auto shape(Is<ArrayValueSpecification>) {
  return shapeOf(
      elements(element("ARRAY-VALUE-SPECIFICATION")),
      places(
          inside("Element", "ELEMENTS")));
}

constexpr auto shape(Is<RecordValueSpecification>) {
  return shapeOf(
      elements(element("RECORD-VALUE-SPECIFICATION")),
      places(
          inside("Field", "FIELDS")));
}

constexpr auto items(Is<VisibilityKind>) {
  return itemTexts("", "", "", "");
}

constexpr auto items(Is<SwCalibrationAccessKind>) {
  return itemTexts("READ-ONLY", "READ-WRITE", "NOT-ACCESSIBLE");
}

}  // namespace Tarvelon::metamodel::foundation
// clang-format on
