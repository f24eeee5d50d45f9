#include <algorithm>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/changes/Order.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/views/Derived.h"
#include "tarvelon/platform/model/views/ListView.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

K7Q::NSInterface::ObjectIntf* objectOf(const K7Q::Generic::Ref& ref) {
  return static_cast<K7Q::NSInterface::ObjectIntf*>(ref.value());
}

/// The common part of views of objects.
class ObjectView : public ListView {
 public:
  using ListView::ListView;
  const char* generic_getRuvoName(bool isSequenceImmutable, bool isElementImmutable,
                                  const char* /*name*/) const override {
    const bool isImmutable = isSequenceImmutable || property().isReadOnly();
    return property().type()->sequenceName(isImmutable, isElementImmutable).c_str();
  }

 protected:
  virtual Instance& elementAt(std::uint32_t index) const = 0;
  Ref refAt(std::uint32_t index, K7Q::Deviant deviant) const final {
    return K7Q::makeObjectRef(&elementAt(index), deviant);
  }
  bool isAt(std::uint32_t index, const Ref& ref) const final { return &elementAt(index) == objectOf(ref); }
};

/// A view of stored references, contained objects or cross references.
class ReferencesView final : public ObjectView {
 public:
  ReferencesView(Instance& object, const Property& property, unsigned slot, bool immutable)
      : ObjectView(object, property, immutable), mSlot(slot) {}

 private:
  /// Null until the first element is inserted. After that the object keeps the same list.
  const WordList* list() const {
    const Instance& host = object();
    if (!mList) mList = listOf(host, mSlot);
    return mList;
  }
  Instance& elementAt(std::uint32_t index) const override { return *list()->at(index).object; }
  /// REQUIRES: check(ref).
  static Instance& elementOf(const Ref& ref) { return *asInstance(objectOf(ref)); }

  std::uint32_t count() const override {
    const WordList* values = list();
    return values ? values->size() : 0;
  }
  std::uint32_t changes() const override {
    const WordList* values = list();
    return values ? values->changes() : 0;
  }
  bool contains(const Ref& ref) const override {
    const Instance* element = asInstance(objectOf(ref));
    return element && &element->model() == &object().model() && containsElement(object(), mSlot, *element);
  }
  void check(const Ref& ref) const override {
    const Instance& host = object();
    const Target target{host.cls(), *host.cls().slotProperties[mSlot], host.model()};
    requireNoCycle(host, target.property, prepareElement(target, {objectOf(ref), K7Q::Deviant{}}));
  }
  void append(const Ref& ref) override {
    if (!contains(ref)) insertElement(object(), mSlot, count(), elementOf(ref));
  }
  void prepend(const Ref& ref) override {
    if (!contains(ref)) insertElement(object(), mSlot, 0, elementOf(ref));
  }
  std::uint32_t insertAt(std::uint32_t index, const Ref& ref) override {
    if (!contains(ref)) {
      insertElement(object(), mSlot, index, elementOf(ref));
      return index;
    }
    const std::uint32_t from = list()->find(&elementOf(ref));
    // Removing the element moves the elements after it one place forward.
    const std::uint32_t to = from < index ? index - 1 : index;
    if (from != to) moveElement(object(), mSlot, from, to);
    return to;
  }
  void replaceAt(std::uint32_t index, const Ref& ref) override {
    replaceElement(object(), mSlot, index, elementOf(ref));
  }
  void eraseAt(std::uint32_t first, std::uint32_t last) override {
    eraseElements(object(), mSlot, first, last - first);
  }
  bool isUnique() const noexcept override { return true; }
  void rewriteAs(std::span<const Ref> elements) override {
    std::unordered_set<const Instance*> wanted;
    std::vector<Instance*> target;
    for (const Ref& ref : elements) {
      if (wanted.insert(&elementOf(ref)).second) target.push_back(&elementOf(ref));
    }
    eraseAllBut(wanted);
    // In ascending order, so that each element is inserted after those that are already in their places.
    std::vector<Placed> missing;
    for (std::uint32_t place = 0; place < target.size(); ++place) {
      if (!containsElement(object(), mSlot, *target[place])) missing.push_back({place, target[place]});
    }
    insertElements(object(), mSlot, missing);
    arrangeAs(target);
  }
  void eraseAllBut(const std::unordered_set<const Instance*>& wanted) {
    std::vector<std::uint32_t> others;
    for (std::uint32_t place = count(); place-- > 0;) {
      if (!wanted.contains(&elementAt(place))) others.push_back(place);
    }
    eraseElements(object(), mSlot, others);
  }
  void arrangeAs(const std::vector<Instance*>& target) {
    std::unordered_map<const Instance*, std::uint32_t> places;
    for (std::uint32_t place = 0; place < count(); ++place) places.emplace(&elementAt(place), place);
    std::vector<std::uint32_t> order;
    order.reserve(target.size());
    for (const Instance* element : target) order.push_back(places.at(element));
    arrangeElements(object(), mSlot, order);
  }

  unsigned mSlot;
  mutable const WordList* mList = nullptr;
};

/// The common part of views of stored values. A value may occur several times and is found by a linear
/// search.
class ValuesView : public ListView {
 public:
  ValuesView(Instance& object, const Property& property, unsigned slot, bool immutable)
      : ListView(object, property, immutable), mSlot(slot) {}

 protected:
  unsigned slot() const { return mSlot; }
  /// Null until the first value is inserted.
  const WordList* list() const { return listOf(object(), mSlot); }

 private:
  std::uint32_t count() const final {
    const WordList* values = list();
    return values ? values->size() : 0;
  }
  std::uint32_t changes() const final {
    const WordList* values = list();
    return values ? values->changes() : 0;
  }
  bool contains(const Ref& ref) const final {
    for (std::uint32_t index = 0; index < count(); ++index) {
      if (isAt(index, ref)) return true;
    }
    return false;
  }
  void append(const Ref& ref) final { insertAt(count(), ref); }
  void prepend(const Ref& ref) final { insertAt(0, ref); }
  bool isUnique() const noexcept final { return false; }
  void rewriteAs(std::span<const Ref> elements) final {
    if (!eraseOthers(elements)) replaceBetween(elements);
  }
  /// Removes everything between the given elements. Returns false and changes nothing if the list does not
  /// contain these elements in this order.
  bool eraseOthers(std::span<const Ref> elements) {
    std::vector<std::uint32_t> others;
    std::size_t found = 0;
    for (std::uint32_t place = 0; place < count(); ++place) {
      if (found < elements.size() && isAt(place, elements[found])) {
        ++found;
      } else {
        others.push_back(place);
      }
    }
    if (found < elements.size()) return false;
    std::ranges::reverse(others);
    eraseElements(object(), mSlot, others);
    return true;
  }
  /// Equal values at both ends of the list are not touched.
  void replaceBetween(std::span<const Ref> elements) {
    const std::uint32_t before = count();
    const auto after = static_cast<std::uint32_t>(elements.size());
    const std::uint32_t least = std::min(before, after);
    std::uint32_t head = 0;
    while (head < least && isAt(head, elements[head])) ++head;
    std::uint32_t tail = 0;
    while (tail < least - head && isAt(before - tail - 1, elements[after - tail - 1])) ++tail;
    for (std::uint32_t place = head; place < least - tail; ++place) {
      if (!isAt(place, elements[place])) replaceAt(place, elements[place]);
    }
    if (after < before) eraseAt(after - tail, before - tail);
    for (std::uint32_t place = before - tail; place < after - tail; ++place) insertAt(place, elements[place]);
  }

  unsigned mSlot;
};

class TextsView final : public ValuesView {
 public:
  using ValuesView::ValuesView;
  const char* generic_getRuvoName(bool isSequenceImmutable, bool /*isElementImmutable*/,
                                  const char* /*name*/) const override {
    return isSequenceImmutable || property().isReadOnly() ? "K7Q.ImmutableSequenceOfString"
                                                          : "K7Q.SequenceOfString";
  }

 private:
  using Text = K7Q::NSInterface::StringIntf;
  static Text* textOf(const Ref& ref) { return static_cast<Text*>(ref.value()); }

  Ref refAt(std::uint32_t index, K7Q::Deviant /*deviant*/) const override {
    return K7Q::makeStringRef(K7Q::String(K7Q::Object(list()->at(index).text, K7Q::Deviant{})));
  }
  bool isAt(std::uint32_t index, const Ref& ref) const override {
    return textOf(ref) && list()->at(index).text->view() == textOf(ref)->view();
  }
  void check(const Ref& ref) const override {
    const Instance& host = object();
    const Property& narrowest = *host.cls().slotProperties[slot()];
    if (!textOf(ref)) refuseEmpty(host.cls(), narrowest);
    checkText({host.cls(), narrowest, host.model()}, textOf(ref)->view());
  }
  std::uint32_t insertAt(std::uint32_t index, const Ref& ref) override {
    insertText(object(), slot(), index, textOf(ref));
    return index;
  }
  void replaceAt(std::uint32_t index, const Ref& ref) override {
    replaceText(object(), slot(), index, textOf(ref));
  }
  void eraseAt(std::uint32_t first, std::uint32_t last) override {
    eraseElements(object(), slot(), first, last - first);
  }
};

/// Values of an enumeration. Each is put into a cell of its own when it is passed to the caller.
class EnumerationsView final : public ValuesView {
 public:
  using ValuesView::ValuesView;
  const char* generic_getRuvoName(bool isSequenceImmutable, bool /*isElementImmutable*/,
                                  const char* /*name*/) const override {
    return property().enumeration()->sequenceName(isSequenceImmutable || property().isReadOnly()).c_str();
  }

 private:
  static std::int32_t numberOf(const Ref& ref) noexcept {
    return static_cast<const K7Q::PrimitiveCell*>(ref.value())->value;
  }

  Ref refAt(std::uint32_t index, K7Q::Deviant /*deviant*/) const override {
    return K7Q::makeNumberRef(integerOf(list()->at(index)));
  }
  bool isAt(std::uint32_t index, const Ref& ref) const override {
    return ref.value() && integerOf(list()->at(index)) == numberOf(ref);
  }
  void check(const Ref& ref) const override {
    const Instance& host = object();
    if (!ref.value()) refuseEmpty(host.cls(), property());
  }
  std::uint32_t insertAt(std::uint32_t index, const Ref& ref) override {
    insertNumber(object(), slot(), index, numberOf(ref));
    return index;
  }
  void replaceAt(std::uint32_t index, const Ref& ref) override {
    replaceNumber(object(), slot(), index, numberOf(ref));
  }
  void eraseAt(std::uint32_t first, std::uint32_t last) override {
    eraseElements(object(), slot(), first, last - first);
  }
};

/// Objects that are computed from what the object contains. The result is cached until the set of contained
/// objects changes.
class DerivedView final : public ObjectView {
 public:
  DerivedView(Instance& object, const Property& property) : ObjectView(object, property, true) {}

 private:
  const std::vector<Instance*>& values() const {
    const Instance& host = object();
    const std::uint32_t stamp = host.model().ownershipStamp(host);
    if (!mIsCollected || stamp != mStamp) {
      auto values = derivedValues(host, property());
      if (values != mValues) ++mChanges;
      mValues = std::move(values);
      mStamp = stamp;
      mIsCollected = true;
    }
    return mValues;
  }
  Instance& elementAt(std::uint32_t index) const override { return *values()[index]; }
  std::uint32_t count() const override { return static_cast<std::uint32_t>(values().size()); }
  std::uint32_t changes() const override {
    values();
    return mChanges;
  }
  bool contains(const Ref& ref) const override {
    for (const Instance* value : values()) {
      if (value == objectOf(ref)) return true;
    }
    return false;
  }
  // A read-only property has only immutable views, and writing to an immutable view is refused earlier. So
  // these functions are never reached.
  [[noreturn]] void refuse() const { refuseReadOnly(object().cls(), property()); }
  void check(const Ref& /*ref*/) const override { refuse(); }
  void append(const Ref& /*ref*/) override { refuse(); }
  void prepend(const Ref& /*ref*/) override { refuse(); }
  std::uint32_t insertAt(std::uint32_t /*index*/, const Ref& /*ref*/) override { refuse(); }
  void replaceAt(std::uint32_t /*index*/, const Ref& /*ref*/) override { refuse(); }
  void eraseAt(std::uint32_t /*first*/, std::uint32_t /*last*/) override { refuse(); }
  bool isUnique() const noexcept override { return true; }
  void rewriteAs(std::span<const Ref> /*elements*/) override { refuse(); }

  mutable std::vector<Instance*> mValues;
  mutable std::uint32_t mStamp = 0;
  mutable std::uint32_t mChanges = 0;
  mutable bool mIsCollected = false;
};

}  // namespace

K7Q::Generic::SequenceIntf* makeView(Instance& object, const Property& property, unsigned slot,
                                     bool immutable) {
  if (slot == ClassData::kNoSlot) return new DerivedView(object, property);
  if (property.storage() == Storage::Texts) return new TextsView(object, property, slot, immutable);
  if (property.storage() == Storage::Enumerations) {
    return new EnumerationsView(object, property, slot, immutable);
  }
  return new ReferencesView(object, property, slot, immutable);
}

}  // namespace Tarvelon::metamodel::native
