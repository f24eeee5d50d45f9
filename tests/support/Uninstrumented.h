#pragma once

#include <gtest/gtest.h>

#include "tarvelon/platform/hx/Sanitizer.h"

/// Declares a test that cannot run with AddressSanitizer, for example because the sanitizer replaces the
/// allocator. Such a build leaves the test out. It must not be reported as skipped: .ci/run treats a skipped
/// test as a failure, because a package may be missing.
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
