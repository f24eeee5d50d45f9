#include "tarvelon/platform/model/copy/Tree.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "tarvelon/platform/model/copy/Visit.h"
#include "tarvelon/platform/model/objects/ModelObjects.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::metamodel::native {

Tree::Tree(Instance& root) { grow({{&root, kNone, 0, 0, ClassData::kNoSlot}}); }

Tree::Tree(const NativeModel& model) : mIsWhole(true) {
  std::vector<Node> pending;
  for (Instance* root : rootsOf(model)) {
    pending.push_back({root, kNone, static_cast<std::uint32_t>(pending.size()), 0, ClassData::kNoSlot});
  }
  std::ranges::reverse(pending);
  grow(std::move(pending));
}

/// `pending` is a stack of the nodes that are still to be added; the next one is at its end.
void Tree::grow(std::vector<Node> pending) {
  while (!pending.empty()) {
    const Node node = pending.back();
    pending.pop_back();
    const std::uint32_t index = size();
    mNodes.push_back(node);
    const auto first = static_cast<std::ptrdiff_t>(pending.size());
    forEachTarget(*node.object, node.object->cls().holdingSlots,
                  [&](Instance& held, unsigned slot, std::uint32_t position) {
                    pending.push_back({&held, index, position, 0, static_cast<std::uint8_t>(slot)});
                  });
    std::reverse(pending.begin() + first, pending.end());
  }
  for (std::uint32_t index = size(); index-- > 0;) {
    Node& node = mNodes[index];
    node.end = std::max(node.end, index + 1);
    if (node.parent != kNone) mNodes[node.parent].end = std::max(mNodes[node.parent].end, node.end);
  }
}

// Objects that were created one after another have consecutive numbers. Sixteen consecutive numbers share a
// block of the table.
std::uint32_t Tree::home(std::uint32_t number) const noexcept {
  const std::uint64_t block = (number >> 4) * std::uint64_t{0x9E3779B97F4A7C15U};
  return (static_cast<std::uint32_t>(block >> mShift) << 4 | (number & 15)) &
         static_cast<std::uint32_t>(mEntries.size() - 1);
}

void Tree::index() {
  if (!mEntries.empty()) return;
  const std::size_t capacity = std::max<std::size_t>(32, std::bit_ceil(2 * mNodes.size()));
  mEntries.resize(capacity, {0, kNone});
  mShift = 64 - static_cast<unsigned>(std::countr_zero(capacity) - 4);
  for (std::uint32_t node = 0; node < size(); ++node) {
    const std::uint32_t number = mNodes[node].object->number();
    std::size_t place = home(number);
    while (mEntries[place].node != kNone) place = (place + 1) & (capacity - 1);
    mEntries[place] = {number, node};
  }
}

std::uint32_t Tree::find(const Instance& object) const noexcept {
  std::size_t place = home(object.number());
  while (mEntries[place].node != kNone && mEntries[place].number != object.number()) {
    place = (place + 1) & (mEntries.size() - 1);
  }
  return mEntries[place].node;
}

}  // namespace Tarvelon::metamodel::native
