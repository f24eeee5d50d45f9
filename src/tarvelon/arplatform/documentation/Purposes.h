#pragma once

#include "tarvelon/arplatform/documentation/Names.h"
#include "tarvelon/boundary/tarvelon/Purposes.h"

// The descriptions of the classes and enumerations, in the order of their registration.
// clang-format off
namespace Tarvelon::metamodel::arplatform::documentation {

inline constexpr std::string_view kPurpose =
    "Texts for people: names and descriptions in several languages, and the history of revisions.";

inline constexpr auto kPurposes = purposes(
    of<DocumentationBlock>(
        "A longer description of an element, such as its introduction."),
    of<LLongName>(
        "A long name in one language."),
    of<MultiLanguageLongName>(
        "The long name of an element: one entry for each language."),
    of<MultiLanguageOverviewParagraph>(
        "A short description: one paragraph for each language."),
    of<LOverviewParagraph>(
        "A short description in one language."),
    of<DocRevision>(
        "One entry in the revision history of an element. It tells when the revision was made, by whom, in which "
        "state, and what was modified."),
    of<Modification>(
        "One change within a revision. It tells what was changed and, optionally, for what reason."),
    of<MultiLanguagePlainText>(
        "A text without any markup: one entry for each language."),
    of<LanguageSpecific>(
        "The base of all texts that are written in one language."),
    of<LPlainText>(
        "A text without any markup in one language."));

}  // namespace Tarvelon::metamodel::arplatform::documentation
// clang-format on
