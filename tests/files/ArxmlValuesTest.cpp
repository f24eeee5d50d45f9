// The texts of values in ARXML files, and what the rows say about the format.

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/foundation/Table.h"
#include "tarvelon/platform/files/arxml/Format.h"
#include "tarvelon/platform/files/arxml/Values.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/metamodel/Property.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/types/Table.h"
#include "tests/files/Support.h"

// The library hides the function with which it finds the tables of its classes. The format, which is compiled
// into the test, finds them here by their names.
#define TARVELON_NO_ENTRY(...)
#define TARVELON_TABLE_ENTRY(X) {X::Interface::kName.name, &X::Interface::sIntrospectiveMethods},
#define TARVELON_TABLES(P, NAMES)                                                       \
  namespace P {                                                                         \
  namespace {                                                                           \
  std::vector<std::pair<std::string_view, const K7Q::IntrospectiveMethods*>> tables() { \
    return {NAMES(TARVELON_TABLE_ENTRY, TARVELON_NO_ENTRY)};                            \
  }                                                                                     \
  }                                                                                     \
  }
#define TARVELON_CALL(P, NAMES) , P::tables()

namespace Tarvelon::metamodel {
TARVELON_TABLES(kernel, TARVELON_KERNEL_NAMES)
TARVELON_TABLES(foundation, TARVELON_FOUNDATION_NAMES)
TARVELON_TABLES(types, TARVELON_TYPES_NAMES)
}  // namespace Tarvelon::metamodel

namespace Tarvelon::metamodel::arplatform {
ARPLATFORM_PACKAGES(TARVELON_TABLES)
namespace {
auto allTables() {
  std::unordered_map<std::string_view, const K7Q::IntrospectiveMethods*> all;
  for (const auto& tables :
       {kernel::tables(), foundation::tables(), types::tables() ARPLATFORM_PACKAGES(TARVELON_CALL)})
    all.insert(tables.begin(), tables.end());
  return all;
}
}  // namespace
}  // namespace Tarvelon::metamodel::arplatform

namespace Tarvelon::metamodel::native {
const ClassMethods& tableOf(const ClassName& name) {
  static const auto tables = arplatform::allTables();
  return static_cast<const ClassMethods&>(*tables.at(name.name));
}
}  // namespace Tarvelon::metamodel::native

namespace {

namespace arxml = Tarvelon::files::arxml;
namespace interface = Tarvelon::metamodel::arplatform::interface;
using arxml::Format;
using Tarvelon::files::ScalarFault;
using Tarvelon::metamodel::native::Property;
using Tarvelon::metamodel::native::Word;

template <class X>
const Property& propertyOf(std::string_view metaName) {
  return static_cast<const Property&>(*table<X>().descriptor(idOf(table<X>(), metaName)));
}

const Property& truth() { return propertyOf<behavior::Runnable>("CanBeInvokedConcurrently"); }
const Property& whole() { return propertyOf<interface::Trigger>("CseCodeFactor"); }
const Property& number() { return propertyOf<behavior::TimingEvent>("Period"); }
const Property& direction() { return propertyOf<interface::ArgumentData>("Direction"); }
const Property& code() { return propertyOf<interface::Trigger>("CseCode"); }

std::string nameOf(ScalarFault fault) {
  return fault == ScalarFault::None ? "none" : fault == ScalarFault::NoValue ? "no value" : "out of range";
}

/// The fault of a text; "none" if it is a value.
std::string faultOf(const Property& property, std::string_view text) {
  Word word{};
  return nameOf(arxml::readValue(property, text, word));
}

Word valueOf(const Property& property, std::string_view text) {
  Word word{};
  EXPECT_EQ(nameOf(arxml::readValue(property, text, word)), "none") << text;
  return word;
}
std::int32_t integer(std::string_view text) { return integerOf(valueOf(whole(), text)); }
double real(std::string_view text) { return std::bit_cast<double>(valueOf(number(), text).bits); }
std::string textOf(double value) {
  return arxml::valueText(number(), Word{.bits = std::bit_cast<std::uint64_t>(value)});
}
std::string textOf(const Property& property, std::int32_t value) {
  return arxml::valueText(property, Tarvelon::metamodel::native::wordOf(value));
}

// Truth values

TEST(ArxmlTruth, IsReadInBothSpellings) {
  EXPECT_EQ(valueOf(truth(), "true").bits, 1U);
  EXPECT_EQ(valueOf(truth(), "1").bits, 1U);
  EXPECT_EQ(valueOf(truth(), "false").bits, 0U);
  EXPECT_EQ(valueOf(truth(), "0").bits, 0U);
}

TEST(ArxmlTruth, IsNothingElse) {
  for (const char* text : {"", "TRUE", "False", "yes", "2", "01", "t", "true1", "0x1"})
    EXPECT_EQ(faultOf(truth(), text), "no value") << text;
}

TEST(ArxmlTruth, IsWrittenAsAWord) {
  EXPECT_EQ(textOf(truth(), 1), "true");
  EXPECT_EQ(textOf(truth(), 0), "false");
}

// Whole numbers

TEST(ArxmlInteger, IsReadInEachBase) {
  EXPECT_EQ(integer("0"), 0);
  EXPECT_EQ(integer("42"), 42);
  EXPECT_EQ(integer("0x1F"), 31);
  EXPECT_EQ(integer("0Xff"), 255);
  EXPECT_EQ(integer("0b101"), 5);
  EXPECT_EQ(integer("0B11"), 3);
  EXPECT_EQ(integer("017"), 15);
  EXPECT_EQ(integer("010"), 8);
  EXPECT_EQ(integer("00"), 0);
}

TEST(ArxmlInteger, IsReadWithASign) {
  EXPECT_EQ(integer("+42"), 42);
  EXPECT_EQ(integer("-42"), -42);
  EXPECT_EQ(integer("-0"), 0);
  EXPECT_EQ(integer("-0x10"), -16);
  EXPECT_EQ(integer("-010"), -8);
}

TEST(ArxmlInteger, HasLimits) {
  EXPECT_EQ(integer("2147483647"), 2147483647);
  EXPECT_EQ(integer("-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(integer("0x7FFFFFFF"), 2147483647);
  EXPECT_EQ(integer("-0x80000000"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(integer("017777777777"), 2147483647);
  EXPECT_EQ(integer("0b1111111111111111111111111111111"), 2147483647);
  for (const char* text : {"2147483648", "-2147483649", "0x80000000", "-0x80000001", "020000000000",
                           "4294967296", "18446744073709551615", "18446744073709551616",
                           "-18446744073709551616", "0x10000000000000000", "99999999999999999999999999"})
    EXPECT_EQ(faultOf(whole(), text), "out of range") << text;
}

TEST(ArxmlInteger, IsNothingElse) {
  for (const char* text :
       {"",        "+",   "-",   "+-5", "-+5", "--5",  "++5",  " 5",    "5 ",
        "1.0",     "1e3", "0x",  "0b",  "0b2", "0b-1", "0x-1", "0xG",   "08",
        "-09",     "1F",  "x1F", "INF", "NaN", "true", "5,",   "1 000", "99999999999999999999x",
        "\xC2\xB2"})
    EXPECT_EQ(faultOf(whole(), text), "no value") << text;
}

TEST(ArxmlInteger, IsWrittenInTen) {
  EXPECT_EQ(textOf(whole(), 0), "0");
  EXPECT_EQ(textOf(whole(), 31), "31");
  EXPECT_EQ(textOf(whole(), -42), "-42");
}

TEST(ArxmlInteger, IsReadAsItWasWritten) {
  std::mt19937 random(1);
  std::vector<std::int32_t> values = {0, 1, -1, std::numeric_limits<std::int32_t>::max(),
                                      std::numeric_limits<std::int32_t>::min()};
  for (int count = 0; count < 1000; ++count)
    values.push_back(static_cast<std::int32_t>(random() >> random() % 32));
  for (const std::int32_t value : values) EXPECT_EQ(integer(textOf(whole(), value)), value);
}

// Numbers

TEST(ArxmlNumber, IsReadAsADecimalOne) {
  EXPECT_EQ(real("0"), 0.0);
  EXPECT_EQ(real("1.5"), 1.5);
  EXPECT_EQ(real("-1.5"), -1.5);
  EXPECT_EQ(real("+1.5"), 1.5);
  EXPECT_EQ(real(".0"), 0.0);
  EXPECT_EQ(real(".5"), 0.5);
  EXPECT_EQ(real("5."), 5.0);
  EXPECT_EQ(real("0.0"), 0.0);
  EXPECT_EQ(real("0.01"), 0.01);
  EXPECT_EQ(real("00.5"), 0.5);
  EXPECT_EQ(real("9007199254740993"), 9007199254740992.0);
}

TEST(ArxmlNumber, IsReadWithAnExponent) {
  EXPECT_EQ(real("1e3"), 1000.0);
  EXPECT_EQ(real("1.5E-3"), 0.0015);
  EXPECT_EQ(real("-2E+2"), -200.0);
  EXPECT_EQ(real("0e0"), 0.0);
  EXPECT_EQ(real("1.7976931348623157E308"), std::numeric_limits<double>::max());
  EXPECT_EQ(real("5e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(ArxmlNumber, IsReadInOtherBases) {
  EXPECT_EQ(real("0x1F"), 31.0);
  EXPECT_EQ(real("0X1e1"), 481.0);
  EXPECT_EQ(real("0b101"), 5.0);
  EXPECT_EQ(real("-0x10"), -16.0);
}

TEST(ArxmlNumber, KeepsTheSignOfZero) {
  EXPECT_TRUE(std::signbit(real("-0")));
  EXPECT_TRUE(std::signbit(real("-0.0")));
  EXPECT_FALSE(std::signbit(real("+0.0")));
}

TEST(ArxmlNumber, MayBeInfiniteOrNotANumber) {
  EXPECT_EQ(real("INF"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(real("-INF"), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(real("NaN")));
}

TEST(ArxmlNumber, HasLimits) {
  for (const char* text : {"1e309", "-1e309", "1e99999999999", "0x10000000000000000"})
    EXPECT_EQ(faultOf(number(), text), "out of range") << text;
}

TEST(ArxmlNumber, IsNothingElse) {
  for (const char* text : {"",    "+",     "-",        ".",         "-.",    "e",    "e5",  ".e5",  "1e",
                           "1e+", "1.5.5", "1-5",      "--5",       "++5",   "-+5",  " 5",  "5 ",   "1,5",
                           "inf", "Inf",   "Infinity", "-Infinity", "--INF", "nan",  "NAN", "-NaN", "nan(1)",
                           "0x",  "0b2",   "0x1.8p3",  "0xG",       "1_000", "five", "true"})
    EXPECT_EQ(faultOf(number(), text), "no value") << text;
}

TEST(ArxmlNumber, HasOneSign) {
  for (const char* text : {"+-5", "+-0x10", "+-1.5", "+-INF"})
    EXPECT_EQ(faultOf(number(), text), "no value") << text;
}

TEST(ArxmlNumber, IsWrittenInItsShortestForm) {
  EXPECT_EQ(textOf(0.01), "0.01");
  EXPECT_EQ(textOf(1.0), "1");
  EXPECT_EQ(textOf(-2.5), "-2.5");
  EXPECT_EQ(textOf(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(textOf(-0.0), "-0");
}

TEST(ArxmlNumber, IsWrittenInTheWordsOfArxmlIfItIsNotFinite) {
  EXPECT_EQ(textOf(std::numeric_limits<double>::infinity()), "INF");
  EXPECT_EQ(textOf(-std::numeric_limits<double>::infinity()), "-INF");
  EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "NaN");
}

/// Whether the schemas allow the text: digits with one digit before the point, without a leading zero.
bool isNumerical(std::string_view text) {
  if (text == "INF" || text == "-INF" || text == "NaN") return true;
  const auto digits = [&text] {
    std::size_t count = 0;
    while (count < text.size() && text[count] >= '0' && text[count] <= '9') ++count;
    const std::string_view found = text.substr(0, count);
    text.remove_prefix(count);
    return found;
  };
  const auto skip = [&text](char each) {
    if (!text.starts_with(each)) return false;
    text.remove_prefix(1);
    return true;
  };
  skip('-');
  const std::string_view whole = digits();
  if (whole.empty() || (whole.size() > 1 && whole[0] == '0')) return false;
  if (skip('.') && digits().empty()) return false;
  if (!skip('e')) return text.empty();
  if (!skip('+')) skip('-');
  return !digits().empty() && text.empty();
}

TEST(ArxmlNumber, IsReadAsItWasWritten) {
  using Limits = std::numeric_limits<double>;
  std::vector<double> values = {0.0,
                                -0.0,
                                1.0,
                                100000.0,
                                1e21,
                                1e22,
                                1e-7,
                                Limits::max(),
                                Limits::min(),
                                Limits::denorm_min(),
                                Limits::lowest(),
                                123456789.0,
                                0.001,
                                Limits::infinity(),
                                -Limits::infinity()};
  std::mt19937_64 random(2);
  for (int count = 0; count < 5000; ++count) {
    const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
    if (!std::isnan(value)) values.push_back(value);
    values.push_back(static_cast<double>(static_cast<std::int64_t>(random() >> random() % 64)) / 1000);
  }
  for (const double value : values) {
    const std::string text = textOf(value);
    EXPECT_EQ(valueOf(number(), text).bits, std::bit_cast<std::uint64_t>(value)) << text;
    EXPECT_TRUE(isNumerical(text)) << text;
  }
}

// Enumerations

TEST(ArxmlEnumeration, IsReadByTheTextsOfItsShape) {
  EXPECT_EQ(integerOf(valueOf(direction(), "IN")), 0);
  EXPECT_EQ(integerOf(valueOf(direction(), "OUT")), 1);
  EXPECT_EQ(integerOf(valueOf(direction(), "INOUT")), 2);
  EXPECT_EQ(integerOf(valueOf(code(), "1000")), 27);
}

TEST(ArxmlEnumeration, IsNotReadByAnyOtherText) {
  for (const char* text : {"", "In", "in", "IN ", "IN-OUT", "0", "ERROR"})
    EXPECT_EQ(faultOf(direction(), text), "no value") << text;
}

TEST(ArxmlEnumeration, IsWrittenByTheTextsOfItsShape) {
  EXPECT_EQ(textOf(direction(), 2), "INOUT");
  EXPECT_EQ(textOf(code(), 1), "0");
}

TEST(ArxmlEnumeration, HasNoTextForAValueThatNoFileHas) {
  EXPECT_EQ(textOf(direction(), 3), "");
  EXPECT_EQ(textOf(direction(), 4), "");
  EXPECT_EQ(textOf(direction(), -1), "");
}

/// Calls visit(property) for each stored property of each class.
template <class Visit>
void forEachProperty(Visit visit) {
  for (const auto& shape : arxml::shapeTables()) {
    const K7Q::IntrospectiveMethods& methods = Tarvelon::metamodel::native::tableOf(*shape.name);
    for (unsigned id = 1; id <= methods.numberOfProperties(); ++id) {
      if (const auto* property = methods.descriptor(id)) visit(static_cast<const Property&>(*property));
    }
  }
}

TEST(ArxmlEnumeration, IsReadAsItWasWrittenForAllValues) {
  std::set<std::string_view> seen;
  forEachProperty([&](const Property& property) {
    const auto* type = property.enumeration();
    if (!type || !seen.insert(type->fullName().view()).second) return;
    for (std::int32_t value = 0; type->hasLiteral(value); ++value) {
      const std::string text = textOf(property, value);
      if (text.empty()) continue;
      EXPECT_EQ(integerOf(valueOf(property, text)), value) << type->fullName().view() << " " << text;
    }
  });
  EXPECT_GT(seen.size(), 10U);
}

TEST(ArxmlEnumeration, OfTheMetamodelAreAllInTheListOfTexts) {
  const auto tables = arxml::itemTables();
  std::set<std::string_view> names;
  for (const auto& each : tables) names.insert(each.name->name);
  EXPECT_EQ(names.size(), tables.size());
  forEachProperty([&](const Property& property) {
    if (const auto* type = property.enumeration()) {
      EXPECT_TRUE(names.contains(type->fullName().view())) << type->fullName().view();
    }
  });
}

TEST(ArxmlValue, IsNoneForTextsAndReferences) {
  EXPECT_EQ(faultOf(propertyOf<behavior::Runnable>("Symbol"), "text"), "no value");
  EXPECT_EQ(faultOf(propertyOf<behavior::Runnable>("SwAddrMethod"), "/a/b"), "no value");
}

TEST(ArxmlValue, IsToldWhatItShouldHaveBeen) {
  EXPECT_EQ(arxml::expectedText(truth()), "true or false");
  EXPECT_EQ(arxml::expectedText(whole()), "a whole number from -2147483648 to 2147483647");
  EXPECT_EQ(arxml::expectedText(number()), "a number");
  EXPECT_EQ(arxml::expectedText(direction()), "one of IN, OUT, INOUT");
}

// Texts and attributes that are written

std::string escaped(std::string_view text) {
  std::string target = "|";
  arxml::appendEscaped(target, text);
  return target;
}
std::string quoted(std::string_view text) {
  std::string target = "|";
  arxml::appendAttribute(target, text);
  return target;
}

TEST(ArxmlText, IsWrittenWithReferences) {
  EXPECT_EQ(escaped("a & b < c > d ]]> \"'"), "|a &amp; b &lt; c &gt; d ]]&gt; \"'");
  EXPECT_EQ(escaped("&lt;"), "|&amp;lt;");
  EXPECT_EQ(escaped("a\r\nb\tc"), "|a&#13;\nb\tc");
}

TEST(ArxmlText, IsWrittenWithMoreReferencesInAttributes) {
  EXPECT_EQ(quoted("a & b < \"c\" 'd'"), "|a &amp; b &lt; &quot;c&quot; 'd'");
  EXPECT_EQ(quoted("a\r\n\tb"), "|a&#13;&#10;&#9;b");
}

TEST(ArxmlTag, ReplacesTheValueOfAnAttribute) {
  EXPECT_EQ(arxml::withAttribute("<A B=\"1\" C='2' D=\"3\">", "C", "x\"&"),
            "<A B=\"1\" C=\"x&quot;&amp;\" D=\"3\">");
  EXPECT_EQ(arxml::withAttribute("<A B = '1' />", "B", "2"), "<A B = \"2\" />");
  EXPECT_EQ(arxml::withAttribute("<A xB='0' B='1'>", "B", "2"), "<A xB='0' B=\"2\">");
}

TEST(ArxmlTag, StaysAsItIsIfTheAttributeHasTheValue) {
  EXPECT_EQ(arxml::withAttribute("<A B='&#120;&lt;' >", "B", "x<"), "<A B='&#120;&lt;' >");
  EXPECT_EQ(arxml::withAttribute("<A  B='1'>", "C", ""), "<A  B='1'>");
}

TEST(ArxmlTag, GetsANewAttributeAtItsEnd) {
  EXPECT_EQ(arxml::withAttribute("<A>", "B", "1"), "<A B=\"1\">");
  EXPECT_EQ(arxml::withAttribute("<A/>", "B", "1"), "<A B=\"1\"/>");
  EXPECT_EQ(arxml::withAttribute("<A B=\"a > b / c\" />", "C", "1"), "<A B=\"a > b / c\" C=\"1\" />");
}

TEST(ArxmlTag, LosesAnAttributeWithTheSpaceBeforeIt) {
  EXPECT_EQ(arxml::withAttribute("<A B=\"1\">", "B", ""), "<A>");
  EXPECT_EQ(arxml::withAttribute("<A\n B='1'\n C='2' />", "C", ""), "<A\n B='1' />");
  EXPECT_EQ(arxml::withAttribute("<A B='1' C='2'/>", "B", ""), "<A C='2'/>");
}

// The format

TEST(ArxmlFormat, KnowsReleasesByTheirNamesAndSchemas) {
  EXPECT_EQ(arxml::releaseOf("4.0.1"), 1U);
  EXPECT_EQ(arxml::releaseOf("4.3.1"), 12U);
  EXPECT_EQ(arxml::releaseOf("4.5.0"), 16U);
  EXPECT_EQ(arxml::releaseOf("R22-11"), 19U);
  EXPECT_EQ(arxml::releaseOf("22-11"), 19U);
  EXPECT_EQ(arxml::releaseOf("r25-11"), 22U);
  EXPECT_EQ(arxml::releaseOf("AUTOSAR_00054.xsd"), 22U);
  EXPECT_EQ(arxml::releaseOf("autosar_00050.xsd"), 18U);
  EXPECT_EQ(arxml::releaseOf("schema/AUTOSAR_00054.xsd"), 22U);
  EXPECT_EQ(arxml::releaseOf("C:\\schema\\AUTOSAR_4-2-2.xsd"), 8U);
  EXPECT_EQ(arxml::releaseOf("AUTOSAR_4-0-3_STRICT.xsd"), 3U);
  EXPECT_EQ(arxml::releaseOf("AUTOSAR_00046_strict.xsd"), 14U);
  EXPECT_EQ(arxml::releaseOf("AUTOSAR_4-3-1.xsd"), 12U);
  EXPECT_EQ(arxml::releaseOf("AUTOSAR_4-4-0.xsd"), 14U);
  EXPECT_EQ(arxml::releaseOf("AUTOSAR_4-5-0.xsd"), 16U);
}

TEST(ArxmlFormat, KnowsNoOtherReleases) {
  for (const char* name :
       {"", "/", "5", "4.0", "4.0.11", "R22", "autosar.xsd", "_STRICT.xsd", "AUTOSAR_STRICT.xsd",
        "AUTOSAR_00041.xsd", "AUTOSAR_00055.xsd", "AUTOSAR_00054", "AUTOSAR_00054.xsd/"})
    EXPECT_EQ(arxml::releaseOf(name), 0U) << name;
}

TEST(ArxmlFormat, NumbersReleasesFromOne) {
  const auto releases = arxml::releases();
  ASSERT_EQ(releases.size(), 22U);
  for (unsigned number = 1; number <= releases.size(); ++number) {
    EXPECT_EQ(arxml::releaseRow(number).number, number);
    EXPECT_EQ(arxml::releaseOf(arxml::releaseRow(number).name), number);
    EXPECT_EQ(arxml::releaseOf(arxml::releaseRow(number).schema), number);
  }
}

TEST(ArxmlFormat, FindsEachReleaseByItsAliasesToo) {
  for (const auto& row : arxml::releases()) {
    std::string_view rest = row.aliases;
    while (!rest.empty()) {
      const std::string_view alias = rest.substr(0, rest.find(' '));
      EXPECT_EQ(arxml::releaseOf(alias), row.number) << alias;
      rest.remove_prefix(std::min(alias.size() + 1, rest.size()));
    }
  }
}

TEST(ArxmlFormat, SavesNewModelsInR22_11) {
  EXPECT_STREQ(arxml::releaseRow(arxml::usualRelease()).name, "R22-11");
}

TEST(ArxmlFormat, NamesSetsOfReleases) {
  const auto setOf = [](std::initializer_list<unsigned> numbers) {
    arxml::Releases set = 0;
    for (const unsigned each : numbers) set |= arxml::bitOf(each);
    return arxml::textOf(set);
  };
  EXPECT_EQ(setOf({}), "");
  EXPECT_EQ(setOf({1}), "4.0.1");
  EXPECT_EQ(setOf({1, 2}), "4.0.1 to 4.0.2");
  EXPECT_EQ(setOf({1, 2, 3, 19}), "4.0.1 to 4.0.3, R22-11");
  EXPECT_EQ(setOf({3, 20, 21, 22}), "4.0.3, R23-11 to R25-11");
  EXPECT_EQ(setOf({22}), "R25-11");
}

TEST(ArxmlFormat, ListsTheNamesOfAllReleases) {
  const std::string names = arxml::releaseNames();
  EXPECT_TRUE(names.starts_with("4.0.1, 4.0.2, ")) << names;
  EXPECT_TRUE(names.ends_with(", R24-11, R25-11")) << names;
}

TEST(ArxmlFormat, NumbersTheNamesOfElements) {
  const Format& format = Format::get();
  const std::uint32_t event = format.numberOf("TIMING-EVENT");
  EXPECT_NE(event, 0U);
  EXPECT_EQ(format.nameOf(event), "TIMING-EVENT");
  EXPECT_EQ(format.numberOf("TIMING-EVENTS"), 0U);
  EXPECT_EQ(format.numberOf(""), 0U);
  EXPECT_EQ(format.numberOf("timing-event"), 0U);
}

TEST(ArxmlFormat, KnowsTheClassesOfAnElement) {
  const Format& format = Format::get();
  const auto candidates = format.candidates(format.numberOf("TIMING-EVENT"));
  ASSERT_EQ(candidates.size(), 1U);
  EXPECT_STREQ(candidates[0].cls->className().name, "Tarvelon.metamodel.arplatform.behavior.TimingEvent");
  EXPECT_TRUE(format.candidates(format.numberOf("PERIOD")).empty());
  EXPECT_TRUE(format.candidates(0).empty());
}

TEST(ArxmlFormat, KnowsTheShapeOfAClass) {
  const Format& format = Format::get();
  const auto& shape = format.shapeOf(behavior::TimingEvent::Interface::kName);
  ASSERT_EQ(shape.elements.size(), 1U);
  EXPECT_STREQ(shape.elements[0].name, "TIMING-EVENT");
}

TEST(ArxmlFormat, FindsTheItemsOfTheRoot) {
  const Format& format = Format::get();
  const std::uint32_t packages = format.numberOf("AR-PACKAGES");
  const arxml::ContentItem* item = format.root().find(packages, 19);
  ASSERT_NE(item, nullptr);
  ASSERT_NE(item->content, nullptr);
  EXPECT_NE(item->content->find(format.numberOf("AR-PACKAGE"), 19), nullptr);
  EXPECT_EQ(format.root().releasesOf(packages), (arxml::Releases{1} << 23) - 2);
  EXPECT_EQ(format.root().find(format.numberOf("TIMING-EVENT"), 19), nullptr);
  EXPECT_EQ(format.root().releasesOf(format.numberOf("TIMING-EVENT")), 0U);
}

}  // namespace
