// Objects created on one thread are used, released and destroyed on another thread, one at a time.
#include <optional>

#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tests/native/Support.h"
#include "tests/support/Host.h"
#include "tests/threads/Threads.h"

namespace {

using ruvo::factory::basic::BindingRegistry;
using threads::onAnother;
using threads::onEach;

TEST(HandOver, ReleasesOnAnotherThreadWhatOneHasMade) {
  host::openModule();
  const std::size_t bound = BindingRegistry::size();
  const std::size_t arrays = hx::hxLiveArrays();
  const std::size_t objects = Tarvelon::metamodel::native::liveObjects();
  for (int round = 0; round < 50; ++round) {
    std::vector<host::RVOInterfacePtr> made;
    hx::hxArray* array = nullptr;
    onAnother([&] {
      made.push_back(host::newModel());
      for (int number = 0; number < 100; ++number) {
        made.push_back(host::make("common.Package", {host::object(made[0]), host::text(u"Package")}));
      }
      array = hx::hxCreateString_UTF16(u"handed over");
    });
    onAnother([&] {
      EXPECT_EQ(host::getText(made.back(), "Name"), "Package");
      for (const auto& each : made) {
        if (each != made[0]) host::call(each, "destroy");
      }
      made.clear();
      EXPECT_EQ(hx::hxGetText(array), u"handed over");
      hx::hxDestroyArray(array);
    });
  }
  EXPECT_EQ(BindingRegistry::size(), bound);
  EXPECT_EQ(hx::hxLiveArrays(), arrays);
  EXPECT_EQ(Tarvelon::metamodel::native::liveObjects(), objects);
}

TEST(HandOver, CountsWhatThreadsThatHaveEndedLeft) {
  std::vector<hx::hxArray*> arrays(threads::kThreads);
  const std::size_t before = hx::hxLiveArrays();
  onEach([&](int thread) {
    arrays[static_cast<std::size_t>(thread)] = hx::hxCreateDoubleScalar(thread);
    hx::hxDestroyArray(hx::hxCreateDoubleScalar(0));
  });
  EXPECT_EQ(hx::hxLiveArrays(), before + arrays.size());
  for (hx::hxArray* array : arrays) hx::hxDestroyArray(array);
  EXPECT_EQ(hx::hxLiveArrays(), before);
}

TEST(HandOver, ListsLoseWhatAnotherThreadHasDestroyed) {
  host::openModule();
  const auto model = host::newModel();
  const auto list = host::RVOInterfacePtr(
      host::callStatic("common.SequenceOfPackage", "make", {host::object(model)}).object());
  const auto package = host::make("common.Package", {host::object(model), host::text(u"Package")});
  host::call(list, "append", {host::object(package)});
  EXPECT_EQ(host::call(list, "size").slot().int32(), 1);
  onAnother([&] { host::call(package, "destroy"); });
  EXPECT_EQ(host::call(list, "size").slot().int32(), 0);
}

TEST(HandOver, AModelIsClosedWhereItWasNotMade) {
  host::openModule();
  K7Q::Model model;
  std::optional<common::Package> package;
  onAnother([&] {
    model = K7Q::Model::create();
    package.emplace(common::Package::create(model, u"Package"));
  });
  onAnother([&] {
    model.close();
    EXPECT_FALSE(package->isValid());
    package.reset();
    model = {};
  });
}

}  // namespace
