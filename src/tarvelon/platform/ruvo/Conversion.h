#pragma once

#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tarvelon/platform/ruvo/HostValue.h"

namespace ruvo {

/// How a value fits a type: the distance, 0 for exactly the type asked for, or why it does not.
///
/// A number fits every number type that can hold it: 0 is the type's own kind, larger ones change more of it.
/// An object fits its class and the superclasses, by their place in the C3 order; "K7Q.Object" takes every
/// object that is not immutable and "K7Q.ImmutableObject" every object, behind all superclasses. No object
/// fits every class.
inline constexpr int kWrongKind = -1;
inline constexpr int kOutOfRange = -2;
int fitOf(const HostValue& value, const InternedName& type);
int fitOf(const RVOInterface& object, const InternedName& type);

/// Whether an int32 scalar holds the number.
bool fitsInt32(std::int64_t number) noexcept;

/// Whether no object is given, or an empty array of any class.
bool isEmpty(const HostValue& value) noexcept;

/// Whether a slot of that type holds its value raw, not as an array.
inline bool isRaw(const InternedName& type) noexcept {
  const auto kind = type.kind();
  return kind == internal::TypeKind::Logical || kind == internal::TypeKind::Int32 ||
         kind == internal::TypeKind::Double;
}

/// The value as a slot of that type; whoever asks owns the array, if it is one. REQUIRES: fitOf(value, type)
/// >= 0.
RVOValue slotOf(const HostValue& value, const InternedName& type);

/// The argument slots of one call, self first. Owns their arrays.
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
  /// The same for an object, which fits.
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

/// The type of parameter `index`, self being the first of a record that has one.
inline const InternedName& parameterType(const RVOMethodSignature& signature, std::size_t index) noexcept {
  if (signature.self().empty()) return signature.arguments()[index];
  return index == 0 ? signature.self() : signature.arguments()[index - 1];
}

inline const InternedName& Slots::typeAt(std::size_t index) const noexcept {
  return parameterType(mSignature, index);
}

}  // namespace ruvo
