#pragma once

#include <cstdint>
#include <string_view>

#include "tarvelon/boundary/ruvo/Interface.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Value.h"

namespace ruvo {

/// A value from a host, before the object system converts it into a slot. The value refers to the host's
/// text, object or array, which must outlive the call. Threads: one at a time.
class HostValue {
 public:
  enum class Kind : std::uint8_t { Empty, Logical, Integer, Double, Text, Object, Array };

  /// No value: the same as an empty array of any class.
  constexpr HostValue() noexcept = default;
  static HostValue ofLogical(bool value) noexcept {
    HostValue result(Kind::Logical);
    result.mInteger = value ? 1 : 0;
    return result;
  }
  static HostValue ofInteger(std::int64_t value) noexcept {
    HostValue result(Kind::Integer);
    result.mInteger = value;
    return result;
  }
  static HostValue ofDouble(double value) noexcept {
    HostValue result(Kind::Double);
    result.mDouble = value;
    return result;
  }
  static HostValue ofText(std::u16string_view text) noexcept {
    HostValue result(Kind::Text);
    result.mText = text;
    return result;
  }
  /// A null object gives an Empty value.
  static HostValue ofObject(RVOInterface* object) noexcept {
    HostValue result(object ? Kind::Object : Kind::Empty);
    result.mObject = object;
    return result;
  }
  /// Makes a value from an array of any class. An array with one scalar, one text or one object counts as
  /// that single value. An array of several objects counts as its first object. An empty array counts as
  /// Empty.
  /// An empty character array is the empty text, and counts as "no object" where an object is expected.
  /// An array of several numbers fits no parameter; only a property of an optional scalar accepts the array,
  /// and then reports the wrong number of elements.
  TARVELON_API static HostValue ofArray(const hx::hxArray* array) noexcept;

  Kind kind() const noexcept { return mKind; }
  bool isNumber() const noexcept { return mKind >= Kind::Logical && mKind <= Kind::Double; }
  std::int64_t integer() const noexcept { return mInteger; }
  double real() const noexcept { return mKind == Kind::Double ? mDouble : static_cast<double>(mInteger); }
  std::u16string_view text() const noexcept { return mText; }
  /// The object; the first one if the array has several.
  RVOInterface* object() const noexcept { return mObject; }
  const hx::hxArray* array() const noexcept { return mArray; }

 private:
  explicit constexpr HostValue(Kind kind) noexcept : mKind(kind) {}
  Kind mKind = Kind::Empty;
  union {
    std::int64_t mInteger = 0;
    double mDouble;
    RVOInterface* mObject;
  };
  const hx::hxArray* mArray = nullptr;
  std::u16string_view mText;
};

/// A result, together with the type that its record declares. Owns the result's array, if there is one.
class HostResult {
 public:
  HostResult() noexcept = default;
  HostResult(RVOValue slot, const InternedName& type) noexcept : mSlot(slot), mType(type) {}
  HostResult(HostResult&& other) noexcept : mSlot(other.mSlot), mType(other.mType) {
    other.mType = InternedName();
    other.mSlot = RVOValue();
  }
  HostResult& operator=(HostResult&& other) noexcept {
    std::swap(mSlot, other.mSlot);
    std::swap(mType, other.mType);
    return *this;
  }
  HostResult(const HostResult&) = delete;
  HostResult& operator=(const HostResult&) = delete;
  ~HostResult() {
    if (isArray()) hx::hxDestroyArray(mSlot.array());
  }

  /// The declared type; empty if there is no result ("void").
  const InternedName& type() const noexcept { return mType; }
  bool isVoid() const noexcept { return mType.empty(); }
  bool isRaw() const noexcept {
    const auto kind = mType.kind();
    return kind == internal::TypeKind::Logical || kind == internal::TypeKind::Int32 ||
           kind == internal::TypeKind::Double;
  }
  bool isArray() const noexcept { return !isVoid() && !isRaw() && mSlot.array() != nullptr; }
  RVOValue slot() const noexcept { return mSlot; }
  /// The first object of an object array; null for an empty array and for results of other types.
  RVOInterface* object() const noexcept {
    const auto* array = isArray() ? mSlot.array() : nullptr;
    if (!array || hx::hxGetClassId(array) != hx::hxObject || hx::hxGetNumberOfElements(array) == 0)
      return nullptr;
    return static_cast<RVOInterface*>(hx::hxGetElement(array, 0));
  }
  /// Returns the result as an array and gives the array to the caller. A raw scalar is converted into an
  /// array. Returns null for a void result.
  TARVELON_API hx::hxArray* toArray() &&;

 private:
  RVOValue mSlot;
  InternedName mType;
};

}  // namespace ruvo
