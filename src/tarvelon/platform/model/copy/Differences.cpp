#include <algorithm>
#include <optional>
#include <utility>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/model/api/Difference.h"
#include "tarvelon/platform/model/copy/JsonValues.h"
#include "tarvelon/platform/model/copy/Matching.h"
#include "tarvelon/platform/model/copy/Paths.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::metamodel::native {

namespace {

using Kind = Difference::Kind;

class Comparison {
 public:
  /// REQUIRES: both trees are indexed.
  Comparison(const Tree& older, const Tree& newer, bool areRootsOne)
      : mOlder(older),
        mNewer(newer),
        mOlderPaths(older),
        mNewerPaths(newer),
        mAreRootsOne(areRootsOne),
        mMatching(older, newer, areRootsOne),
        mIsShifted(older.size()) {}

  std::vector<Difference> all();

 private:
  void removed();
  void added();
  void places();
  void changes(const Instance& older, const Instance& newer);
  void change(const Instance& older, const Instance& newer, unsigned slot);
  bool standsInPlace(std::uint32_t older) const;
  void noteShifted(std::uint32_t parent);
  bool areEqual(const Instance& older, const Instance& newer, unsigned slot) const;
  Difference& add(Kind kind, const Instance& object, const Paths& paths);

  const Tree& mOlder;
  const Tree& mNewer;
  Paths mOlderPaths;
  Paths mNewerPaths;
  bool mAreRootsOne;
  Matching mMatching;
  /// Nodes of the older tree whose owner is the same, but whose order among the other contained objects has
  /// changed.
  std::vector<bool> mIsShifted;
  std::vector<Difference> mFound;
};

Difference& Comparison::add(Kind kind, const Instance& object, const Paths& paths) {
  Difference& difference = mFound.emplace_back();
  difference.kind = kind;
  difference.path = paths.path(object);
  difference.cls = shortName(object.cls());
  return difference;
}

/// Calls visit(object, count) for each topmost node without a match: a root, or a node whose owner has a
/// match. `count` is the number of nodes without a match in its subtree that are connected with it, itself
/// included.
template <class IsOpen, class Visit>
void forEachOpenTree(const Tree& tree, IsOpen isOpen, Visit visit) {
  std::vector<std::uint32_t> counts(tree.size());
  for (std::uint32_t node = tree.size(); node-- > 0;) {
    if (!isOpen(node)) continue;
    ++counts[node];
    if (tree[node].parent != Tree::kNone) counts[tree[node].parent] += counts[node];
  }
  for (std::uint32_t node = 0; node < tree.size(); ++node) {
    const std::uint32_t parent = tree[node].parent;
    if (isOpen(node) && (parent == Tree::kNone || !isOpen(parent))) visit(*tree[node].object, counts[node]);
  }
}

void Comparison::removed() {
  forEachOpenTree(
      mOlder, [this](std::uint32_t node) { return mMatching.newerOf(node) == Tree::kNone; },
      [this](const Instance& object, std::uint32_t count) {
        add(Kind::Removed, object, mOlderPaths).objects = count;
      });
}

void Comparison::added() {
  forEachOpenTree(
      mNewer, [this](std::uint32_t node) { return mMatching.olderOf(node) == Tree::kNone; },
      [this](const Instance& object, std::uint32_t count) {
        add(Kind::Added, object, mNewerPaths).objects = count;
      });
}

/// REQUIRES: the node has a match.
bool Comparison::standsInPlace(std::uint32_t older) const {
  if (older == 0 && mAreRootsOne) return true;
  const Tree::Node& before = mOlder[older];
  const Tree::Node& after = mNewer[mMatching.newerOf(older)];
  if (before.parent == Tree::kNone || after.parent == Tree::kNone) return before.parent == after.parent;
  return mMatching.newerOf(before.parent) == after.parent && before.slot == after.slot;
}

/// Finds a longest ascending subsequence and, among all longest ones, one with the most items that kept their
/// place.
class LongestSubsequence {
 public:
  struct Item {
    std::uint32_t rank;  ///< a permutation of the numbers from 0 to the number of items - 1
    bool isKept;
  };
  explicit LongestSubsequence(const std::vector<Item>& items)
      : mBest(items.size() + 1), mBefore(items.size(), kNone) {
    for (std::uint32_t index = 0; index < items.size(); ++index) {
      const Best before = bestBelow(items[index].rank);
      mBefore[index] = before.last;
      add(items[index].rank, {before.length + 1, before.kept + (items[index].isKept ? 1 : 0), index});
    }
  }
  /// Calls visit(index) for each item of the subsequence, from its end.
  template <class Visit>
  void forEach(Visit visit) const {
    const auto count = static_cast<std::uint32_t>(mBefore.size());
    for (std::uint32_t index = bestBelow(count).last; index != kNone; index = mBefore[index]) visit(index);
  }

 private:
  static constexpr std::uint32_t kNone = Tree::kNone;
  /// A subsequence: its length, how many of its items kept their place, and its last item.
  struct Best {
    std::uint32_t length = 0;
    std::uint32_t kept = 0;
    std::uint32_t last = kNone;
    bool isWorseThan(const Best& other) const noexcept {
      return length != other.length ? length < other.length : kept < other.kept;
    }
  };
  // A Fenwick tree of maxima: entry i covers as many ranks below i as the lowest bit of i says.
  Best bestBelow(std::uint32_t rank) const noexcept {
    Best best;
    for (; rank > 0; rank &= rank - 1) {
      if (best.isWorseThan(mBest[rank])) best = mBest[rank];
    }
    return best;
  }
  void add(std::uint32_t rank, const Best& row) noexcept {
    for (std::size_t entry = rank + 1; entry < mBest.size(); entry += entry & (~entry + 1)) {
      if (mBest[entry].isWorseThan(row)) mBest[entry] = row;
    }
  }

  std::vector<Best> mBest;
  std::vector<std::uint32_t> mBefore;
};

/// Marks the contained objects of a node that have changed their order. Only objects that the same property
/// contains in both trees are considered. Those of a longest subsequence in unchanged order are not marked.
void Comparison::noteShifted(std::uint32_t parent) {
  std::vector<std::uint32_t> held;
  bool isSorted = true;
  const auto newerOf = [&](std::uint32_t node) { return mMatching.newerOf(node); };
  mOlder.forEachChild(parent, [&](std::uint32_t child) {
    if (newerOf(child) == Tree::kNone || !standsInPlace(child)) return;
    isSorted = isSorted && (held.empty() || newerOf(held.back()) < newerOf(child));
    held.push_back(child);
  });
  if (isSorted) return;
  std::vector<std::uint32_t> order = held;
  std::ranges::sort(order, {}, newerOf);
  std::vector<LongestSubsequence::Item> items;
  for (const std::uint32_t node : held) {
    const auto rank = std::ranges::lower_bound(order, newerOf(node), {}, newerOf) - order.begin();
    const bool isKept = mOlder[node].position == mNewer[newerOf(node)].position;
    items.push_back({static_cast<std::uint32_t>(rank), isKept});
    mIsShifted[node] = true;
  }
  LongestSubsequence(items).forEach([&](std::uint32_t index) { mIsShifted[held[index]] = false; });
}

void Comparison::places() {
  for (std::uint32_t node = 0; node < mOlder.size(); ++node) {
    if (mMatching.newerOf(node) != Tree::kNone) noteShifted(node);
  }
  for (std::uint32_t node = 0; node < mOlder.size(); ++node) {
    if (mMatching.newerOf(node) == Tree::kNone) continue;
    const Instance& before = *mOlder[node].object;
    const Instance& after = *mNewer[mMatching.newerOf(node)].object;
    const bool isMoved = !standsInPlace(node) || mIsShifted[node];
    if (!isMoved && ownName(before) == ownName(after)) continue;
    Difference& difference = add(isMoved ? Kind::Moved : Kind::Renamed, before, mOlderPaths);
    difference.newPath = mNewerPaths.path(after);
    if (!isMoved) continue;
    for (const bool isUnique : {false, true}) {
      difference.place = mOlderPaths.place(before, isUnique);
      difference.newPlace = mNewerPaths.place(after, isUnique);
      if (difference.place != difference.newPlace) break;
    }
  }
}

bool Comparison::areEqual(const Instance& older, const Instance& newer, unsigned slot) const {
  const ClassData& cls = older.cls();
  const auto isEqual = [&](Word left, Word right) {
    if (isReference(cls, slot)) return mMatching.areSame(*left.object, *right.object);
    if ((cls.textSlots >> slot & 1) == 0) return left.bits == right.bits;
    return left.text->view() == right.text->view();
  };
  if (!isList(cls, slot)) return isEqual(*older.find(slot), *newer.find(slot));
  const WordList& left = *older.find(slot)->list;
  const WordList& right = *newer.find(slot)->list;
  if (left.size() != right.size()) return false;
  for (std::uint32_t index = 0; index < left.size(); ++index) {
    if (!isEqual(left.at(index), right.at(index))) return false;
  }
  return true;
}

template <class PathOf>
std::string valueOf(const Instance& object, unsigned slot, PathOf pathOf) {
  const bool isMany = isList(object.cls(), slot);
  if (!isShown(object, slot)) return isMany ? "[]" : "null";
  std::string text;
  forEachWord(object, slot, [&](Word word, std::uint32_t position) {
    if (isMany) text.append(position == 0 ? "[" : ", ");
    appendJson(text, *object.cls().slotProperties[slot], word, pathOf);
  });
  return isMany ? text.append("]") : text;
}

void Comparison::change(const Instance& older, const Instance& newer, unsigned slot) {
  Difference& difference = add(Kind::Changed, older, mOlderPaths);
  difference.property = older.cls().slotProperties[slot]->row().name;
  difference.isReference = isReference(older.cls(), slot);
  const auto pathIn = [](const Paths& paths, bool isUnique) {
    return [&paths, isUnique](const Instance& target) {
      return isUnique ? paths.uniquePath(target) : paths.path(target);
    };
  };
  // Several objects may have the same name. If so, the names would not show what has changed, and paths by
  // index are used.
  for (const bool isUnique : {false, true}) {
    difference.before = valueOf(older, slot, pathIn(mOlderPaths, isUnique));
    difference.after = valueOf(newer, slot, pathIn(mNewerPaths, isUnique));
    if (!difference.isReference || difference.before != difference.after) return;
  }
}

void Comparison::changes(const Instance& older, const Instance& newer) {
  const std::uint8_t name = older.cls().nameSlot;
  forEachSlot((valueSlots(older) | valueSlots(newer)) & ~older.cls().holdingSlots, [&](unsigned slot) {
    if (slot == name) return;
    const bool wasShown = isShown(older, slot);
    if (wasShown != isShown(newer, slot) || (wasShown && !areEqual(older, newer, slot))) {
      change(older, newer, slot);
    }
  });
}

std::vector<Difference> Comparison::all() {
  removed();
  added();
  places();
  // Renamed objects come after moved ones.
  std::stable_partition(mFound.begin(), mFound.end(),
                        [](const Difference& each) { return each.kind != Kind::Renamed; });
  for (std::uint32_t node = 0; node < mOlder.size(); ++node) {
    const std::uint32_t newer = mMatching.newerOf(node);
    if (newer != Tree::kNone) changes(*mOlder[node].object, *mNewer[newer].object);
  }
  return std::move(mFound);
}

[[noreturn]] void refusePair(const K7Q::ObjectHandle& older, const K7Q::ObjectHandle& newer) {
  const auto told = [](const K7Q::ObjectHandle& each) {
    return describe(K7Q::Object(each.getInterface(), each.getDeviant()));
  };
  throw K7Q::WrongType("diff: expected two models, or two objects of one class, got " + told(older) +
                       " and " + told(newer));
}

/// Compares the trees of two models or of two objects of one class.
std::vector<Difference> compare(Tree older, Tree newer, bool areRootsOne) {
  older.index();
  newer.index();
  return Comparison(older, newer, areRootsOne).all();
}

}  // namespace

}  // namespace Tarvelon::metamodel::native

namespace Tarvelon::metamodel {

std::vector<Difference> differences(const K7Q::ObjectHandle& older, const K7Q::ObjectHandle& newer) {
  using namespace native;  // NOLINT(google-build-using-namespace)
  older.requireValid();
  newer.requireValid();
  auto* olderModel = dynamic_cast<NativeModel*>(older.getInterface());
  auto* newerModel = dynamic_cast<NativeModel*>(newer.getInterface());
  if (olderModel && newerModel) return compare(Tree(*olderModel), Tree(*newerModel), false);
  Instance* olderObject = asInstance(older.getInterface());
  Instance* newerObject = asInstance(newer.getInterface());
  if (!olderObject || !newerObject || &olderObject->cls() != &newerObject->cls()) refusePair(older, newer);
  return compare(Tree(*olderObject), Tree(*newerObject), true);
}

}  // namespace Tarvelon::metamodel
