// Turns the decisions of a program into objects, properties and values.

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "tests/world/World.h"

namespace world {

namespace {

using Tarvelon::metamodel::Kind;

constexpr std::u16string_view kTexts[] = {
    u"",
    u"a",
    u"b",
    u"ab",
    u"A",
    u"Name",
    u"two words",
    u" lead",
    u"<",
    u"&'\"",
    u"a\nb\tc",
    u"\u00e4\u20ac",
    u"\xd83d\xde00",
    u"STANDARD",
    u"trail ",
    u"a]]>b",
    u"a text that is longer than what fits into a short one, and goes on for some more words"};
constexpr double kNumbers[] = {0, -0.0, 1, -1, 0.1, 1e300, 5e-324, std::numeric_limits<double>::infinity()};
constexpr std::int32_t kIntegers[] = {0,
                                      1,
                                      -1,
                                      2,
                                      7,
                                      255,
                                      65536,
                                      std::numeric_limits<std::int32_t>::max(),
                                      std::numeric_limits<std::int32_t>::min()};
/// Classes that contain or refer to each other or themselves, and have opposites.
constexpr std::string_view kOften[] = {"common.Package",
                                       "common.Package",
                                       "common.Sdg",
                                       "common.SdgCaption",
                                       "common.Sdx",
                                       "common.ModeDeclaration",
                                       "common.ModeDeclarationGroup",
                                       "variant.SystemConst",
                                       "variant.SystemConstValue",
                                       "variant.SystemConstValueSet",
                                       "variant.PredefinedVariant",
                                       "behavior.Runnable",
                                       "behavior.InitEvent",
                                       "behavior.InternalBehavior",
                                       "behavior.PortAPIOption",
                                       "component.AtomicComponent",
                                       "port.DataSenderPort",
                                       "documentation.Annotation"};

std::vector<const Class*> often() {
  std::vector<const Class*> found;
  for (const std::string_view name : kOften) {
    for (const Class* cls : concrete()) {
      if (cls->name().ends_with("." + std::string(name))) found.push_back(cls);
    }
  }
  return found;
}

}  // namespace

int World::anyObject() {
  const auto& objects = mirror().now.objects;
  if (objects.empty()) return -1;
  // Counts from the newest object, because programs mostly continue with new objects.
  constexpr std::size_t kYoung = 4;
  const std::size_t place = mIn->next();
  const std::size_t count = place % 2 == 0 ? std::min(kYoung, objects.size()) : objects.size();
  auto found = objects.rbegin();
  std::advance(found, static_cast<std::ptrdiff_t>(place / 2 % count));
  return found->first;
}

int World::anyObject(const Class& cls) {
  std::vector<int> fitting;
  for (const auto& [id, object] : mirror().now.objects) {
    if (object.cls->isKindOf(cls)) fitting.push_back(id);
  }
  return fitting.empty() ? -1 : fitting[fitting.size() - 1 - below(fitting.size())];
}

const Class& World::anyClass() {
  static const std::vector<const Class*> frequent = often();
  if (!mIn->oneIn(3)) return *mIn->pick(frequent);
  const std::size_t high = mIn->next();
  return *concrete()[(high * 256 + mIn->next()) % concrete().size()];
}

unsigned World::anySlot(int id, const std::function<bool(const Slot&)>& fits) {
  if (id < 0) return Class::kNone;
  const auto& slots = mirror().now.at(id).cls->slots;
  std::vector<unsigned> fitting;
  for (unsigned slot = 0; slot < slots.size(); ++slot) {
    if (slots[slot].isWritable() && fits(slots[slot])) fitting.push_back(slot);
  }
  return fitting.empty() ? Class::kNone : mIn->pick(fitting);
}

unsigned World::anyList(int id, bool isFilled) {
  if (id < 0) return Class::kNone;
  const Class& cls = *mirror().now.at(id).cls;
  return anySlot(id, [&](const Slot& each) {
    const auto slot = static_cast<unsigned>(&each - cls.slots.data());
    return each.isMany() && (!isFilled || !mirror().now.items(id, slot).empty());
  });
}

unsigned World::anyOptional(int id, bool isFilled) {
  if (id < 0) return Class::kNone;
  const Class& cls = *mirror().now.at(id).cls;
  return anySlot(id, [&](const Slot& each) {
    const auto slot = static_cast<unsigned>(&each - cls.slots.data());
    return !each.isMany() && !each.isRequired() && (!isFilled || !mirror().now.items(id, slot).empty());
  });
}

Item World::plainItem(const Slot& slot) {
  switch (slot.row().type->kind) {
    case Kind::String: {
      // An element of a list of texts must not be empty.
      const std::size_t least = slot.isMany() ? 1 : 0;
      return {0, std::u16string(kTexts[least + below(std::size(kTexts) - least)]), -1};
    }
    case Kind::Boolean:
      return {below(2), {}, -1};
    case Kind::Integer:
      return {static_cast<std::uint32_t>(mIn->pick(kIntegers)), {}, -1};
    case Kind::DataType:
      return {below(static_cast<std::size_t>(literalsOf(*slot.row().type->enumeration))), {}, -1};
    default:
      return {std::bit_cast<std::uint64_t>(mIn->pick(kNumbers)), {}, -1};
  }
}

std::optional<Item> World::anyItem(const Slot& slot) {
  if (!slot.isReference()) return plainItem(slot);
  const int target = anyObject(*slot.type);
  if (target < 0) return {};
  return Item{0, {}, target};
}

bool World::makesCircle(int id, unsigned slot, const Item& item) {
  return mirror().now.slotAt(id, slot).holds() && mirror().now.holdsOrIs(item.object, id);
}

const Property& World::declaration(const Slot& slot) { return mIn->pick(slot.all); }

std::string World::told(int id) const {
  const Mirror& model = *mModels[mCurrent];
  return "o" + std::to_string(model.number) + "_" + std::to_string(id);
}

std::string World::told(int id, unsigned slot) const {
  return told(id) + "." + mModels[mCurrent]->now.slotAt(id, slot).row().name;
}

}  // namespace world
