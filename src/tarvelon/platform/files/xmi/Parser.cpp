#include "tarvelon/platform/files/xmi/Parser.h"

#include <cstddef>
#include <cstring>
#include <expat.h>
#include <new>
#include <utility>

#include "tarvelon/boundary/Export.h"

namespace Tarvelon::files {

namespace {

constexpr char kSeparator = '\n';

// Set when an allocation fails. The parser does not check all of its allocations and might continue with a
// wrong name.
TARVELON_THREAD_LOCAL bool tHasFailed = false;

/// The size of a block is stored in front of it; reallocate() needs it.
constexpr std::size_t kHeader = alignof(std::max_align_t);

void* allocate(std::size_t size) {
  try {
    auto* block = static_cast<char*>(::operator new(size + kHeader));
    std::memcpy(block, &size, sizeof(size));
    return block + kHeader;
  } catch (const std::bad_alloc&) {
    tHasFailed = true;
    return nullptr;
  }
}

void release(void* storage) {
  if (storage) ::operator delete(static_cast<char*>(storage) - kHeader);
}

void* reallocate(void* storage, std::size_t size) {
  void* moved = allocate(size);
  if (!moved || !storage) return moved;
  std::size_t old = 0;
  std::memcpy(&old, static_cast<char*>(storage) - kHeader, sizeof(old));
  std::memcpy(moved, storage, old < size ? old : size);
  release(storage);
  return moved;
}

bool isBlank(char character) noexcept {
  return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

/// The offset of an attribute in the text of a start tag, 0 if it is not found. The search begins after the
/// first character, or at an attribute if `begin` is not 0.
std::size_t findAttribute(std::string_view tag, QualifiedName attribute, std::size_t begin) noexcept {
  char quote = 0;
  for (std::size_t place = begin == 0 ? 1 : begin; place < tag.size(); ++place) {
    if (quote != 0 || tag[place] == '"' || tag[place] == '\'') {
      if (quote == 0) {
        quote = tag[place];
      } else if (quote == tag[place]) {
        quote = 0;
      }
      continue;
    }
    if (tag[place] == '>') return 0;
    if (!isBlank(tag[place - 1]) || isBlank(tag[place])) continue;
    std::string_view name = tag.substr(place, tag.find_first_of("= \t\r\n", place) - place);
    const auto colon = name.find(':');
    if ((colon != std::string_view::npos) == attribute.space.empty()) continue;
    if (name.substr(colon == std::string_view::npos ? 0 : colon + 1) == attribute.local) return place;
  }
  return 0;
}

/// The position after a text that begins at `place`.
Place moved(Place place, std::string_view text) noexcept {
  for (const char character : text) {
    const bool isInside = (character & 0xC0) == 0x80;
    if (character == '\n') {
      place = {place.line + 1, 1};
    } else if (!isInside) {
      ++place.column;
    }
  }
  return place;
}

}  // namespace

// No exception may pass through the parser, which is written in C.
template <class Action>
void Parser::guarded(Action action) noexcept {
  if (mRaised || tHasFailed) return;
  try {
    action();
  } catch (...) {
    mRaised = std::current_exception();
    XML_StopParser(mParser, XML_FALSE);
  }
}

struct Parser::Callbacks {
  static Parser& of(void* data) noexcept { return *static_cast<Parser*>(data); }
  static std::string_view viewOf(const XML_Char* text) noexcept { return text ? text : std::string_view(); }

  static void start(void* data, const XML_Char* name, const XML_Char** attributes) {
    of(data).guarded([&] { of(data).mHandler.startElement(split(name), attributes); });
  }
  static void end(void* data, const XML_Char* /*name*/) {
    of(data).guarded([&] { of(data).mHandler.endElement(); });
  }
  static void characters(void* data, const XML_Char* text, int length) {
    of(data).guarded([&] { of(data).mHandler.characters({text, static_cast<std::size_t>(length)}); });
  }
  static void startNamespace(void* data, const XML_Char* prefix, const XML_Char* uri) {
    of(data).guarded([&] { of(data).mHandler.startNamespace(viewOf(prefix), viewOf(uri)); });
  }
  static void endNamespace(void* data, const XML_Char* prefix) {
    of(data).guarded([&] { of(data).mHandler.endNamespace(viewOf(prefix)); });
  }
  static void documentType(void* data, const XML_Char* /*name*/, const XML_Char* /*system*/,
                           const XML_Char* /*id*/, int /*hasSubset*/) {
    of(data).guarded([&] { of(data).mHandler.documentType(); });
  }
};

Parser::Parser(ParserHandler& handler) : mHandler(handler) {
  const XML_Memory_Handling_Suite suite{&allocate, &reallocate, &release};
  const XML_Char separator[] = {kSeparator, 0};
  mParser = XML_ParserCreate_MM(nullptr, &suite, separator);
  if (!mParser) throw std::bad_alloc();
  XML_SetUserData(mParser, this);
  XML_SetElementHandler(mParser, &Callbacks::start, &Callbacks::end);
  XML_SetCharacterDataHandler(mParser, &Callbacks::characters);
  XML_SetNamespaceDeclHandler(mParser, &Callbacks::startNamespace, &Callbacks::endNamespace);
  XML_SetStartDoctypeDeclHandler(mParser, &Callbacks::documentType);
}

Parser::~Parser() { XML_ParserFree(mParser); }

char* Parser::buffer(std::size_t room) {
  void* storage = XML_GetBuffer(mParser, static_cast<int>(room));
  if (!storage) throw std::bad_alloc();
  return static_cast<char*>(storage);
}

bool Parser::parse(std::size_t count, bool isLast) {
  tHasFailed = false;
  const XML_Status status = XML_ParseBuffer(mParser, static_cast<int>(count), isLast ? XML_TRUE : XML_FALSE);
  if (mRaised) std::rethrow_exception(std::exchange(mRaised, nullptr));
  if (tHasFailed || XML_GetErrorCode(mParser) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  return status == XML_STATUS_OK;
}

std::string Parser::fault() const { return XML_ErrorString(XML_GetErrorCode(mParser)); }

std::int64_t Parser::offset() const noexcept { return XML_GetCurrentByteIndex(mParser); }

Place Parser::place() const noexcept {
  return {static_cast<std::uint32_t>(XML_GetCurrentLineNumber(mParser)),
          static_cast<std::uint32_t>(XML_GetCurrentColumnNumber(mParser)) + 1};
}

Place Parser::placeOf(QualifiedName attribute) const noexcept {
  int offset = 0;
  int size = 0;
  const char* context = XML_GetInputContext(mParser, &offset, &size);
  if (!context || offset >= size) return place();
  const std::string_view tag(context + offset, static_cast<std::size_t>(size - offset));
  if (mSearch.tag != this->offset()) mSearch = {this->offset(), 0, place(), false};
  if (mSearch.hasFailed) return place();
  std::size_t found = findAttribute(tag, attribute, mSearch.end);
  if (found == 0 && mSearch.end != 0) {
    mSearch = {mSearch.tag, 0, place(), false};
    found = findAttribute(tag, attribute, 0);
  }
  mSearch.hasFailed = found == 0;
  if (mSearch.hasFailed) return place();
  mSearch.place = moved(mSearch.place, tag.substr(mSearch.end, found - mSearch.end));
  mSearch.end = found;
  return mSearch.place;
}

QualifiedName Parser::split(const char* name) noexcept {
  const char* separator = std::strchr(name, kSeparator);
  if (!separator) return {{}, name};
  return {{name, static_cast<std::size_t>(separator - name)}, separator + 1};
}

}  // namespace Tarvelon::files
