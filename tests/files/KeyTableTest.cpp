// Nobody can write a file whose ids all fall onto one place of the tables that find them.

#include <vector>

#include "tarvelon/platform/files/KeyTable.h"
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

/// The number that mixed() gives this for.
constexpr std::uint64_t unmixed(std::uint64_t value) {
  value = unshifted(value, 31) * inverseOf(0x94D049BB133111EB);
  value = unshifted(value, 27) * inverseOf(0xBF58476D1CE4E5B9);
  return unshifted(value, 30);
}
static_assert(mixed(unmixed(12345)) == 12345);

TEST(KeyTable, FindsWhatWasPutIn) {
  files::KeyTable<int> table;
  EXPECT_EQ(table.find(7), nullptr);
  for (int key = 0; key < 1000; ++key) EXPECT_TRUE(table.insert(static_cast<unsigned>(key) * 64, key));
  EXPECT_FALSE(table.insert(64, 5));
  EXPECT_EQ(table.size(), 1000U);
  for (int key = 0; key < 1000; ++key) EXPECT_EQ(table.find(static_cast<unsigned>(key) * 64)->value, key);
  EXPECT_EQ(table.find(1), nullptr);
  table.clear();
  EXPECT_EQ(table.find(64), nullptr);
}

TEST(KeyTable, IsNotToBeFilledAtOnePlace) {
  // Numbers whose low bits are equal when they were mixed, which everybody can do.
  files::KeySet table;
  for (std::uint64_t high = 1; high <= 100000; ++high) table.insert(unmixed(high << 40));
  ASSERT_EQ(table.size(), 100000U);
  EXPECT_LT(table.longestSearch(), 1000U);
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
