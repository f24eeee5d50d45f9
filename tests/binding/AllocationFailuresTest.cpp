// Each allocation of a call fails in turn. Nothing may leak, and nothing may be freed twice.

#include <gtest/gtest.h>

#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Host.h"

namespace {

using ruvo::factory::basic::BindingRegistry;

}  // namespace

TEST(AllocationFailures, OfAMetaPropertyLeaveNothing) {
  host::openModule();
  const auto call = [] { host::callStatic("common.Package", "MetaProperty"); };
  // The first call creates permanent data, which is not a leak.
  call();
  std::size_t live = 0;
  std::size_t bindings = 0;
  const int failures = failing::eachAllocation(
      [&] {
        live = failing::live();
        bindings = BindingRegistry::size();
      },
      call,
      [&](std::size_t n) {
        EXPECT_EQ(failing::live(), live) << n;
        EXPECT_EQ(BindingRegistry::size(), bindings) << n;
      });
  EXPECT_GT(failures, 1);
}
