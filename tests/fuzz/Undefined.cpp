#include "tests/fuzz/Undefined.h"

#include <algorithm>

#include "tests/fuzz/Catalog.h"

namespace fuzz {

namespace {

using ruvo::HostValue;
using ruvo::RVOInterface;
using ruvo::RVOInterfacePtr;

Kind kindOf(ruvo::Class& cls) { return Catalog::instance().membersOf(cls).kind; }

bool isValueIterator(const HostValue& value) {
  return value.kind() == HostValue::Kind::Object &&
         kindOf(ruvo::classOf(*value.object())) == Kind::ValueIterator;
}

bool areEqual(RVOInterface* left, RVOInterface* right) {
  const HostValue other = HostValue::ofObject(right);
  return ruvo::call(left, "eq", {&other, 1}).slot().logical();
}

bool standsAt(RVOInterface* iterator, RVOInterface* sequence, std::string_view edge) {
  const RVOInterfacePtr place(ruvo::call(sequence, edge, {}).object());
  return areEqual(iterator, place);
}

/// Whether `last` can be reached from `first`.
bool isInOrder(RVOInterface* first, RVOInterface* last, RVOInterface* sequence) {
  const RVOInterfacePtr place(ruvo::call(first, "clone", {}).object());
  for (int left = ruvo::call(sequence, "size", {}).slot().int32(); left >= 0; --left) {
    if (areEqual(place, last)) return true;
    if (standsAt(place, sequence, "end")) return false;
    ruvo::call(place, "getNext", {});
  }
  return false;
}

/// getNext, getPrev and item do not check for the ends, and no method of an iterator checks the iterator it
/// is compared with.
bool isUndefinedStep(World& world, std::string_view method, RVOInterface* iterator,
                     std::span<const HostValue> rest) {
  const Held* held = world.find(iterator);
  // An iterator whose sequence is unknown may be invalid.
  if (!held || !held->sequence) return true;
  if (!std::all_of(rest.begin(), rest.end(), isValueIterator)) return true;
  if (method == "getNext" || method == "item") return standsAt(iterator, held->sequence, "end");
  return method == "getPrev" && standsAt(iterator, held->sequence, "begin");
}

/// Whether the value is empty, in any form.
bool isNothing(const HostValue& value) {
  return value.kind() == HostValue::Kind::Empty ||
         (value.kind() == HostValue::Kind::Text && value.array() && value.text().empty());
}

/// insert and erase do not check their iterators: missing, of another sequence, at the end, in the wrong
/// order.
bool isUndefinedPlace(World& world, std::string_view method, RVOInterface* sequence,
                      std::span<const HostValue> rest) {
  const bool isErase = method == "erase";
  if (!isErase && method != "insert") return false;
  const auto given = isErase ? rest : rest.first(std::min<std::size_t>(rest.size(), 1));
  if (std::any_of(given.begin(), given.end(), isNothing)) return true;
  for (const HostValue& value : given) {
    if (!isValueIterator(value)) continue;
    const Held* held = world.find(value.object());
    if (!held || held->sequence != sequence) return true;
  }
  if (!isErase || given.empty() || !isValueIterator(given[0])) return false;
  if (given.size() == 1) return standsAt(given[0].object(), sequence, "end");
  return isValueIterator(given[1]) && !isInOrder(given[0].object(), given[1].object(), sequence);
}

}  // namespace

bool isUndefined(World& world, ruvo::Class& cls, std::string_view method, RVOInterface* self,
                 std::span<const HostValue> arguments) {
  const Kind kind = kindOf(cls);
  if (kind != Kind::ValueIterator && kind != Kind::ValueSequence) return false;
  if (!self && (method == "make" || method == "makeUnique")) return false;
  auto rest = arguments;
  if (!self) {
    if (rest.empty() || rest[0].kind() != HostValue::Kind::Object) return true;
    self = rest[0].object();
    rest = rest.subspan(1);
  }
  if (kindOf(ruvo::classOf(*self)) != kind) return false;
  return kind == Kind::ValueIterator ? isUndefinedStep(world, method, self, rest)
                                     : isUndefinedPlace(world, method, self, rest);
}

bool takesElementsOut(ruvo::Class& cls, std::string_view method) {
  constexpr std::string_view kMethods[] = {"erase", "clear", "pop_back", "pop_front", "removeAll"};
  return kindOf(cls) == Kind::ValueSequence &&
         std::find(std::begin(kMethods), std::end(kMethods), method) != std::end(kMethods);
}

}  // namespace fuzz
