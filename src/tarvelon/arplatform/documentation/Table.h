#pragma once

#include "tarvelon/arplatform/documentation/Names.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::arplatform::documentation {

constexpr auto row(Is<DocumentationBlock>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<LLongName>) {
  return classRow(
      bases<LanguageSpecific>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<MultiLanguageLongName>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          many<LLongName>( 1, "L4", kHolds, kHidden)));
}

constexpr auto row(Is<MultiLanguageOverviewParagraph>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          many<LOverviewParagraph>( 1, "L2", kHolds, kHidden)));
}

constexpr auto row(Is<LOverviewParagraph>) {
  return classRow(
      bases<LanguageSpecific>(),
      constructors(create<>()),
      noProperties());
}

constexpr auto row(Is<DocRevision>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<K7Q::String>(" aDate")),
      properties(
          one<K7Q::String>     ( 1, "date",            kHidden),
          optional<K7Q::String>( 2, "issuedBy",        kHidden),
          optional<K7Q::String>( 3, "revisionLabel",   kHidden),
          optional<K7Q::String>( 4, "revisionLabelP1", kHidden),
          optional<K7Q::String>( 5, "revisionLabelP2", kHidden),
          optional<K7Q::String>( 6, "state",           kHidden),
          many<Modification>   ( 7, "modification",    kHolds, kHidden)));
}

constexpr auto row(Is<Modification>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>(),
                   create<MultiLanguageOverviewParagraph>(" aChange")),
      properties(
          one<MultiLanguageOverviewParagraph>     ( 1, "change", kHolds, kHidden),
          optional<MultiLanguageOverviewParagraph>( 2, "reason", kHolds, kHidden)));
}

constexpr auto row(Is<MultiLanguagePlainText>) {
  return classRow(
      bases<foundation::Element>(),
      constructors(create<>()),
      properties(
          many<LPlainText>( 1, "L10", kHolds, kHidden)));
}

constexpr auto row(Is<LanguageSpecific>) {
  return classRow(
      bases<foundation::Comment>(),
      noConstructors(),
      properties(
          optional<K7Q::String>( 1, "language", kHidden)));
}

constexpr auto row(Is<LPlainText>) {
  return classRow(
      bases<LanguageSpecific>(),
      constructors(create<>()),
      noProperties());
}

}  // namespace Tarvelon::metamodel::arplatform::documentation
// clang-format on
