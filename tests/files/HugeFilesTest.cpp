// Large files with many faults are refused with all of them. What that takes is measured by
// `./tarvelon bench --files`; at a size where a quadratic cost would take hours these tests would not end.

#include <string>

#include "tests/files/Support.h"

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
  std::string attributes = " category=\"" + std::string(60000000, 'x') + '"';
  for (int count = 0; count < 999; ++count) attributes += "\n nam" + std::to_string(count) + "=\"\"";
  const auto problems = refusedProblems(fileOf("<common:Package" + attributes + "\n xmi:id=\"\"/>"));
  const std::string found = problemsOf(problems);
  EXPECT_TRUE(
      found.ends_with("1002:2 common:Package has no property 'nam998'\n"
                      "1003:2 expected an id without blanks, got ''\n"))
      << found.substr(found.size() - 200);
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
