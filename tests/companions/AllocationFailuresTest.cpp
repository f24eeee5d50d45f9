// Each allocation of a call fails in turn. Nothing may leak, and the sequence must be as before or as after
// the change.
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tests/companions/Support.h"
#include "tests/support/FailingNew.h"

using namespace companions;

namespace {

class Allocations : public Companions {
 protected:
  using Action = std::function<void(const RVOInterfacePtr&)>;

  /// Checks the action on {2, 1}; `after` is its expected result.
  void expectWhole(const char* name, const Action& action, const Values& after) {
    const Values before{2, 1};
    // The first round also creates permanent data, so only the second round checks for leaks.
    for (const bool isMeasured : {false, true}) {
      RVOInterfacePtr sequence;
      std::size_t live = 0;
      std::size_t bindings = 0;
      std::size_t arrays = 0;
      const int failures = failing::eachAllocation(
          [&] {
            sequence = RVOInterfacePtr();
            live = failing::live();
            bindings = ruvo::factory::basic::BindingRegistry::size();
            arrays = hx::hxLiveArrays();
            sequence = newSequence(before);
          },
          [&] { action(sequence); },
          [&](std::size_t n) {
            expectOneOf(name, n, sequence, before, after);
            sequence = RVOInterfacePtr();
            if (!isMeasured) return;
            EXPECT_EQ(failing::live(), live) << name << " " << n;
            EXPECT_EQ(ruvo::factory::basic::BindingRegistry::size(), bindings) << name << " " << n;
            EXPECT_EQ(hx::hxLiveArrays(), arrays) << name << " " << n;
          });
      EXPECT_GT(failures, 0) << name;
      EXPECT_EQ(valuesOf(sequence), after) << name;
    }
  }
  static void expectOneOf(const char* name, std::size_t n, const RVOInterfacePtr& sequence,
                          const Values& before, const Values& after) {
    const Values now = valuesOf(sequence);
    EXPECT_TRUE(now == before || now == after) << name << " " << n;
    EXPECT_EQ(walk(sequence), now) << name << " " << n;
    EXPECT_EQ(nativeOf(sequence).object->numRef(), 1) << name << " " << n;
  }
  static HostValue begin(const RVOInterfacePtr& sequence, RVOInterfacePtr& keep) {
    keep = host::callObject(sequence, "begin");
    return host::object(keep);
  }
};

INSTANTIATE_TEST_SUITE_P(BothKinds, Allocations, testing::Values("make", "makeUnique"),
                         [](const auto& kind) { return std::string(kind.param); });

TEST_P(Allocations, FailWhileValuesAreAdded) {
  const auto value = element(3);
  for (const char* method : {"append", "push_back"}) {
    expectWhole(method, [&](const auto& s) { host::call(s, method, {host::object(value)}); }, {2, 1, 3});
  }
  expectWhole("push_front", [&](const auto& s) { host::call(s, "push_front", {host::object(value)}); },
              {3, 2, 1});
  expectWhole("insert",
              [&](const auto& s) {
                host::call(s, "insert", {host::integer(2), host::object(value)});
              },
              {2, 3, 1});
  expectWhole("insert at a place",
              [&](const auto& s) {
                RVOInterfacePtr keep;
                host::call(s, "insert", {begin(s, keep), host::object(value)});
              },
              {3, 2, 1});
}

TEST_P(Allocations, FailWhileValuesAreTakenOut) {
  const auto value = element(2);
  expectWhole("removeAll", [&](const auto& s) { host::call(s, "removeAll", {host::object(value)}); }, {1});
  expectWhole("erase",
              [&](const auto& s) {
                RVOInterfacePtr keep;
                host::call(s, "erase", {begin(s, keep)});
              },
              {1});
  expectWhole("erase of a range",
              [&](const auto& s) {
                RVOInterfacePtr keep;
                const auto end = host::callObject(s, "end");
                host::call(s, "erase", {begin(s, keep), host::object(end)});
              },
              {});
}

TEST_P(Allocations, FailWhileAValueIsReplaced) {
  const auto value = element(3);
  expectWhole("replace",
              [&](const auto& s) {
                host::call(s, "replace", {host::integer(1), host::object(value)});
              },
              {3, 1});
}

TEST_P(Allocations, FailWhileValuesAreRead) {
  const Values same{2, 1};
  for (const char* method : {"front", "back", "begin", "end"}) {
    expectWhole(
        method, [&](const auto& s) { host::call(s, method); }, same);
  }
  expectWhole(
      "at", [](const auto& s) { host::call(s, "at", {host::integer(2)}); }, same);
  expectWhole(
      "clone", [](const auto& s) { host::call(host::callObject(s, "begin"), "clone"); }, same);
  expectWhole(
      "item", [](const auto& s) { host::call(host::callObject(s, "begin"), "item"); }, same);
}

TEST_P(Allocations, FailWhileASequenceIsMade) {
  const Values same{2, 1};
  expectWhole(
      "make", [&](const auto&) { newSequence(); }, same);
}

}  // namespace
