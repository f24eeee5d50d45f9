#pragma once

#include <string>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/platform/k7q/handles/VariantTable.h"

namespace K7Q::mi {

/// The native object that is read or written. Without a reference: the host object, which the caller holds,
/// has one.
struct Target {
  NSInterface::ClassObjectIntf* object;
  Deviant deviant;
};

[[noreturn]] void throwNullReference(const K7qmiProperty& property, const ruvo::RVOInterface* object);

/// Whether the host object stands for an immutable view.
inline bool isSeenImmutable(const ruvo::RVOInterface* object) noexcept {
  return object &&
         ruvo::factory::basic::BindingSlot::isImmutable(object->getBoundPointer(ruvo::InternedName()));
}

/// What the kinds of property records share.
class Record : public K7qmiProperty {
 public:
  using K7qmiProperty::K7qmiProperty;
  /// Values are arrays; kinds whose values are raw scalars override this.
  void releaseValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;

 protected:
  ~Record() override = default;
  /// The object to be read. Raises kNullReference for one that is destroyed or was never bound.
  Target readable(ruvo::RVOInterface* object) const {
    const auto info = VariantTable::infoOf(object ? object->getBoundPointer(mOwnerName) : nullptr);
    auto* native = info.object ? info.object->cast(tagsOf<NSInterface::ClassObjectIntf>()) : nullptr;
    auto* target = static_cast<NSInterface::ClassObjectIntf*>(native);
    if (!target || !target->isValid(info.deviant)) throwNullReference(*this, object);
    return {target, info.deviant};
  }
  /// The object to be written to. Refuses in this order: many-valued, read-only, immutable, destroyed, view
  /// not writable.
  Target writable(ruvo::RVOInterface* object) const {
    if ((mState & (kMultiValued | kReadOnly)) != 0 || isSeenImmutable(object)) requireSettable(object);
    const Target target = readable(object);
    if (!target.deviant.isWritable()) DeviantAssertions::assertWritable(target.deviant, target.object);
    return target;
  }
  static Target targetOf(const K7Q::ClassObject& object) {
    return {object.getClassObject(), object.getDeviant()};
  }
};

/// "Runnable.symbol", by the object's own class.
std::string memberName(const K7qmiProperty& property, const ruvo::RVOInterface* object);
/// What a value must be, as an error says it.
std::string expectedType(const K7qmiProperty& property);

/// A required property was given an empty array.
[[noreturn]] void throwEmptyValue(const K7qmiProperty& property, const ruvo::RVOInterface* object);
[[noreturn]] void throwOutOfRange(const K7qmiProperty& property, const ruvo::RVOInterface* object,
                                  const hx::hxArray* given);

}  // namespace K7Q::mi
