// Shrunk random programs, each for a fault that it has found and that was corrected.

#include <gtest/gtest.h>

#include "tests/support/Host.h"
#include "tests/world/Shrink.h"

namespace {

struct Regression {
  const char* name;
  const char* program;
};

constexpr Regression kRegressions[] = {
    // After unset(), the object's memory for the value was used by the id of the first save, so undo had no
    // room.
    {"UndoBehindAFirstSave", "Undo 0 29 26; Typed; Unset 0 171; Save; Undo"},
    {"RedoBehindAFirstSave", "Limit 0 3; Grow 201 0 0 109; Grow 0 0 191; Grow 0 0 31; Undo; Save; Redo"},
    // The id of a destroyed object was given to another object, so undo could not restore it.
    {"IdOfWhatComesBack",
     "Redo 0 255 122; Typed; Grow 0 154 25; Typed; Typed; Save 153; Typed; Destroy 0 25; Save; Undo; Save"},
};

class Regressions : public testing::TestWithParam<Regression> {};

}  // namespace

TEST_P(Regressions, StayMended) {
  host::openModule();
  world::warmUp();
  const auto ending = world::inChild([] {
    world::run(world::parse(GetParam().program), {true, 1, true, true, {}});
  });
  EXPECT_FALSE(ending.hasFailed) << ending.output;
}

INSTANTIATE_TEST_SUITE_P(Mended, Regressions, testing::ValuesIn(kRegressions),
                         [](const auto& each) { return std::string(each.param.name); });
