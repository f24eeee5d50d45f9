#include <algorithm>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/files/shared/ScalarText.h"
#include "tarvelon/platform/files/shared/Utf.h"
#include "tarvelon/platform/files/xmi/Reader.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/TextCell.h"
#include "tarvelon/platform/model/words/WordList.h"

// Reading values and references.
namespace Tarvelon::files {

using native::Instance;
using native::Storage;
using native::Word;

namespace {

constexpr const char* kTwice = "the list contains the id twice: ";

std::string whatFits(const native::Property& property) {
  switch (property.storage()) {
    case Storage::Boolean:
      return "; write true or false";
    case Storage::Integer:
      return "; write a whole number from -2147483648 to 2147483647";
    case Storage::Enumeration:
    case Storage::Enumerations:
      return "; write one of " + property.enumeration()->literalList();
    default:
      return "; write a number";
  }
}

std::uint32_t sizeOf(const Instance& object, const Feature& feature) noexcept {
  const native::WordList* list = native::listOf(object, feature.slot);
  return list ? list->size() : 0;
}

}  // namespace

bool Reader::isMark(QualifiedName name) const noexcept {
  const bool isRoot = mFrames.empty();
  const auto isOneOf = [&name](std::initializer_list<std::string_view> names) {
    return std::ranges::find(names, name.local) != names.end();
  };
  if (name.space == kXsi)
    return isOneOf({"type", "schemaLocation", "noNamespaceSchemaLocation"}) ||
           (name.local == "nil" && !isRoot);
  if (name.space == kOwn) return isRoot && name.local == "format";
  if (!isXmi(name.space)) return false;
  return isOneOf({"id", "type"}) || (isRoot && name.local == "version");
}

void Reader::requireMarks(const char* const* attributes, bool mayRefer) {
  for (const char* const* each = attributes; *each; each += 2) {
    const QualifiedName name = Parser::split(each[0]);
    const bool refers =
        (name.space.empty() && name.local == "href") || (isXmi(name.space) && name.local == "idref");
    if ((refers && mayRefer) || isMark(name)) continue;
    report(placeOf(name), "expected no attribute " + inQuotes(name.local) + " here; remove it");
  }
}

void Reader::readAttribute(const Frame& frame, QualifiedName name, std::string_view value) {
  if (!name.space.empty()) {
    if (!isMark(name)) reportUnknown(frame, name, placeOf(name));
    return;
  }
  const Feature* feature = featureOf(frame, name);
  if (!feature) return reportUnknown(frame, name, placeOf(name));
  const Storage storage = feature->declared->storage();
  if (feature->declared->holds()) {
    report(placeOf(name), nameOf(*frame.object, *feature) +
                              ": expected contained objects as elements, got the text " + inQuotes(value) +
                              "; nest the elements of the objects here");
  } else if (storage == Storage::Reference || storage == Storage::References) {
    readReferences(frame, *feature, value, name.local);
  } else {
    readValue(frame, *feature, value, name.local);
  }
}

void Reader::readValue(const Frame& frame, const Feature& feature, std::string_view value,
                       std::string_view attribute) {
  Instance& object = *frame.object;
  if (!feature.declared->isMany() && object.has(feature.slot)) {
    report(placeOfValue(attribute),
           nameOf(object, feature) + ": expected at most one value, got a second one; remove all but one");
    return;
  }
  const Storage storage = feature.declared->storage();
  if (storage == Storage::Text || storage == Storage::Texts) {
    readText(object, feature, value, attribute);
  } else {
    readWord(object, feature, value, attribute);
  }
}

void Reader::readText(Instance& object, const Feature& feature, std::string_view value,
                      std::string_view attribute) {
  decode(value, mUnits);
  const native::Property& property = *feature.narrowest;
  try {
    native::checkText({object.cls(), property, mModel}, mUnits);
  } catch (const K7Q::WrongValue& refusal) {
    return report(placeOfValue(attribute), refusal.what());
  }
  if (feature.declared->isMany()) {
    native::insertText(object, feature.slot, sizeOf(object, feature), native::TextCell(mUnits).get());
  } else if (mUnits.empty()) {
    native::store(object, feature.slot, {Word{.text = nullptr}, !property.isRequired()});
  } else {
    native::store(object, feature.slot, {Word{.text = native::TextCell(mUnits).get()}, false});
  }
}

void Reader::readWord(Instance& object, const Feature& feature, std::string_view value,
                      std::string_view attribute) {
  Word word{};
  const native::Property& property = *feature.narrowest;
  const ScalarFault fault = readScalar(property, value, word);
  if (fault != ScalarFault::None) {
    const char* outside = fault == ScalarFault::OutOfRange ? ", which is out of range" : "";
    return report(placeOfValue(attribute), nameOf(object, feature) + ": expected " +
                                               std::string(property.typeName().view()) + ", got " +
                                               inQuotes(value) + outside + whatFits(property));
  }
  if (property.isMany()) {
    native::insertNumber(object, feature.slot, sizeOf(object, feature), integerOf(word));
  } else {
    native::store(object, feature.slot, {word, false});
  }
}

/// Splits a text into ids. In a very long list, duplicates are reported at once and not stored: no person
/// writes such a list, and each duplicate would otherwise take memory until its object is read.
void Reader::readTargets(const Frame& frame, const Feature& feature, std::string_view ids,
                         std::string_view attribute) {
  constexpr std::size_t kLong = 4096;
  mTargets.clear();
  mTargetsSeen.clear();
  for (std::size_t place = 0;;) {
    place = ids.find_first_not_of(" \t\r\n", place);
    if (place == std::string_view::npos) return;
    const std::size_t end = std::min(ids.find_first_of(" \t\r\n", place), ids.size());
    const IdTable::Key target = mIds.keyOf(ids.substr(place, end - place));
    place = end;
    if (mTargets.size() == kLong && mTargetsSeen.size() == 0) {
      for (const IdTable::Key each : mTargets) mTargetsSeen.insert(each);
    }
    if (mTargets.size() < kLong || mTargetsSeen.insert(target)) {
      mTargets.push_back(target);
      continue;
    }
    reportReference(frame, feature, placeOfValue(attribute), kTwice, target);
  }
}

void Reader::reportReference(const Frame& frame, const Feature& feature, Place place, std::string_view fault,
                             IdTable::Key target) {
  if (isFull()) return report({}, {});
  report(place, nameOf(*frame.object, feature) + ": " + std::string(fault) + inQuotes(mIds.textOf(target)));
}

void Reader::readReferences(const Frame& frame, const Feature& feature, std::string_view ids,
                            std::string_view attribute) {
  readTargets(frame, feature, ids, attribute);
  const bool areKnown =
      (!attribute.empty() || mPending.empty()) && std::ranges::all_of(mTargets, [this](IdTable::Key target) {
        const IdTable::Entry* entry = mIds.find(target);
        return entry && entry->value;
      });
  if (!feature.declared->isMany() && mTargets.size() != 1) {
    return report(placeOfValue(attribute),
                  nameOf(*frame.object, feature) + ": expected the id of one object, got " + inQuotes(ids));
  }
  if (mTargets.empty()) return;
  PendingReference reference{frame.object, &feature, mTargets.front(), {0, 0}, !attribute.empty()};
  if (!areKnown) {
    // All references of the list wait, so that they are set in their order.
    reference.place = here();
    return mPending.add(reference, mTargets);
  }
  for (const IdTable::Key target : mTargets) {
    reference.target = target;
    refer(reference, attribute);
  }
}

void Reader::refer(const PendingReference& reference, std::string_view attribute) {
  const Feature& feature = *reference.feature;
  const IdTable::Entry* entry = mIds.find(reference.target);
  std::string fault;
  if (!entry) {
    fault = "no object has the id ";
  } else if (!entry->value) {
    fault = "the target was left out of the model, the object with the id ";
  } else if (!entry->value->cls().isKindOf(feature.narrowest->type()->data().ordinal)) {
    fault = "expected " + typeName(*feature.narrowest->type()) + ", got " +
            typeName(*entry->value->cls().methods) + " with the id ";
  } else if (const char* refusal = link(reference, *entry->value)) {
    fault = refusal;
  } else {
    return;
  }
  report(reference.place.line == 0 ? placeOfValue(attribute) : reference.place,
         nameOf(*reference.object, feature) + ": " + fault + inQuotes(mIds.textOf(reference.target)));
}

// Of two opposite properties, the one that is read first sets both. The other one then finds its values
// already there.
const char* Reader::link(const PendingReference& reference, Instance& target) {
  Instance& object = *reference.object;
  const Feature& feature = *reference.feature;
  const native::Property* back = feature.narrowest->opposite();
  if (back && !back->isMany()) {
    const Word* other = target.find(target.cls().placeOf(back->ownerClass().data(), back->id()).slot);
    if (other && other->object != &object)
      return "the opposite property already refers to another object, in the object with the id ";
  }
  if (feature.declared->isMany()) return linkInList(reference, target);
  if (const Word* present = object.find(feature.slot)) {
    return back && present->object == &target ? nullptr
                                              : "expected at most one object, got a second one with the id ";
  }
  native::store(object, feature.slot, {Word{.object = &target}, false});
  return nullptr;
}

const char* Reader::linkInList(const PendingReference& reference, Instance& target) {
  Instance& object = *reference.object;
  const Feature& feature = *reference.feature;
  if (mFilled != &object || mFilledFeature != &feature) {
    arrangeFilled();
    mFilled = &object;
    mFilledFeature = &feature;
    mFilledCount = 0;
  }
  const bool isInList = native::containsElement(object, feature.slot, target);
  if (reference.isListed) {
    if (!noteListed(target, isInList)) return kTwice;
  } else if (isInList && !feature.narrowest->opposite()) {
    return kTwice;
  }
  if (!isInList) native::insertElement(object, feature.slot, sizeOf(object, feature), target);
  return nullptr;
}

// Usually each element comes directly after the one before it, or is appended there. If not, an opposite
// reference has inserted others between them. The list is then sorted once at the end, since moving each
// element to its place would take quadratic time.
bool Reader::noteListed(Instance& target, bool isInList) {
  const native::WordList* list = native::listOf(*mFilled, mFilledFeature->slot);
  if (mListedOrder.isEmpty()) {
    const std::uint32_t size = list ? list->size() : 0;
    const bool isNext =
        isInList ? mFilledCount < size && list->at(mFilledCount).object == &target : mFilledCount == size;
    if (isNext) {
      ++mFilledCount;
      return true;
    }
    for (std::uint32_t index = 0; list && index < mFilledCount; ++index)
      mListedOrder.add(*list->at(index).object);
  }
  return mListedOrder.add(target);
}

void Reader::arrangeFilled() {
  if (!mListedOrder.isEmpty()) mListedOrder.arrange(*native::listOf(*mFilled, mFilledFeature->slot));
}

void Reader::finish() {
  mPending.forEach([this](const PendingReference& reference) { refer(reference, {}); });
  mPending.clear();
  arrangeFilled();
}

}  // namespace Tarvelon::files
