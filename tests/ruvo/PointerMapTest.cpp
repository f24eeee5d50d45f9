#include <map>
#include <random>

#include <gtest/gtest.h>

#include "tarvelon/platform/ruvo/PointerMap.h"

namespace ruvo {
namespace {

TEST(PointerMap, FindsNothingWhileItIsEmpty) {
  PointerMap<int> map;
  int key = 0;
  EXPECT_EQ(map.find(&key), nullptr);
  EXPECT_FALSE(map.erase(&key));
  EXPECT_EQ(map.size(), 0U);
}

TEST(PointerMap, KeepsTheValueThatWasThere) {
  PointerMap<int> map;
  int key = 0;
  int first = 1;
  int second = 2;
  EXPECT_TRUE(map.insert(&key, &first));
  EXPECT_FALSE(map.insert(&key, &second));
  EXPECT_EQ(map.find(&key), &first);
  EXPECT_EQ(map.size(), 1U);
}

TEST(PointerMap, FindsEveryOtherAfterOneIsErased) {
  // Compares with std::map, over enough steps for all chains of collisions.
  std::mt19937 random(1);
  static int keys[400];
  PointerMap<int> map;
  std::map<int*, int*> expected;
  for (int step = 0; step < 20000; ++step) {
    int* key = &keys[random() % 400];
    if (random() % 2 == 0) {
      EXPECT_EQ(map.insert(key, key), expected.emplace(key, key).second);
    } else {
      EXPECT_EQ(map.erase(key), expected.erase(key) == 1);
    }
    ASSERT_EQ(map.size(), expected.size());
  }
  for (int& key : keys) EXPECT_EQ(map.find(&key), expected.count(&key) ? &key : nullptr);
}

}  // namespace
}  // namespace ruvo
