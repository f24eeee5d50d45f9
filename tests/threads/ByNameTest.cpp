// Four threads, each with its own models, use the object system. Each class is defined by the thread that
// needs it first.
#include <algorithm>
#include <barrier>
#include <set>
#include <string>

#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tests/support/Host.h"
#include "tests/threads/Threads.h"

namespace {

using threads::onEach;

class ByName : public testing::Test {
 protected:
  ByName() { host::openModule(); }
};

const char* const kPackages[] = {"behavior", "common",          "component", "composition", "documentation",
                                 "ecuc",     "instance",        "interface", "manifest",    "port",
                                 "system",   "timingExtension", "variant"};

/// Counts the members of all classes of a package and of the packages below it.
std::size_t countMembers(ruvo::Package& package) {
  std::size_t count = 0;
  for (ruvo::Class* cls : package.classes()) {
    count += cls->linearization().size() + cls->methods().size() + cls->properties().size();
    if (const auto* constructors = cls->constructors()) count += constructors->candidates.size();
    if (cls->findMethods("isvalid")) ++count;
    if (cls->findProperty("Name")) ++count;
  }
  for (const auto* function : package.functions()) count += function->getName().view().size();
  for (const std::string_view child : package.packageNames()) {
    count += countMembers(
        ruvo::Package::get(std::string(package.getFullName().view()) + "." + std::string(child)));
  }
  return count;
}

void buildOne(int thread) {
  const auto model = host::newModel();
  const auto root = host::make("common.AUTOSAR", {host::object(model)});
  const auto packages = host::getObject(root, "PackagedElement");
  for (int number = 0; number < 20; ++number) {
    const auto package = host::make("common.Package", {host::object(model), host::text(u"Package")});
    host::set(package, "Name", host::text(number % 2 == 0 ? u"Even" : u"Odd"));
    host::call(packages, "push_back", {host::object(package)});
    EXPECT_EQ(host::getText(package, "Name"), number % 2 == 0 ? "Even" : "Odd");
    EXPECT_EQ(host::getText(package, "category"), "");
  }
  EXPECT_EQ(host::call(packages, "size").slot().int32(), 20) << thread;
  const auto first = host::callObject(packages, "front");
  EXPECT_EQ(host::className(first), "Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_TRUE(host::call(first, "isvalid").slot().logical());
  host::call(first, "destroy");
  EXPECT_FALSE(host::call(first, "isvalid").slot().logical());
  host::call(model, "close");
}

TEST_F(ByName, FirstObjectsAreMadeAtOnce) {
  onEach([](int thread) {
    for (int round = 0; round < 10; ++round) buildOne(thread);
  });
}

TEST_F(ByName, EveryClassIsDefinedOnce) {
  std::vector<std::size_t> counts(threads::kThreads);
  onEach([&](int thread) {
    auto& count = counts[static_cast<std::size_t>(thread)];
    count = countMembers(ruvo::Package::get("Tarvelon")) + countMembers(ruvo::Package::get("K7Q"));
  });
  EXPECT_GT(counts[0], 50000U);
  EXPECT_EQ(std::set<std::size_t>(counts.begin(), counts.end()).size(), 1U);
}

TEST_F(ByName, PackagesAreTouchedInAnyOrder) {
  onEach([](int thread) {
    constexpr int kCount = static_cast<int>(std::size(kPackages));
    for (int step = 0; step < kCount; ++step) {
      const int index = (step * (2 * thread + 1) + thread) % kCount;
      auto& package = ruvo::Package::get(std::string("Tarvelon.metamodel.arplatform.") + kPackages[index]);
      EXPECT_FALSE(package.classNames().empty());
      const auto meta = ruvo::callFunction(package, "MetaPackage", {});
      const host::RVOInterfacePtr description(meta.object());
      EXPECT_EQ(host::textOf(host::call(description, "name")), kPackages[index]);
    }
  });
}

TEST_F(ByName, DescriptionsAreSharedByAll) {
  onEach([](int /*thread*/) {
    for (int round = 0; round < 50; ++round) {
      const auto model = host::newModel();
      const auto package = host::make("common.Package", {host::object(model), host::text(u"Package")});
      const auto meta = host::callObject(package, "getMetaType");
      const auto again = host::RVOInterfacePtr(host::callStatic("common.Package", "MetaClass").object());
      EXPECT_EQ(meta, again);
      const auto properties = host::callObject(meta, "properties");
      const int count = host::call(properties, "size").slot().int32();
      for (int index = 1; index <= count; ++index) {
        const auto property = host::callObject(properties, "at", {host::integer(index)});
        EXPECT_FALSE(host::textOf(host::call(property, "name")).empty());
      }
    }
  });
}

TEST_F(ByName, SequencesOfValuesAndTheirIteratorsAreIndependent) {
  onEach([](int /*thread*/) {
    const auto model = host::newModel();
    for (int round = 0; round < 50; ++round) {
      const auto values = host::RVOInterfacePtr(
          host::callStatic("common.SequenceOfArxmlFilePackagingKind", "make", {host::object(model)})
              .object());
      const auto literal =
          host::RVOInterfacePtr(host::callStatic("common.ArxmlFilePackagingKind", "Modular").object());
      for (int number = 0; number < 5; ++number) host::call(values, "append", {host::object(literal)});
      const auto at = host::callObject(values, "begin");
      int count = 0;
      while (host::call(at, "ne", {host::object(host::callObject(values, "end"))}).slot().logical()) {
        host::call(at, "getNext");
        ++count;
      }
      EXPECT_EQ(count, 5);
    }
  });
}

TEST_F(ByName, NewModelsOfAFactoryGetUrisOfTheirOwn) {
  constexpr int kModels = 25;
  std::vector<std::vector<std::string>> uris(threads::kThreads);
  // The URI of a closed model is free again.
  std::barrier allAreMade(threads::kThreads);
  onEach([&](int thread) {
    std::vector<host::RVOInterfacePtr> models;
    for (int number = 0; number < kModels; ++number) {
      models.emplace_back(host::callStatic("Factory", "createNewModel").object());
      uris[static_cast<std::size_t>(thread)].push_back(host::textOf(host::call(models.back(), "getUri")));
    }
    allAreMade.arrive_and_wait();
    EXPECT_GE(host::call(host::RVOInterfacePtr(host::callStatic("K7Q.Model", "uris").object()), "size")
                  .slot()
                  .int32(),
              kModels);
    for (const auto& model : models) {
      host::call(model, "setUri",
                 {host::text(u"own" + std::u16string(1, static_cast<char16_t>(u'0' + thread)))});
      host::call(model, "close");
    }
  });
  std::set<std::string> all;
  for (const auto& own : uris) all.insert(own.begin(), own.end());
  EXPECT_EQ(all.size(), std::size_t{threads::kThreads * kModels});
}

TEST_F(ByName, ViewsStayReadOnlyWhileOthersMakeModels) {
  onEach([](int thread) {
    const auto model = host::newModel();
    const auto package = host::make("common.Package", {host::object(model), host::text(u"Package")});
    const auto frozen = host::callObject(model, "frozen");
    const auto view = host::callObject(package, "asDeviant", {host::object(frozen)});
    for (int round = 0; round < 200; ++round) {
      if (thread % 2 == 0) {
        host::call(host::RVOInterfacePtr(host::callStatic("Factory", "createNewModel").object()), "close");
      } else {
        EXPECT_THROW(host::set(view, "Name", host::text(u"other")), K7Q::Exception);
      }
    }
    EXPECT_THROW(host::set(view, "Name", host::text(u"other")), K7Q::Exception);
  });
}

TEST_F(ByName, RefusalsNameWhatTheirOwnThreadDid) {
  onEach([](int thread) {
    const auto model = host::newModel();
    const std::string wrong = "nam" + std::string(1, static_cast<char>('a' + thread));
    const auto package = host::make("common.Package", {host::object(model), host::text(u"Package")});
    for (int round = 0; round < 50; ++round) {
      EXPECT_NE(host::raised([&] { host::getText(package, wrong.c_str()); }).find("'" + wrong + "'"),
                std::string::npos);
      EXPECT_NE(host::raised([&] { ruvo::Class::get("common." + wrong); }).find("common"), std::string::npos);
    }
  });
}

}  // namespace
