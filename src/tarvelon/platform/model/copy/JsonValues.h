#pragma once

#include <string>
#include <string_view>

#include "tarvelon/platform/model/copy/Visit.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"

namespace Tarvelon::metamodel::native {

void appendJson(std::string& out, std::u16string_view text);
void appendJson(std::string& out, std::string_view utf8);
void appendJson(std::string& out, double number);

/// Whether a property is shown: it has a value that is neither an empty text nor an empty list.
bool isShown(const Instance& object, unsigned slot) noexcept;

/// Appends a stored value or one element of a list. A null text is the empty text. A reference becomes the
/// text that pathOf(Instance&) returns.
template <class PathOf>
void appendJson(std::string& out, const Property& property, Word word, PathOf pathOf) {
  switch (property.storage()) {
    case Storage::Boolean:
      out.append(word.bits != 0 ? "true" : "false");
      break;
    case Storage::Integer:
      out.append(std::to_string(integerOf(word)));
      break;
    case Storage::Double:
    case Storage::Real:
      appendJson(out, std::bit_cast<double>(word.bits));
      break;
    case Storage::Enumeration:
    case Storage::Enumerations:
      appendJson(out, std::string_view(property.enumeration()->text(integerOf(word))));
      break;
    case Storage::Text:
    case Storage::Texts:
      appendJson(out, word.text ? word.text->view() : std::u16string_view());
      break;
    case Storage::Reference:
    case Storage::References:
      appendJson(out, std::string_view(pathOf(*word.object)));
      break;
    case Storage::None:
      break;
  }
}

}  // namespace Tarvelon::metamodel::native
