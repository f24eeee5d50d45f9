#pragma once

#include "tarvelon/arplatform/documentation/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::documentation {

constexpr auto shape(Is<DocumentationBlock>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<LLongName>) {
  return shapeOf(
      elements(element("L-4")),
      places());
}

constexpr auto shape(Is<MultiLanguageLongName>) {
  return shapeOf(
      noElement(),
      places(
          inside("L4", "")));
}

constexpr auto shape(Is<MultiLanguageOverviewParagraph>) {
  return shapeOf(
      noElement(),
      places(
          inside("L2", "")));
}

constexpr auto shape(Is<LOverviewParagraph>) {
  return shapeOf(
      elements(element("L-2")),
      places());
}

constexpr auto shape(Is<DocRevision>) {
  return shapeOf(
      elements(element("DOC-REVISION")),
      places(
          text  ("Date",            "DATE"),
          text  ("IssuedBy",        "ISSUED-BY"),
          text  ("RevisionLabel",   "REVISION-LABEL"),
          text  ("RevisionLabelP1", "REVISION-LABEL-P-1"),
          text  ("RevisionLabelP2", "REVISION-LABEL-P-2"),
          text  ("State",           "STATE"),
          inside("Modification",    "MODIFICATIONS")));
}

constexpr auto shape(Is<Modification>) {
  return shapeOf(
      elements(element("MODIFICATION")),
      places(
          role("Change", "CHANGE"),
          role("Reason", "REASON")));
}

constexpr auto shape(Is<MultiLanguagePlainText>) {
  return shapeOf(
      noElement(),
      places(
          inside("L10", "")));
}

constexpr auto shape(Is<LanguageSpecific>) {
  return shapeOf(
      noElement(),
      places(
          attribute("Language", "L").otherwise("FOR-ALL")));
}

constexpr auto shape(Is<LPlainText>) {
  return shapeOf(
      elements(element("L-10").always("xml:space=\"default\"")),
      places());
}

}  // namespace Tarvelon::metamodel::arplatform::documentation
// clang-format on
