// Applies random operations to each container and to a plain vector, and compares them after every step.
#include <algorithm>
#include <limits>
#include <random>

#include "tests/collections/Support.h"

using namespace collections;

namespace {

constexpr int kSteps = 100000;
constexpr unsigned kSeed = 20260731;

/// A simple sequence with the documented rules of the containers. Each element has a unique number, so that
/// elements with equal values can be told apart.
class Model {
 public:
  explicit Model(bool isUnique) : mIsUnique(isUnique) {}

  int size() const { return static_cast<int>(mElements.size()); }
  Values values() const {
    Values values;
    for (const auto& element : mElements) values.push_back(element.value);
    return values;
  }
  int at(int index) const { return mElements[static_cast<std::size_t>(index)].value; }
  int idAt(int index) const { return mElements[static_cast<std::size_t>(index)].id; }
  int find(int value) const {
    return indexOf([value](const Element& element) { return element.value == value; });
  }
  int findId(int id) const {
    return indexOf([id](const Element& element) { return element.id == id; });
  }
  /// Returns the index of the element with that value after the insertion.
  int insert(int index, int value) {
    if (mIsUnique && find(value) != size()) return find(value);
    mElements.insert(mElements.begin() + index, {value, ++mLastId});
    return index;
  }
  void erase(int first, int last) { mElements.erase(mElements.begin() + first, mElements.begin() + last); }
  void replace(int index, int value) {
    if (mIsUnique && find(value) != size()) return;
    mElements[static_cast<std::size_t>(index)].value = value;
  }
  int removeAll(int value) {
    const int before = size();
    while (find(value) != size()) erase(find(value), find(value) + 1);
    return before - size();
  }

 private:
  struct Element {
    int value;
    int id;
  };
  template <class Test>
  int indexOf(Test test) const {
    return static_cast<int>(std::find_if(mElements.begin(), mElements.end(), test) - mElements.begin());
  }

  bool mIsUnique;
  std::vector<Element> mElements;
  int mLastId = 0;
};

/// An iterator, and the element that it must refer to.
struct Kept {
  IteratorPtr iterator;
  int id;
};

template <class Sequence>
class Walk {
 public:
  void step() {
    switch (number(0, 16)) {
      case 0:
      case 1:
        return pushBack();
      case 2:
        return pushFront();
      case 3:
      case 4:
        return insertAtIndex();
      case 5:
        return insertAtIterator();
      case 6:
        return eraseAtIndex();
      case 7:
        return eraseAtIterator();
      case 8:
        return eraseRange();
      case 9:
        return popBack();
      case 10:
        return popFront();
      case 11:
        return replace();
      case 12:
        return removeAll();
      case 13:
        return clearNowAndThen();
      case 14:
        return refuse();
      case 15:
        return keepIterator();
      default:
        return read();
    }
  }

  /// Compares the contents and all iterators.
  void compare() {
    ASSERT_EQ(mSequence.generic_size(kDeviant), mModel.size());
    ASSERT_EQ(mSequence.generic_empty(kDeviant), mModel.size() == 0);
    ASSERT_EQ(walk(mSequence), mModel.values());
    for (const auto& kept : mKept) {
      const int index = mModel.findId(kept.id);
      ASSERT_EQ(value(*kept.iterator), mModel.at(index));
      ASSERT_TRUE(kept.iterator->equal(at(index).get()));
    }
  }

 private:
  static constexpr bool kIsUnique = std::is_same_v<Sequence, Unique>;
  static constexpr bool kIsList = std::is_same_v<Sequence, List>;

  int number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(mRandom); }
  int someValue() { return number(-2, kIsUnique ? 40 : 12); }
  int someIndex() { return number(0, mModel.size() - 1); }
  int somePlace() { return number(0, mModel.size()); }
  bool isEmpty() const { return mModel.size() == 0; }
  /// Walks from the nearer end, so that stepping backwards is tested too.
  IteratorPtr at(int index) const {
    if (index <= mModel.size() / 2) return iteratorAt(mSequence, index);
    auto iterator = mSequence.generic_end(kDeviant);
    for (int i = mModel.size(); i > index; --i) iterator->previous(kDeviant);
    return iterator;
  }
  void expectAt(const IteratorPtr& iterator, int index) const {
    EXPECT_TRUE(iterator->equal(iteratorAt(mSequence, index).get()));
  }
  /// Removes invalidated iterators. Any change invalidates all iterators of a list; in the other containers,
  /// only those of removed elements are invalidated.
  void dropStale() {
    if (kIsList) mKept.clear();
    std::erase_if(mKept, [this](const Kept& kept) { return mModel.findId(kept.id) == mModel.size(); });
  }

  void pushBack() {
    const int added = someValue();
    mSequence.generic_push_back(kDeviant, ref(added));
    mModel.insert(mModel.size(), added);
    dropStale();
  }
  void pushFront() {
    const int added = someValue();
    mSequence.generic_push_front(kDeviant, ref(added));
    mModel.insert(0, added);
    dropStale();
  }
  void insertAtIndex() {
    const int index = somePlace();
    const int added = someValue();
    mSequence.generic_insert(kDeviant, index, ref(added));
    mModel.insert(index, added);
    dropStale();
  }
  void insertAtIterator() {
    const int index = somePlace();
    const int added = someValue();
    const auto result = mSequence.generic_insert(kDeviant, at(index).get(), ref(added));
    expectAt(result, mModel.insert(index, added));
    dropStale();
  }
  void eraseAtIndex() {
    if (isEmpty()) return;
    const int index = someIndex();
    mSequence.generic_erase(kDeviant, index);
    mModel.erase(index, index + 1);
    dropStale();
  }
  void eraseAtIterator() {
    if (isEmpty()) return;
    const int index = someIndex();
    const auto result = mSequence.generic_erase(kDeviant, at(index).get());
    mModel.erase(index, index + 1);
    dropStale();
    expectAt(result, index);
  }
  void eraseRange() {
    const int first = somePlace();
    const int last = number(first, std::min(first + 3, mModel.size()));
    const auto result = mSequence.generic_erase(kDeviant, at(first).get(), at(last).get());
    mModel.erase(first, last);
    dropStale();
    expectAt(result, first);
  }
  void popBack() {
    if (isEmpty()) return;
    mSequence.generic_pop_back(kDeviant);
    mModel.erase(mModel.size() - 1, mModel.size());
    dropStale();
  }
  void popFront() {
    if (isEmpty()) return;
    mSequence.generic_pop_front(kDeviant);
    mModel.erase(0, 1);
    dropStale();
  }
  void replace() {
    if (isEmpty()) return;
    const int index = someIndex();
    const int replacement = someValue();
    mSequence.generic_replace(kDeviant, index, ref(replacement));
    mModel.replace(index, replacement);
  }
  void removeAll() {
    const int removed = someValue();
    EXPECT_EQ(mSequence.generic_removeAll(kDeviant, ref(removed)), mModel.removeAll(removed));
    dropStale();
  }
  void clearNowAndThen() {
    if (number(0, 20) != 0) return;
    mSequence.generic_clear(kDeviant);
    mModel.erase(0, mModel.size());
    dropStale();
  }
  void refuse() {
    const int beyond = mModel.size() + number(0, 1) * number(1, std::numeric_limits<int>::max() - 1000);
    const int negative = number(std::numeric_limits<int>::min(), -1);
    EXPECT_THROW(mSequence.generic_at(kDeviant, beyond), K7Q::Exception);
    EXPECT_THROW(mSequence.generic_erase(kDeviant, beyond), K7Q::Exception);
    EXPECT_THROW(mSequence.generic_replace(kDeviant, beyond, ref(0)), K7Q::Exception);
    EXPECT_THROW(mSequence.generic_insert(kDeviant, beyond + 1, ref(0)), K7Q::Exception);
    EXPECT_THROW(mSequence.generic_at(kDeviant, negative), K7Q::Exception);
    EXPECT_THROW(mSequence.generic_insert(kDeviant, negative, ref(0)), K7Q::Exception);
    if (!isEmpty()) return;
    EXPECT_THROW(mSequence.generic_front(kDeviant), K7Q::Exception);
    EXPECT_THROW(mSequence.generic_pop_back(kDeviant), K7Q::Exception);
  }
  void keepIterator() {
    if (isEmpty()) return;
    if (mKept.size() == 4) mKept.erase(mKept.begin());
    const int index = someIndex();
    mKept.push_back({at(index)->clone(), mModel.idAt(index)});
  }
  void read() {
    const int sought = someValue();
    EXPECT_EQ(mSequence.generic_contains(kDeviant, ref(sought)), mModel.find(sought) != mModel.size());
    if (isEmpty()) return;
    const int index = someIndex();
    EXPECT_EQ(value(mSequence.generic_at(kDeviant, index)), mModel.at(index));
    EXPECT_EQ(value(mSequence.generic_front(kDeviant)), mModel.at(0));
    EXPECT_EQ(value(mSequence.generic_back(kDeviant)), mModel.at(mModel.size() - 1));
  }

  std::mt19937 mRandom{kSeed};
  Sequence mSequence;
  Model mModel{kIsUnique};
  std::vector<Kept> mKept;
};

template <class Sequence>
class RandomOperations : public testing::Test {};
using AllKinds = testing::Types<List, Multi, Unique>;
TYPED_TEST_SUITE(RandomOperations, AllKinds);

}  // namespace

TYPED_TEST(RandomOperations, AgreeWithAVector) {
  Walk<TypeParam> walk;
  for (int i = 0; i < kSteps && !this->HasFailure(); ++i) {
    SCOPED_TRACE(testing::Message() << "seed " << kSeed << ", step " << i);
    walk.step();
    walk.compare();
  }
}
