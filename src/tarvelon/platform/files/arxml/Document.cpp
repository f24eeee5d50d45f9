#include "tarvelon/platform/files/arxml/Document.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>

#include "tarvelon/platform/files/shared/Utf.h"

namespace Tarvelon::files::arxml {

namespace {

constexpr std::string_view kSpaces = " \t\r\n";

bool isSpace(char each) noexcept { return each == ' ' || each == '\t' || each == '\r' || each == '\n'; }

/// Which characters may stand in a name: bit 0 at its beginning, bit 1 behind it.
constexpr std::array<std::uint8_t, 256> makeNameTable() {
  std::array<std::uint8_t, 256> table{};
  for (unsigned each = 0; each < 256; ++each) {
    const bool isLetter = (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z') || each == '_' ||
                          each == ':' || each >= 0x80;
    const bool isMore = (each >= '0' && each <= '9') || each == '-' || each == '.';
    table[each] = static_cast<std::uint8_t>((isLetter ? 3 : 0) | (isMore ? 2 : 0));
  }
  return table;
}
constexpr auto kNameTable = makeNameTable();

struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
};

bool isCharacter(std::uint32_t point) noexcept {
  if (point < 0x20) return point == '\t' || point == '\n' || point == '\r';
  return point < 0xD800 || (point >= 0xE000 && point < 0xFFFE) || (point >= 0x10000 && point < 0x110000);
}

/// The character that a reference stands for. `name` is what stands between "&" and ";". 0 if there is none.
std::uint32_t characterOf(std::string_view name) noexcept {
  if (name == "amp") return '&';
  if (name == "lt") return '<';
  if (name == "gt") return '>';
  if (name == "quot") return '"';
  if (name == "apos") return '\'';
  if (!name.starts_with('#')) return 0;
  const bool isHexadecimal = name.starts_with("#x");
  name.remove_prefix(isHexadecimal ? 2 : 1);
  std::uint32_t point = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), point, isHexadecimal ? 16 : 10);
  if (error != std::errc() || end != name.data() + name.size()) return 0;
  return isCharacter(point) ? point : 0;
}

}  // namespace

/// Finds the elements of a text.
class Scanner {
 public:
  explicit Scanner(Document& document) : mDocument(document), mText(document.mText) {}

  void scan() {
    const std::size_t bad = findBadCharacter(mText);
    if (bad != std::string_view::npos) refuse(bad, "the text has a character that XML does not allow");
    if (mText.starts_with("<?xml") && mText.size() > 5 && isSpace(mText[5])) skipDeclaration();
    skipMisc();
    // In most files an element takes more bytes.
    mDocument.mElements.reserve(mText.size() / kBytesOfAnElement + 1);
    if (!isAt("<") || !isNameStart(mPlace + 1)) refuse(mPlace, "expected the root element");
    openElement();
    while (!mOpen.empty()) scanContent();
    skipMisc();
    if (mPlace != mText.size()) refuse(mPlace, "expected nothing behind the root element");
    finish();
  }

 private:
  [[noreturn]] void refuse(std::size_t offset, std::string text) const {
    throw ParseFault{mDocument.placeOf(static_cast<std::uint32_t>(offset)), std::move(text)};
  }
  bool isAt(std::string_view what) const noexcept { return mText.substr(mPlace).starts_with(what); }
  bool isNameStart(std::size_t place) const noexcept {
    return place < mText.size() && (kNameTable[static_cast<unsigned char>(mText[place])] & 1) != 0;
  }
  void skipSpaces() noexcept {
    while (mPlace < mText.size() && isSpace(mText[mPlace])) ++mPlace;
  }
  std::string_view readName() {
    const std::size_t begin = mPlace;
    if (!isNameStart(mPlace)) refuse(mPlace, "expected a name");
    while (mPlace < mText.size() && (kNameTable[static_cast<unsigned char>(mText[mPlace])] & 2) != 0)
      ++mPlace;
    return mText.substr(begin, mPlace - begin);
  }
  /// Moves behind the next `end`.
  void skipPast(std::string_view end, const char* what) {
    const std::size_t found = mText.find(end, mPlace);
    if (found == std::string_view::npos) refuse(mPlace, std::string(what) + " has no end");
    mPlace = found + end.size();
  }

  /// Whether a text may be the version (0), the encoding (1) or the value of standalone (2).
  static bool isDeclared(std::size_t which, std::string_view text) noexcept {
    if (which == 2) return text == "yes" || text == "no";
    const auto isLetter = [](char each) {
      return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
    };
    if (which == 1 && (text.empty() || !isLetter(text[0]))) return false;
    return std::ranges::all_of(text, [&](char each) {
      return isLetter(each) || (each >= '0' && each <= '9') || each == '.' || each == '_' || each == '-';
    });
  }

  /// The XML declaration: version, encoding and standalone, in this order.
  void skipDeclaration() {
    const std::size_t begin = mPlace;
    const std::size_t end = mText.find("?>");
    if (end == std::string_view::npos) refuse(begin, "the XML declaration has no end");
    mPlace = 5;
    static constexpr std::string_view kNames[] = {"version", "encoding", "standalone"};
    std::size_t next = 0;
    for (;;) {
      const std::size_t before = mPlace;
      skipSpaces();
      if (mPlace == end) break;
      if (mPlace == before) refuse(mPlace, "expected white space in the XML declaration");
      const std::string_view name = readName();
      while (next < std::size(kNames) && kNames[next] != name && next != 0) ++next;
      if (next == std::size(kNames) || kNames[next] != name) refuse(mPlace, "the XML declaration is wrong");
      const auto [valueBegin, valueEnd] = readAttributeValue();
      if (!isDeclared(next, mText.substr(valueBegin, valueEnd - valueBegin)))
        refuse(valueBegin, "the XML declaration is wrong");
      ++next;
    }
    if (next == 0) refuse(begin, "the XML declaration has no version");
    mPlace = end + 2;
  }

  void skipComment() {
    const std::size_t begin = mPlace;
    mPlace += 4;
    skipPast("--", "a comment");
    if (!isAt(">")) refuse(begin, "a comment contains '--'");
    ++mPlace;
  }

  void skipInstruction() {
    const std::size_t begin = mPlace;
    mPlace += 2;
    const std::string_view target = readName();
    if (target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' &&
        (target[2] | 0x20) == 'l')
      refuse(begin, "an XML declaration stands behind the beginning of the file");
    if (!isAt("?>") && (mPlace == mText.size() || !isSpace(mText[mPlace])))
      refuse(begin, "a processing instruction is wrong");
    skipPast("?>", "a processing instruction");
  }

  void skipMisc() {
    for (;;) {
      skipSpaces();
      if (isAt("<!--")) {
        skipComment();
      } else if (isAt("<?")) {
        skipInstruction();
      } else if (isAt("<!DOCTYPE")) {
        refuse(mPlace, "the file has a document type, which is refused; remove it");
      } else {
        return;
      }
    }
  }

  /// Checks the references in a text or an attribute value.
  void checkReferences(std::size_t begin, std::size_t end) const {
    const std::string_view text = mText.substr(begin, end - begin);
    std::size_t place = 0;
    while ((place = text.find('&', place)) != std::string_view::npos) {
      const std::size_t close = text.find(';', place);
      if (close == std::string_view::npos || characterOf(text.substr(place + 1, close - place - 1)) == 0)
        refuse(begin + place, "'&' begins an unknown reference; write '&amp;' for the character itself");
      place = close + 1;
    }
  }

  /// Moves behind `="value"` and returns where the value begins and ends.
  std::pair<std::size_t, std::size_t> readAttributeValue() {
    skipSpaces();
    if (!isAt("=")) refuse(mPlace, "expected '=' behind the name of an attribute");
    ++mPlace;
    skipSpaces();
    if (!isAt("\"") && !isAt("'")) refuse(mPlace, "expected the value of an attribute in quotes");
    const std::size_t begin = mPlace + 1;
    const std::size_t end = mText.find(mText[mPlace], begin);
    if (end == std::string_view::npos) refuse(mPlace, "the value of an attribute has no end");
    const std::size_t angle = mText.substr(begin, end - begin).find('<');
    if (angle != std::string_view::npos)
      refuse(begin + angle, "'<' stands in the value of an attribute; write '&lt;'");
    checkReferences(begin, end);
    mPlace = end + 1;
    return {begin, end};
  }

  /// Reads the attributes of a start tag; returns whether the element is empty: "<A/>".
  bool readAttributes() {
    mAttributes.clear();
    for (;;) {
      const std::size_t before = mPlace;
      skipSpaces();
      if (isAt(">")) {
        ++mPlace;
        return false;
      }
      if (isAt("/>")) {
        mPlace += 2;
        return true;
      }
      if (mPlace == mText.size()) refuse(mPlace, "a tag has no end");
      if (mPlace == before) refuse(mPlace, "expected white space, '>' or '/>' in a tag");
      const std::size_t begin = mPlace;
      const std::string_view name = readName();
      mAttributes.push_back(name);
      if (mAttributes.size() > kMaxAttributes) refuse(begin, "an element has too many attributes");
      if (std::find(mAttributes.begin(), mAttributes.end() - 1, name) != mAttributes.end() - 1)
        refuse(begin, "an attribute stands twice");
      readAttributeValue();
    }
  }

  void openElement() {
    if (mOpen.size() == Document::kMaxDepth) refuse(mPlace, "elements are nested deeper than 1000 levels");
    Element element;
    element.begin = static_cast<std::uint32_t>(mPlace);
    ++mPlace;
    const std::string_view name = readName();
    element.name = numberOf(name);
    element.parent = mOpen.empty() ? 0 : mOpen.back();
    const auto number = static_cast<std::uint32_t>(mDocument.mElements.size());
    const bool isEmpty = isAt(">") ? (++mPlace, false) : readAttributes();
    element.contentBegin = static_cast<std::uint32_t>(mPlace);
    mDocument.mElements.push_back(element);
    mOpen.push_back(number);
    if (isEmpty) closeElement(mPlace);
  }

  void closeElement(std::size_t contentEnd) {
    Element& element = mDocument.mElements[mOpen.back()];
    element.contentEnd = static_cast<std::uint32_t>(contentEnd);
    element.end = static_cast<std::uint32_t>(mPlace);
    element.next = static_cast<std::uint32_t>(mDocument.mElements.size());
    mOpen.pop_back();
  }

  void readEndTag() {
    const std::size_t begin = mPlace;
    mPlace += 2;
    const std::string_view expected = mDocument.nameOf(mOpen.back());
    if (!mText.substr(mPlace).starts_with(expected)) refuseEndTag(begin);
    mPlace += expected.size();
    if (mPlace < mText.size() && mText[mPlace] != '>') {
      skipSpaces();
      if (!isAt(">")) refuseEndTag(begin);
    }
    if (mPlace == mText.size()) refuse(begin, "a tag has no end");
    ++mPlace;
    closeElement(begin);
  }

  [[noreturn]] void refuseEndTag(std::size_t begin) const {
    refuse(begin, "expected the end tag </" + std::string(mDocument.nameOf(mOpen.back())) + ">");
  }

  /// Reads a text and the tag, comment or instruction behind it.
  void scanContent() {
    const std::size_t begin = mPlace;
    const std::size_t angle = mText.find('<', mPlace);
    if (angle == std::string_view::npos)
      refuse(mText.size(), "the file ends inside of <" + std::string(mDocument.nameOf(mOpen.back())) + ">");
    checkText(begin, angle);
    mPlace = angle;
    const char next = mPlace + 1 < mText.size() ? mText[mPlace + 1] : '\0';
    if (next == '/') {
      readEndTag();
    } else if (next == '!') {
      skipMarked();
    } else if (next == '?') {
      skipInstruction();
    } else {
      openElement();
    }
  }

  void skipMarked() {
    if (isAt("<!--")) return skipComment();
    if (!isAt("<![CDATA[")) refuse(mPlace, "expected an element, a comment or a CDATA section");
    skipPast("]]>", "a CDATA section");
  }

  void checkText(std::size_t begin, std::size_t end) const {
    const std::string_view text = mText.substr(begin, end - begin);
    if (std::memchr(text.data(), '&', text.size())) checkReferences(begin, end);
    if (std::memchr(text.data(), ']', text.size())) {
      const std::size_t mark = text.find("]]>");
      if (mark != std::string_view::npos) refuse(begin + mark, "']]>' stands in a text; write ']]&gt;'");
    }
  }

  std::uint32_t numberOf(std::string_view name) {
    const auto [found, isNew] =
        mNumbers.try_emplace(name, static_cast<std::uint32_t>(mDocument.mNames.size()));
    if (isNew) mDocument.mNames.emplace_back(name);
    return found->second;
  }

  void finish() {
    std::vector<Element>& elements = mDocument.mElements;
    if (elements.capacity() - elements.size() > elements.size() / 8) elements.shrink_to_fit();
  }

  static constexpr std::size_t kMaxAttributes = 256;
  static constexpr std::size_t kBytesOfAnElement = 64;

  Document& mDocument;
  std::string_view mText;
  std::size_t mPlace = 0;
  std::vector<std::uint32_t> mOpen;
  std::vector<std::string_view> mAttributes;
  std::unordered_map<std::string_view, std::uint32_t, NameHash> mNumbers;
};

Document::Document(std::string text) : mText(std::move(text)) {
  if (mText.size() >= std::numeric_limits<std::uint32_t>::max())
    throw ParseFault{{}, "the file has 4 GiB or more, which is refused; divide it into several files"};
  Scanner(*this).scan();
}

std::uint32_t Document::find(std::uint32_t element, std::string_view name) const noexcept {
  const std::uint32_t end = mElements[element].next;
  for (std::uint32_t each = element + 1; each < end; each = mElements[each].next) {
    if (nameOf(each) == name) return each;
  }
  return 0;
}

std::uint32_t Document::findPath(std::uint32_t element, std::string_view path) const noexcept {
  while (!path.empty()) {
    const std::size_t slash = std::min(path.find('/'), path.size());
    element = find(element, path.substr(0, slash));
    if (element == 0) return 0;
    path.remove_prefix(std::min(slash + 1, path.size()));
  }
  return element;
}

std::uint32_t Document::attributeOffset(std::uint32_t element, std::string_view name) const noexcept {
  const std::string_view value = attribute(element, name);
  return value.data() ? static_cast<std::uint32_t>(value.data() - mText.data()) : 0;
}

std::string_view Document::attribute(std::uint32_t element, std::string_view name) const noexcept {
  std::string_view tag = startTag(element);
  tag.remove_prefix(1 + nameOf(element).size());
  for (;;) {
    const std::size_t begin = tag.find_first_not_of(kSpaces);
    if (begin == std::string_view::npos || tag[begin] == '>' || tag[begin] == '/') return {};
    tag.remove_prefix(begin);
    const std::size_t nameEnd = tag.find_first_of(" \t\r\n=");
    const std::size_t quote = tag.find_first_of("\"'", nameEnd);
    const std::size_t end = tag.find(tag[quote], quote + 1);
    if (tag.substr(0, nameEnd) == name) return tag.substr(quote + 1, end - quote - 1);
    tag.remove_prefix(end + 1);
  }
}

namespace {

/// The column behind the beginning of a line.
std::uint32_t columnBehind(std::string_view line) noexcept {
  const auto isBegin = [](char each) { return (static_cast<unsigned char>(each) & 0xC0) != 0x80; };
  return static_cast<std::uint32_t>(std::ranges::count_if(line, isBegin)) + 1;
}

}  // namespace

LineAndColumn Document::placeOf(std::uint32_t offset) const noexcept {
  const std::string_view before = text().substr(0, offset);
  const auto line = static_cast<std::uint32_t>(std::ranges::count(before, '\n')) + 1;
  const std::size_t begin = before.rfind('\n');
  return {line, columnBehind(begin == std::string_view::npos ? before : before.substr(begin + 1))};
}

Lines::Lines(const Document& document) : mDocument(document) {
  const std::string_view text = document.text();
  for (std::size_t place = text.find('\n'); place != std::string_view::npos;
       place = text.find('\n', place + 1))
    mBegins.push_back(static_cast<std::uint32_t>(place + 1));
}

LineAndColumn Lines::placeOf(std::uint32_t offset) const noexcept {
  const auto next = std::ranges::upper_bound(mBegins, offset);
  const std::uint32_t begin = next == mBegins.begin() ? 0 : *std::prev(next);
  return {static_cast<std::uint32_t>(next - mBegins.begin()) + 1,
          columnBehind(mDocument.slice(begin, offset))};
}

std::string Document::pathOf(std::uint32_t element) const {
  std::string path;
  for (;; element = mElements[element].parent) {
    if (const std::uint32_t name = find(element, "SHORT-NAME"); name != 0)
      path.insert(0, "/" + std::string(trimmed(inner(name))));
    if (element == 0) return path;
  }
}

std::string_view trimmed(std::string_view text) noexcept {
  const std::size_t begin = text.find_first_not_of(kSpaces);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kSpaces) - begin + 1);
}

std::string withoutStars(std::string_view path) {
  std::string plain(path);
  std::erase(plain, '*');
  return plain;
}

std::string formulaOf(const Document& document, std::uint32_t element) {
  const Element& where = document.element(element);
  std::string text;
  std::uint32_t offset = where.contentBegin;
  for (std::uint32_t each = element + 1; each < where.next; each = document.element(each).next) {
    text += plainText(document.slice(offset, document.element(each).begin));
    const std::string inner = plainText(document.inner(each));
    text += document.nameOf(each).ends_with("-REF") ? inner.substr(inner.rfind('/') + 1) : inner;
    offset = document.element(each).end;
  }
  return text + plainText(document.slice(offset, where.contentEnd));
}

namespace {

/// Appends text; each line end becomes one line feed, whatever the file has.
void appendLines(std::string& plain, std::string_view text) {
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (text[place] != '\r') {
      plain.push_back(text[place]);
    } else if (place + 1 == text.size() || text[place + 1] != '\n') {
      plain.push_back('\n');
    }
  }
}

/// The length of the tag, comment, instruction or CDATA section at the beginning of a text.
std::size_t lengthOfMark(std::string_view text) noexcept {
  if (text.starts_with("<!--")) return text.find("-->", 4) + 3;
  if (text.starts_with("<?")) return text.find("?>", 2) + 2;
  if (text.starts_with("<![CDATA[")) return text.find("]]>", 9) + 3;
  // ">" may stand in the value of an attribute.
  std::size_t place = 1;
  for (char quote = '\0'; place < text.size() && (quote != '\0' || text[place] != '>'); ++place) {
    if (quote == '\0' && (text[place] == '"' || text[place] == '\'')) {
      quote = text[place];
    } else if (text[place] == quote) {
      quote = '\0';
    }
  }
  return place + 1;
}

}  // namespace

std::string plainText(std::string_view text) {
  constexpr std::size_t kCdata = 9;
  std::string plain;
  plain.reserve(text.size());
  while (!text.empty()) {
    const std::size_t mark = std::min(text.find_first_of("<&"), text.size());
    appendLines(plain, text.substr(0, mark));
    text.remove_prefix(mark);
    if (text.empty()) break;
    std::size_t length = 0;
    if (text.front() == '&') {
      length = text.find(';') + 1;
      appendUtf8(plain, characterOf(text.substr(1, length - 2)));
    } else {
      length = lengthOfMark(text);
      if (text.starts_with("<![CDATA[")) appendLines(plain, text.substr(kCdata, length - kCdata - 3));
    }
    text.remove_prefix(std::min(length, text.size()));
  }
  return plain;
}

std::string_view valueOf(std::string_view text, std::string& plain) {
  if (text.find_first_of("&<\r") == std::string_view::npos) return trimmed(text);
  plain = plainText(text);
  return trimmed(plain);
}

}  // namespace Tarvelon::files::arxml
