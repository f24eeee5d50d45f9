#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tarvelon/platform/ruvo/Texts.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

std::string nearest(std::string_view name, std::vector<std::string_view> candidates) {
  return nearestName(name, candidates);
}

TEST(NearestName, IsOneSlipAway) {
  EXPECT_EQ(nearest("symbl", {"name", "symbol"}), "symbol");    // a letter is missing
  EXPECT_EQ(nearest("symbool", {"name", "symbol"}), "symbol");  // a letter too many
  EXPECT_EQ(nearest("symbal", {"name", "symbol"}), "symbol");   // another letter
  EXPECT_EQ(nearest("symblo", {"symbol"}), "symbol");           // two letters swapped
  EXPECT_EQ(nearest("SYMBOL", {"symbol"}), "symbol");           // another case
}

TEST(NearestName, IsTheNearestAndAmongEqualsTheFirst) {
  EXPECT_EQ(nearest("nodes", {"notes", "node"}), "notes");
  EXPECT_EQ(nearest("abcdef", {"abcdxy", "abcdey"}), "abcdey");
}

TEST(NearestName, IsNoneThatIsFarAway) {
  EXPECT_EQ(nearest("symbol", {"name", "category"}), "");
  EXPECT_EQ(nearest("abc", {"axy"}), "");
  EXPECT_EQ(nearest("aQuiteLongName", {"aQuiteLongText"}), "");
  EXPECT_EQ(nearest("x", {"y"}), "");
  EXPECT_EQ(nearest("", {"a"}), "");
  EXPECT_EQ(nearest("a", {""}), "");
  EXPECT_EQ(nearest("a", {}), "");
}

TEST(NearestName, AllowsSlipsByTheLengthOfTheName) {
  EXPECT_EQ(nearest("abcdef", {"abcdxy"}), "abcdxy");
  EXPECT_EQ(nearest("abcde", {"abcxy"}), "");
  EXPECT_EQ(nearest("abcdefghijkl", {"abcdefghixyz"}), "abcdefghixyz");
  EXPECT_EQ(nearest("abcdefghijklmno", {"abcdefghijkwxyz"}), "");
}

/// The edit distance by its definition, computed with a complete table.
std::size_t distanceOf(const std::string& left, const std::string& right) {
  std::vector<std::vector<std::size_t>> table(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
  for (std::size_t i = 0; i <= left.size(); ++i) {
    for (std::size_t j = 0; j <= right.size(); ++j) {
      auto& cell = table[i][j];
      cell = std::max(i, j);
      if (i == 0 || j == 0) continue;
      const std::size_t other = left[i - 1] == right[j - 1] ? 0 : 1;
      cell = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + other});
      const bool isSwap = i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1];
      if (isSwap) cell = std::min(cell, table[i - 2][j - 2] + 1);
    }
  }
  return table[left.size()][right.size()];
}

TEST(NearestName, IsThatOfTheLeastDistance) {
  std::mt19937 random(2718);
  int count = 0;
  for (int turn = 0; turn < 20000; ++turn) {
    std::string name(2 + random() % 14, ' ');
    for (char& letter : name) letter = static_cast<char>('a' + random() % 3);
    std::string candidate = name;
    for (std::size_t slips = random() % 6; slips != 0; --slips) {
      const std::size_t place = random() % candidate.size();
      const auto letter = static_cast<char>('a' + random() % 3);
      if (random() % 3 == 0) candidate.insert(place, 1, letter);
      if (random() % 3 == 0 && candidate.size() > 2) candidate.erase(place, 1);
      if (random() % 3 == 0) candidate[place / 2] = letter;
      if (random() % 3 == 0) std::swap(candidate[0], candidate[1]);
    }
    const bool isNear = distanceOf(name, candidate) <= std::clamp<std::size_t>(name.size() / 3, 1, 3);
    ASSERT_EQ(nearest(name, {candidate}), isNear ? candidate : "") << name << " " << candidate;
    count += isNear ? 1 : 0;
  }
  EXPECT_GT(count, 5000) << "or nothing was tested";
}

TEST(QuotedName, IsWholeAsLongAsAPersonMayHaveWrittenIt) {
  EXPECT_EQ(quotedName(""), "''");
  EXPECT_EQ(quotedName(std::string(200, 'x')), "'" + std::string(200, 'x') + "'");
  EXPECT_EQ(quotedName(std::string(201, 'x')), "'" + std::string(80, 'x') + "...' of 201 characters");
}

TEST(QuotedName, IsNotCutWithinACharacter) {
  const std::string name = std::string(79, 'x') + "\xC3\xA4" + std::string(200, 'y');
  EXPECT_EQ(quotedName(name), "'" + std::string(79, 'x') + "...' of 280 characters");
}

using DescribeTest = RuvoTest;

TEST_F(DescribeTest, ShowsTypeAndValue) {
  EXPECT_EQ(describeValue(HostValue()), "an empty value");
  EXPECT_EQ(describeValue(logical(true)), "logical scalar true");
  EXPECT_EQ(describeValue(logical(false)), "logical scalar false");
  EXPECT_EQ(describeValue(integer(-7)), "int32 scalar -7");
  EXPECT_EQ(describeValue(number(0.5)), "double scalar 0.5");
  EXPECT_EQ(describeValue(number(1e300)), "double scalar 1e+300");
  EXPECT_EQ(describeValue(text(u"yes")), "char vector \"yes\"");
}

TEST_F(DescribeTest, CutsLongTexts) {
  const std::u16string whole(40, u'x');
  EXPECT_EQ(describeValue(text(whole)), "char vector \"" + std::string(40, 'x') + "\"");
  EXPECT_EQ(describeValue(text(whole + u'y')),
            "char vector \"" + std::string(40, 'x') + "\"... of 41 characters");
}

TEST_F(DescribeTest, DoesNotCutACharacterInTwo) {
  const std::u16string cut = std::u16string(39, u'x') + u"🚗🚗";
  EXPECT_EQ(describeValue(text(cut)), "char vector \"" + std::string(39, 'x') + "\"... of 43 characters");
}

TEST_F(DescribeTest, ShowsAnObjectByItsClassAndAnArrayByItsSize) {
  Class& cls = addClass("X");
  Native native;
  const RVOInterfacePtr one = object(cls, native);
  const hx::ArrayPtr numbers(hx::hxCreateNumericMatrix(2, 3, hx::hxInt32, hx::hxReal));
  EXPECT_EQ(describeValue(testing::object(one)), full("X"));
  EXPECT_EQ(describeValue(HostValue::ofArray(numbers.get())), "int32 array of 2 by 3");
}

std::string described(const char* names, const std::vector<const char*>& types) {
  const std::unique_ptr<TestMethod> record(new TestMethod("f", 0, {}));
  factory::impl::Invoker::createSignature(names, "void", nullptr, types, record->signature());
  return describeSignature(*record, "shown");
}

TEST(DescribeSignature, ShowsTypesAndNames) {
  EXPECT_EQ(described("", {}), "shown()");
  EXPECT_EQ(described("", {"K7Q.Model", "char vector"}), "shown(K7Q.Model, char vector)");
  EXPECT_EQ(described("other", {"K7Q.Object"}), "shown(K7Q.Object other)");
  EXPECT_EQ(described(" aSymbol, aName", {"char vector", "char vector"}),
            "shown(char vector aSymbol, char vector aName)");
}

TEST(DescribeSignature, GivesTheNamesToTheLastParameters) {
  EXPECT_EQ(described(" aName", {"K7Q.Model", "char vector"}), "shown(K7Q.Model, char vector aName)");
  EXPECT_EQ(described("a, b, c", {"char"}), "shown(char c)");
}

TEST(DescribeSignature, OfARecordWithoutOneIsEmpty) {
  const std::unique_ptr<TestMethod> record(new TestMethod("f", 0, {}));
  EXPECT_EQ(describeSignature(*record, "shown"), "shown()");
}

}  // namespace
}  // namespace ruvo::testing
