// However large a file is and whatever is wrong with it, the time it takes is in proportion to its length.

#include <ctime>
#include <string>

#include "tests/files/Support.h"

namespace {

/// The problems of a text that must be refused, within seconds: what grows with the square of the length
/// takes minutes.
files::Problems problemsFoundSoon(const std::string& text) {
  constexpr double kSoon = 20;
  const std::clock_t begin = std::clock();
  try {
    files::loadText(text);
  } catch (const files::WrongFile& refusal) {
    EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, kSoon);
    return refusal.problems();
  }
  ADD_FAILURE() << "it was loaded";
  return {};
}

TEST(HugeFiles, OfManyProblemsAreRefusedSoon) {
  std::string attributes;
  for (int count = 0; count < 1000000; ++count) attributes += " nam" + std::to_string(count) + "=\"\"";
  EXPECT_EQ(problemsFoundSoon(fileOf("<common:Package" + attributes + "/>")).count, 1000000U);
}

TEST(HugeFiles, OfManyProblemsBehindALongTextAreRefusedSoon) {
  std::string attributes = " category=\"" + std::string(60000000, 'x') + '"';
  for (int count = 0; count < 999; ++count) attributes += "\n nam" + std::to_string(count) + "=\"\"";
  const auto problems = problemsFoundSoon(fileOf("<common:Package" + attributes + "\n xmi:id=\"\"/>"));
  const std::string found = problemsOf(problems);
  EXPECT_TRUE(
      found.ends_with("1002:2 common:Package has no property 'nam998'\n"
                      "1003:2 expected an id without blanks, got ''\n"))
      << found.substr(found.size() - 200);
}

TEST(HugeFiles, OfManyNamespacesAreRefusedSoon) {
  std::string text = "<common:Package";
  for (int count = 0; count < 200000; ++count) text += " xmlns:n" + std::to_string(count) + "=\"u\"";
  text += '>';
  for (int count = 0; count < 200000; ++count)
    text += "<PackagedElement xsi:type=\"no" + std::to_string(count) + ":A\"/>";
  EXPECT_EQ(problemsFoundSoon(fileOf(text + "</common:Package>")).count, 200000U);
}

}  // namespace
