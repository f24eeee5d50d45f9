#pragma once

#include "tarvelon/boundary/tarvelon/Names.h"

// The classes and enumerations of the package, in the order of their registration. The first literal of an
// enumeration has the value 0.
// clang-format off
#define ARPLATFORM_DOCUMENTATION_NAMES(CLASS, ENUMERATION) \
  CLASS(DocumentationBlock)                                \
  CLASS(LLongName)                                         \
  CLASS(MultiLanguageLongName)                             \
  CLASS(MultiLanguageOverviewParagraph)                    \
  CLASS(LOverviewParagraph)                                \
  CLASS(DocRevision)                                       \
  CLASS(Modification)                                      \
  CLASS(MultiLanguagePlainText)                            \
  CLASS(LanguageSpecific)                                  \
  CLASS(LPlainText)
// clang-format on

namespace Tarvelon::metamodel::arplatform::documentation {

#define ARPLATFORM_CLASS(X) TARVELON_DECLARE_CLASS("Tarvelon.metamodel.arplatform.documentation.", X)
#define ARPLATFORM_ENUMERATION(E, ...) \
  TARVELON_DECLARE_ENUMERATION("Tarvelon.metamodel.arplatform.documentation.", E, __VA_ARGS__)
ARPLATFORM_DOCUMENTATION_NAMES(ARPLATFORM_CLASS, ARPLATFORM_ENUMERATION)
#undef ARPLATFORM_CLASS
#undef ARPLATFORM_ENUMERATION

}  // namespace Tarvelon::metamodel::arplatform::documentation
