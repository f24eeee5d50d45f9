#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/platform/hx/FreeList.h"

namespace hx {
namespace {

TEST(FreeList, GivesStorageOfItsSize) {
  FreeList list(64);
  std::vector<unsigned char*> blocks;
  for (int i = 0; i < 10; ++i) {
    blocks.push_back(static_cast<unsigned char*>(list.take()));
    std::fill_n(blocks.back(), 64, static_cast<unsigned char>(i));
  }
  for (int i = 0; i < 10; ++i) EXPECT_EQ(blocks[static_cast<std::size_t>(i)][63], i);
  for (unsigned char* block : blocks) utFree(block);
}

TEST(FreeList, ReusesTheLastBlockThatCameBack) {
  if (hx::kHasAsan) GTEST_SKIP() << "blocks are not reused where every use is watched";
  FreeList list(64);
  void* first = list.take();
  list.give(first);
  EXPECT_EQ(list.take(), first);
  utFree(first);
}

TEST(FreeList, FailsByRequestThoughItHasABlock) {
  FreeList list(64);
  void* block = list.take();
  list.give(block);
  utFailAllocation(1);
  EXPECT_EQ(list.take(), nullptr);
  utFree(list.take());
}

}  // namespace
}  // namespace hx
