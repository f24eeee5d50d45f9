#include "tarvelon/platform/model/metamodel/ClassMethods.h"

#include <mutex>
#include <string>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/platform/model/changes/Construction.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/views/Derived.h"
#include "tarvelon/platform/model/views/ListView.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

/// The most derived declaration of a slot. New values are checked against it.
Target targetOf(const Instance& object, unsigned slot) {
  return {object.cls(), *object.cls().slotProperties[slot], object.model()};
}

}  // namespace

// Every access to a property goes through this function.
[[gnu::always_inline]] inline ClassMethods::Place ClassMethods::locate(
    K7Q::NSInterface::ClassObjectIntf* object, unsigned id) const {
  Instance* instance = asInstance(object);
  if (!instance || !isInstance(*instance)) refuseObject(object);
  if (!instance->isAlive()) raiseLost(*instance);
  const ClassData& own = *mData.load(std::memory_order_relaxed);
  if (id >= own.properties.size()) refuseId(id);
  const PropertyPlace& place = instance->cls().placeOf(own, id);
  if (!place.property) refuseId(id);
  return {*instance, *place.property, place.slot};
}

void ClassMethods::refuseObject(K7Q::NSInterface::ClassObjectIntf* object) const {
  if (!object) raiseNullReference();
  throw K7Q::WrongType("expected an object of class '" + std::string(name(false).view()) + "', got " +
                       describe(K7Q::Object(object, K7Q::Deviant{})) + "; use the class of that object");
}

void ClassMethods::refuseId(unsigned id) const {
  throw K7Q::Exception("class '" + std::string(name(false).view()) + "' has no property with id " +
                       std::to_string(id) + "; its ids run from 1 to " +
                       std::to_string(numberOfProperties()));
}

void ClassMethods::get(K7Q::Object& value, K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant deviant,
                       unsigned id) const {
  const Place place = locate(object, id);
  if (place.property.isMany()) refuseMany(place.object.cls(), place.property);
  if (place.slot == ClassData::kNoSlot) {
    value = K7Q::Object(derivedValue(place.object, place.property), deviant);
  } else {
    value = toObject(place.property, place.object.find(place.slot), deviant);
  }
}

bool ClassMethods::has(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant /*deviant*/,
                       unsigned id) const {
  const Place place = locate(object, id);
  if (place.slot == ClassData::kNoSlot) {
    return place.property.isMany() ? !derivedValues(place.object, place.property).empty()
                                   : derivedValue(place.object, place.property) != nullptr;
  }
  if (!place.property.isMany()) return place.object.has(place.slot);
  const WordList* list = listOf(place.object, place.slot);
  return list && !list->empty();
}

void ClassMethods::set(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant /*deviant*/, unsigned id,
                       const K7Q::Object& value) const {
  const Place place = locate(object, id);
  if (place.property.isMany()) refuseMany(place.object.cls(), place.property);
  if (place.property.isReadOnly()) refuseReadOnly(place.object.cls(), place.property);
  const Target target = targetOf(place.object, place.slot);
  const Prepared prepared = prepare(target, value);
  if (target.property.storage() == Storage::Reference && !prepared.isEmpty) {
    requireNoCycle(place.object, target.property, *prepared.word.object);
  }
  store(place.object, place.slot, prepared);
}

void ClassMethods::unset(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant /*deviant*/,
                         unsigned id) const {
  const Place place = locate(object, id);
  if (place.property.isMany()) refuseMany(place.object.cls(), place.property);
  if (place.property.isReadOnly()) refuseReadOnly(place.object.cls(), place.property);
  const Target target = targetOf(place.object, place.slot);
  if (target.property.isRequired()) refuseUnset(target.cls, target.property);
  store(place.object, place.slot, Prepared{{}, true});
}

K7Q::Generic::SequenceIntf* ClassMethods::getSequence(K7Q::NSInterface::ClassObjectIntf* object,
                                                      K7Q::Deviant /*deviant*/, unsigned id,
                                                      bool immutable) const {
  const Place place = locate(object, id);
  if (!place.property.isMany()) refuseSingle(place.object.cls(), place.property);
  return makeView(place.object, place.property, place.slot, immutable);
}

K7Q::Generic::SequenceIntf* ClassMethods::read(K7Q::NSInterface::ClassObjectIntf* object,
                                               K7Q::Deviant deviant, unsigned index) const {
  Instance* instance = asInstance(object);
  if (!instance || !isInstance(*instance)) refuseObject(object);
  if (!instance->isAlive()) raiseLost(*instance);
  if (!mRows || index >= mRows->reads.size()) {
    throw K7Q::Exception("class '" + std::string(mClassName->name) + "' has no read method " +
                         std::to_string(index));
  }
  return readKind(*instance, *this, mRows->reads[index], deviant);
}

bool ClassMethods::isInstance(const Instance& object) const noexcept {
  // If this class was never used, it has no objects, and no class of an existing object is below it.
  const ClassData* data = mData.load(std::memory_order_acquire);
  return data && object.cls().isKindOf(data->ordinal);
}

bool ClassMethods::isInstance(const K7Q::NSInterface::ObjectIntf* object) const {
  const Instance* instance = asInstance(object);
  return instance && isInstance(*instance);
}

K7Q::ClassObject ClassMethods::create(const K7Q::Model& model, unsigned constructor,
                                      std::span<const K7Q::Object> arguments) const {
  NativeModel& target = NativeModel::require(model);
  K7Q::DeviantAssertions::assertWritable(model.getDeviant(), &target);
  return {&construct(target, data(), constructor, arguments), model.getDeviant()};
}

}  // namespace Tarvelon::metamodel::native
