#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <span>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace Tarvelon::files {

/// A position in a file. Line and column count from 1.
struct Place {
  std::uint32_t line = 1;
  std::uint32_t column = 1;
};

/// A name with its namespace. `space` is empty if there is none.
struct QualifiedName {
  std::string_view space;
  std::string_view local;
};

/// Receives what the parser finds. If a handler raises, parsing stops and Parser::parse() raises the same
/// exception.
class ParserHandler {
 public:
  virtual void startElement(QualifiedName name, const char* const* attributes) = 0;
  virtual void endElement() = 0;
  virtual void characters(std::string_view text) = 0;
  virtual void startNamespace(std::string_view prefix, std::string_view uri) = 0;
  virtual void endNamespace(std::string_view prefix) = 0;
  virtual void documentType() = 0;

 protected:
  ~ParserHandler() = default;
};

/// A streaming XML parser. It allocates memory with operator new.
class Parser {
 public:
  explicit Parser(ParserHandler& handler);
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;
  ~Parser();

  /// Returns a buffer for the next `room` bytes, which parse() then parses.
  char* buffer(std::size_t room);
  /// Parses `count` bytes of the buffer. Returns false if the text is not well-formed; fault() and place()
  /// describe the error.
  bool parse(std::size_t count, bool isLast);
  std::string fault() const;
  /// The byte offset of the most recent event.
  std::int64_t offset() const noexcept;

  /// The position of the parser. During startElement() this is the beginning of the element.
  Place place() const noexcept;
  /// The position of an attribute of the current element, or of the element if the attribute cannot be
  /// located. If the attributes of a tag are asked for in their order, all calls together read the tag once.
  Place placeOf(QualifiedName attribute) const noexcept;

  static QualifiedName split(const char* name) noexcept;

 private:
  struct Callbacks;
  template <class Action>
  void guarded(Action action) noexcept;

  /// How far the text of a start tag has been searched for attributes.
  struct Search {
    std::int64_t tag = -1;   ///< offset() of the tag
    std::size_t end = 0;     ///< where the search has stopped
    Place place;             ///< the position of `end`
    bool hasFailed = false;  ///< an attribute was not found, as in a two-byte encoding, where none is found
  };

  ParserHandler& mHandler;
  XML_ParserStruct* mParser;
  std::exception_ptr mRaised;
  mutable Search mSearch;
};

}  // namespace Tarvelon::files
