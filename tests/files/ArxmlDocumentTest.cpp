// Which texts are XML, where their elements are, and how their lines are laid out.

#include <algorithm>
#include <cstdint>
#include <expat.h>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/platform/files/arxml/Document.h"
#include "tarvelon/platform/files/arxml/Layout.h"

namespace {

using Tarvelon::files::arxml::Document;
using Tarvelon::files::arxml::Element;
using Tarvelon::files::arxml::formulaOf;
using Tarvelon::files::arxml::indentOf;
using Tarvelon::files::arxml::Layout;
using Tarvelon::files::arxml::ParseFault;
using Tarvelon::files::arxml::plainText;
using Tarvelon::files::arxml::trimmed;
using Tarvelon::files::arxml::withoutStars;

/// Why a text is refused: "2:5 what it is". "accepted" if it is not.
std::string faultOf(const std::string& text) {
  try {
    const Document document(text);
  } catch (const ParseFault& fault) {
    return std::to_string(fault.place.line) + ":" + std::to_string(fault.place.column) + " " + fault.text;
  }
  return "accepted";
}

std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  for (std::size_t each = 0; each < count; ++each) all += text;
  return all;
}

// The root element

TEST(ArxmlDocument, NeedsARootElement) {
  EXPECT_EQ(faultOf(""), "1:1 expected the root element");
  EXPECT_EQ(faultOf(" \n "), "2:2 expected the root element");
  EXPECT_EQ(faultOf("text"), "1:1 expected the root element");
  EXPECT_EQ(faultOf("<"), "1:1 expected the root element");
  EXPECT_EQ(faultOf("</A>"), "1:1 expected the root element");
  EXPECT_EQ(faultOf("<!-- no more -->\n"), "2:1 expected the root element");
  EXPECT_EQ(faultOf("<![CDATA[]]><A/>"), "1:1 expected the root element");
}

TEST(ArxmlDocument, HasOneRootElement) {
  EXPECT_EQ(faultOf("<A/>\n<B/>"), "2:1 expected nothing behind the root element");
  EXPECT_EQ(faultOf("<A></A>\n text"), "2:2 expected nothing behind the root element");
  EXPECT_EQ(faultOf("<A/><![CDATA[]]>"), "1:5 expected nothing behind the root element");
}

TEST(ArxmlDocument, MayHaveCommentsAndInstructionsAroundTheRoot) {
  EXPECT_EQ(faultOf("<!-- a -->\n<?b c?>\n<A/>\n<!-- d --><?e?>\n"), "accepted");
}

TEST(ArxmlDocument, RefusesDocumentTypes) {
  EXPECT_EQ(faultOf("<?xml version=\"1.0\"?>\n<!DOCTYPE A>\n<A/>"),
            "2:1 the file has a document type, which is refused; remove it");
}

// The XML declaration

TEST(ArxmlDocument, AcceptsDeclarations) {
  for (const char* declaration : {"<?xml version=\"1.0\"?>", "<?xml version='1.0' encoding='UTF-8'?>",
                                  "<?xml  version = \"1.0\"\n encoding=\"x\"\tstandalone=\"no\"  ?>",
                                  "<?xml version=\"1.0\" standalone=\"yes\"?>", "<?xml version=\"1.1\"?>"}) {
    EXPECT_EQ(faultOf(std::string(declaration) + "<A/>"), "accepted") << declaration;
  }
}

TEST(ArxmlDocument, RefusesADeclarationBehindTheBeginning) {
  EXPECT_EQ(faultOf("\n<?xml version=\"1.0\"?><A/>"),
            "2:1 an XML declaration stands behind the beginning of the file");
  EXPECT_EQ(faultOf("<A><?XmL?></A>"), "1:4 an XML declaration stands behind the beginning of the file");
}

TEST(ArxmlDocument, RefusesADeclarationWithoutVersion) {
  EXPECT_EQ(faultOf("<?xml ?><A/>"), "1:1 the XML declaration has no version");
  EXPECT_EQ(faultOf("<?xml encoding=\"UTF-8\"?><A/>"), "1:15 the XML declaration is wrong");
}

TEST(ArxmlDocument, RefusesAWrongDeclaration) {
  EXPECT_EQ(faultOf("<?xml version=\"1.0\"><A/>"), "1:1 the XML declaration has no end");
  EXPECT_EQ(faultOf("<?xml version=\"1.0\"encoding=\"UTF-8\"?><A/>"),
            "1:20 expected white space in the XML declaration");
  EXPECT_EQ(faultOf("<?xml version=\"1.0\" standalone=\"no\" encoding=\"UTF-8\"?><A/>"),
            "1:45 the XML declaration is wrong");
  EXPECT_EQ(faultOf("<?xml version=\"1.0\" version=\"1.0\"?><A/>"), "1:28 the XML declaration is wrong");
  EXPECT_EQ(faultOf("<?xml version=\"1.0\" color=\"red\"?><A/>"), "1:26 the XML declaration is wrong");
  EXPECT_EQ(faultOf("<?xml version=1.0?><A/>"), "1:15 expected the value of an attribute in quotes");
}

// Tags

TEST(ArxmlDocument, NamesTheElementInWhichTheFileEnds) {
  EXPECT_EQ(faultOf("<A>"), "1:4 the file ends inside of <A>");
  EXPECT_EQ(faultOf("<A>\n  <B>text\n"), "3:1 the file ends inside of <B>");
  EXPECT_EQ(faultOf("<A><B/>"), "1:8 the file ends inside of <A>");
}

TEST(ArxmlDocument, RefusesTagsWithoutEnd) {
  EXPECT_EQ(faultOf("<A"), "1:3 a tag has no end");
  EXPECT_EQ(faultOf("<A B=\"1\""), "1:9 a tag has no end");
  EXPECT_EQ(faultOf("<A/"), "1:3 expected white space, '>' or '/>' in a tag");
  EXPECT_EQ(faultOf("<A>\n</A"), "2:1 a tag has no end");
  EXPECT_EQ(faultOf("<A>\n</A "), "2:1 expected the end tag </A>");
  EXPECT_EQ(faultOf("<A><"), "1:5 expected a name");
}

TEST(ArxmlDocument, RefusesTheEndTagOfAnotherElement) {
  EXPECT_EQ(faultOf("<A>\n  <B></A>"), "2:6 expected the end tag </B>");
  EXPECT_EQ(faultOf("<A></AB>"), "1:4 expected the end tag </A>");
  EXPECT_EQ(faultOf("<AB></A>"), "1:5 expected the end tag </AB>");
  EXPECT_EQ(faultOf("<A></a>"), "1:4 expected the end tag </A>");
  EXPECT_EQ(faultOf("<A></ A>"), "1:4 expected the end tag </A>");
  EXPECT_EQ(faultOf("<A></A B=\"1\">"), "1:4 expected the end tag </A>");
  EXPECT_EQ(faultOf("<A></>"), "1:4 expected the end tag </A>");
}

TEST(ArxmlDocument, RefusesWhatIsNoName) {
  EXPECT_EQ(faultOf("<A><1/></A>"), "1:5 expected a name");
  EXPECT_EQ(faultOf("<A>< B/></A>"), "1:5 expected a name");
  EXPECT_EQ(faultOf("<A><-B/></A>"), "1:5 expected a name");
  EXPECT_EQ(faultOf("<A 1=\"1\"/>"), "1:4 expected a name");
  EXPECT_EQ(faultOf("<A+/>"), "1:3 expected white space, '>' or '/>' in a tag");
  EXPECT_EQ(faultOf("<A / >"), "1:4 expected a name");
}

TEST(ArxmlDocument, AcceptsNamesWithEachCharacterOfAName) {
  const Document document("<_a:b-c.9\xC3\xA4 :='1'/>");
  EXPECT_EQ(document.nameOf(0), "_a:b-c.9\xC3\xA4");
  EXPECT_EQ(document.attribute(0, ":"), "1");
}

TEST(ArxmlDocument, AcceptsWhiteSpaceInTags) {
  EXPECT_EQ(faultOf("<A \t\r\n B \n= \t'1'\n><C /></A \n>"), "accepted");
}

// Attributes

TEST(ArxmlDocument, RefusesAttributesWithoutValue) {
  EXPECT_EQ(faultOf("<A B>"), "1:5 expected '=' behind the name of an attribute");
  EXPECT_EQ(faultOf("<A B C=\"1\">"), "1:6 expected '=' behind the name of an attribute");
  EXPECT_EQ(faultOf("<A B=>"), "1:6 expected the value of an attribute in quotes");
  EXPECT_EQ(faultOf("<A B=1>"), "1:6 expected the value of an attribute in quotes");
  EXPECT_EQ(faultOf("<A\n B=\"1></A>"), "2:4 the value of an attribute has no end");
  EXPECT_EQ(faultOf("<A B=\"1'/>"), "1:6 the value of an attribute has no end");
}

TEST(ArxmlDocument, RefusesAttributesWithoutSpaceBetween) {
  EXPECT_EQ(faultOf("<A B=\"1\"C=\"2\"/>"), "1:9 expected white space, '>' or '/>' in a tag");
}

TEST(ArxmlDocument, RefusesAnAttributeThatStandsTwice) {
  EXPECT_EQ(faultOf("<A B=\"1\"\n C=\"2\" B=\"1\"/>"), "2:8 an attribute stands twice");
}

TEST(ArxmlDocument, RefusesAngleBracketsInAttributes) {
  EXPECT_EQ(faultOf("<A B=\"1 < 2\"/>"), "1:9 '<' stands in the value of an attribute; write '&lt;'");
  EXPECT_EQ(faultOf("<A B=\"1 > 2\"/>"), "accepted");
}

TEST(ArxmlDocument, AcceptsTheOtherQuoteInAttributes) {
  const Document document("<A B='\"' C=\"'\"/>");
  EXPECT_EQ(document.attribute(0, "B"), "\"");
  EXPECT_EQ(document.attribute(0, "C"), "'");
}

TEST(ArxmlDocument, RefusesMoreThan256Attributes) {
  std::string tag = "<A";
  for (int each = 0; each < 256; ++each) tag += " B" + std::to_string(each) + "=''";
  EXPECT_EQ(faultOf(tag + "/>"), "accepted");
  EXPECT_EQ(faultOf(tag + "\nC=''/>"), "2:1 an element has too many attributes");
}

// References and texts

TEST(ArxmlDocument, RefusesUnknownReferences) {
  const std::string text = " '&' begins an unknown reference; write '&amp;' for the character itself";
  for (const char* wrong :
       {"&",        "& ",       "&;",       "&amp",       "&amp ;",        "&AMP;",
        "&nbsp;",   "&#;",      "&#x;",     "&#X41;",     "&#4a;",         "&#-1;",
        "&#+65;",   "&# 65;",   "&#x0x41;", "&#0;",       "&#8;",          "&#xD800;",
        "&#xDFFF;", "&#xFFFE;", "&#xFFFF;", "&#x110000;", "&#4294967361;", "&#99999999999999999999;"}) {
    EXPECT_EQ(faultOf("<A>\n " + std::string(wrong) + "</A>"), "2:2" + text) << wrong;
    EXPECT_EQ(faultOf("<A\nB=\"" + std::string(wrong) + "\"/>"), "2:4" + text) << wrong;
  }
}

TEST(ArxmlDocument, DoesNotLookForTheEndOfAReferenceElsewhere) {
  EXPECT_EQ(faultOf("<A B=\"&amp\" C=\";\"/>").substr(0, 4), "1:7 ");
  EXPECT_EQ(faultOf("<A>&amp<B/>;</A>").substr(0, 4), "1:4 ");
  EXPECT_EQ(faultOf("<A>&lt;<B/>&gt</A>").substr(0, 5), "1:12 ");
}

TEST(ArxmlDocument, AcceptsReferencesToAllCharactersOfXml) {
  EXPECT_EQ(faultOf("<A B='&amp;&lt;&gt;&quot;&apos;'>&#9;&#10;&#13;&#32;&#x7F;&#xD7FF;&#xE000;&#xFFFD;"
                    "&#x10000;&#x10FFFF;&#x10ffff;&#1114111;&#0000000000065;</A>"),
            "accepted");
}

TEST(ArxmlDocument, RefusesTheEndOfCdataInTexts) {
  EXPECT_EQ(faultOf("<A>\n a]]></A>"), "2:3 ']]>' stands in a text; write ']]&gt;'");
  EXPECT_EQ(faultOf("<A B=\"]]>\">]] >]&gt;]]&gt;</A>"), "accepted");
}

TEST(ArxmlDocument, RefusesCharactersThatXmlDoesNotAllow) {
  const std::string text = " the text has a character that XML does not allow";
  EXPECT_EQ(faultOf("<A>\n\xC3\xA4\x01</A>"), "2:2" + text);
  EXPECT_EQ(faultOf(std::string("<A>\0</A>", 8)), "1:4" + text);
  EXPECT_EQ(faultOf("<A><!-- \xFF --></A>"), "1:9" + text);
  EXPECT_EQ(faultOf("<A><![CDATA[\xEF\xBF\xBF]]></A>"), "1:13" + text);
  EXPECT_EQ(faultOf("<A/>\n\xC0\x80"), "2:1" + text);
}

// Comments, instructions, CDATA

TEST(ArxmlDocument, RefusesTwoDashesInAComment) {
  EXPECT_EQ(faultOf("<A>\n <!-- a -- b --></A>"), "2:2 a comment contains '--'");
  EXPECT_EQ(faultOf("<A><!-- a ---></A>"), "1:4 a comment contains '--'");
  EXPECT_EQ(faultOf("<A><!----><!-- - --><!-->--><!--->--></A>"), "accepted");
}

TEST(ArxmlDocument, RefusesWhatHasNoEnd) {
  EXPECT_EQ(faultOf("<A>\n<!-- a ->").substr(0, 2), "2:");
  EXPECT_NE(faultOf("<A>\n<!-- a ->").find(" a comment has no end"), std::string::npos);
  EXPECT_NE(faultOf("<A>\n<?a b>").find(" a processing instruction has no end"), std::string::npos);
  EXPECT_NE(faultOf("<A>\n<![CDATA[a]]").find(" a CDATA section has no end"), std::string::npos);
}

TEST(ArxmlDocument, RefusesWrongInstructions) {
  EXPECT_EQ(faultOf("<A><?+?></A>"), "1:6 expected a name");
  EXPECT_EQ(faultOf("<A><? a?></A>"), "1:6 expected a name");
  EXPECT_EQ(faultOf("<A>\n<?a+b?></A>"), "2:1 a processing instruction is wrong");
  EXPECT_EQ(faultOf("<A><?a?b?></A>"), "1:4 a processing instruction is wrong");
  EXPECT_EQ(faultOf("<A><?a?><?a ?><?a b?c>?><?xmlx?></A>"), "accepted");
}

TEST(ArxmlDocument, RefusesOtherMarks) {
  const std::string text = " expected an element, a comment or a CDATA section";
  EXPECT_EQ(faultOf("<A><!></A>"), "1:4" + text);
  EXPECT_EQ(faultOf("<A><!- a -></A>"), "1:4" + text);
  EXPECT_EQ(faultOf("<A>\n<![cdata[]]></A>"), "2:1" + text);
  EXPECT_EQ(faultOf("<A><!DOCTYPE A></A>"), "1:4" + text);
}

TEST(ArxmlDocument, TakesMarkupInCdataAsText) {
  const Document document("<A><![CDATA[<B>&nothing;]] ]>]]]]></A>");
  EXPECT_EQ(document.size(), 1U);
  EXPECT_EQ(plainText(document.inner(0)), "<B>&nothing;]] ]>]]");
}

// Depth

TEST(ArxmlDocument, NestsAThousandElements) {
  EXPECT_EQ(faultOf(repeated("<A>", 1000) + repeated("</A>", 1000)), "accepted");
  EXPECT_EQ(faultOf(repeated("<A>", 999) + repeated("<B/>", 5) + repeated("</A>", 999)), "accepted");
}

TEST(ArxmlDocument, RefusesElementsThatAreNestedDeeper) {
  EXPECT_EQ(faultOf(repeated("<A>", 1001) + repeated("</A>", 1001)),
            "1:3001 elements are nested deeper than 1000 levels");
  EXPECT_EQ(faultOf(repeated("<A>", 1000) + "\n<B/>" + repeated("</A>", 1000)),
            "2:1 elements are nested deeper than 1000 levels");
}

// The tree

TEST(ArxmlDocument, NumbersElementsInTheOrderInWhichTheyBegin) {
  const Document document("<A><B><C/></B><D/></A>");
  ASSERT_EQ(document.size(), 4U);
  for (std::uint32_t each = 0; each < 4; ++each)
    EXPECT_EQ(document.nameOf(each), std::string(1, "ABCD"[each]));
  EXPECT_EQ(document.element(0).next, 4U);
  EXPECT_EQ(document.element(1).next, 3U);
  EXPECT_EQ(document.element(2).next, 3U);
  EXPECT_EQ(document.element(3).next, 4U);
  EXPECT_EQ(document.element(2).parent, 1U);
  EXPECT_EQ(document.element(3).parent, 0U);
  EXPECT_TRUE(document.hasElements(1));
  EXPECT_FALSE(document.hasElements(2));
}

TEST(ArxmlDocument, KnowsThePartsOfAnElement) {
  const Document document("<A>\n  <B C=\">\" >text<D/></B >\n</A>");
  EXPECT_EQ(document.outer(1), "<B C=\">\" >text<D/></B >");
  EXPECT_EQ(document.startTag(1), "<B C=\">\" >");
  EXPECT_EQ(document.inner(1), "text<D/>");
  EXPECT_EQ(document.inner(2), "");
  EXPECT_EQ(document.startTag(2), "<D/>");
}

TEST(ArxmlDocument, FindsChildrenByNameAndByPath) {
  const Document document("<A><B><X/></B><C/><B/><X/></A>");
  EXPECT_EQ(document.find(0, "B"), 1U);
  EXPECT_EQ(document.find(0, "X"), 5U);
  EXPECT_EQ(document.find(0, "Y"), 0U);
  EXPECT_EQ(document.find(3, "B"), 0U);
  EXPECT_EQ(document.findPath(0, "B/X"), 2U);
  EXPECT_EQ(document.findPath(0, "C/X"), 0U);
  EXPECT_EQ(document.findPath(4, ""), 4U);
}

TEST(ArxmlDocument, FindsAttributesByTheirWholeName) {
  const Document document("<A xB='1'\n B = \"a=b > c\" xBx='' C='&lt;'/>");
  EXPECT_EQ(document.attribute(0, "B"), "a=b > c");
  EXPECT_EQ(document.attribute(0, "C"), "&lt;");
  EXPECT_EQ(document.attribute(0, "D").data(), nullptr);
  EXPECT_NE(document.attribute(0, "xBx").data(), nullptr);
  EXPECT_EQ(document.attribute(0, "xBx"), "");
  EXPECT_EQ(document.attributeOffset(0, "D"), 0U);
  EXPECT_EQ(document.text().substr(document.attributeOffset(0, "B"), 3), "a=b");
}

TEST(ArxmlDocument, FindsNoAttributeInATagWithoutAttributes) {
  const Document document("<A><B/><C ></C></A>");
  for (std::uint32_t each = 0; each < 3; ++each) EXPECT_EQ(document.attribute(each, "B").data(), nullptr);
}

TEST(ArxmlDocument, CountsLinesAndCharacters) {
  const std::string text = "<A>\r\n\xC3\xA4\xF0\x9F\x98\x80<B/></A>";
  const Document document(text);
  const auto place = document.placeOf(document.element(1).begin);
  EXPECT_EQ(place.line, 2U);
  EXPECT_EQ(place.column, 3U);
  EXPECT_EQ(document.placeOf(0).line, 1U);
  EXPECT_EQ(document.placeOf(0).column, 1U);
}

TEST(ArxmlDocument, KnowsThePathOfAnElement) {
  const Document document(
      "<R><P><SHORT-NAME> "
      "Outer\n</SHORT-NAME><LIST><E><SHORT-NAME>Inner</SHORT-NAME><V/></E><F/></LIST></P></R>");
  const auto pathOf = [&](std::string_view name) {
    for (std::uint32_t each = 0; each < document.size(); ++each) {
      if (document.nameOf(each) == name) return document.pathOf(each);
    }
    return std::string("none");
  };
  EXPECT_EQ(pathOf("V"), "/Outer/Inner");
  EXPECT_EQ(pathOf("E"), "/Outer/Inner");
  EXPECT_EQ(pathOf("F"), "/Outer");
  EXPECT_EQ(pathOf("R"), "");
}

// Plain text

TEST(ArxmlPlainText, ReplacesReferences) {
  EXPECT_EQ(plainText("&amp;&lt;&gt;&quot;&apos;&#65;&#x41;&#xe4;&#x20AC;&#x1F600;&#13;"),
            "&<>\"'AA\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\r");
  EXPECT_EQ(plainText("&amp;lt;"), "&lt;");
}

TEST(ArxmlPlainText, EndsLinesWithOneLineFeed) {
  EXPECT_EQ(plainText("a\r\nb\rc\nd\r\r\ne\r"), "a\nb\nc\nd\n\ne\n");
}

TEST(ArxmlPlainText, EndsLinesInCdataWithOneLineFeed) {
  EXPECT_EQ(plainText("<![CDATA[a\r\nb\rc\nd\r]]>"), "a\nb\nc\nd\n");
}

TEST(ArxmlPlainText, LeavesOutComments) {
  EXPECT_EQ(plainText("a<!-- b -->c<!---->d"), "acd");
  EXPECT_EQ(plainText("a<!-- & < > -->b"), "ab");
}

TEST(ArxmlPlainText, LeavesOutCommentsThatBeginWithTheirEnd) {
  EXPECT_EQ(plainText("a<!-->-->b"), "ab");
  EXPECT_EQ(plainText("a<!--->-->b"), "ab");
}

TEST(ArxmlPlainText, LeavesOutInstructions) { EXPECT_EQ(plainText("a<?b c?>d<?e?>f"), "adf"); }

TEST(ArxmlPlainText, LeavesOutInstructionsWithAngleBrackets) { EXPECT_EQ(plainText("a<?b c>d?>e"), "ae"); }

TEST(ArxmlPlainText, KeepsWhatStandsInCdata) {
  EXPECT_EQ(plainText("a<![CDATA[<b>&amp;<!-- -->]]]]>c<![CDATA[]]>"), "a<b>&amp;<!-- -->]]c");
}

TEST(ArxmlPlainText, OfAFormulaHasTheLastNameOfEachReference) {
  const Document document(
      "<A>1 + <SYSC-REF>/a/b/Wheels</SYSC-REF> &lt; <X>y</X> 2<SYSC-REF>Plain</SYSC-REF></A>");
  EXPECT_EQ(formulaOf(document, 0), "1 + Wheels < y 2Plain");
}

TEST(ArxmlPlainText, IsTrimmedOfAllWhiteSpaceOfXml) {
  EXPECT_EQ(trimmed(" \t\r\n a b \n"), "a b");
  EXPECT_EQ(trimmed(" \t\r\n "), "");
  EXPECT_EQ(trimmed("\xC2\xA0"), "\xC2\xA0");
}

TEST(ArxmlPlainText, OfAPathHasNoStars) { EXPECT_EQ(withoutStars("A-REFS/A*/B*"), "A-REFS/A/B"); }

// Layout

TEST(ArxmlLayout, IsThatOfTheFile) {
  const auto tabs = Layout::of(Document("<A>\r\n\t<B>\r\n\t\t<C/>\r\n\t</B>\r\n</A>"));
  EXPECT_EQ(tabs.newline, "\r\n");
  EXPECT_EQ(tabs.unit, "\t");
  EXPECT_TRUE(tabs.hasLines);
  EXPECT_EQ(Layout::of(Document("<A>\n    <B/>\n</A>")).unit, "    ");
}

TEST(ArxmlLayout, IsTwoBlanksWhereTheFileShowsNone) {
  const auto layout = Layout::of(Document("<A/>"));
  EXPECT_EQ(layout.newline, "\n");
  EXPECT_EQ(layout.unit, "  ");
  EXPECT_TRUE(layout.hasLines);
}

TEST(ArxmlLayout, HasNoLinesWhereElementsFollowOneAnother) {
  EXPECT_FALSE(Layout::of(Document("<?xml version=\"1.0\"?>\n<A><B><C/></B></A>")).hasLines);
}

TEST(ArxmlLayout, IsFoundBehindARootThatDoesNotIndent) {
  const auto layout = Layout::of(Document("<A>\n<B>\n   <C/>\n</B>\n</A>"));
  EXPECT_EQ(layout.unit, "   ");
  EXPECT_TRUE(layout.hasLines);
}

TEST(ArxmlLayout, OfAFileWithoutIndentationHasAnEmptyUnit) {
  const auto layout = Layout::of(Document("<A>\n<B>\n<C/>\n</B>\n</A>"));
  EXPECT_EQ(layout.unit, "");
  EXPECT_TRUE(layout.hasLines);
}

TEST(ArxmlLayout, HasLinesThoughOneElementStandsOnTheLineOfAnother) {
  EXPECT_TRUE(Layout::of(Document("<A>\n<B>\n<C/>\n<L>a<E>b</E></L>\n</B>\n</A>")).hasLines);
}

TEST(ArxmlLayout, KnowsTheIndentationOfAnElement) {
  const Document document("<A>\n \t<B/>x<C/>\n</A>");
  EXPECT_EQ(indentOf(document, 0), "");
  EXPECT_EQ(indentOf(document, 1), " \t");
  EXPECT_EQ(indentOf(document, 2), "");
}

// The same texts as expat

/// What both parsers say about an element.
struct Seen {
  std::string name;
  std::string text;                     ///< directly inside, without that of the elements inside
  std::vector<std::string> attributes;  ///< "name=value", in the order of the tag
  std::uint32_t begin = 0;
  std::uint32_t parent = 0;
  bool operator==(const Seen&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Seen& seen) {
  stream << seen.begin << " in " << seen.parent << " <" << seen.name;
  for (const std::string& each : seen.attributes) stream << " " << each;
  return stream << "> " << seen.text;
}

/// The outcome of parsing a text.
struct Outcome {
  bool isAccepted = false;
  std::string fault;
  std::vector<Seen> elements;
};

struct Listener {
  XML_Parser parser = nullptr;
  std::vector<Seen> elements{};
  std::vector<std::uint32_t> open{};
};

void onBegin(void* data, const XML_Char* name, const XML_Char** attributes) {
  auto& listener = *static_cast<Listener*>(data);
  Seen seen;
  seen.name = name;
  for (; *attributes; attributes += 2)
    seen.attributes.push_back(std::string(attributes[0]) + "=" + attributes[1]);
  seen.begin = static_cast<std::uint32_t>(XML_GetCurrentByteIndex(listener.parser));
  seen.parent = listener.open.empty() ? 0 : listener.open.back();
  listener.open.push_back(static_cast<std::uint32_t>(listener.elements.size()));
  listener.elements.push_back(std::move(seen));
}

void onEnd(void* data, const XML_Char* /*name*/) { static_cast<Listener*>(data)->open.pop_back(); }

void onText(void* data, const XML_Char* text, int size) {
  auto& listener = *static_cast<Listener*>(data);
  listener.elements[listener.open.back()].text.append(text, static_cast<std::size_t>(size));
}

Outcome outcomeOfExpat(const std::string& text) {
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"),
                                                                            &XML_ParserFree);
  Listener listener{parser.get()};
  XML_SetUserData(parser.get(), &listener);
  XML_SetElementHandler(parser.get(), onBegin, onEnd);
  XML_SetCharacterDataHandler(parser.get(), onText);
  Outcome outcome;
  outcome.isAccepted =
      XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
  if (!outcome.isAccepted) outcome.fault = XML_ErrorString(XML_GetErrorCode(parser.get()));
  outcome.elements = std::move(listener.elements);
  return outcome;
}

/// The value of an attribute as XML defines it: white space in it is blanks.
std::string attributeText(std::string_view raw) {
  std::string value;
  for (std::size_t place = 0; place < raw.size(); ++place) {
    if (raw[place] == '\r' && raw.substr(place).starts_with("\r\n")) continue;
    const bool isSpace = raw[place] == '\t' || raw[place] == '\n' || raw[place] == '\r';
    value.push_back(isSpace ? ' ' : raw[place]);
  }
  return plainText(value);
}

Outcome outcomeOfDocument(const std::string& text, const std::vector<Seen>& expected) {
  Outcome outcome;
  try {
    const Document document(text);
    outcome.isAccepted = true;
    for (std::uint32_t each = 0; each < document.size(); ++each) {
      const Element& element = document.element(each);
      Seen seen;
      seen.name = document.nameOf(each);
      std::uint32_t offset = element.contentBegin;
      for (std::uint32_t inner = each + 1; inner < element.next; inner = document.element(inner).next) {
        seen.text += plainText(document.slice(offset, document.element(inner).begin));
        offset = document.element(inner).end;
      }
      seen.text += plainText(document.slice(offset, element.contentEnd));
      seen.begin = element.begin;
      seen.parent = element.parent;
      // A document finds attributes by their names; the names are those that expat found.
      for (const std::string& attribute :
           each < expected.size() ? expected[each].attributes : seen.attributes) {
        const std::string name = attribute.substr(0, attribute.find('='));
        const std::string_view value = document.attribute(each, name);
        seen.attributes.push_back(value.data() ? name + "=" + attributeText(value) : name + " is missing");
      }
      outcome.elements.push_back(std::move(seen));
    }
  } catch (const ParseFault& fault) {
    outcome.fault = fault.text;
  }
  return outcome;
}

/// Compares both parsers; returns whether the text is accepted.
bool compare(const std::string& text) {
  const Outcome expected = outcomeOfExpat(text);
  const Outcome found = outcomeOfDocument(text, expected.elements);
  EXPECT_EQ(found.isAccepted, expected.isAccepted)
      << text << "\nexpat: " << expected.fault << "\nwe: " << found.fault;
  if (found.isAccepted && expected.isAccepted) {
    EXPECT_EQ(found.elements, expected.elements) << text;
  }
  return expected.isAccepted;
}

/// Texts from which others are made. There are no characters outside of ASCII in them, which could become
/// part of a name.
const std::vector<std::string>& seeds() {
  static const std::vector<std::string> texts = {
      "<A/>",
      "<A></A>",
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<A><B/></A>\n",
      "<?xml version='1.0'?><A b='1' c=\"2\">x</A><!-- y -->",
      "<A b = '1'\n\tc='&lt;&#65;'><B/>text &amp; more<C> </C ></A\n>",
      "<A><![CDATA[a<b>&]]>]]&gt;<!-- c > d --><?e f > g?></A>",
      "<A>\r\n<B>a\rb</B>\r\n<C d='x\r\ny\rz\t'/>\r\n</A>\r\n",
      "<a:B xmlns:a='urn:x' a:c='1'><a:D.e-f_9/></a:B>",
      "<A><A><A><A>deep</A></A></A></A>",
      "<A><!----><!-->--><!--->--><!-- - --><![CDATA[]]]]><![CDATA[>]]></A>",
      "<AR-PACKAGE UUID=\"1-2\"><SHORT-NAME>P</SHORT-NAME><X DEST=\"Y\">/a/b</X></AR-PACKAGE>",
      "<?p?><A><?xml-x a='1'?></A><?p q?>",
  };
  return texts;
}

const std::vector<std::string>& parts() {
  static const std::vector<std::string> texts = {"<",
                                                 ">",
                                                 "/",
                                                 "=",
                                                 "\"",
                                                 "'",
                                                 "&",
                                                 ";",
                                                 "-",
                                                 "--",
                                                 "!",
                                                 "?",
                                                 "]",
                                                 "]]>",
                                                 "[",
                                                 " ",
                                                 "\n",
                                                 "\r",
                                                 "\t",
                                                 "x",
                                                 "1",
                                                 ".",
                                                 ":",
                                                 "#",
                                                 "A",
                                                 "<A>",
                                                 "</A>",
                                                 "<B/>",
                                                 "<B>",
                                                 "</B>",
                                                 "<A ",
                                                 "/>",
                                                 "?>",
                                                 "<?",
                                                 "<!",
                                                 "<!--",
                                                 "-->",
                                                 "<![CDATA[",
                                                 "<?xml",
                                                 "<?xml version='1.0'?>",
                                                 "<?XML?>",
                                                 "<?p q?>",
                                                 "<?p>?>",
                                                 "<!-- x -->",
                                                 "<!-->-->",
                                                 "<!-- -- -->",
                                                 "<![CDATA[x\r\ny]]>",
                                                 "<![CDATA[]]>",
                                                 "&amp;",
                                                 "&lt;",
                                                 "&#10;",
                                                 "&#x41;",
                                                 "&#x;",
                                                 "&#0;",
                                                 "&x;",
                                                 "&amp",
                                                 " b='1'",
                                                 " b=\"<\"",
                                                 " c='>'",
                                                 " d",
                                                 " e=f",
                                                 "b='2'",
                                                 " g='&'",
                                                 std::string(1, '\0'),
                                                 "\x01",
                                                 "\x7F"};
  return texts;
}

/// A text that differs from another one in a few places.
std::string mutated(std::string text, std::mt19937& random) {
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
  for (std::size_t count = 1 + below(3); count > 0; --count) {
    const std::size_t place = below(text.size() + 1);
    const std::size_t size = std::min(text.size() - place, below(4) == 0 ? below(12) : 1);
    switch (below(6)) {
      case 0:
        text.erase(place, size);
        break;
      case 1:
        text.insert(place, text.substr(place, size));
        break;
      case 2:
        if (place + 1 < text.size()) std::swap(text[place], text[place + 1]);
        break;
      case 3: {
        const std::string moved = text.substr(place, size);
        text.erase(place, size);
        text.insert(below(text.size() + 1), moved);
        break;
      }
      default:
        text.insert(place, parts()[below(parts().size())]);
    }
  }
  return text;
}

TEST(ArxmlAgainstExpat, SeedsAreAccepted) {
  for (const std::string& text : seeds()) EXPECT_TRUE(compare(text)) << text;
}

TEST(ArxmlAgainstExpat, AgreesOnEachPartInEachPlace) {
  for (const std::string& part : parts()) {
    for (const char* frame : {"%<A/>",
                              "<A>%</A>",
                              "<A/>%",
                              "<A%/>",
                              "<A%></A>",
                              "<%A/>",
                              "<A></A%>",
                              "<A></%A>",
                              "<A b='%'/>",
                              "<A b=%'1'/>",
                              "<A b%='1'/>",
                              "<A %b='1'/>",
                              "<A b='1'%/>",
                              "<A>%",
                              "<A><!--%--></A>",
                              "<A><![CDATA[%]]></A>",
                              "<A><?p%?></A>",
                              "<A><?p %?></A>",
                              "<A><?%?></A>",
                              "<A>&%;</A>",
                              "<A>&#%;</A>",
                              "<A>&#x%;</A>",
                              "%",
                              "<%",
                              "<A",
                              "<A%",
                              "<A>]%</A>",
                              "<A>]]%</A>",
                              "<A><!%></A>",
                              "<A><!-%--></A>",
                              "<A><![%CDATA[]]></A>",
                              "<?xml version='1.0'?>%<A/>",
                              "<?xml version='1.0'%?><A/>",
                              "<?xml%?><A/>",
                              "<?xml %version='1.0'?><A/>",
                              "<?xml version%='1.0'?><A/>"}) {
      std::string text = frame;
      const std::size_t place = text.find('%');
      if (place != std::string::npos) text.replace(place, 1, part);
      compare(text);
    }
  }
}

TEST(ArxmlAgainstExpat, AgreesOnMutatedTexts) {
  std::mt19937 random(20251122);
  int accepted = 0;
  int refused = 0;
  for (int count = 0; count < 20000 && !HasFailure(); ++count)
    ++(compare(mutated(seeds()[random() % seeds().size()], random)) ? accepted : refused);
  // Both kinds occur often enough that the comparison says something.
  EXPECT_GT(accepted, 2000);
  EXPECT_GT(refused, 2000);
}

TEST(ArxmlAgainstExpat, AgreesOnCharactersOutsideOfNames) {
  const std::vector<std::string> pieces = {
      "a",        "\xC3\xA4",     "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xED\x9F\xBF",
      "\xC2\x80", "\xEE\x80\x80", "\xEF\xBF\xBD", "\xF4\x8F\xBF\xBF", "\x7F",
      "\t",       "\r\n",         "\xEF\xBB\xBF", "\xF0\x90\x80\x80"};
  std::mt19937 random(7);
  int accepted = 0;
  int refused = 0;
  for (int count = 0; count < 10000 && !HasFailure(); ++count) {
    std::string text;
    for (const char* frame : {"<A b='", "'>", "<![CDATA[", "]]><!--", "--><?p ", "?></A>"}) {
      text += frame;
      if (text.ends_with("</A>")) break;
      for (std::size_t piece = random() % 4; piece > 0; --piece) text += pieces[random() % pieces.size()];
      // Some bytes that are no characters, or are only together with what stands around them.
      if (random() % 16 == 0) text.push_back(static_cast<char>(0x80 + random() % 0x80));
      if (random() % 64 == 0) text.push_back(static_cast<char>(random() % 0x20));
      if (random() % 32 == 0) text.pop_back();
    }
    ++(compare(text) ? accepted : refused);
  }
  EXPECT_GT(accepted, 1000);
  EXPECT_GT(refused, 1000);
}

TEST(ArxmlAgainstExpat, AgreesOnEachPairOfBytesInAText) {
  for (int first = 0; first < 256 && !HasFailure(); ++first) {
    for (int second = 0x80; second < 256; ++second) {
      for (const char* rest : {"", "\x80", "\xBF\xBE", "\x80\x80"})
        compare(std::string("<A>.") + static_cast<char>(first) + static_cast<char>(second) + rest + "</A>");
    }
  }
}

TEST(ArxmlAgainstExpat, AgreesOnReferencesToCharacters) {
  for (const char* number : {"0",
                             "8",
                             "9",
                             "10",
                             "11",
                             "13",
                             "31",
                             "32",
                             "127",
                             "128",
                             "55295",
                             "55296",
                             "57343",
                             "57344",
                             "65533",
                             "65534",
                             "65535",
                             "65536",
                             "1114111",
                             "1114112",
                             "4294967296",
                             "4294967361",
                             "00065",
                             "-65",
                             "+65",
                             "6 5",
                             "",
                             "x",
                             "x0",
                             "xD7FF",
                             "xd800",
                             "xDFFF",
                             "xE000",
                             "xFFFD",
                             "xFFFE",
                             "xFFFF",
                             "x1FFFE",
                             "x10FFFF",
                             "x110000",
                             "x100000041",
                             "x0000000000000000000000041",
                             "X41",
                             "x4g",
                             "41x"}) {
    compare("<A>&#" + std::string(number) + ";</A>");
    compare("<A b='&#" + std::string(number) + ";'/>");
  }
}

TEST(ArxmlAgainstExpat, AgreesOnXmlDeclarations) {
  for (const char* inner : {" version='1.0'",
                            " version='1.1'",
                            " version='2'",
                            " version=''",
                            " version='1 0'",
                            " version='1.0&amp;'",
                            " version='a'",
                            " version='1.0' encoding='UTF-8'",
                            " version='1.0' encoding='utf-8'",
                            " version='1.0' encoding=''",
                            " version='1.0' encoding='8'",
                            " version='1.0' encoding='a b'",
                            " version='1.0' encoding='x-unknown_1.0'",
                            " version='1.0' encoding='-'",
                            " version='1.0' standalone='yes'",
                            " version='1.0' standalone='no'",
                            " version='1.0' standalone='maybe'",
                            " version='1.0' standalone='YES'",
                            " version='1.0' standalone=''",
                            " version='1.0' standalone='yes' encoding='UTF-8'",
                            " version='1.0' encoding='UTF-8' standalone='yes' ",
                            " encoding='UTF-8'",
                            " standalone='yes'",
                            " ",
                            "",
                            " version='1.0' version='1.0'",
                            " version='1.0' encoding='a' encoding='a'",
                            " version='1.0' b='1'",
                            " Version='1.0'",
                            " version='1.0'encoding='UTF-8'",
                            "\nversion\n=\n'1.0'\n",
                            " version=\"1.0'",
                            " version=1.0",
                            " version='?>'",
                            " version='1.0?>' encoding='x'",
                            " version",
                            " version=",
                            " version='1.0"})
    compare("<?xml" + std::string(inner) + "?><A/>");
}

}  // namespace
