#include <cstdint>
#include <new>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/collections/CopyOnWrite.h"
#include "tests/collections/Allocations.h"

namespace {

using Data = std::vector<int>;
using Payload = Performance::COWWrapperTypedData<Data>;
using Token = Performance::COWDataAccessToken<Data>;

/// A wrapper with public access to its fields.
class Wrapper : public Performance::COWWrapperContainerSequential<Data> {
 public:
  Payload* payload() const { return mData; }
  int tokens() const { return mTokenCount; }
  const char* addressOfData() const { return reinterpret_cast<const char*>(&mData); }
  const char* addressOfTokens() const { return reinterpret_cast<const char*>(&mTokenCount); }
};

Payload* sharedNull() { return Payload::getSharedNull(); }
int countOf(const Payload* payload) { return payload->mRefCount.load(); }

Wrapper filled(const Data& values) {
  Wrapper wrapper;
  wrapper.detachedData() = values;
  return wrapper;
}

static_assert(!std::is_polymorphic_v<Payload>);
static_assert(std::is_polymorphic_v<Performance::COWWrapper<Data>>);
static_assert(sizeof(Performance::COWWrapper<Data>) == 3 * sizeof(void*));
static_assert(sizeof(Performance::COWWrapperContainerSequential<Data>) == 3 * sizeof(void*));
static_assert(sizeof(Token) == sizeof(void*));
static_assert(std::is_same_v<decltype(Payload::mRefCount), std::atomic<std::int32_t>>);

}  // namespace

TEST(CopyOnWriteLayout, HasTheFieldsInOrder) {
  const auto* start = reinterpret_cast<const char*>(sharedNull());
  EXPECT_EQ(reinterpret_cast<const char*>(&sharedNull()->mRefCount), start);
  EXPECT_EQ(reinterpret_cast<const char*>(&sharedNull()->mValue), start + sizeof(void*));
  const Wrapper wrapper;
  start = reinterpret_cast<const char*>(&wrapper);
  EXPECT_EQ(wrapper.addressOfData(), start + sizeof(void*));
  EXPECT_EQ(wrapper.addressOfTokens(), start + 2 * sizeof(void*));
}

TEST(SharedNull, HoldsItselfAndIsEmpty) {
  EXPECT_EQ(countOf(sharedNull()), 1);
  EXPECT_TRUE(sharedNull()->mValue.empty());
  EXPECT_EQ(sharedNull(), sharedNull());
}

TEST(Wrapper, AllocatesNothingWhenNew) {
  const auto before = allocations::count();
  const Wrapper first;
  const Wrapper second;
  EXPECT_EQ(first.size(), 0U);
  EXPECT_EQ(second.data().size(), 0U);
  EXPECT_EQ(allocations::count(), before);
}

TEST(Wrapper, StartsOnTheSharedNullWithoutTokens) {
  const Wrapper first;
  const Wrapper second;
  EXPECT_EQ(first.payload(), sharedNull());
  EXPECT_EQ(second.payload(), sharedNull());
  EXPECT_EQ(countOf(sharedNull()), 3);
  EXPECT_EQ(first.tokens(), 0);
}

TEST(Wrapper, LeavesTheSharedNullAliveWhenItGoes) {
  { const Wrapper wrapper; }
  EXPECT_EQ(countOf(sharedNull()), 1);
  EXPECT_TRUE(sharedNull()->mValue.empty());
}

TEST(Wrapper, FreesItsOwnPayloadWhenItGoes) {
  const auto before = allocations::live();
  { filled({1, 2, 3}); }
  EXPECT_EQ(allocations::live(), before);
}

TEST(Detach, GivesANewWrapperAPayloadOfItsOwn) {
  Wrapper wrapper;
  EXPECT_EQ(countOf(sharedNull()), 2);
  wrapper.detach();
  EXPECT_NE(wrapper.payload(), sharedNull());
  EXPECT_EQ(countOf(wrapper.payload()), 1);
  EXPECT_EQ(countOf(sharedNull()), 1);
  EXPECT_EQ(wrapper.size(), 0U);
}

TEST(Detach, ChangesNothingTheSecondTime) {
  Wrapper wrapper;
  wrapper.detach();
  auto* const payload = wrapper.payload();
  const auto before = allocations::count();
  wrapper.detach();
  EXPECT_EQ(wrapper.payload(), payload);
  EXPECT_EQ(countOf(payload), 1);
  EXPECT_EQ(allocations::count(), before);
}

TEST(Detach, CopiesWhatIsShared) {
  Wrapper first = filled({1, 2});
  Wrapper second = first;
  EXPECT_EQ(countOf(first.payload()), 2);
  second.detach();
  EXPECT_NE(first.payload(), second.payload());
  EXPECT_EQ(countOf(first.payload()), 1);
  EXPECT_EQ(countOf(second.payload()), 1);
  EXPECT_EQ(first.data(), (Data{1, 2}));
  EXPECT_EQ(second.data(), (Data{1, 2}));
}

TEST(Detach, ChangesNothingWithoutMemory) {
  Wrapper first = filled({1, 2});
  Wrapper second = first;
  const auto live = allocations::live();
  // The first allocation is the payload, the second its elements.
  for (std::size_t allocation : {1U, 2U}) {
    allocations::fail(allocation);
    EXPECT_THROW(second.detach(), std::bad_alloc);
    EXPECT_EQ(second.payload(), first.payload());
    EXPECT_EQ(countOf(first.payload()), 2);
    EXPECT_EQ(allocations::live(), live);
  }
}

TEST(Copy, SharesThePayloadWithoutAllocating) {
  const Wrapper first = filled({1});
  const auto before = allocations::count();
  {
    const Wrapper second = first;
    EXPECT_EQ(second.payload(), first.payload());
    EXPECT_EQ(second.tokens(), 0);
    EXPECT_EQ(countOf(first.payload()), 2);
  }
  EXPECT_EQ(countOf(first.payload()), 1);
  EXPECT_EQ(allocations::count(), before);
}

TEST(PublicDataRef, GivesPrivateDataAndAttachesTheToken) {
  Wrapper wrapper;
  Token token;
  Data& data = wrapper.publicDataRef(token);
  EXPECT_NE(wrapper.payload(), sharedNull());
  EXPECT_EQ(&data, &wrapper.payload()->mValue);
  EXPECT_EQ(wrapper.tokens(), 1);
  data.push_back(7);
  EXPECT_EQ(wrapper.size(), 1U);
}

TEST(PublicDataRef, LeavesTheCountWithATokenThatIsAttached) {
  Wrapper wrapper;
  Token token;
  wrapper.publicDataRef(token);
  wrapper.publicDataRef(token);
  EXPECT_EQ(wrapper.tokens(), 1);
}

TEST(PublicDataRef, MovesATokenFromAnotherWrapper) {
  Wrapper first;
  Wrapper second;
  Token token;
  first.publicDataRef(token);
  second.publicDataRef(token);
  EXPECT_EQ(first.tokens(), 0);
  EXPECT_EQ(second.tokens(), 1);
}

TEST(PublicDataRef, AttachesNothingWithoutMemory) {
  Wrapper first;
  Wrapper second;
  Token token;
  first.publicDataRef(token);
  allocations::fail(1);
  EXPECT_THROW(second.publicDataRef(token), std::bad_alloc);
  EXPECT_EQ(first.tokens(), 1);
  EXPECT_EQ(second.tokens(), 0);
}

TEST(Token, ReleasesNothingWhenNull) {
  Token token;
  token.release();
}

TEST(Token, IsReleasedOnce) {
  Wrapper wrapper;
  Token token;
  wrapper.publicDataRef(token);
  token.release();
  EXPECT_EQ(wrapper.tokens(), 0);
  token.release();
  EXPECT_EQ(wrapper.tokens(), 0);
}

TEST(Token, IsReleasedAtTheEndOfItsScope) {
  Wrapper wrapper;
  {
    Token first;
    Token second;
    wrapper.publicDataRef(first);
    wrapper.publicDataRef(second);
    EXPECT_EQ(wrapper.tokens(), 2);
  }
  EXPECT_EQ(wrapper.tokens(), 0);
}

TEST(Token, IsReleasedOnUnwinding) {
  Wrapper wrapper;
  const auto access = [&wrapper] {
    Token token;
    wrapper.publicDataRef(token);
    throw std::runtime_error("while accessing");
  };
  EXPECT_THROW(access(), std::runtime_error);
  EXPECT_EQ(wrapper.tokens(), 0);
}

TEST(Sequential, InsertsIntoThePrivateCopyAtTheSamePlace) {
  const Wrapper first = filled({1, 2, 3});
  Wrapper second = first;
  const auto place = second.insert(first.data().cbegin() + 1, 9);
  EXPECT_EQ(*place, 9);
  EXPECT_EQ(place - second.data().cbegin(), 1);
  EXPECT_EQ(second.data(), (Data{1, 9, 2, 3}));
  EXPECT_EQ(first.data(), (Data{1, 2, 3}));
}

TEST(Sequential, ErasesFromThePrivateCopyAtTheSamePlace) {
  const Wrapper first = filled({1, 2, 3});
  Wrapper second = first;
  const auto place = second.erase(first.data().cbegin() + 1);
  EXPECT_EQ(*place, 3);
  EXPECT_EQ(place - second.data().cbegin(), 1);
  EXPECT_EQ(second.data(), (Data{1, 3}));
  EXPECT_EQ(first.data(), (Data{1, 2, 3}));
}

TEST(Sequential, InsertsAtAPlaceInTheSharedNull) {
  const Wrapper other;
  Wrapper wrapper;
  wrapper.insert(wrapper.data().cend(), 4);
  EXPECT_EQ(wrapper.data(), Data{4});
  EXPECT_EQ(other.size(), 0U);
  EXPECT_EQ(other.payload(), sharedNull());
}

TEST(Sequential, InsertsAnElementOfItsOwn) {
  Wrapper wrapper = filled({1, 2, 3});
  wrapper.insert(wrapper.data().cbegin(), wrapper.data().back());
  EXPECT_EQ(wrapper.data(), (Data{3, 1, 2, 3}));
}

TEST(Sequential, ErasesTheLastElement) {
  Wrapper wrapper = filled({1});
  const auto place = wrapper.erase(wrapper.data().cbegin());
  EXPECT_EQ(place, wrapper.data().cend());
  EXPECT_EQ(wrapper.size(), 0U);
}

TEST(SharedPayload, IsCountedByWrappersOnManyThreads) {
  const Wrapper original = filled({1, 2, 3});
  const auto work = [&original] {
    for (int i = 0; i < 2000; ++i) {
      Wrapper copy = original;
      if (i % 2 == 0) copy.detachedData().push_back(i);
      const Wrapper empty;
    }
  };
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int i = 0; i < 4; ++i) threads.emplace_back(work);
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(countOf(original.payload()), 1);
  EXPECT_EQ(countOf(sharedNull()), 1);
  EXPECT_EQ(original.data(), (Data{1, 2, 3}));
}
