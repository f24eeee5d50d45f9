#include <cstdint>
#include <cstring>
#include <limits>

#include <gtest/gtest.h>

#include "tarvelon/boundary/ut/Memory.h"
#include "tests/support/Uninstrumented.h"

namespace {

TEST(UtMalloc, GivesStorageForNothing) {
  void* storage = utMalloc(0);
  EXPECT_NE(storage, nullptr);
  utFree(storage);
}

// AddressSanitizer ends a program that requests more memory than there is.
UNINSTRUMENTED_TEST(UtMalloc, GivesNullForMoreThanThereIs) {
  EXPECT_EQ(utMalloc(std::numeric_limits<std::size_t>::max() / 2), nullptr);
}

TEST(UtCalloc, GivesZeroedStorage) {
  auto* bytes = static_cast<unsigned char*>(utCalloc(3, 7));
  for (int i = 0; i < 21; ++i) EXPECT_EQ(bytes[i], 0);
  utFree(bytes);
}

TEST(UtCalloc, GivesStorageForNothing) {
  void* storage = utCalloc(0, 8);
  EXPECT_NE(storage, nullptr);
  utFree(storage);
}

UNINSTRUMENTED_TEST(UtCalloc, GivesNullWhereTheProductOverflows) {
  EXPECT_EQ(utCalloc(std::numeric_limits<std::size_t>::max(), 2), nullptr);
}

TEST(UtFree, AllowsNull) { utFree(nullptr); }

TEST(UtFailAllocation, FailsTheNthAndNoOther) {
  utFailAllocation(3);
  void* first = utMalloc(8);
  void* second = utCalloc(1, 8);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_EQ(utMalloc(8), nullptr);
  void* fourth = utMalloc(8);
  EXPECT_NE(fourth, nullptr);
  utFree(first);
  utFree(second);
  utFree(fourth);
}

TEST(UtFailAllocation, FailsCallocToo) {
  utFailAllocation(1);
  EXPECT_EQ(utCalloc(1, 8), nullptr);
}

TEST(UtFailAllocation, IsDisarmedByZero) {
  utFailAllocation(1);
  utFailAllocation(0);
  void* storage = utMalloc(8);
  EXPECT_NE(storage, nullptr);
  utFree(storage);
}

}  // namespace
