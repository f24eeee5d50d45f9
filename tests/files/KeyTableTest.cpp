// A file with chosen ids must not be able to make the hash tables slow.

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "tarvelon/platform/files/shared/KeyTable.h"
#include "tarvelon/platform/model/copy/Hashes.h"
#include "tests/files/Support.h"

namespace {

using Tarvelon::metamodel::native::mixed;

constexpr std::uint64_t inverseOf(std::uint64_t odd) {
  std::uint64_t inverse = odd;
  for (int turn = 0; turn < 6; ++turn) inverse *= 2 - odd * inverse;
  return inverse;
}

constexpr std::uint64_t unshifted(std::uint64_t value, unsigned shift) {
  std::uint64_t found = value;
  for (unsigned known = shift; known < 64; known += shift) found = value ^ found >> shift;
  return found;
}

/// The inverse of mixed().
constexpr std::uint64_t unmixed(std::uint64_t value) {
  value = unshifted(value, 31) * inverseOf(0x94D049BB133111EB);
  value = unshifted(value, 27) * inverseOf(0xBF58476D1CE4E5B9);
  return unshifted(value, 30);
}
static_assert(mixed(unmixed(12345)) == 12345);

TEST(KeyTable, FindsWhatWasPutIn) {
  files::KeyTable<int> table;
  EXPECT_EQ(table.find(7), nullptr);
  for (int key = 0; key < 1000; ++key) EXPECT_TRUE(table.insert(static_cast<std::uint64_t>(key) * 64, key));
  EXPECT_FALSE(table.insert(64, 5));
  EXPECT_EQ(table.size(), 1000U);
  for (int key = 0; key < 1000; ++key)
    EXPECT_EQ(table.find(static_cast<std::uint64_t>(key) * 64)->value, key);
  EXPECT_EQ(table.find(1), nullptr);
  table.clear();
  EXPECT_EQ(table.find(64), nullptr);
}

TEST(KeyTable, IsNotToBeFilledAtOnePlace) {
  // Numbers whose low bits are equal after mixing. Anybody can compute such numbers.
  files::KeySet table;
  for (std::uint64_t high = 1; high <= 100000; ++high) table.insert(unmixed(high << 40));
  ASSERT_EQ(table.size(), 100000U);
  EXPECT_LT(table.longestSearch(), 1000U);
}

// Two models are compared by such hashes, and the author of a list of two numbers can choose both numbers.
TEST(KeyedHash, OfTwoNumbersIsNotToBeForeseen) {
  using Tarvelon::metamodel::native::mix;
  const auto before = [](std::uint64_t left, std::uint64_t right) {
    return left ^ (right + 0x9E3779B97F4A7C15U + (left << 6) + (left >> 2));
  };
  const std::uint64_t all = before(1, 2);
  for (std::uint64_t left = 2; left < 1000; ++left) {
    const std::uint64_t right = (left ^ all) - 0x9E3779B97F4A7C15U - (left << 6) - (left >> 2);
    ASSERT_EQ(before(left, right), all);
    ASSERT_NE(mix(left, right), mix(1, 2));
  }
  EXPECT_NE(mix(1, 2), mix(2, 1));
}

TEST(KeyedHash, OfATextKeepsEveryUnit) {
  using Tarvelon::metamodel::native::keyedHash;
  std::set<std::uint64_t> hashes;
  std::size_t count = 0;
  for (std::size_t size = 0; size <= 40; ++size) {
    std::u16string text(size, u'\0');
    ++count;
    hashes.insert(keyedHash(7, text));
    for (char16_t& unit : text) {
      for (unsigned bit = 0; bit < 16; ++bit, ++count) {
        unit = static_cast<char16_t>(1U << bit);
        hashes.insert(keyedHash(7, text));
      }
      unit = 0;
    }
  }
  EXPECT_EQ(hashes.size(), count);
  EXPECT_NE(keyedHash(7, u"Brakes"), keyedHash(8, u"Brakes"));
}

TEST(KeyedHash, DiffersInEachProcessAndNotInOne) {
  using Tarvelon::metamodel::native::keyedHash;
  using Tarvelon::metamodel::native::kHashKey;
  EXPECT_NE(kHashKey.first, kHashKey.second);
  EXPECT_EQ(keyedHash(std::string_view("Brakes")), keyedHash(std::string_view("Brakes")));
  EXPECT_NE(keyedHash(std::string_view("Brakes")), keyedHash(std::string_view("Brakez")));
  EXPECT_NE(keyedHash(std::string_view()), keyedHash(std::string_view("\0", 1)));
  EXPECT_EQ(keyedHash(std::u16string_view(u"Brakes")), keyedHash(std::u16string_view(u"Brakes")));
}

}  // namespace
