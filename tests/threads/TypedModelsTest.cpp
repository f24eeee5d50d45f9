// Four threads, each with its own models, use the typed handles.
#include <filesystem>
#include <string>
#include <unistd.h>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/model/api/Copy.h"
#include "tarvelon/platform/model/api/Difference.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Json.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/api/Validation.h"
#include "tests/native/Support.h"
#include "tests/threads/Threads.h"

namespace {

namespace fs = std::filesystem;
using Tarvelon::metamodel::clone;
using Tarvelon::metamodel::toJson;
using threads::onEach;

constexpr int kRounds = 20;
constexpr int kElements = 30;

std::u16string named(const char16_t* stem, int number) {
  const std::string digits = std::to_string(number);
  return stem + std::u16string(digits.begin(), digits.end());
}

/// A model with a package of constants that have values.
K7Q::Model build() {
  auto model = K7Q::Model::create();
  const auto root = common::AUTOSAR::create(model);
  const auto package = common::Package::create(model, u"Constants");
  root.get<"PackagedElement">().add(package);
  const auto values = variant::SystemConstValueSet::create(model);
  values.set<"Name">(u"Values");
  package.get<"PackagedElement">().add(values);
  for (int number = 0; number < kElements; ++number) {
    const auto constant = variant::SystemConst::create(model, named(u"Constant", number));
    constant.set<"category">(u"VALUE");
    package.get<"PackagedElement">().add(constant);
  }
  return model;
}

common::Package packageOf(const K7Q::Model& model) {
  return common::Package::cast(Tarvelon::model::find(model, u"/Constants"));
}

void edit(const K7Q::Model& model) {
  const auto package = packageOf(model);
  auto elements = package.get<"PackagedElement">();
  for (int number = 0; number < kElements; ++number) {
    const auto constant =
        variant::SystemConst::cast(Tarvelon::model::find(model, u"/Constants/" + named(u"Constant", number)));
    ASSERT_TRUE(constant.isValid());
    constant.set<"category">(named(u"category", number));
    if (number % 3 == 0) elements.remove(constant);
    if (number % 6 == 0) constant.destroy();
  }
}

TEST(TypedModels, AreBuiltEditedAndDestroyed) {
  onEach([](int /*thread*/) {
    for (int round = 0; round < kRounds; ++round) {
      const auto model = build();
      edit(model);
      EXPECT_EQ(packageOf(model).get<"PackagedElement">().size(), 1 + kElements * 2 / 3);
      packageOf(model).destroy();
      if (round % 2 == 0) model.close();
    }
  });
}

TEST(TypedModels, AreTakenBackAndListenedTo) {
  onEach([](int /*thread*/) {
    for (int round = 0; round < kRounds; ++round) {
      const auto model = build();
      Tarvelon::model::setHistoryLimit(model, 100);
      std::size_t heard = 0;
      const auto listener =
          Tarvelon::model::listen(model, [&heard](const auto& changes) { heard += changes.size(); });
      const std::string before = toJson(model);
      {
        Tarvelon::model::Transaction transaction(model);
        edit(model);
        transaction.commit();
      }
      EXPECT_NE(toJson(model), before);
      EXPECT_TRUE(Tarvelon::model::undo(model));
      EXPECT_EQ(toJson(model), before);
      EXPECT_TRUE(Tarvelon::model::redo(model));
      EXPECT_GT(heard, 0U);
      Tarvelon::model::unlisten(model, listener);
      Tarvelon::model::setHistoryLimit(model, 0);
    }
  });
}

TEST(TypedModels, AreSavedLoadedAndValidated) {
  const fs::path folder = fs::temp_directory_path() / ("tarvelon-threads-" + std::to_string(::getpid()));
  fs::create_directory(folder);
  onEach([&folder](int thread) {
    const fs::path path = folder / (std::to_string(thread) + ".xmi");
    for (int round = 0; round < kRounds / 2; ++round) {
      const auto model = build();
      edit(model);
      Tarvelon::files::save(model, path, {{}, false});
      const auto loaded = Tarvelon::files::load(path).model;
      EXPECT_EQ(toJson(loaded), toJson(model));
      EXPECT_EQ(K7Q::validate(loaded).size(), K7Q::validate(model).size());
      EXPECT_TRUE(Tarvelon::metamodel::differences(model, loaded).empty());
    }
    EXPECT_THROW(Tarvelon::files::loadText("<broken"), Tarvelon::files::WrongFile);
  });
  fs::remove_all(folder);
}

TEST(TypedModels, AreSavedAsArxmlAndLoaded) {
  onEach([](int /*thread*/) {
    for (int round = 0; round < kRounds / 2; ++round) {
      const std::string text = Tarvelon::files::saveArxmlText(build());
      const auto loaded = Tarvelon::files::loadText(text).model;
      EXPECT_EQ(Tarvelon::files::saveArxmlText(loaded), text);
      EXPECT_EQ(Tarvelon::files::saveArxmlText(Tarvelon::metamodel::cloneModel(loaded)), text);
      Tarvelon::model::find(loaded, u"/Constants/Values").getClassObject()->destroy({});
      EXPECT_NE(Tarvelon::files::saveArxmlText(loaded), text);
      EXPECT_TRUE(Tarvelon::files::foreign(loaded).empty());
    }
  });
}

TEST(TypedModels, AreSearchedByNameAndClass) {
  onEach([](int /*thread*/) {
    for (int round = 0; round < kRounds; ++round) {
      const auto model = build();
      EXPECT_EQ(Tarvelon::model::instances(model, table<variant::SystemConst>()).size(),
                std::size_t{kElements});
      const auto found = Tarvelon::model::find(model, u"/Constants/Constant7");
      EXPECT_EQ(Tarvelon::model::qualifiedName(found), u"/Constants/Constant7");
      EXPECT_TRUE(Tarvelon::model::referrers(found).empty());
      EXPECT_NE(Tarvelon::model::findClass("Tarvelon.metamodel.arplatform.variant.SystemConst"), nullptr);
    }
  });
}

TEST(TypedModels, SayWhatTheyRefuse) {
  onEach([](int thread) {
    const auto model = build();
    for (int round = 0; round < kRounds; ++round) {
      const auto gone = variant::SystemConst::create(model, named(u"Gone", thread));
      gone.destroy();
      expectNullReference([&gone] { gone.set<"category">(u"VALUE"); });
      auto elements = packageOf(model).get<"PackagedElement">();
      EXPECT_NE(refusalOf<K7Q::Exception>([&] { elements.at(-1); }).find("positive"), std::string::npos);
    }
  });
}

TEST(TypedModels, AreClonedAndThenUsedOnTwoThreads) {
  constexpr int kPairs = threads::kThreads / 2;
  std::vector<K7Q::Model> models;
  for (int pair = 0; pair < kPairs; ++pair) {
    const auto original = build();
    auto other = K7Q::Model::create();
    clone(packageOf(original), other);
    models.push_back(original);
    models.push_back(std::move(other));
  }
  onEach([&models](int thread) {
    // Moves the model's handle, so that no handle is left on the other thread.
    const K7Q::Model mine = std::move(models[static_cast<std::size_t>(thread)]);
    for (int round = 0; round < kRounds; ++round) {
      for (const auto& object : Tarvelon::model::instances(mine, table<variant::SystemConst>())) {
        const auto constant = variant::SystemConst::cast(object);
        const K7Q::String category = constant.get<"category">();
        const K7Q::String name = constant.get<"Name">();
        constant.set<"category">(name);
        constant.set<"Name">(category);
      }
    }
    mine.close();
  });
}

TEST(TypedModels, TakeCopiesOfTheTextsThatTheyAreGiven) {
  std::vector<K7Q::Model> models;
  {
    const K7Q::String shared(u"a text that all of them are given");
    for (int thread = 0; thread < threads::kThreads; ++thread) {
      const auto model = K7Q::Model::create();
      common::Package::create(model, shared);
      models.push_back(model);
    }
  }
  onEach([&models](int thread) {
    const K7Q::Model mine = std::move(models[static_cast<std::size_t>(thread)]);
    const auto package = common::Package::cast(Tarvelon::model::objects(mine).front());
    for (int round = 0; round < 100 * kRounds; ++round) {
      const K7Q::String name = package.get<"Name">();
      EXPECT_EQ(name.view(), u"a text that all of them are given");
    }
    package.set<"Name">(u"other");
  });
}

}  // namespace
