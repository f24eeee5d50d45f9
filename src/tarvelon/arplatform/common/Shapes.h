#pragma once

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::common {

constexpr auto shape(Is<Referrable>) {
  return shapeOf(
      noElement(),
      places(
          role("LongName", "LONG-NAME")));
}

constexpr auto shape(Is<Identifiable>) {
  return shapeOf(
      noElement(),
      places(
          text("Category",     "CATEGORY"),
          role("Introduction", "INTRODUCTION"),
          role("AdminData",    "ADMIN-DATA"),
          role("Desc",         "DESC")));
}

constexpr auto shape(Is<Data>) {
  return shapeOf(
      noElement(),
      places(
          nowhere  ("DefaultValue", "the same value as InitValue, which the file has"),
          reference("Type",                "TYPE-TREF"),
          reference("SwAddrMethod",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/SW-ADDR-METHOD-REF"),
          text     ("SwCalibrationAccess",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/SW-CALIBRATION-ACCESS"),
          text     ("SwAlignment",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/SW-ALIGNMENT"),
          inside   ("InitValue",           "INIT-VALUE"),
          text     ("DisplayFormat",
                    "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL/DISPLAY-FORMAT")));
}

constexpr auto shape(Is<ApplicationError>) {
  return shapeOf(
      elements(element("APPLICATION-ERROR")),
      places(
          text("ErrorCode", "ERROR-CODE")));
}

constexpr auto shape(Is<Packageable>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ModeDeclarationGroup>) {
  return shapeOf(
      elements(element("MODE-DECLARATION-GROUP")),
      places(
          inside   ("Mode",              "MODE-DECLARATIONS"),
          reference("InitialMode",       "INITIAL-MODE-REF"),
          text     ("OnTransitionValue", "ON-TRANSITION-VALUE")));
}

constexpr auto shape(Is<ModeDeclaration>) {
  return shapeOf(
      elements(element("MODE-DECLARATION")),
      places(
          text("Value", "VALUE")));
}

// The value is the body of the comment, and stands where the body stands.
constexpr auto shape(Is<Sd>) {
  return shapeOf(
      elements(element("SD")),
      places(
          attribute("Gid", "GID")));
}

constexpr auto shape(Is<SdgContents>) {
  return shapeOf(
      noElement("only values, references and further groups stand in a special data group"),
      places());
}

constexpr auto shape(Is<SdgCaption>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<Sdg>) {
  return shapeOf(
      elements(element("SDG")),
      places(
          inside   ("SdgContents",   ""),
          attribute("Gid",           "GID"),
          role     ("SdgCaption",    "SDG-CAPTION"),
          reference("SdgCaptionRef", "SDG-CAPTION-REF")));
}

constexpr auto shape(Is<AdminData>) {
  return shapeOf(
      noElement(),
      places(
          text  ("Language",     "LANGUAGE"),
          inside("DocRevision",  "DOC-REVISIONS"),
          inside("Sdg",          "SDGS"),
          role  ("UsedLanguage", "USED-LANGUAGES")));
}

constexpr auto shape(Is<AUTOSAR>) {
  return shapeOf(
      elements(element("AUTOSAR")),
      places(
          nowhere("Name", "AUTOSAR, the root of a file, has no SHORT-NAME"),
          inside ("PackagedElement", "AR-PACKAGES"),
          role   ("AdminData",       "ADMIN-DATA"),
          role   ("Introduction",    "INTRODUCTION"),
          nowhere("ArxmlFilePackaging",            "how the model is divided into files, which no file says"),
          nowhere("ComponentQualifiedName",        "a setting of the model, for which ARXML has no element"),
          nowhere("DataTypePackage",               "a setting of the model, for which ARXML has no element"),
          nowhere("ImplementationQualifiedName",   "a setting of the model, for which ARXML has no element"),
          nowhere("InterfacePackage",              "a setting of the model, for which ARXML has no element"),
          nowhere("InternalBehaviorQualifiedName", "a setting of the model, for which ARXML has no element")));
}

constexpr auto shape(Is<Package>) {
  return shapeOf(
      elements(element("AR-PACKAGE")),
      places(
          inside("ReferenceBase", "REFERENCE-BASES")));
}

constexpr auto shape(Is<ReferenceBase>) {
  return shapeOf(
      elements(element("REFERENCE-BASE")),
      places(
          text     ("IsDefault",         "IS-DEFAULT"),
          text     ("ShortLabel",        "SHORT-LABEL"),
          reference("Package",           "PACKAGE-REF"),
          text     ("BaseIsThisPackage", "BASE-IS-THIS-PACKAGE")));
}

constexpr auto shape(Is<Sdx>) {
  return shapeOf(
      elements(element("SDX-REF")),
      places(
          reference("Sdx")));
}

constexpr auto shape(Is<DataTypeMappingSet>) {
  return shapeOf(
      elements(element("DATA-TYPE-MAPPING-SET")),
      places(
          inside("DataTypeMap",        "DATA-TYPE-MAPS"),
          inside("ModeRequestTypeMap", "MODE-REQUEST-TYPE-MAPS")));
}

constexpr auto shape(Is<DataTypeMap>) {
  return shapeOf(
      elements(element("DATA-TYPE-MAP")),
      places(
          reference("ApplicationType",    "APPLICATION-DATA-TYPE-REF"),
          reference("ImplementationType", "IMPLEMENTATION-DATA-TYPE-REF")));
}

constexpr auto items(Is<ArxmlFilePackagingKind>) {
  return itemTexts("", "");
}

constexpr auto shape(Is<ModeRequestTypeMap>) {
  return shapeOf(
      elements(element("MODE-REQUEST-TYPE-MAP")),
      places(
          reference("ModeGroupType",      "MODE-GROUP-REF"),
          reference("ImplementationType", "IMPLEMENTATION-DATA-TYPE-REF")));
}

constexpr auto shape(Is<SwAddrMethod>) {
  return shapeOf(
      elements(element("SW-ADDR-METHOD")),
      places(
          text("SectionType",                   "SECTION-TYPE"),
          text("MemoryAllocationKeywordPolicy", "MEMORY-ALLOCATION-KEYWORD-POLICY")));
}

constexpr auto shape(Is<SymbolProps>) {
  return shapeOf(
      elements(element("SYMBOL-PROPS")),
      places(
          text("Symbol", "SYMBOL")));
}

}  // namespace Tarvelon::metamodel::arplatform::common
// clang-format on
