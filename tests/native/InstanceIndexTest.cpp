// The storage of a model's objects, and the reuse of the places of destroyed objects.

#include <malloc.h>
#include <vector>

#include "tarvelon/platform/hx/Sanitizer.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tests/native/Support.h"
#include "tests/support/Uninstrumented.h"

namespace {

namespace api = Tarvelon::model;
using Tarvelon::metamodel::native::liveObjects;

class Objects : public testing::Test {
 protected:
  std::vector<common::Package> make(std::size_t count) {
    std::vector<common::Package> made;
    made.reserve(count);
    for (std::size_t i = 0; i < count; ++i) made.push_back(common::Package::create(mModel));
    return made;
  }

  const std::size_t mBefore = liveObjects();
  K7Q::Model mModel = K7Q::Model::create();
};

}  // namespace

TEST_F(Objects, StandInTheOrderOfTheirMaking) {
  const auto made = make(1000);
  const auto all = api::objects(mModel);
  ASSERT_EQ(all.size(), made.size());
  for (std::size_t i = 0; i < all.size(); ++i) ASSERT_TRUE(all[i] == made[i]) << i;
}

TEST_F(Objects, TakeThePlacesOfThoseThatHaveGone) {
  auto made = make(1000);
  for (std::size_t i = 0; i < made.size(); i += 3) made[i].destroy();
  for (std::size_t i = 0; i < made.size(); i += 3) made[i] = {};
  EXPECT_EQ(liveObjects() - mBefore, 666U);
  make(334);
  // The new objects use the places of the destroyed ones: the last object is still the last.
  const auto all = api::objects(mModel);
  ASSERT_EQ(all.size(), 1000U);
  EXPECT_TRUE(all[998] == made[998]);
}

// The list of a class is compacted when more than half of its objects were destroyed.
TEST_F(Objects, StandInTheListOfTheirClassAsThoseBeforeThemGo) {
  auto made = make(100);
  const auto first = made.begin() + 60;
  for (auto each = made.begin(); each != first; ++each) each->destroy();
  const auto expectLeft = [&](auto begin) {
    const auto left = api::instances(mModel, table<common::Package>());
    ASSERT_EQ(left.size(), static_cast<std::size_t>(made.end() - begin));
    for (std::size_t i = 0; i < left.size(); ++i)
      EXPECT_TRUE(left[i] == begin[static_cast<std::ptrdiff_t>(i)]);
  };
  expectLeft(first);
  for (auto each = first; each != made.end(); ++each) {
    each->destroy();
    expectLeft(each + 1);
  }
}

TEST_F(Objects, KeepTheirPlacesWhileTheyAreHeldThoughTheyAreGone) {
  auto held = make(200);
  for (const auto& each : held) each.destroy();
  EXPECT_EQ(liveObjects() - mBefore, 200U);
  const auto others = make(200);
  for (const auto& each : held) EXPECT_FALSE(each.isValid());
  for (const auto& each : others) EXPECT_TRUE(each.isValid());
  held.clear();
  EXPECT_EQ(liveObjects() - mBefore, 200U);
  EXPECT_EQ(api::objects(mModel).size(), 200U);
}

TEST_F(Objects, OutliveTheCloseOfTheirModelWhileTheyAreHeld) {
  auto held = make(200);
  mModel.getModelInterface()->close();
  for (const auto& each : held) EXPECT_FALSE(each.isValid());
  EXPECT_EQ(liveObjects() - mBefore, 200U);
  mModel = {};
  held.clear();
  EXPECT_EQ(liveObjects(), mBefore);
}

UNINSTRUMENTED_TEST_F(Objects, GiveBackTheirMemory) {
  constexpr std::size_t kObjects = 100000;
  auto made = make(kObjects);
  const std::size_t full = mallinfo2().uordblks;
  for (const auto& each : made) each.destroy();
  made.clear();
  // The table of chunks stays (at most half a byte for each object), and what the allocator keeps.
  EXPECT_LT(mallinfo2().uordblks + 70 * kObjects, full);
}
