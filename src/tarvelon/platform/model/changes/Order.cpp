#include "tarvelon/platform/model/changes/Order.h"

#include <vector>

#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::metamodel::native {

namespace {

using Kind = Step::Kind;

/// A Move or an Exchange, as `kind` says.
Step reordering(Kind kind, Instance& object, unsigned slot, std::uint32_t from, std::uint32_t to) noexcept {
  return {&object, Word{.bits = from}, Word{.bits = to}, 0, static_cast<std::uint8_t>(slot), kind, true,
          true};
}
void makeOne(Kind kind, Instance& object, unsigned slot, std::uint32_t from, std::uint32_t to) {
  Batch batch(object.model());
  batch.reserve(1);
  make(reordering(kind, object, slot, from, to));
}

/// Every permutation consists of cycles. Within a cycle, each exchange brings one element to its final place.
void exchangeInCycles(Instance& object, unsigned slot, std::span<const std::uint32_t> order) {
  std::vector<bool> isDone(order.size());
  Batch batch(object.model());
  batch.reserve(order.size());
  for (std::uint32_t start = 0; start < order.size(); ++start) {
    for (std::uint32_t place = start; !isDone[place]; place = order[place]) {
      isDone[place] = true;
      if (order[place] != start) make(reordering(Kind::Exchange, object, slot, place, order[place]));
    }
  }
}

/// Whether each place from `begin` to before `end` gets the element that is `by` places further on.
bool isShifted(std::span<const std::uint32_t> order, std::uint32_t begin, std::uint32_t end, int by) {
  for (std::uint32_t place = begin; place < end; ++place) {
    if (std::int64_t{order[place]} != std::int64_t{place} + by) return false;
  }
  return true;
}

}  // namespace

void moveElement(Instance& object, unsigned slot, std::uint32_t from, std::uint32_t to) {
  makeOne(Kind::Move, object, slot, from, to);
}

void exchangeElements(Instance& object, unsigned slot, std::uint32_t left, std::uint32_t right) {
  makeOne(Kind::Exchange, object, slot, left, right);
}

void arrangeElements(Instance& object, unsigned slot, std::span<const std::uint32_t> order) {
  const auto size = static_cast<std::uint32_t>(order.size());
  std::uint32_t first = 0;
  while (first < size && order[first] == first) ++first;
  if (first == size) return;
  std::uint32_t last = size - 1;
  while (order[last] == last) --last;
  // If only one element moves and the others shift, one step is enough.
  if (order[last] == first && isShifted(order, first, last, 1)) {
    moveElement(object, slot, first, last);
  } else if (order[first] == last && isShifted(order, first + 1, last + 1, -1)) {
    moveElement(object, slot, last, first);
  } else {
    exchangeInCycles(object, slot, order);
  }
}

}  // namespace Tarvelon::metamodel::native
