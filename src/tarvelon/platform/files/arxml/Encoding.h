#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Tarvelon::files::arxml {

/// How the characters of a file are stored.
struct Encoding {
  enum class Kind : std::uint8_t { Utf8, Utf16Little, Utf16Big, Latin1, Ascii } kind = Kind::Utf8;
  bool hasMark = false;  ///< whether the file begins with a byte-order mark
  /// Whether the bytes are the UTF-8 text itself.
  bool isPlain() const noexcept { return kind == Kind::Utf8 && !hasMark; }
};

/// A file as UTF-8 text, without its byte-order mark.
struct Decoded {
  Encoding encoding;
  std::string text;
  std::string fault;  ///< why the bytes are not text in that encoding; empty if they are
};

/// Converts the bytes of an XML file. The byte-order mark decides the encoding, else the XML declaration;
/// without both it is UTF-8.
Decoded decoded(std::string bytes);
/// Converts text back to bytes, with the byte-order mark. Characters that ISO-8859-1 or US-ASCII do not have
/// become character references.
std::string encoded(std::string text, Encoding encoding);

/// The offset of the first byte that is not well-formed UTF-8, or that belongs to a character that XML does
/// not allow. npos if there is none.
std::size_t findBadCharacter(std::string_view text) noexcept;

}  // namespace Tarvelon::files::arxml
