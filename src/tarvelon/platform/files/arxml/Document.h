#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tarvelon/platform/files/arxml/Encoding.h"

namespace Tarvelon::files::arxml {

/// A position in a file. Line and column count from 1; the column counts characters.
struct LineAndColumn {
  std::uint32_t line = 1;
  std::uint32_t column = 1;
};

/// An element of a document: where its parts begin and end in the text. Elements are numbered in the order in
/// which they begin; so the first element inside of element n has the number n + 1.
struct Element {
  std::uint32_t begin = 0;         ///< the "<" of the start tag
  std::uint32_t contentBegin = 0;  ///< behind the start tag
  std::uint32_t contentEnd = 0;    ///< the "<" of the end tag; the same as contentBegin in "<A/>"
  std::uint32_t end = 0;           ///< behind the end tag
  std::uint32_t next = 0;    ///< the number of the first element behind this one that is not inside of it
  std::uint32_t parent = 0;  ///< the number of the element around it; that of the root is 0
  std::uint32_t name = 0;    ///< the number of its name (Document::nameOf)
};

/// Raised by Document::parse() for a text that is not well-formed XML, or that is refused.
struct ParseFault {
  LineAndColumn place;
  std::string text;
};

/// The text of an XML file and the tree of its elements. The text is kept as it is, so that what nobody
/// changes can be saved as it was.
///
/// Not supported: document types, as in all files of this library. Names with a character that is not ASCII
/// are not checked character by character.
class Document {
 public:
  /// How many elements may be nested.
  static constexpr std::size_t kMaxDepth = 1000;

  Document() = default;
  /// Parses a text. Raises ParseFault.
  explicit Document(std::string text);

  std::string_view text() const noexcept { return mText; }
  const std::vector<Element>& elements() const noexcept { return mElements; }
  const Element& element(std::uint32_t number) const noexcept { return mElements[number]; }
  std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(mElements.size()); }

  std::string_view nameOf(std::uint32_t element) const noexcept { return mNames[mElements[element].name]; }
  /// All names that occur, by number.
  const std::vector<std::string>& names() const noexcept { return mNames; }

  std::string_view slice(std::uint32_t begin, std::uint32_t end) const noexcept {
    return text().substr(begin, end - begin);
  }
  /// The whole element with its tags.
  std::string_view outer(std::uint32_t element) const noexcept {
    return slice(mElements[element].begin, mElements[element].end);
  }
  /// What stands between the tags.
  std::string_view inner(std::uint32_t element) const noexcept {
    return slice(mElements[element].contentBegin, mElements[element].contentEnd);
  }
  std::string_view startTag(std::uint32_t element) const noexcept {
    return slice(mElements[element].begin, mElements[element].contentBegin);
  }
  bool hasElements(std::uint32_t element) const noexcept { return mElements[element].next > element + 1; }
  /// The first element of that name directly inside; 0 if there is none.
  std::uint32_t find(std::uint32_t element, std::string_view name) const noexcept;
  /// The same along a path with "/" between the names.
  std::uint32_t findPath(std::uint32_t element, std::string_view path) const noexcept;
  /// The text of an attribute as it stands between its quotes. Null data if there is none.
  std::string_view attribute(std::uint32_t element, std::string_view name) const noexcept;
  /// The offset of the value of an attribute; 0 if there is none.
  std::uint32_t attributeOffset(std::uint32_t element, std::string_view name) const noexcept;

  LineAndColumn placeOf(std::uint32_t offset) const noexcept;
  /// The SHORT-NAMEs of the named elements around and at the element: "/A/B". Empty if there are none.
  std::string pathOf(std::uint32_t element) const;

 private:
  friend class Scanner;
  std::string mText;
  std::vector<Element> mElements;
  std::vector<std::string> mNames;
};

/// The lines of a document, to find the places of many offsets. Creating it reads the text once.
class Lines {
 public:
  explicit Lines(const Document& document);
  /// As Document::placeOf().
  LineAndColumn placeOf(std::uint32_t offset) const noexcept;

 private:
  const Document& mDocument;
  std::vector<std::uint32_t> mBegins;  ///< the offset of each line but the first
};

/// Replaces character and entity references, and removes comments, processing instructions and the marks of
/// CDATA sections. REQUIRES: text of a parsed document without elements.
std::string plainText(std::string_view text);
/// A text as a value: plain and trimmed. Most texts are plain as they stand; for any other one, `plain` holds
/// the result.
std::string_view valueOf(std::string_view text, std::string& plain);
/// The text of an element with its elements. A reference inside of it stands for the last name of its path.
std::string formulaOf(const Document& document, std::uint32_t element);
/// A path of elements without the marks of repeated ones (boundary/tarvelon/Shapes.h).
std::string withoutStars(std::string_view path);
/// Without white space at both ends.
std::string_view trimmed(std::string_view text) noexcept;

}  // namespace Tarvelon::files::arxml
