#pragma once

#include <string>
#include <string_view>

#include "tarvelon/platform/files/arxml/Document.h"

namespace Tarvelon::files::arxml {

/// How a file breaks and indents its lines.
struct Layout {
  std::string newline = "\n";
  std::string unit = "  ";  ///< one level of indentation
  bool hasLines = true;     ///< false: elements follow one another without line breaks

  static Layout of(const Document& document);
};

/// The white space at the beginning of the line on which an element begins. Empty if something else stands
/// there.
std::string_view indentOf(const Document& document, std::uint32_t element) noexcept;

}  // namespace Tarvelon::files::arxml
