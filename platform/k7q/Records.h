#pragma once

#include <string>

#include "boundary/k7q/PropertyRecords.h"

namespace K7Q::mi {

/// What the kinds of property records share.
class Record : public K7qmiProperty {
 public:
  using K7qmiProperty::K7qmiProperty;
  /// Values are arrays; kinds whose values are raw scalars override this.
  void releaseValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;

 protected:
  ~Record() override = default;
  /// The object to be written to. Refuses in this order: many-valued, read-only, immutable, destroyed, view
  /// not writable.
  ClassObject writableObject(ruvo::RVOInterface* object) const;
};

/// Whether the host object stands for an immutable view.
bool isSeenImmutable(const ruvo::RVOInterface* object) noexcept;

/// "Runnable.symbol", by the object's own class.
std::string memberName(const K7qmiProperty& property, const ruvo::RVOInterface* object);
/// What a value must be, as an error says it.
std::string expectedType(const K7qmiProperty& property);

/// A required property was given an empty array.
[[noreturn]] void throwEmptyValue(const K7qmiProperty& property, const ruvo::RVOInterface* object);
[[noreturn]] void throwOutOfRange(const K7qmiProperty& property, const ruvo::RVOInterface* object,
                                  const hx::hxArray* given);

}  // namespace K7Q::mi
