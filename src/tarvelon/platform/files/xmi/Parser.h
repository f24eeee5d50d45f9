#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <span>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace Tarvelon::files {

/// Where something stands in a file; both from 1.
struct Place {
  std::uint32_t line = 1;
  std::uint32_t column = 1;
};

/// A name with its namespace, empty for one without.
struct QualifiedName {
  std::string_view space;
  std::string_view local;
};

/// What a parser finds. A handler may raise: the parsing ends, and parse() raises the same.
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

/// A streaming XML parser. Memory comes from operator new.
class Parser {
 public:
  explicit Parser(ParserHandler& handler);
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;
  ~Parser();

  /// Room for the next bytes, which parse() takes.
  char* buffer(std::size_t room);
  /// False when the text is no well-formed XML up to there; fault() and place() say what and where.
  bool parse(std::size_t count, bool isLast);
  std::string fault() const;
  /// How many bytes lie before what was found last.
  std::int64_t offset() const noexcept;

  /// Where the parser stands: at the beginning of an element that it has just announced.
  Place place() const noexcept;
  /// Where an attribute of that element stands, as far as that can be seen. Asked for one after the other in
  /// their order, all of a tag cost one walk through its text.
  Place placeOf(QualifiedName attribute) const noexcept;

  static QualifiedName split(const char* name) noexcept;

 private:
  struct Callbacks;
  template <class Action>
  void guarded(Action action) noexcept;

  /// How far the text of a start tag has been searched for attributes.
  struct Search {
    std::int64_t tag = -1;  ///< offset(), where the tag begins
    std::size_t end = 0;    ///< behind that
    Place place;            ///< of `end`
    bool isInVain = false;  ///< an attribute was not seen: in an encoding of two bytes none is
  };

  ParserHandler& mHandler;
  XML_ParserStruct* mParser;
  std::exception_ptr mRaised;
  mutable Search mSearch;
};

}  // namespace Tarvelon::files
