// Large files with many problems are refused, and all problems are counted. `./tarvelon bench --files`
// measures the time. With a quadratic algorithm these tests would take hours.

#include <string>

#include "tests/files/Support.h"
#include "tests/support/FailingNew.h"

namespace {

/// The problems of a text that must be refused.
files::Problems refusedProblems(const std::string& text) {
  try {
    files::loadText(text);
  } catch (const files::WrongFile& refusal) {
    return refusal.problems();
  }
  ADD_FAILURE() << "it was loaded";
  return {};
}

TEST(HugeFiles, AreRefusedWithAllOfAMillionProblems) {
  std::string attributes;
  for (int count = 0; count < 1000000; ++count) attributes += " nam" + std::to_string(count) + "=\"\"";
  EXPECT_EQ(refusedProblems(fileOf("<common:Package" + attributes + "/>")).count, 1000000U);
}

TEST(HugeFiles, NameThePlaceOfProblemsBehindALongText) {
  // NOLINTNEXTLINE(bugprone-string-constructor): as long as that
  std::string attributes = " category=\"" + std::string(60000000, 'x') + '"';
  for (int count = 0; count < 999; ++count) attributes += "\n nam" + std::to_string(count) + "=\"\"";
  const auto problems = refusedProblems(fileOf("<common:Package" + attributes + "\n xmi:id=\"\"/>"));
  const std::string found = problemsOf(problems);
  EXPECT_TRUE(
      found.ends_with("1002:2 common:Package has no property 'nam998'\n"
                      "1003:2 expected an id without blanks, got ''\n"))
      << found.substr(found.size() - 200);
}

TEST(HugeFiles, OfOneListWithTheSameIdsTakeMemoryAsTheirText) {
  constexpr std::size_t kIds = 2000000;
  std::string ids;
  for (std::size_t count = 0; count < kIds; ++count) ids += "a ";
  const std::string text = fileOf("<common:Package ClientDependency=\"" + ids + "\"/>");
  ids = {};
  files::Problems problems;
  const std::size_t bytes = failing::peakOf([&] {
    try {
      files::loadText(text);
    } catch (const files::WrongFile& refusal) {
      problems = refusal.problems();
    }
  });
  EXPECT_EQ(problems.count, kIds);
  ASSERT_FALSE(problems.kept.empty());
  EXPECT_EQ(problems.kept.front().text, "Package.ClientDependency: the list contains the id twice: 'a'");
  // Most of the memory is the parser's copy of the text. The loader stores almost nothing for a repeated id.
  EXPECT_LT(bytes, 6 * text.size());
}

TEST(HugeFiles, OfOneListOfManyIdsTakeLittleForEach) {
  constexpr std::size_t kIds = 300000;
  std::string text = "<common:Package ClientDependency=\"";
  for (std::size_t count = 0; count < kIds; ++count) {
    std::string id = "_AAAAAAAAAAB ";
    std::size_t rest = count;
    for (std::size_t digit = 10; rest != 0; --digit, rest /= 26)
      id[digit] = static_cast<char>('A' + rest % 26);
    text += id;
  }
  text = fileOf(text + "\"/>");
  const std::size_t bytes = failing::peakOf([&] { EXPECT_THROW(files::loadText(text), files::WrongFile); });
  EXPECT_LT(bytes, 8 * text.size());
}

TEST(HugeFiles, AreRefusedWithAProblemForEachOfManyNamespaces) {
  std::string text = "<common:Package";
  for (int count = 0; count < 200000; ++count) text += " xmlns:n" + std::to_string(count) + "=\"u\"";
  text += '>';
  for (int count = 0; count < 200000; ++count)
    text += "<PackagedElement xsi:type=\"no" + std::to_string(count) + ":A\"/>";
  EXPECT_EQ(refusedProblems(fileOf(text + "</common:Package>")).count, 200000U);
}

}  // namespace
