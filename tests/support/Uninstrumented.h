#pragma once

#include <gtest/gtest.h>

#include "tarvelon/platform/hx/Sanitizer.h"

/// A test of what AddressSanitizer replaces, the allocator above all. A build with it does without the test:
/// there is nothing to install that would let it run, so it must not be listed as skipped, which .ci/run
/// takes for a failure.
#ifdef TARVELON_HAS_ASAN
#define TARVELON_LEFT_OUT(suite, name, base)     \
  class suite##_##name##_LeftOut : public base { \
    [[maybe_unused]] void TestBody() override;   \
  };                                             \
  void suite##_##name##_LeftOut::TestBody()
#define UNINSTRUMENTED_TEST(suite, name) TARVELON_LEFT_OUT(suite, name, ::testing::Test)
#define UNINSTRUMENTED_TEST_F(suite, name) TARVELON_LEFT_OUT(suite, name, suite)
#else
#define UNINSTRUMENTED_TEST(suite, name) TEST(suite, name)
#define UNINSTRUMENTED_TEST_F(suite, name) TEST_F(suite, name)
#endif
