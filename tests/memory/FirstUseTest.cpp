// Memory runs out while something is used for the first time. The process must not crash, the model must be
// unchanged, and the same action must then succeed.

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tarvelon/platform/model/api/Copy.h"
#include "tarvelon/platform/model/api/Difference.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Json.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/api/Validation.h"
#include "tests/files/Support.h"
#include "tests/memory/FirstUse.h"
#include "tests/support/Host.h"

namespace {

namespace api = Tarvelon::model;

const auto kNothing = [] {};

std::string namesOf(ruvo::Package& package) {
  std::string names;
  for (const auto name : package.packageNames()) names.append(name).append(" ");
  for (const auto name : package.classNames()) names.append(name).append(" ");
  for (const auto* function : package.functions()) names.append(function->getName().view()).append(" ");
  return names;
}

std::string membersOf(ruvo::Class& cls) {
  std::string members;
  for (const auto name : cls.superClassNames()) members.append(name.view()).append(" ");
  for (const auto& slot : cls.properties()) members.append(slot.name.view()).append(" ");
  for (const auto* record : cls.methods()) members.append(ruvo::describeSignature(*record, "f")).append(" ");
  return members;
}

/// A model with a package, a constant in it, and a formula that refers to the constant.
struct Scene {
  void make() {
    mModel = K7Q::Model::create();
    mPackage = common::Package::create(mModel, u"P");
    mConstant = variant::SystemConst::create(mModel, u"C");
    mPackage.get<"PackagedElement">().add(mConstant);
  }
  std::string shown() const { return Tarvelon::metamodel::toJson(mModel); }

  K7Q::Model mModel;
  common::Package mPackage;
  variant::SystemConst mConstant;
};

/// Makes each allocation of an action on a new scene fail. Returns the number of allocations.
std::size_t expectSafe(const std::function<void(Scene&)>& act) {
  const auto scene = std::make_shared<Scene>();
  return firstuse::expectSafe(
      {[scene] { scene->make(); }, [scene, act] { act(*scene); }, [scene] { return scene->shown(); }});
}

/// The same, with a history in which one change was undone. No change may be added to or lost from the
/// history.
std::size_t expectSafeWithHistory(const std::function<void(Scene&)>& act) {
  const auto scene = std::make_shared<Scene>();
  return firstuse::expectSafe({[scene] {
                                 scene->make();
                                 api::setHistoryLimit(scene->mModel, 10);
                                 scene->mPackage.set<"category">(u"1");
                                 scene->mPackage.set<"category">(u"2");
                                 api::undo(scene->mModel);
                               },
                               [scene, act] { act(*scene); },
                               [scene] {
                                 return scene->shown() + " " + std::to_string(api::undoable(scene->mModel)) +
                                        " " + std::to_string(api::redoable(scene->mModel));
                               }});
}

void expectSafeBothWays(const std::function<void(Scene&)>& act) {
  EXPECT_GT(expectSafe(act), 0U);
  EXPECT_GT(expectSafeWithHistory(act), 0U);
}

TEST(FirstUse, OfThePackagesLosesNoneAndAddsNoneTwice) {
  host::openModule();
  for (const char* name : {"K7Q", "Tarvelon", "Tarvelon.metamodel", "Tarvelon.metamodel.arplatform",
                           "Tarvelon.metamodel.arplatform.variant", "Tarvelon.metamodel.types"}) {
    SCOPED_TRACE(name);
    const auto names = std::make_shared<std::string>();
    const auto look = [name, names] { *names = namesOf(ruvo::Package::get(name)); };
    EXPECT_GT(firstuse::expectSafe({kNothing, look, [names] { return *names; }}, 7), 0U);
  }
}

TEST(FirstUse, OfAClassAddsNoMemberTwice) {
  host::openModule();
  for (const char* name : {"common.Package", "common.ImmutableSequenceOfPackage", "variant.BindingTimeKind",
                           "Factory", "common.PackageMetaProperty"}) {
    SCOPED_TRACE(name);
    const auto members = std::make_shared<std::string>();
    const auto look = [name, members] { *members = membersOf(host::cls(name)); };
    EXPECT_GT(firstuse::expectSafe({kNothing, look, [members] { return *members; }}, 11), 0U);
  }
}

TEST(FirstUse, OfAModel) {
  const auto scene = std::make_shared<Scene>();
  const auto make = [scene] { scene->mModel = K7Q::Model::create(); };
  const auto shown = [scene] { return std::string(scene->mModel.isNull() ? "none" : "a model"); };
  EXPECT_GT(firstuse::expectSafe({kNothing, make, shown}), 0U);
}

TEST(FirstUse, OfAConstructor) {
  expectSafeBothWays(
      [](Scene& s) { common::ModeDeclarationGroup::create(s.mModel, u"a name of some length"); });
}

TEST(FirstUse, OfASetProperty) {
  expectSafeBothWays([](Scene& s) { s.mConstant.set<"category">(u"a text that needs a block of its own"); });
}

TEST(FirstUse, OfASearchByName) {
  EXPECT_GT(expectSafe([](Scene& s) { ASSERT_TRUE(api::find(s.mModel, u"/P/C") == s.mConstant); }), 0U);
}

TEST(FirstUse, OfASearchByClass) {
  EXPECT_GT(expectSafe([](Scene& s) {
              const auto& methods = variant::SystemConst::Interface::sIntrospectiveMethods;
              ASSERT_EQ(api::instances(s.mModel, methods).size(), 1U);
              ASSERT_EQ(api::objects(s.mModel).size(), 2U);
            }),
            0U);
}

TEST(FirstUse, OfAQualifiedNameAndReferrers) {
  expectSafe([](Scene& s) {
    ASSERT_EQ(api::referrers(s.mConstant).size(), 0U);
    ASSERT_EQ(api::qualifiedName(s.mConstant), u"/P/C");
  });
}

TEST(FirstUse, OfIteration) {
  EXPECT_GT(expectSafe([](Scene& s) {
              std::size_t count = 0;
              for (const auto& each : s.mPackage.get<"PackagedElement">()) count += each.isNull() ? 0 : 1;
              ASSERT_EQ(count, 1U);
            }),
            0U);
}

TEST(FirstUse, OfATransaction) {
  expectSafeBothWays([](Scene& s) {
    api::Transaction transaction(s.mModel);
    s.mConstant.set<"Name">(u"D");
    variant::SystemConst::create(s.mModel, u"E");
    transaction.commit();
  });
}

TEST(FirstUse, OfUndoAndRedo) {
  EXPECT_GT(expectSafe([](Scene& s) {
              api::setHistoryLimit(s.mModel, 5);
              if (api::undoable(s.mModel) == 0) s.mConstant.set<"category">(u"1");
              ASSERT_TRUE(api::undo(s.mModel));
              ASSERT_TRUE(api::redo(s.mModel));
            }),
            0U);
}

TEST(FirstUse, OfAListener) {
  expectSafeBothWays([](Scene& s) {
    api::listen(s.mModel, [](std::span<const api::Change>) {});
    s.mConstant.set<"category">(u"1");
  });
}

TEST(FirstUse, OfDestruction) {
  const auto destroy = [](Scene& s) {
    if (s.mPackage.isValid()) s.mPackage.destroy();
  };
  EXPECT_EQ(expectSafe(destroy), 0U) << "where nothing is noted, destroying needs no memory";
  EXPECT_GT(expectSafeWithHistory(destroy), 0U);
}

TEST(FirstUse, OfACopy) {
  expectSafeBothWays([](Scene& s) { Tarvelon::metamodel::clone(s.mPackage); });
  expectSafeBothWays([](Scene& s) { Tarvelon::metamodel::cloneModel(s.mModel); });
}

TEST(FirstUse, OfADifference) {
  expectSafeBothWays([](Scene& s) {
    const auto copy = Tarvelon::metamodel::cloneModel(s.mModel);
    variant::SystemConst::create(copy, u"another");
    ASSERT_EQ(Tarvelon::metamodel::differences(s.mModel, copy).size(), 1U);
  });
}

TEST(FirstUse, OfValidation) {
  expectSafeBothWays(
      [](Scene& s) { ASSERT_EQ(K7Q::validate(s.mModel).size(), K7Q::validate(s.mModel).size()); });
}

TEST(FirstUse, OfJson) {
  expectSafeBothWays([](Scene& s) { ASSERT_FALSE(Tarvelon::metamodel::toJson(s.mModel).empty()); });
}

/// A file whose name has the process id; removed at the end of the test.
class TemporaryFile {
 public:
  ~TemporaryFile() { std::filesystem::remove(path); }
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("first-use-" + std::to_string(::getpid()) + ".xmi");
};

TEST(FirstUse, OfASave) {
  const TemporaryFile file;
  EXPECT_GT(expectSafe([&file](Scene& s) { Tarvelon::files::save(s.mModel, file.path); }), 0U);
}

TEST(FirstUse, OfALoad) {
  const TemporaryFile file;
  std::ofstream(file.path) << fileOf(
      "<common:Package Name=\"P\"><PackagedElement xsi:type=\"variant:SystemConst\"/></common:Package>");
  const auto scene = std::make_shared<Scene>();
  const auto load = [scene, &file] { scene->mModel = Tarvelon::files::load(file.path).model; };
  const auto shown = [scene] { return std::string(scene->mModel.isNull() ? "none" : "a model"); };
  EXPECT_GT(firstuse::expectSafe({kNothing, load, shown}), 0U);
}

}  // namespace
