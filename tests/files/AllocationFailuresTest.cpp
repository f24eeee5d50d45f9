// Each allocation of a save or a load fails in turn. Nothing may be left behind, and the next attempt must
// succeed.

#include <string>

#include "tests/files/Support.h"
#include "tests/support/FailingNew.h"

namespace {

std::string makeText() {
  std::string text;
  for (int count = 0; count < 30; ++count) {
    const std::string id = "foreign" + std::to_string(count);
    text += "  <common:Package xmi:id=\"" + id + "\" Name=\"P" + std::to_string(count) +
            "\" ElementImport=\"later a\"><PackagedElement xsi:type=\"variant:SystemConst\" Name=\"w\"/>"
            "<adminData language=\"EN\"/></common:Package>\n";
  }
  return fileOf(
      text +
      "<variant:SystemConst xmi:id=\"later\"/><variant:SystemConst xmi:id=\"a\"/>"
      "<variant:SystemConstValue><ValueVariationPoint>1</ValueVariationPoint></variant:SystemConstValue>");
}

const auto kNothing = [] {};

TEST(AllocationFailures, OfALoadLeaveNothing) {
  const std::string text = makeText();
  const std::string saved = files::saveText(files::loadText(text).model);
  files::Loaded loaded;
  std::size_t before = 0;
  const int failures =
      failing::eachAllocation([&] { before = failing::live(); }, [&] { loaded = files::loadText(text); },
                              [&](std::size_t n) { EXPECT_EQ(failing::live(), before) << n; });
  EXPECT_GT(failures, 50);
  EXPECT_EQ(files::saveText(loaded.model), saved);
}

TEST(AllocationFailures, OfALoadWithProblemsLeaveNothing) {
  const std::string text =
      fileOf("<common:Package nme=\"a\"/><common:Pakage/><common:ReferenceBase Package=\"a\"/>");
  files::loadText(text, {nullptr, true});  // creates the data of each class's first use
  std::size_t before = 0;
  const int failures =
      failing::eachAllocation([&] { before = failing::live(); },
                              [&] {
                                files::loadText(text, {nullptr, true});
                              },
                              [&](std::size_t n) { EXPECT_EQ(failing::live(), before) << n; });
  EXPECT_GT(failures, 20);
}

TEST(AllocationFailures, OfASaveLeaveNothing) {
  const std::string text = makeText();
  const std::string saved = files::saveText(files::loadText(text).model);
  files::Loaded loaded = files::loadText(text);
  std::string again;
  const int failures = failing::eachAllocation(
      kNothing,
      [&] {
        again = files::saveText(loaded.model, {[](double) {}, true});
      },
      [](std::size_t) {});
  EXPECT_GT(failures, 5);
  EXPECT_EQ(again, saved);
}

}  // namespace
