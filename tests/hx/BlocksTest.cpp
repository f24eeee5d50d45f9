#include <algorithm>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/platform/hx/Blocks.h"
#include "tests/support/Uninstrumented.h"

namespace hx {
namespace {

constexpr std::size_t kSize = Blocks::sizeFor(64);

TEST(Blocks, AreAsLargeAsTheSizeSays) {
  EXPECT_EQ(Blocks::sizeFor(1), 0U);
  EXPECT_EQ(Blocks::sizeFor(40), 0U);
  EXPECT_EQ(Blocks::sizeFor(41), 1U);
  EXPECT_EQ(Blocks::sizeFor(56), 1U);
  EXPECT_EQ(Blocks::sizeFor(Blocks::kLargest), Blocks::kSizes - 1);
  EXPECT_EQ(Blocks::sizeFor(Blocks::kLargest + 1), Blocks::kSizes);
  std::vector<unsigned char*> blocks;
  for (int i = 0; i < 10; ++i) {
    blocks.push_back(static_cast<unsigned char*>(Blocks::take(kSize)));
    std::fill_n(blocks.back(), 64, static_cast<unsigned char>(i));
  }
  for (int i = 0; i < 10; ++i) EXPECT_EQ(blocks[static_cast<std::size_t>(i)][63], i);
  for (unsigned char* block : blocks) Blocks::give(kSize, block);
}

// With AddressSanitizer no block is reused.
UNINSTRUMENTED_TEST(Blocks, TheLastOneThatCameBackIsReused) {
  void* first = Blocks::take(kSize);
  Blocks::give(kSize, first);
  EXPECT_EQ(Blocks::take(kSize), first);
  utFree(first);
}

TEST(Blocks, FailByRequestThoughThereIsOne) {
  void* block = Blocks::take(kSize);
  Blocks::give(kSize, block);
  utFailAllocation(1);
  EXPECT_EQ(Blocks::take(kSize), nullptr);
  utFree(Blocks::take(kSize));
}

TEST(Blocks, FailByRequestOnOneThreadAlone) {
  utFailAllocation(1);
  void* block = nullptr;
  std::thread([&block] { block = utMalloc(8); }).join();
  EXPECT_NE(block, nullptr);
  utFree(block);
  EXPECT_EQ(utMalloc(8), nullptr);
}

TEST(Blocks, ComeBackOnAnotherThread) {
  std::vector<void*> blocks;
  for (int i = 0; i < 5000; ++i) blocks.push_back(Blocks::take(kSize));
  std::thread([&blocks] {
    for (void* block : blocks) Blocks::give(kSize, block);
  }).join();
}

TEST(Counts, AreSumsOfAllThreads) {
  const std::size_t before = sumOf(Counted::Bindings);
  addTo(Counted::Bindings, 2);
  std::thread([before] {
    addTo(Counted::Bindings, -1);
    EXPECT_EQ(sumOf(Counted::Bindings), before + 1);
  }).join();
  EXPECT_EQ(sumOf(Counted::Bindings), before + 1);
  addTo(Counted::Bindings, -1);
}

TARVELON_THREAD_LOCAL int* tRuns = nullptr;
void countRun() noexcept { ++*tRuns; }
TARVELON_THREAD_LOCAL ThreadEnd tEnd{&countRun};

TEST(ThreadEnds, RunOnceForEachThreadThatEnteredThem) {
  int runs = 0;
  std::thread([&runs] {
    tRuns = &runs;
    EXPECT_TRUE(runAtThreadEnd(tEnd));
  }).join();
  EXPECT_EQ(runs, 1);
  std::thread([] {}).join();
  EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace hx
