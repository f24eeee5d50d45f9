// How the bytes of ARXML files become text, and text becomes bytes again.

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/platform/files/arxml/Encoding.h"

namespace {

using Tarvelon::files::arxml::Decoded;
using Tarvelon::files::arxml::decoded;
using Tarvelon::files::arxml::encoded;
using Tarvelon::files::arxml::Encoding;
using Tarvelon::files::arxml::findBadCharacter;
using Kind = Encoding::Kind;
using namespace std::string_literals;

constexpr std::size_t kNone = std::string_view::npos;

/// Characters of each length in UTF-8 and UTF-16, with the first and the last ones.
const std::string kText =
    "<A>a\x7F\xC2\x80\xC3\xA4\xDF\xBF\xE0\xA0\x80\xE2\x82\xAC\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD"
    "\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF</A>\r\n";

/// ASCII text in UTF-16.
std::string wide(std::string_view ascii, bool isBig) {
  std::string bytes;
  for (const char each : ascii) {
    if (isBig) bytes.push_back('\0');
    bytes.push_back(each);
    if (!isBig) bytes.push_back('\0');
  }
  return bytes;
}

std::string declared(std::string_view encoding) {
  return "<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?>";
}

/// Expects that the bytes are this text in this encoding, and that the text becomes the same bytes again.
void expectBothWays(const std::string& bytes, const std::string& text, Kind kind, bool hasMark) {
  const Decoded found = decoded(bytes);
  EXPECT_EQ(found.fault, "");
  EXPECT_EQ(found.text, text);
  EXPECT_EQ(found.encoding.kind, kind);
  EXPECT_EQ(found.encoding.hasMark, hasMark);
  EXPECT_EQ(encoded(text, {kind, hasMark}), bytes);
}

// Which encoding a file has

TEST(ArxmlEncoding, IsUtf8WithoutMarkAndDeclaration) {
  expectBothWays("", "", Kind::Utf8, false);
  expectBothWays(kText, kText, Kind::Utf8, false);
  expectBothWays("<?xml version=\"1.0\"?><A/>", "<?xml version=\"1.0\"?><A/>", Kind::Utf8, false);
}

TEST(ArxmlEncoding, KeepsTheMarkOfUtf8) {
  expectBothWays("\xEF\xBB\xBF" + kText, kText, Kind::Utf8, true);
  expectBothWays("\xEF\xBB\xBF", "", Kind::Utf8, true);
}

TEST(ArxmlEncoding, TakesOnlyOneMarkAway) {
  expectBothWays("\xEF\xBB\xBF\xEF\xBB\xBF<A/>", "\xEF\xBB\xBF<A/>", Kind::Utf8, true);
  expectBothWays("\xFF\xFE\xFF\xFE", "\xEF\xBB\xBF", Kind::Utf16Little, true);
}

TEST(ArxmlEncoding, IsUtf16ByItsMark) {
  expectBothWays("\xFF\xFE"s + wide("a\n", false), "a\n", Kind::Utf16Little, true);
  expectBothWays("\xFE\xFF"s + wide("a\n", true), "a\n", Kind::Utf16Big, true);
  expectBothWays("\xFF\xFE", "", Kind::Utf16Little, true);
  expectBothWays("\xFE\xFF", "", Kind::Utf16Big, true);
}

TEST(ArxmlEncoding, IsUtf16WithoutMarkIfItBeginsWithAWideBracket) {
  expectBothWays(wide("<A/>", false), "<A/>", Kind::Utf16Little, false);
  expectBothWays(wide("<A/>", true), "<A/>", Kind::Utf16Big, false);
}

TEST(ArxmlEncoding, OfUtf16HasCharactersOfOneAndOfTwoUnits) {
  expectBothWays("\xFF\xFE\xE4\x00\xAC\x20\x3D\xD8\x00\xDE\xFF\xDB\xFF\xDF"s,
                 "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF", Kind::Utf16Little, true);
  expectBothWays("\xFE\xFF\x00\xE4\x20\xAC\xD8\x3D\xDE\x00\xDB\xFF\xDF\xFF"s,
                 "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF", Kind::Utf16Big, true);
}

TEST(ArxmlEncoding, BringsEachCharacterBack) {
  for (const Kind kind : {Kind::Utf8, Kind::Utf16Little, Kind::Utf16Big}) {
    for (const bool hasMark : {false, true}) {
      const Decoded again = decoded(encoded(kText, {kind, hasMark}));
      EXPECT_EQ(again.fault, "");
      EXPECT_EQ(again.text, kText);
      EXPECT_EQ(again.encoding.kind, kind);
      EXPECT_EQ(again.encoding.hasMark, hasMark);
    }
  }
}

TEST(ArxmlEncoding, ObeysTheMarkRatherThanTheDeclaration) {
  const std::string text = declared("ISO-8859-1") + "<A>\xC3\xA4</A>";
  expectBothWays("\xEF\xBB\xBF" + text, text, Kind::Utf8, true);
  const std::string ascii = declared("UTF-8") + "<A/>";
  expectBothWays("\xFF\xFE" + wide(ascii, false), ascii, Kind::Utf16Little, true);
}

// ISO-8859-1

TEST(ArxmlEncoding, IsLatin1ByItsDeclaration) {
  for (const char* name : {"ISO-8859-1", "iso-8859-1", "Iso-8859-1", "latin1", "LATIN1"})
    expectBothWays(declared(name) + "<A>\xE4\xFF\x80</A>", declared(name) + "<A>\xC3\xA4\xC3\xBF\xC2\x80</A>",
                   Kind::Latin1, false);
}

TEST(ArxmlEncoding, FindsTheDeclaredOneInEitherQuotes) {
  EXPECT_EQ(decoded("<?xml version='1.0' encoding = 'ISO-8859-1'?><A/>").encoding.kind, Kind::Latin1);
  EXPECT_EQ(decoded("<?xml version='1.0'\nencoding\n=\n\"ISO-8859-1\"?><A/>").encoding.kind, Kind::Latin1);
}

TEST(ArxmlEncoding, OfLatin1BringsEachByteBack) {
  std::string bytes = declared("ISO-8859-1");
  for (int each = 0; each < 256; ++each) bytes.push_back(static_cast<char>(each));
  const Decoded found = decoded(bytes);
  EXPECT_EQ(found.text.size(), bytes.size() + 128);
  EXPECT_EQ(encoded(found.text, found.encoding), bytes);
}

TEST(ArxmlEncoding, OfLatin1WritesOtherCharactersAsReferences) {
  EXPECT_EQ(encoded("\xC3\xBF\xC4\x80\xE2\x82\xAC\xF0\x9F\x98\x80", {Kind::Latin1, false}),
            "\xFF&#256;&#8364;&#128512;");
}

TEST(ArxmlEncoding, IsLookedForInTheDeclarationAlone) {
  for (const char* text : {"<A encoding=\"ISO-8859-1\"/>", "<?xml version='1.0'?><A encoding='ISO-8859-1'/>",
                           "<!-- <?xml version='1.0' encoding='ISO-8859-1'?> --><A/>"}) {
    EXPECT_EQ(decoded(text).encoding.kind, Kind::Utf8) << text;
    EXPECT_EQ(decoded(text).fault, "") << text;
  }
}

TEST(ArxmlEncoding, IsNotLookedForInAnInstructionWhoseNameBeginsWithXml) {
  const std::string text = "<?xml-model href=\"a\" encoding=\"ISO-8859-1\"?><A>\xC3\xA4</A>";
  expectBothWays(text, text, Kind::Utf8, false);
}

// What is refused

TEST(ArxmlEncoding, AcceptsTheNamesOfUtf8) {
  for (const char* name : {"UTF-8", "utf-8", "Utf8"}) {
    EXPECT_EQ(decoded(declared(name) + kText).fault, "") << name;
    EXPECT_EQ(decoded(declared(name) + kText).encoding.kind, Kind::Utf8) << name;
  }
}

TEST(ArxmlEncoding, RefusesOthersByName) {
  EXPECT_EQ(decoded(declared("windows-1252") + "<A/>").fault,
            "the encoding WINDOWS-1252 is not supported; save the file in UTF-8");
  for (const char* name : {"ISO-8859-15", "ISO-8859-10", "UTF-32", "UTF-7", "Shift_JIS", "x"})
    EXPECT_NE(decoded(declared(name) + "<A/>").fault, "") << name;
}

TEST(ArxmlEncoding, RefusesAnOddNumberOfBytesInUtf16) {
  const std::string text = "the file has an odd number of bytes, which UTF-16 does not allow";
  EXPECT_EQ(decoded("\xFF\xFE<"s).fault, text);
  EXPECT_EQ(decoded("\xFF\xFE"s + wide("<A/>", false) + " ").fault, text);
  EXPECT_EQ(decoded("\xFE\xFF"s + wide("<A/>", true) + '\0').fault, text);
  EXPECT_EQ(decoded(wide("<A/>", true) + "x").fault, text);
}

TEST(ArxmlEncoding, RefusesSurrogatesThatStandAlone) {
  const std::string text = "a surrogate of UTF-16 stands alone";
  EXPECT_EQ(decoded("\xFE\xFF\xD8\x3D"s).fault, text);
  EXPECT_EQ(decoded("\xFE\xFF\xDE\x00"s).fault, text);
  EXPECT_EQ(decoded("\xFE\xFF\xD8\x3D\x00\x41"s).fault, text);
  EXPECT_EQ(decoded("\xFE\xFF\xD8\x3D\xD8\x3D\xDE\x00"s).fault, text);
  EXPECT_EQ(decoded("\xFE\xFF\xD8\x3D\xDE\x00\xDE\x00"s).fault, text);
  EXPECT_EQ(decoded("\xFF\xFE\x3D\xD8\x41\x00"s).fault, text);
  EXPECT_EQ(decoded("\xFE\xFF\xDE\x00\xD8\x3D"s).fault, text);
}

// Characters that are not allowed

TEST(ArxmlBadCharacter, IsNotFoundInGoodText) {
  EXPECT_EQ(findBadCharacter(""), kNone);
  EXPECT_EQ(findBadCharacter(kText), kNone);
  EXPECT_EQ(findBadCharacter("\t\n\r ~\x7F"), kNone);
}

TEST(ArxmlBadCharacter, IsEachControlCharacterButThree) {
  for (int each = 0; each < 0x20; ++each) {
    const bool isAllowed = each == '\t' || each == '\n' || each == '\r';
    EXPECT_EQ(findBadCharacter("abc" + std::string(1, static_cast<char>(each)) + "defgh"),
              isAllowed ? kNone : 3U)
        << each;
  }
}

TEST(ArxmlBadCharacter, IsALongerFormThanNeeded) {
  for (const char* form : {"\xC0\x80", "\xC0\xAF", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF",
                           "\xF0\x80\x80\x80", "\xF0\x8F\xBF\xBF"})
    EXPECT_EQ(findBadCharacter("a"s + form + "b"), 1U) << form;
}

TEST(ArxmlBadCharacter, IsASurrogate) {
  for (const char* form :
       {"\xED\xA0\x80", "\xED\xAF\xBF", "\xED\xB0\x80", "\xED\xBF\xBF", "\xED\xA0\xBD\xED\xB8\x80"})
    EXPECT_EQ(findBadCharacter("a"s + form), 1U) << form;
}

TEST(ArxmlBadCharacter, IsOneBehindTheLastOfUnicode) {
  for (const char* form : {"\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"})
    EXPECT_EQ(findBadCharacter("a"s + form), 1U) << form;
}

TEST(ArxmlBadCharacter, IsOneOfTheTwoNonCharactersOfXml) {
  EXPECT_EQ(findBadCharacter("a\xEF\xBF\xBE"), 1U);
  EXPECT_EQ(findBadCharacter("a\xEF\xBF\xBF"), 1U);
  // Those of the other planes are allowed.
  EXPECT_EQ(findBadCharacter("a\xF0\x9F\xBF\xBE\xF0\x9F\xBF\xBF"), kNone);
  EXPECT_EQ(findBadCharacter("a\xEF\xB7\x90"), kNone);
}

TEST(ArxmlBadCharacter, IsAnUnfinishedOne) {
  for (const char* form : {"\x80", "\xBF", "\xC3", "\xE2\x82", "\xE2", "\xF0\x9F\x98", "\xF0\x9F", "\xF0"}) {
    EXPECT_EQ(findBadCharacter("a"s + form), 1U) << form;
    EXPECT_EQ(findBadCharacter("a"s + form + "bcdefghijk"), 1U) << form;
    EXPECT_EQ(findBadCharacter("a"s + form + "\xC3\xA4"), 1U) << form;
  }
}

TEST(ArxmlBadCharacter, IsFoundAtEachPlaceOfABlock) {
  for (std::size_t size = 1; size < 40; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      std::string text(size, 'x');
      text[place] = '\x01';
      EXPECT_EQ(findBadCharacter(text), place);
      text[place] = '\xFF';
      EXPECT_EQ(findBadCharacter(text), place);
    }
  }
}

TEST(ArxmlBadCharacter, DoesNotLieBehindTheEndOfTheText) {
  const std::string_view text = "abcdefg\xE2\x82\xAC";
  EXPECT_EQ(findBadCharacter(text.substr(0, 9)), 7U);
  EXPECT_EQ(findBadCharacter(text.substr(0, 8)), 7U);
  EXPECT_EQ(findBadCharacter(text.substr(0, 7)), kNone);
}

/// The same, one byte after the other: the value of a character is computed and looked at.
std::size_t modelOfBadCharacter(std::string_view text) {
  std::size_t place = 0;
  while (place < text.size()) {
    const auto lead = static_cast<unsigned char>(text[place]);
    std::size_t length = 1;
    if (lead >= 0x80 && lead < 0xC0) return place;
    if (lead >= 0xC0) length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 0;
    if (length == 0 || place + length > text.size()) return place;
    std::uint32_t point = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t each = 1; each < length; ++each) {
      const auto byte = static_cast<unsigned char>(text[place + each]);
      if (byte < 0x80 || byte > 0xBF) return place;
      point = point * 64 + (byte - 0x80U);
    }
    static constexpr std::uint32_t kFirst[] = {0, 0, 0x80, 0x800, 0x10000};
    if (point < kFirst[length] || point > 0x10FFFF) return place;
    if (point < 0x20 && point != 9 && point != 10 && point != 13) return place;
    if ((point >= 0xD800 && point <= 0xDFFF) || point == 0xFFFE || point == 0xFFFF) return place;
    place += length;
  }
  return kNone;
}

TEST(ArxmlBadCharacter, IsTheOneThatASimpleModelFinds) {
  static const std::vector<std::string> pieces = {"plain text",
                                                  "x",
                                                  "\t",
                                                  "\r\n",
                                                  "\x7F",
                                                  "\xC2\x80",
                                                  "\xC3\xA4",
                                                  "\xDF\xBF",
                                                  "\xE0\xA0\x80",
                                                  "\xE2\x82\xAC",
                                                  "\xED\x9F\xBF",
                                                  "\xEE\x80\x80",
                                                  "\xEF\xBF\xBD",
                                                  "\xF0\x90\x80\x80",
                                                  "\xF0\x9F\x98\x80",
                                                  "\xF4\x8F\xBF\xBF"};
  std::mt19937 random(42);
  int good = 0;
  for (int count = 0; count < 50000 && !HasFailure(); ++count) {
    std::string text;
    for (std::size_t more = random() % 12; more > 0; --more) text += pieces[random() % pieces.size()];
    for (std::size_t more = random() % 3; more > 0 && !text.empty(); --more)
      text[random() % text.size()] = static_cast<char>(random() % 256);
    const std::size_t expected = modelOfBadCharacter(text);
    EXPECT_EQ(findBadCharacter(text), expected) << testing::PrintToString(text);
    good += expected == kNone ? 1 : 0;
  }
  EXPECT_GT(good, 10000);
  EXPECT_LT(good, 40000);
}

TEST(ArxmlBadCharacter, IsTheOneThatASimpleModelFindsInRandomBytes) {
  std::mt19937 random(43);
  for (int count = 0; count < 50000 && !HasFailure(); ++count) {
    std::string text(random() % 8, 'x');
    // Mostly bytes that may follow one another.
    for (std::size_t more = random() % 6; more > 0; --more)
      text.push_back(static_cast<char>(random() % 4 == 0 ? random() % 256 : 0x80 + random() % 128));
    EXPECT_EQ(findBadCharacter(text), modelOfBadCharacter(text)) << testing::PrintToString(text);
  }
}

TEST(ArxmlBadCharacter, IsTheOneThatASimpleModelFindsInEachBeginOfACharacter) {
  for (int first = 0x80; first < 256 && !HasFailure(); ++first) {
    for (int second = 0; second < 256; ++second) {
      for (const char* rest : {"", "\x80", "\xBD", "\xBE", "\xBF", "\x80\x80", "\xBF\xBF", "a"}) {
        const std::string text = "abcdefgh"s + static_cast<char>(first) + static_cast<char>(second) + rest;
        EXPECT_EQ(findBadCharacter(text), modelOfBadCharacter(text)) << testing::PrintToString(text);
      }
    }
  }
}

// Any characters, both ways

TEST(ArxmlEncoding, BringsRandomTextBack) {
  std::mt19937 random(44);
  for (int count = 0; count < 2000 && !HasFailure(); ++count) {
    std::u32string points = U"<";
    for (std::size_t more = random() % 20; more > 0; --more) {
      char32_t point = static_cast<char32_t>(random() % (random() % 2 == 0 ? 0x300 : 0x110000));
      if (point < 0x20 || (point >= 0xD800 && point < 0xE000)) point = U'x';
      points.push_back(point);
    }
    // Big-endian UTF-16 written here, without the code that is tested.
    std::string bytes;
    const auto put = [&bytes](std::uint32_t unit) {
      bytes.push_back(static_cast<char>(unit / 256));
      bytes.push_back(static_cast<char>(unit % 256));
    };
    for (const char32_t point : points) {
      if (point >= 0x10000) put(0xD800 + (point - 0x10000) / 0x400);
      put(point >= 0x10000 ? 0xDC00 + (point - 0x10000) % 0x400 : point);
    }
    const Decoded found = decoded(bytes);
    EXPECT_EQ(found.fault, "");
    EXPECT_EQ(encoded(found.text, found.encoding), bytes);
    const std::string little = encoded(found.text, {Kind::Utf16Little, count % 2 == 0});
    EXPECT_EQ(decoded(little).text, found.text);
    if (found.text.find("\xEF\xBF\xBE") == kNone && found.text.find("\xEF\xBF\xBF") == kNone) {
      EXPECT_EQ(findBadCharacter(found.text), kNone);
    }
  }
}

}  // namespace
