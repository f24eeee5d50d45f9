#include <string>

#include "tarvelon/boundary/k7q/Reference.h"
#include "tarvelon/collections/GenericReferenceCountingSequenceProxy.h"
#include "tests/collections/Support.h"

using namespace collections;

namespace {

using K7Q::Deviant;
using Proxy = K7Q::GenericReferenceCountingSequenceProxy;

static_assert(sizeof(Proxy) <= sizeof(K7Q::SequenceProxy) + sizeof(void*));

constexpr Deviant kSeen{96};

/// Records the calls, and returns values that differ from each other.
struct Recorder final : SequenceIntf {
  explicit Recorder(std::string& log, int& destroyed) : mLog(log), mDestroyed(destroyed) {}
  ~Recorder() override { ++mDestroyed; }

  Ref generic_at(const Deviant& d, int index) const override { return note(d, "at", index), mElement; }
  Ref generic_front(const Deviant& d) const override { return note(d, "front"), mElement; }
  Ref generic_back(const Deviant& d) const override { return note(d, "back"), mElement; }
  IteratorPtr generic_begin(const Deviant& d) const override { return note(d, "begin"), give(); }
  IteratorPtr generic_end(const Deviant& d) const override { return note(d, "end"), give(); }
  void generic_clear(const Deviant& d) override { note(d, "clear"); }
  int generic_size(const Deviant& d) const override { return note(d, "size"), 17; }
  bool generic_empty(const Deviant& d) const override { return note(d, "empty"), true; }
  void generic_insert(const Deviant& d, int index, Ref ref) override { note(d, "insert", index, ref); }
  IteratorPtr generic_insert(const Deviant& d, const IteratorIntf* at, Ref ref) override {
    return note(d, "insert at", indexOf(at), ref), give();
  }
  IteratorPtr generic_erase(const Deviant& d, const IteratorIntf* at) override {
    return note(d, "erase at", indexOf(at)), give();
  }
  IteratorPtr generic_erase(const Deviant& d, const IteratorIntf* at, const IteratorIntf* to) override {
    return note(d, "erase range", indexOf(at) * 10 + indexOf(to)), give();
  }
  void generic_erase(const Deviant& d, int index) override { note(d, "erase", index); }
  void generic_pop_back(const Deviant& d) override { note(d, "pop_back"); }
  void generic_pop_front(const Deviant& d) override { note(d, "pop_front"); }
  void generic_push_back(const Deviant& d, Ref ref) override { note(d, "push_back", -1, ref); }
  void generic_push_front(const Deviant& d, Ref ref) override { note(d, "push_front", -1, ref); }
  void generic_replace(const Deviant& d, int index, Ref ref) override { note(d, "replace", index, ref); }
  bool generic_contains(const Deviant& d, Ref ref) const override {
    return note(d, "contains", -1, ref), true;
  }
  const char* generic_getRuvoName(bool first, bool second, const char* name) const override {
    mLog += std::string("name ") + (first ? "t" : "f") + (second ? "t" : "f");
    return name + 1;
  }
  int generic_removeAll(const Deviant& d, Ref ref) override { return note(d, "removeAll", -1, ref), 23; }

  /// The iterators passed to the calls, and the iterator that the calls return.
  List::Iterator mFirst{List::Iterator::Position()};
  List::Iterator mSecond{List::Iterator::Position()};
  mutable const IteratorIntf* mGiven = nullptr;
  Ref mElement = ref(5);

 private:
  int indexOf(const IteratorIntf* iterator) const {
    return iterator == &mFirst ? 1 : iterator == &mSecond ? 2 : 0;
  }
  IteratorPtr give() const {
    auto iterator = mFirst.clone();
    mGiven = iterator.get();
    return iterator;
  }
  void note(const Deviant& deviant, const char* operation, int index = -1, const Ref& ref = Ref()) const {
    EXPECT_EQ(deviant, kSeen);
    mLog += operation;
    if (index != -1) mLog += " " + std::to_string(index);
    if (!ref.value()) return;
    // One reference of the caller, one of the proxy's parameter, one of this function.
    mLog += " value " + std::to_string(value(ref)) + " count " +
            std::to_string(static_cast<const K7Q::PrimitiveCell*>(ref.value())->count);
  }

  std::string& mLog;
  int& mDestroyed;
};

class SequenceProxyTest : public testing::Test {
 protected:
  SequenceProxyTest() { mProxy->addRef(); }
  ~SequenceProxyTest() override {
    if (mProxy) mProxy->release();
  }
  /// Returns and clears the record of calls.
  std::string take() { return std::exchange(mLog, {}); }

  std::string mLog;
  int mDestroyed = 0;
  Recorder* mRecorder = new Recorder(mLog, mDestroyed);
  SequenceIntf* mProxy = new Proxy(std::unique_ptr<SequenceIntf>(mRecorder));
  Ref mValue = ref(8);
};

}  // namespace

TEST_F(SequenceProxyTest, HandsOnReadingOperations) {
  EXPECT_EQ(mProxy->generic_at(kSeen, 3).value(), mRecorder->mElement.value());
  EXPECT_EQ(take(), "at 3");
  EXPECT_EQ(mProxy->generic_front(kSeen).value(), mRecorder->mElement.value());
  EXPECT_EQ(take(), "front");
  EXPECT_EQ(mProxy->generic_back(kSeen).value(), mRecorder->mElement.value());
  EXPECT_EQ(take(), "back");
  EXPECT_EQ(mProxy->generic_size(kSeen), 17);
  EXPECT_EQ(take(), "size");
  EXPECT_TRUE(mProxy->generic_empty(kSeen));
  EXPECT_EQ(take(), "empty");
  EXPECT_TRUE(mProxy->generic_contains(kSeen, mValue));
  EXPECT_EQ(take(), "contains value 8 count 3");
}

TEST_F(SequenceProxyTest, HandsOnTheNameAndItsFlags) {
  const char* const name = "Name";
  EXPECT_EQ(mProxy->generic_getRuvoName(true, false, name), name + 1);
  EXPECT_EQ(take(), "name tf");
  EXPECT_EQ(mProxy->generic_getRuvoName(false, true, name), name + 1);
  EXPECT_EQ(take(), "name ft");
}

TEST_F(SequenceProxyTest, HandsOnChangesByIndexAndAtTheEnds) {
  mProxy->generic_clear(kSeen);
  EXPECT_EQ(take(), "clear");
  mProxy->generic_erase(kSeen, 4);
  EXPECT_EQ(take(), "erase 4");
  mProxy->generic_pop_back(kSeen);
  EXPECT_EQ(take(), "pop_back");
  mProxy->generic_pop_front(kSeen);
  EXPECT_EQ(take(), "pop_front");
}

TEST_F(SequenceProxyTest, HandsOnACountedRefOfItsOwn) {
  mProxy->generic_insert(kSeen, 6, mValue);
  EXPECT_EQ(take(), "insert 6 value 8 count 3");
  mProxy->generic_insert(kSeen, &mRecorder->mSecond, mValue);
  EXPECT_EQ(take(), "insert at 2 value 8 count 3");
  mProxy->generic_push_back(kSeen, mValue);
  EXPECT_EQ(take(), "push_back value 8 count 3");
  mProxy->generic_push_front(kSeen, mValue);
  EXPECT_EQ(take(), "push_front value 8 count 3");
  mProxy->generic_replace(kSeen, 2, mValue);
  EXPECT_EQ(take(), "replace 2 value 8 count 3");
  EXPECT_EQ(mProxy->generic_removeAll(kSeen, mValue), 23);
  EXPECT_EQ(take(), "removeAll value 8 count 3");
  EXPECT_EQ(static_cast<const K7Q::PrimitiveCell*>(mValue.value())->count, 1);
}

TEST_F(SequenceProxyTest, HandsOnIteratorsAndTheirResults) {
  EXPECT_EQ(mProxy->generic_begin(kSeen).get(), mRecorder->mGiven);
  EXPECT_EQ(take(), "begin");
  EXPECT_EQ(mProxy->generic_end(kSeen).get(), mRecorder->mGiven);
  EXPECT_EQ(take(), "end");
  EXPECT_EQ(mProxy->generic_insert(kSeen, &mRecorder->mFirst, mValue).get(), mRecorder->mGiven);
  take();
  EXPECT_EQ(mProxy->generic_erase(kSeen, &mRecorder->mSecond).get(), mRecorder->mGiven);
  EXPECT_EQ(take(), "erase at 2");
  EXPECT_EQ(mProxy->generic_erase(kSeen, &mRecorder->mFirst, &mRecorder->mSecond).get(), mRecorder->mGiven);
  EXPECT_EQ(take(), "erase range 12");
}

TEST_F(SequenceProxyTest, DestroysTheImplementationWithTheLastReference) {
  mProxy->addRef();
  EXPECT_EQ(mProxy->numRef(), 2);
  mProxy->release();
  EXPECT_EQ(mDestroyed, 0);
  std::exchange(mProxy, nullptr)->release();
  EXPECT_EQ(mDestroyed, 1);
}

TEST_F(SequenceProxyTest, IsASequenceItself) {
  EXPECT_EQ(mProxy->cast(K7Q::tagsOf<SequenceIntf>()), mProxy);
  EXPECT_EQ(mRecorder->numRef(), 0);
}

TEST(SequenceProxy, MayHaveNoImplementation) {
  auto* proxy = new Proxy(nullptr);
  proxy->addRef();
  EXPECT_EQ(proxy->numRef(), 1);
  proxy->release();
}

TEST(SequenceProxy, ReportsACountBelowZero) {
  constexpr const char* kText = "Internal assertion without a message detected! Please fix me asap";
  Proxy proxy(std::make_unique<List>());
  EXPECT_EQ(raised([&] { proxy.release(); }), kText);
  EXPECT_EQ(raised([&] { proxy.addRef(); }), kText);
}

TEST(SequenceProxy, PassesAFailureOfTheImplementation) {
  Proxy proxy(std::make_unique<List>());
  EXPECT_EQ(raised([&] { proxy.generic_front(kDeviant); }),
            failure("sequence is empty", "kernel/containers/sequence/list/ListQImplForPrimitives", 141));
}

TEST(SequenceHandle, CopiesTheDeviantWithThePointerAlone) {
  const K7Q::Sequence<Kind> first(new Proxy(std::make_unique<List>()), Deviant{4});
  const K7Q::Sequence<Kind> second(new Proxy(std::make_unique<List>()), Deviant{8});
  const K7Q::Sequence<Kind> again(first.getInterface(), Deviant{12});
  K7Q::Sequence<Kind> handle = first;
  handle = again;
  EXPECT_EQ(handle.getDeviant(), Deviant{4});
  handle = second;
  EXPECT_EQ(handle.getDeviant(), Deviant{8});
  EXPECT_EQ(handle.getInterface(), second.getInterface());
  EXPECT_EQ(first.getInterface()->numRef(), 2);
  EXPECT_EQ(second.getInterface()->numRef(), 2);
}

TEST(IteratorHandle, ClonesWhatItCopies) {
  List list;
  push(list, {1, 2});
  const K7Q::Iterator<Kind> first(list.generic_begin(kDeviant), Deviant{4});
  const K7Q::Iterator<Kind> second = first;
  EXPECT_NE(second.getInterface(), first.getInterface());
  EXPECT_EQ(second.getDeviant(), Deviant{4});
  EXPECT_EQ(first.getInterface()->numRef(), 1);
  EXPECT_EQ(second.getInterface()->numRef(), 1);
  first.getInterface()->next(kDeviant);
  EXPECT_EQ(value(*second.getInterface()), 1);
}

TEST(IteratorHandle, CopiesNullToNull) {
  const K7Q::Iterator<Kind> null;
  const K7Q::Iterator<Kind> copy = null;
  EXPECT_EQ(copy.getInterface(), nullptr);
}
