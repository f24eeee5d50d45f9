// Deeply nested objects. No function may be recursive, and no text for each object may contain all levels
// above it: everything must work on a small stack, with memory proportional to the number of objects.

#include <string>
#include <vector>

#include "tarvelon/platform/model/api/Copy.h"
#include "tarvelon/platform/model/api/Difference.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Json.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/api/Validation.h"
#include "tests/native/Support.h"
#include "tests/support/FailingNew.h"
#include "tests/support/SmallStack.h"

namespace {

namespace api = Tarvelon::model;
using K7Q::Model;
using Tarvelon::metamodel::clone;
using Tarvelon::metamodel::cloneModel;
using Tarvelon::metamodel::Difference;
using Tarvelon::metamodel::differences;
using Tarvelon::metamodel::toJson;
using Tarvelon::metamodel::toJsonRows;

constexpr int kLevels = 100000;

/// Nested packages, from the top down.
struct Nested {
  explicit Nested(int levels, const std::u16string& name = u"p") {
    mPackages.push_back(common::Package::create(mModel, name));
    for (int level = 1; level < levels; ++level) {
      mPackages.push_back(common::Package::create(mModel, name));
      mPackages[mPackages.size() - 2].get<"PackagedElement">().add(mPackages.back());
    }
  }
  const common::Package& top() const { return mPackages.front(); }
  const common::Package& bottom() const { return mPackages.back(); }

  Model mModel = Model::create();
  std::vector<common::Package> mPackages;
};

TEST(Depth, OfAModelNeedsNoStack) {
  host::onSmallStack([] {
    Nested nested(kLevels);
    const Model copied = cloneModel(nested.mModel);
    EXPECT_TRUE(differences(nested.mModel, copied).empty());
    EXPECT_EQ(toJson(nested.mModel), toJson(copied));
    EXPECT_EQ(toJsonRows(nested.mModel), toJsonRows(copied));
    EXPECT_TRUE(K7Q::validate(copied).empty());
    EXPECT_EQ(api::objects(copied).size(), static_cast<std::size_t>(kLevels));
    EXPECT_EQ(api::qualifiedName(nested.bottom()).size(), 2U * kLevels);
    EXPECT_TRUE(api::find(nested.mModel, api::qualifiedName(nested.bottom())) == nested.bottom());
  });
}

TEST(Depth, OfWhatIsTakenBackNeedsNoStack) {
  host::onSmallStack([] {
    Nested nested(kLevels);
    api::setHistoryLimit(nested.mModel, 3);
    clone(nested.top(), {});
    api::undo(nested.mModel);
    nested.top().destroy();
    EXPECT_TRUE(api::objects(nested.mModel).empty());
    api::undo(nested.mModel);
    EXPECT_EQ(api::objects(nested.mModel).size(), static_cast<std::size_t>(kLevels));
    api::setHistoryLimit(nested.mModel, 0);
    nested.top().destroy();
    EXPECT_TRUE(api::objects(nested.mModel).empty());
  });
}

/// The maximum number of bytes for each object, in texts of a few hundred bytes.
constexpr std::size_t kMostBytesALevel = 5000;

TEST(Depth, TakesMemoryForEachLevelAlikeWhenEachHasAFault) {
  const Nested nested(kLevels);
  for (const auto& package : nested.mPackages) package.set<"Name">(u"1");
  host::onSmallStack([&nested] {
    std::size_t count = 0;
    const std::size_t bytes = failing::peakOf([&] { count = K7Q::validate(nested.mModel).size(); });
    EXPECT_EQ(count, static_cast<std::size_t>(kLevels));
    EXPECT_LT(bytes, kMostBytesALevel * kLevels);
  });
}

TEST(Depth, TakesMemoryForEachLevelAlikeWhenEachDiffers) {
  const Nested older(kLevels);
  const Nested newer(kLevels);
  for (const auto& package : newer.mPackages) package.set<"category">(u"OTHER");
  host::onSmallStack([&] {
    std::size_t count = 0;
    const std::size_t bytes =
        failing::peakOf([&] { count = differences(older.mModel, newer.mModel).size(); });
    EXPECT_EQ(count, static_cast<std::size_t>(kLevels));
    EXPECT_LT(bytes, kMostBytesALevel * kLevels);
  });
}

TEST(Depth, TakesMemoryForEachLevelAlikeWhenEachIsRenamed) {
  const Nested older(20000);
  const Nested newer(20000);
  for (const auto& package : newer.mPackages) package.set<"Name">(u"q");
  const std::size_t bytes = failing::peakOf([&] { differences(older.mModel, newer.mModel); });
  EXPECT_LT(bytes, kMostBytesALevel * 20000);
}

TEST(Depth, GivesATextInProportionHoweverItIsIndented) {
  const Nested nested(20000);
  for (const auto& package : nested.mPackages) package.get<"ClientDependency">().add(nested.bottom());
  // An object has about six lines, each indented by at most 128 blanks.
  EXPECT_LT(toJson(nested.mModel, 1).size(), 20000U * 2000);
  EXPECT_LT(toJson(nested.mModel).size(), 20000U * 200);
}

TEST(Depth, LeavesReferencesTelling) {
  const Nested nested(1100);
  const auto& target = nested.bottom();
  nested.top().get<"ClientDependency">().add(target);
  nested.top().get<"ClientDependency">().add(nested.mPackages[900]);
  const std::string text = toJson(nested.mModel);
  std::string near;
  for (int level = 0; level <= 900; ++level) near += "/p";
  EXPECT_NE(text.find("\"ClientDependency\": [\"#1099\", \"" + near + "\"]"), std::string::npos);
  EXPECT_NE(text.find("\"class\": \"common.Package\", \"id\": \"#1099\""), std::string::npos);
  EXPECT_EQ(text.find("\"id\""), text.rfind("\"id\"")) << "of one object alone";
}

TEST(Depth, OfAPathThatIsTooLongIsToldByItsEnd) {
  std::string whole;
  for (int level = 0; level < 1000; ++level) whole += "/p";
  const Nested most(1000);
  EXPECT_EQ(K7Q::pathOf(most.bottom()), whole);
  std::string end = "...";
  for (int level = 0; level < 24; ++level) end += "/p";
  const Nested more(1001);
  EXPECT_EQ(K7Q::pathOf(more.bottom()), end);
  EXPECT_EQ(K7Q::pathOf(more.mPackages[999]), whole);
  const auto inside = common::AdminData::create(more.mModel);
  more.bottom().set<"adminData">(inside);
  EXPECT_EQ(K7Q::pathOf(inside), "..." + end.substr(5) + ".adminData");
}

TEST(Depth, OfLongNamesIsToldByItsEndAsWell) {
  const Nested long_(3, std::u16string(2000, u'n'));
  EXPECT_EQ(K7Q::pathOf(long_.mPackages[1]).size(), 4002U);
  EXPECT_EQ(K7Q::pathOf(long_.bottom()), "..." + std::string(400, 'n'));
  const Nested wide(2, std::u16string(5000, u'\x20AC'));
  const std::string path = K7Q::pathOf(wide.bottom());
  EXPECT_EQ(path.substr(0, 6), "...\xE2\x82\xAC");
  EXPECT_EQ(path.size(), 3U + 399);
}

TEST(Depth, DoesNotMakeDifferentTargetsAlike) {
  // A reference to an object outside of the compared trees is shown with the whole path, even if it is long.
  const Nested older(1100);
  const Nested newer(1100);
  newer.top().set<"Name">(u"q");
  const auto referring = [](const Nested& nested) {
    const auto package = common::Package::create(nested.mModel, u"from");
    package.get<"ClientDependency">().add(nested.bottom());
    return package;
  };
  const auto found = differences(referring(older), referring(newer));
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].kind, Difference::Kind::Changed);
}

}  // namespace
