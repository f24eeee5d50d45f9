// Each allocation of an operation fails in turn. Nothing may leak, and the operation must succeed when
// repeated.
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tests/factory/Support.h"
#include "tests/support/FailingNew.h"

using namespace factory;

namespace {

/// The counts that must be unchanged after a failed operation.
struct Counts {
  std::size_t arrays = hx::hxLiveArrays();
  std::size_t bindings = ruvo::factory::basic::BindingRegistry::size();
  std::size_t models = K7Q::ModelCache::instance().models().size();
  bool assertions = K7Q::DeviantAssertions::sAssertionsEnabled;
  friend bool operator==(const Counts&, const Counts&) = default;
};

class AllocationFailures : public Factories {
 protected:
  /// Runs the action once, then once with all failures, so that permanent data exists. Then checks that no
  /// failure leaves anything behind.
  template <class Action>
  static void expectNothingLeft(Action action) {
    action();
    failing::eachAllocation([] {}, action, [](std::size_t) {});
    const Counts before;
    std::size_t live = 0;
    const int failures = failing::eachAllocation([&] { live = failing::live(); }, action,
                                                 [&](std::size_t n) {
                                                   EXPECT_EQ(failing::live(), live) << "allocation " << n;
                                                   EXPECT_EQ(Counts(), before) << "allocation " << n;
                                                 });
    EXPECT_GT(failures, 0);
    EXPECT_EQ(Counts(), before);
  }
};

TEST_F(AllocationFailures, OfCreate) {
  expectNothingLeft([&] { create("commonPackage"); });
  expectNothingLeft([&] { create("commonPackage", {host::text(u"a name that needs a block of its own")}); });
}

TEST_F(AllocationFailures, OfCreateWithObjects) {
  const auto package = create("commonPackage");
  expectNothingLeft([&] {
    create("commonReferenceBase", {host::logical(true), host::text(u"base"), host::object(package)});
  });
}

TEST_F(AllocationFailures, OfCreateFromString) {
  expectNothingLeft([&] { host::call(mFactory, "createFromString", {host::text(u"common.Package")}); });
  expectNothingLeft([&] {
    host::call(mFactory, "createFromString",
               {host::text(u"common.Package"), host::text(u"a name that needs a block of its own")});
  });
}

TEST_F(AllocationFailures, OfCreateNewFactory) {
  expectNothingLeft([&] { factoryOf(mModel); });
}

TEST_F(AllocationFailures, OfCreateNewModel) {
  const auto close = [] {
    for (const auto& model : K7Q::ModelCache::instance().models()) model.getModelInterface()->close();
  };
  for (const bool isMeasured : {false, true}) {
    std::size_t live = 0;
    failing::eachAllocation(
        [&] {
          close();
          live = failing::live();
        },
        [] { RVOInterfacePtr(host::callStatic("Factory", "createNewModel").object()); },
        [&](std::size_t n) {
          // Without memory for the host object, the model is bound nevertheless: it can be found by its URI
          // and closed.
          EXPECT_LE(K7Q::ModelCache::instance().models().size(), 1U) << n;
          EXPECT_TRUE(K7Q::DeviantAssertions::sAssertionsEnabled) << n;
          close();
          if (!isMeasured) return;
          EXPECT_EQ(failing::live(), live) << n;
        });
  }
}

TEST_F(AllocationFailures, OfCast) {
  expectNothingLeft([&] { host::callStatic("ImmutableFactory", "cast", {host::object(mFactory)}); });
}

}  // namespace
