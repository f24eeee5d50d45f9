#pragma once

#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tarvelon/platform/ruvo/HostValue.h"

namespace ruvo {

/// How well a value fits a parameter type: a distance (0 is an exact match) or one of the two error codes.
///
/// A number fits every number type that can represent it. The distance is 0 for the number's own type and
/// grows with the amount of conversion. An object fits its own class and the superclasses; the distance is
/// the position in the C3 order. "K7Q.Object" accepts every object that is not immutable, and
/// "K7Q.ImmutableObject" accepts every object; both rank behind all superclasses. An empty value fits every
/// class.
inline constexpr int kWrongKind = -1;
inline constexpr int kOutOfRange = -2;
int fitOf(const HostValue& value, const InternedName& type);
int fitOf(const RVOInterface& object, const InternedName& type);

/// Whether an int32 scalar can represent the number.
bool fitsInt32(std::int64_t number) noexcept;

/// Whether the value is missing, or is an empty array of any class.
bool isEmpty(const HostValue& value) noexcept;

/// Whether a slot of this type holds a raw scalar instead of an array.
inline bool isRaw(const InternedName& type) noexcept {
  const auto kind = type.kind();
  return kind == internal::TypeKind::Logical || kind == internal::TypeKind::Int32 ||
         kind == internal::TypeKind::Double;
}

/// Converts the value into a slot of this type. The caller owns the array, if the slot holds one.
/// REQUIRES: fitOf(value, type) >= 0.
RVOValue slotOf(const HostValue& value, const InternedName& type);

/// The argument slots of one call; self comes first. Owns the arrays in the slots.
class Slots {
 public:
  explicit Slots(const RVOMethodSignature& signature) : mSignature(signature) {
    const std::size_t count = signature.arguments().size() + 1;
    if (count > kInline) mMany = std::make_unique<RVOValue[]>(count);
  }
  ~Slots();
  Slots(const Slots&) = delete;
  Slots& operator=(const Slots&) = delete;

  void add(const HostValue& value) {
    data()[mCount] = slotOf(value, typeAt(mCount));
    ++mCount;
  }
  /// Adds an object. REQUIRES: the object fits the type of the parameter.
  void addObject(RVOInterface* object) {
    data()[mCount] = RVOValue(boxInterface(object, typeAt(mCount)));
    ++mCount;
  }
  RVOValue* data() noexcept { return mMany ? mMany.get() : mFew; }
  int count() const noexcept { return static_cast<int>(mCount); }

 private:
  static constexpr std::size_t kInline = 8;

  const InternedName& typeAt(std::size_t index) const noexcept;

  const RVOMethodSignature& mSignature;
  std::size_t mCount = 0;
  RVOValue mFew[kInline];
  std::unique_ptr<RVOValue[]> mMany;
};

/// The type of parameter `index`. If the record has a self parameter, self has index 0.
inline const InternedName& parameterType(const RVOMethodSignature& signature, std::size_t index) noexcept {
  if (signature.self().empty()) return signature.arguments()[index];
  return index == 0 ? signature.self() : signature.arguments()[index - 1];
}

inline const InternedName& Slots::typeAt(std::size_t index) const noexcept {
  return parameterType(mSignature, index);
}

}  // namespace ruvo
