#include "tests/world/Observe.h"

#include <algorithm>
#include <bit>

#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/world/Fault.h"

namespace world {

namespace api = Tarvelon::model;
using K7Q::NSInterface::ObjectIntf;
using Tarvelon::metamodel::Kind;

namespace {

int idOf(const ObjectIntf* object, const Ids& ids) {
  const auto found = ids.find(object);
  if (found == ids.end()) throw Fault("an object that should not be there is referred to");
  return found->second;
}

Items itemsOf(ObjectPointer object, const Slot& slot, const Ids& ids) {
  const Property& property = slot.narrowest;
  Items items;
  if (!property.owner->methods->has(object, {}, property.row->id)) return items;
  if (!slot.isMany()) {
    K7Q::Object value;
    property.owner->methods->get(value, object, {}, property.row->id);
    items.push_back(itemOf(value, slot.row(), ids));
    return items;
  }
  const auto sequence = sequenceOf(object, slot);
  const int size = sequence.get().generic_size({});
  for (int index = 0; index < size; ++index) {
    items.push_back(itemOf(sequence.get().generic_at({}, index), slot, ids));
  }
  return items;
}

std::string placeText(const State& state, int id, unsigned slot) {
  return "#" + std::to_string(id) + " " + std::string(state.at(id).cls->shortName()) + "." +
         state.slotAt(id, slot).row().name;
}

std::string valuesText(const State& state, int id, unsigned slot) {
  std::string text;
  for (const Item& item : state.items(id, slot)) text += shown(item, state.slotAt(id, slot).row()) + " ";
  return text.empty() ? "nothing" : text;
}

std::string objectDifference(const State& expected, const State& found, int id) {
  const Object& left = expected.at(id);
  const Object& right = found.at(id);
  if (left.cls != right.cls) return "#" + std::to_string(id) + " is of another class";
  if (left.owner != right.owner || left.ownerSlot != right.ownerSlot) {
    return "#" + std::to_string(id) + " should be held by " + std::to_string(left.owner) +
           ", and is held by " + std::to_string(right.owner);
  }
  for (unsigned slot = 0; slot < left.cls->slots.size(); ++slot) {
    if (expected.items(id, slot) == found.items(id, slot)) continue;
    return placeText(expected, id, slot) + " should be " + valuesText(expected, id, slot) + ", and is " +
           valuesText(found, id, slot);
  }
  return {};
}

}  // namespace

Item itemOf(const K7Q::Object& value, const PropertyRow& row, const Ids& ids) {
  switch (row.type->kind) {
    case Kind::ClassObject:
      return {0, {}, idOf(value.getInterface(), ids)};
    case Kind::String:
      return {0, std::u16string(K7Q::String(value)), -1};
    case Kind::Boolean:
      return {K7Q::Boolean(value) ? 1U : 0U, {}, -1};
    case Kind::Integer:
      return {static_cast<std::uint32_t>(int{K7Q::Integer(value)}), {}, -1};
    case Kind::Double:
      return {std::bit_cast<std::uint64_t>(double{K7Q::Double(value)}), {}, -1};
    case Kind::Real:
      return {std::bit_cast<std::uint64_t>(double{K7Q::Real(value)}), {}, -1};
    case Kind::DataType:
      break;
  }
  return {static_cast<std::uint32_t>(Tarvelon::metamodel::native::enumerationFromObject(value)), {}, -1};
}

K7Q::Object valueOf(const Item& item, const PropertyRow& row, const std::vector<ObjectPointer>& pointers) {
  switch (row.type->kind) {
    case Kind::ClassObject:
      return {pointers.at(static_cast<std::size_t>(item.object)), K7Q::Deviant{}};
    case Kind::String:
      return K7Q::String(item.text);
    case Kind::Boolean:
      return K7Q::Boolean(item.bits != 0);
    case Kind::Integer:
      return K7Q::Integer(static_cast<int>(item.bits));
    case Kind::Double:
      return K7Q::Double(std::bit_cast<double>(item.bits));
    case Kind::Real:
      return K7Q::Real(std::bit_cast<double>(item.bits));
    case Kind::DataType:
      break;
  }
  return Tarvelon::metamodel::native::enumerationToObject(*row.type->enumeration,
                                                          static_cast<std::int32_t>(item.bits));
}

Item itemOf(const K7Q::Generic::Ref& ref, const Slot& slot, const Ids& ids) {
  if (slot.isReference()) return {0, {}, idOf(static_cast<ObjectIntf*>(ref.value()), ids)};
  if (slot.row().type->kind == Kind::String) {
    return {0, std::u16string(static_cast<K7Q::NSInterface::StringIntf*>(ref.value())->view()), -1};
  }
  return {static_cast<std::uint32_t>(static_cast<const K7Q::PrimitiveCell*>(ref.value())->value), {}, -1};
}

K7Q::Generic::Ref refOf(const Item& item, const PropertyRow& row,
                        const std::vector<ObjectPointer>& pointers) {
  if (row.type->kind == Kind::String) return K7Q::makeStringRef(K7Q::String(item.text));
  if (row.type->kind == Kind::DataType) return K7Q::makeNumberRef(static_cast<std::int32_t>(item.bits));
  return K7Q::makeObjectRef(pointers.at(static_cast<std::size_t>(item.object)), {});
}

K7Q::SequenceHandle sequenceOf(ObjectPointer object, const Slot& slot, bool isImmutable,
                               K7Q::Deviant deviant) {
  const Property& property = slot.narrowest;
  return {property.owner->methods->getSequence(object, deviant, property.row->id, isImmutable), deviant};
}

State observe(const K7Q::Model& model, const Ids& ids) {
  State state;
  for (const auto& object : api::objects(model)) {
    const int id = idOf(object.getInterface(), ids);
    Object& seen = state.objects[id];
    seen.cls = &classOf(*object.getInterface());
    for (unsigned slot = 0; slot < seen.cls->slots.size(); ++slot) {
      Items items = itemsOf(object.getClassObject(), seen.cls->slots[slot], ids);
      if (!items.empty()) seen.values.emplace(slot, std::move(items));
    }
  }
  for (auto& [id, object] : state.objects) {
    for (const auto& [slot, items] : object.values) {
      if (!object.cls->slots[slot].holds()) continue;
      for (const Item& item : items) {
        const auto held = state.objects.find(item.object);
        if (held == state.objects.end()) throw Fault("an object that was destroyed is still held");
        if (held->second.owner >= 0) throw Fault("an object is held twice");
        held->second.owner = id;
        held->second.ownerSlot = slot;
      }
    }
  }
  return state;
}

std::string shown(const Item& item, const PropertyRow& row) {
  switch (row.type->kind) {
    case Kind::ClassObject:
      return "#" + std::to_string(item.object);
    case Kind::String:
      return "'" + K7Q::String::to_string(std::u16string_view(item.text)) + "'";
    case Kind::Double:
    case Kind::Real:
      return std::to_string(std::bit_cast<double>(item.bits));
    default:
      return std::to_string(static_cast<std::int32_t>(item.bits));
  }
}

std::string shown(const State& state) {
  std::string text;
  for (const auto& [id, object] : state.objects) {
    text += "#" + std::to_string(id) + " " + std::string(object.cls->shortName());
    for (const auto& entry : object.values) {
      text += std::string(" ") + object.cls->slots[entry.first].row().name + "=" +
              valuesText(state, id, entry.first);
    }
    text += "\n";
  }
  return text;
}

std::string differenceOf(const State& expected, const State& found) {
  if (expected == found) return {};
  for (const auto& [id, object] : expected.objects) {
    if (!found.objects.contains(id))
      return "#" + std::to_string(id) + " " + std::string(object.cls->shortName()) + " is gone";
    std::string text = objectDifference(expected, found, id);
    if (!text.empty()) return text;
  }
  for (const auto& entry : found.objects) {
    if (!expected.objects.contains(entry.first))
      return "#" + std::to_string(entry.first) + " should not be there";
  }
  return "the states differ";
}

}  // namespace world
