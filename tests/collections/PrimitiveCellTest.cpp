#include <cstring>
#include <limits>

#include "tests/collections/Support.h"

using namespace collections;

namespace {

const K7Q::PrimitiveCell& cellOf(const Ref& ref) {
  return *static_cast<const K7Q::PrimitiveCell*>(ref.value());
}

static_assert(offsetof(K7Q::PrimitiveCell, value) == 0 && offsetof(K7Q::PrimitiveCell, count) == 4);
static_assert(sizeof(K7Q::PrimitiveCell) == 8);
static_assert(sizeof(Ref) == 4 * sizeof(void*));

}  // namespace

TEST(PrimitiveRef, HasFourWordsInOrder) {
  const Ref made = ref(3);
  void* words[4];
  std::memcpy(words, &made, sizeof(words));
  EXPECT_EQ(words[0], made.value());
  EXPECT_EQ(words[1], nullptr);
  EXPECT_EQ(words[2], reinterpret_cast<void*>(&K7Q::PrimitiveCell::manage));
  EXPECT_EQ(words[3], reinterpret_cast<void*>(&K7Q::PrimitiveCell::equal));
}

TEST(PrimitiveRef, CarriesACopyOfTheValue) {
  for (int each : {0, 3, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(value(ref(each)), each);
  }
}

TEST(PrimitiveRef, CanBeReadThroughItsFirstWord) {
  const Ref made = ref(2);
  EXPECT_EQ(static_cast<const Kind*>(made.value())->value(), 2);
}

TEST(PrimitiveRef, HasTheFirstReferenceOnItsCell) { EXPECT_EQ(cellOf(ref(1)).count, 1); }

TEST(PrimitiveRef, CountsItsCopies) {
  const Ref first = ref(1);
  {
    const Ref second = first;
    EXPECT_EQ(second.value(), first.value());
    EXPECT_EQ(cellOf(first).count, 2);
  }
  EXPECT_EQ(cellOf(first).count, 1);
}

TEST(PrimitiveRef, FreesItsCellWithTheLastReference) {
  const auto before = allocations::live();
  {
    auto first = std::make_unique<Ref>(ref(1));
    const Ref second = *first;
    EXPECT_EQ(allocations::live(), before + 2);
    first.reset();
    EXPECT_EQ(allocations::live(), before + 1);
    EXPECT_EQ(value(second), 1);
  }
  EXPECT_EQ(allocations::live(), before);
}

TEST(PrimitiveRef, TakesOneAllocation) {
  const auto before = allocations::count();
  ref(1);
  EXPECT_EQ(allocations::count(), before + 1);
}

TEST(PrimitiveRef, EqualsARefOfTheSameValue) {
  EXPECT_TRUE(ref(1).equals(ref(1)));
  EXPECT_FALSE(ref(1).equals(ref(2)));
}

TEST(PrimitiveCell, IsLetPassWhereThereIsNone) {
  K7Q::PrimitiveCell::manage(nullptr, true);
  K7Q::PrimitiveCell::manage(nullptr, false);
}
