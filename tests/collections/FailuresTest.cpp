// Refused calls: the exact error text, and unchanged contents.
#include <functional>
#include <limits>

#include "tests/collections/Support.h"

using namespace collections;

namespace {

using Call = std::function<void(SequenceIntf&, int index)>;

constexpr const char* kNotPositive = "sequence index must be positive";
constexpr const char* kOutOfBounds = "sequence index out of bounds";
constexpr const char* kEmpty = "sequence is empty";
constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

const Call kAt = [](SequenceIntf& sequence, int index) { sequence.generic_at(kDeviant, index); };
const Call kInsert = [](SequenceIntf& s, int index) { s.generic_insert(kDeviant, index, ref(9)); };
const Call kErase = [](SequenceIntf& sequence, int index) { sequence.generic_erase(kDeviant, index); };
const Call kReplace = [](SequenceIntf& s, int index) { s.generic_replace(kDeviant, index, ref(9)); };
const Call kFront = [](SequenceIntf& sequence, int) { sequence.generic_front(kDeviant); };
const Call kBack = [](SequenceIntf& sequence, int) { sequence.generic_back(kDeviant); };
const Call kPopBack = [](SequenceIntf& sequence, int) { sequence.generic_pop_back(kDeviant); };
const Call kPopFront = [](SequenceIntf& sequence, int) { sequence.generic_pop_front(kDeviant); };

/// A call that checks an index, and the line number in the error for a negative index. The error for an index
/// that is too large has the next line number.
struct IndexRow {
  const char* name;
  Call call;
  int line;
  /// How far behind the last element the index may be.
  int beyond;
};
struct EmptyRow {
  const char* name;
  Call call;
  int line;
};

struct ListRows {
  using Sequence = List;
  static constexpr const char* kSite = "kernel/containers/sequence/list/ListQImplForPrimitives";
  static std::vector<IndexRow> indexRows() {
    return {{"at", kAt, 131, 0},
            {"insert", kInsert, 200, 1},
            {"erase", kErase, 243, 0},
            {"replace", kReplace, 309, 0}};
  }
  static std::vector<EmptyRow> emptyRows() {
    return {{"front", kFront, 141},
            {"back", kBack, 150},
            {"pop_back", kPopBack, 254},
            {"pop_front", kPopFront, 262}};
  }
};

template <class MultiIndex>
struct MultiIndexRows {
  using Sequence = MultiIndex;
  static constexpr const char* kSite = "kernel/containers/sequence/multi_index/MultiIndexImplForPrimitives";
  static std::vector<IndexRow> indexRows() {
    return {{"at", kAt, 251, 0},
            {"insert", kInsert, 314, 1},
            {"erase", kErase, 351, 0},
            {"replace", kReplace, 412, 0}};
  }
  static std::vector<EmptyRow> emptyRows() {
    return {{"front", kFront, 261},
            {"back", kBack, 270},
            {"pop_back", kPopBack, 362},
            {"pop_front", kPopFront, 371}};
  }
};

template <class Rows>
class Failures : public testing::Test {
 protected:
  /// Expects that the call is refused with that text, and that the sequence still contains `values`.
  void expectRefused(const char* name, const Call& call, int index, const Values& values,
                     const std::string& text) {
    typename Rows::Sequence sequence;
    push(sequence, values);
    EXPECT_EQ(raised([&] { call(sequence, index); }), text) << name << " " << index;
    EXPECT_EQ(valuesOf(sequence), values) << name << " " << index;
  }
};
using AllRows = testing::Types<ListRows, MultiIndexRows<Multi>, MultiIndexRows<Unique>>;
TYPED_TEST_SUITE(Failures, AllRows);

const std::vector<Values> kContents{{}, {4}, {4, 2, 7}};

}  // namespace

TYPED_TEST(Failures, ANegativeIndex) {
  for (const auto& row : TypeParam::indexRows()) {
    const auto text = failure(kNotPositive, TypeParam::kSite, row.line);
    for (const auto& values : kContents) {
      for (int index : {-1, -2, kLeast + 1, kLeast}) {
        this->expectRefused(row.name, row.call, index, values, text);
      }
    }
  }
}

TYPED_TEST(Failures, AnIndexTooLarge) {
  for (const auto& row : TypeParam::indexRows()) {
    const auto text = failure(kOutOfBounds, TypeParam::kSite, row.line + 1);
    for (const auto& values : kContents) {
      const int first = static_cast<int>(values.size()) + row.beyond;
      for (int index : {first, first + 1, first + 2, kMost - 1, kMost}) {
        this->expectRefused(row.name, row.call, index, values, text);
      }
    }
  }
}

TYPED_TEST(Failures, TheLastIndexIsNone) {
  for (const auto& row : TypeParam::indexRows()) {
    typename TypeParam::Sequence sequence;
    push(sequence, {4, 2, 7});
    EXPECT_EQ(raised([&] { row.call(sequence, 2 + row.beyond); }), "nothing was raised") << row.name;
  }
}

TYPED_TEST(Failures, AnEmptySequence) {
  for (const auto& row : TypeParam::emptyRows()) {
    this->expectRefused(row.name, row.call, 0, {}, failure(kEmpty, TypeParam::kSite, row.line));
  }
}

TYPED_TEST(Failures, ASequenceThatBecameEmpty) {
  typename TypeParam::Sequence sequence;
  push(sequence, {1});
  sequence.generic_pop_front(kDeviant);
  for (const auto& row : TypeParam::emptyRows()) {
    EXPECT_EQ(raised([&] { row.call(sequence, 0); }), failure(kEmpty, TypeParam::kSite, row.line));
  }
}

TEST(ListFailures, KeepTheSharedPayload) {
  using Null = Performance::COWWrapperTypedData<std::vector<Kind>>;
  List list;
  const int before = Null::getSharedNull()->mRefCount.load();
  for (const auto& row : ListRows::indexRows()) raised([&] { row.call(list, 5); });
  for (const auto& row : ListRows::emptyRows()) raised([&] { row.call(list, 0); });
  EXPECT_EQ(Null::getSharedNull()->mRefCount.load(), before);
}
