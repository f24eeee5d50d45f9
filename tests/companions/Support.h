#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/arplatform/variant/Names.h"
#include "tarvelon/binding/Conversion.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tests/support/Host.h"

/// Sequences of enumeration values and their iterators, as a host uses them: called by name through the
/// object system. Calls that a host would refuse are made directly on the record, with hand-made slots.
namespace companions {

using host::HostValue;
using host::raised;
using host::RVOInterfacePtr;
using Kind = Tarvelon::metamodel::arplatform::variant::BindingTimeKind;
using Values = std::vector<int>;

inline constexpr const char* kElement = "Tarvelon.metamodel.arplatform.variant.BindingTimeKind";
inline constexpr const char* kSequence = "Tarvelon.metamodel.arplatform.variant.SequenceOfBindingTimeKind";
inline constexpr const char* kImmutableSequence =
    "Tarvelon.metamodel.arplatform.variant.ImmutableSequenceOfBindingTimeKind";
inline constexpr const char* kIterator = "Tarvelon.metamodel.arplatform.variant.BindingTimeKindIterator";
inline constexpr const char* kImmutableIterator =
    "Tarvelon.metamodel.arplatform.variant.BindingTimeKindImmutableIterator";

inline std::string failure(const char* message, int line) {
  return std::string("Assertion failed: ") + message +
         " at kernel/containers/sequence/multi_index/MultiIndexImplForPrimitives:" + std::to_string(line) +
         ": ";
}
inline constexpr const char* kNullSequence =
    "Assertion failed: Cannot access NULL sequence. Use MakeSequence to create sequences.See "
    "testSequenceCreation in k7q/kernel/unittest/sequence_tests. at "
    "kernel/containers/sequence/SequenceRef:108: ";
inline constexpr const char* kNullText = "Cannot access NULL ref. Use isValid() before calling methods";

struct DestroyArray {
  void operator()(hx::hxArray* array) const { hx::hxDestroyArray(array); }
};
using ArrayPtr = std::unique_ptr<hx::hxArray, DestroyArray>;

inline K7Q::VariantInfo nativeOf(const RVOInterfacePtr& object) {
  return K7Q::DeviantRegistry::getVariantInfo(object->getBoundPointer({}));
}
inline RVOInterfacePtr objectIn(const hx::hxArray* array) {
  return RVOInterfacePtr(static_cast<ruvo::RVOInterface*>(hx::hxGetElement(array, 0)));
}

/// The host object of a value, even if no literal has the number.
inline RVOInterfacePtr element(int value) {
  const K7Q::Object cell = Kind(value);
  const ArrayPtr array(binding::boxAs(cell.getInterface(), cell.getDeviant(), false,
                                      ruvo::InternedName(ruvo::internal::makeInterned(kElement))));
  return objectIn(array.get());
}
inline int valueOf(const RVOInterfacePtr& element) {
  const ArrayPtr array(ruvo::boxInterface(element, element->getClass()->getFullName()));
  return binding::Conversion<Kind>::fromSlot(ruvo::RVOValue(array.get())).value();
}

/// The hand-made slot of one value.
class Slot {
 public:
  Slot(int number) : mValue(ruvo::RVOValue::ofInt32(number)) {}  // NOLINT(google-explicit-constructor)
  Slot(const RVOInterfacePtr& object)                            // NOLINT(google-explicit-constructor)
      : mArray(ruvo::boxInterface(object, object->getClass()->getFullName())), mValue(mArray.get()) {}
  static Slot empty() { return Slot(ArrayPtr(hx::hxCreateObjectMatrix(0, 0, "K7Q.Object"))); }
  ruvo::RVOValue value() const noexcept { return mValue; }

 private:
  explicit Slot(ArrayPtr array) : mArray(std::move(array)), mValue(mArray.get()) {}
  ArrayPtr mArray;
  ruvo::RVOValue mValue;
};

inline const ruvo::RVOMethodInfo& record(const char* cls, std::string_view name, std::size_t index = 0) {
  for (const auto* each : host::cls(cls).methods()) {
    if (each->getName().view() == name && index-- == 0) return *each;
  }
  throw K7Q::Exception("no record " + std::string(name));
}

inline host::HostResult invoke(const ruvo::RVOMethodInfo& method, std::span<const Slot> arguments) {
  std::vector<ruvo::RVOValue> slots;
  for (const Slot& each : arguments) slots.push_back(each.value());
  ruvo::RVOValue result;
  std::uint32_t count = 0;
  method.invoke(nullptr, count, &result, static_cast<int>(slots.size()), slots.data());
  const auto& type = method.getSignature()->result();
  return {result, type.view() == "void" ? ruvo::InternedName() : type};
}
inline host::HostResult invoke(const ruvo::RVOMethodInfo& method, std::initializer_list<Slot> arguments) {
  return invoke(method, std::span<const Slot>(arguments.begin(), arguments.size()));
}

inline int sizeOf(const RVOInterfacePtr& sequence) { return host::call(sequence, "size").slot().int32(); }

/// The values, read by index.
inline Values valuesOf(const RVOInterfacePtr& sequence) {
  Values values;
  for (int i = 1; i <= sizeOf(sequence); ++i) {
    values.push_back(valueOf(host::callObject(sequence, "at", {host::integer(i)})));
  }
  return values;
}

inline bool areEqual(const RVOInterfacePtr& left, const RVOInterfacePtr& right) {
  return host::call(left, "eq", {host::object(right)}).slot().logical();
}
inline int itemOf(const RVOInterfacePtr& iterator) { return valueOf(host::callObject(iterator, "item")); }

/// The values, read with an iterator.
inline Values walk(const RVOInterfacePtr& sequence) {
  Values values;
  const auto end = host::callObject(sequence, "end");
  for (const auto at = host::callObject(sequence, "begin"); !areEqual(at, end); host::call(at, "getNext")) {
    values.push_back(itemOf(at));
  }
  return values;
}

/// Sequences with duplicates ("make") and without ("makeUnique").
class Companions : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    host::openModule();
    mModel = host::newModel();
  }
  RVOInterfacePtr newSequence(const char* how) const {
    return RVOInterfacePtr(host::callStatic(kSequence, how, {host::object(mModel)}).object());
  }
  RVOInterfacePtr newSequence() const { return newSequence(GetParam()); }
  RVOInterfacePtr newSequence(const Values& values) const {
    auto sequence = newSequence();
    for (const int each : values) host::call(sequence, "push_back", {host::object(element(each))});
    return sequence;
  }
  bool isUnique() const { return std::string_view(GetParam()) == "makeUnique"; }
  /// An iterator `steps` elements behind the first.
  static RVOInterfacePtr iteratorAt(const RVOInterfacePtr& sequence, int steps) {
    auto iterator = host::callObject(sequence, "begin");
    for (int i = 0; i < steps; ++i) host::call(iterator, "getNext");
    return iterator;
  }
  RVOInterfacePtr mModel;
};

}  // namespace companions
