#pragma once

#include <string>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/platform/k7q/handles/VariantTable.h"

namespace K7Q::mi {

/// The native object of a property access. Holds no reference: the caller's host object keeps it alive.
struct Target {
  NSInterface::ClassObjectIntf* object;
  Deviant deviant;
};

[[noreturn]] void throwNullReference(const K7qmiProperty& property, const ruvo::RVOInterface* object);

/// Whether the host object is an immutable view.
inline bool isSeenImmutable(const ruvo::RVOInterface* object) noexcept {
  return object &&
         ruvo::factory::basic::BindingSlot::isImmutable(object->getBoundPointer(ruvo::InternedName()));
}

/// The common base of all property records.
class Record : public K7qmiProperty {
 public:
  using K7qmiProperty::K7qmiProperty;
  /// Destroys the array of a value. Records with raw scalars override this.
  void releaseValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;

 protected:
  ~Record() override = default;
  /// The native object, for reading. Raises K7Q::Exception with the text kNullReference if the object was
  /// destroyed or was never bound.
  Target readable(ruvo::RVOInterface* object) const {
    const auto info = VariantTable::infoOf(object ? object->getBoundPointer(mOwnerName) : nullptr);
    auto* native = info.object ? info.object->cast(tagsOf<NSInterface::ClassObjectIntf>()) : nullptr;
    auto* target = static_cast<NSInterface::ClassObjectIntf*>(native);
    if (!target || !target->isValid(info.deviant)) throwNullReference(*this, object);
    return {target, info.deviant};
  }
  /// The native object, for writing. Raises an exception if the property is many-valued or read-only, the
  /// object is immutable or destroyed, or the view is not writable. Checks in this order.
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

/// For example "Runnable.symbol"; the class is the object's own class.
std::string memberName(const K7qmiProperty& property, const ruvo::RVOInterface* object);
/// The expected value in an error text.
std::string expectedType(const K7qmiProperty& property);

/// For an empty array as the value of a required property.
[[noreturn]] void throwEmptyValue(const K7qmiProperty& property, const ruvo::RVOInterface* object);
[[noreturn]] void throwOutOfRange(const K7qmiProperty& property, const ruvo::RVOInterface* object,
                                  const hx::hxArray* given);

}  // namespace K7Q::mi
