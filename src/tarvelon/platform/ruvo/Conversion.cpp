#include "tarvelon/platform/ruvo/Conversion.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/platform/ruvo/NameEntry.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace ruvo {

namespace {

using internal::TypeKind;

constinit LiteralName gObject("K7Q.Object");
constinit LiteralName gImmutableObject("K7Q.ImmutableObject");

bool isInt32(double number) noexcept {
  // NaN compares false.
  return number >= std::numeric_limits<std::int32_t>::min() &&
         number <= std::numeric_limits<std::int32_t>::max() && number == std::trunc(number);
}

bool fitsDouble(std::int64_t number) noexcept {
  // The cast back to an integer must not overflow: the largest integers round up to 2^63.
  const auto rounded = static_cast<double>(number);
  return rounded < 0x1p63 && static_cast<std::int64_t>(rounded) == number;
}

int fitOfNumber(const HostValue& value, TypeKind kind) noexcept {
  const auto given = value.kind();
  switch (kind) {
    case TypeKind::Logical:
      return given == HostValue::Kind::Logical ? 0 : 3;
    case TypeKind::Int32:
      if (given == HostValue::Kind::Logical) return 1;
      if (given == HostValue::Kind::Integer) return fitsInt32(value.integer()) ? 0 : kOutOfRange;
      return isInt32(value.real()) ? 2 : kOutOfRange;
    case TypeKind::Double:
      if (given == HostValue::Kind::Double) return 0;
      if (given == HostValue::Kind::Logical) return 2;
      return fitsDouble(value.integer()) ? 1 : kOutOfRange;
    default:
      return kWrongKind;
  }
}

}  // namespace

bool fitsInt32(std::int64_t number) noexcept { return number == static_cast<std::int32_t>(number); }

int fitOf(const RVOInterface& object, const InternedName& type) {
  Class& cls = classOf(object);
  if (cls.getFullName() == type) return 0;
  const bool isObject = type == gObject.get();
  if (isObject && factory::basic::BindingSlot::isImmutable(object.getBoundPointer(type))) return kWrongKind;
  const auto order = cls.linearization();
  const auto found = std::find(order.begin(), order.end(), bearerOf(type));
  if (found != order.end()) return static_cast<int>(found - order.begin());
  const auto behind = static_cast<int>(order.size());
  if (isObject) return behind;
  return type == gImmutableObject.get() ? behind + 1 : kWrongKind;
}

bool isEmpty(const HostValue& value) noexcept {
  return value.kind() == HostValue::Kind::Empty ||
         (value.kind() == HostValue::Kind::Text && value.array() && value.text().empty());
}

int fitOf(const HostValue& value, const InternedName& type) {
  switch (type.kind()) {
    case TypeKind::Logical:
    case TypeKind::Int32:
    case TypeKind::Double:
      return value.isNumber() ? fitOfNumber(value, type.kind()) : kWrongKind;
    case TypeKind::Char:
    case TypeKind::CharVector:
      return value.kind() == HostValue::Kind::Text ? 0 : kWrongKind;
    case TypeKind::Void:
      return kWrongKind;
    case TypeKind::Class:
      break;
  }
  if (value.kind() == HostValue::Kind::Object) return fitOf(*value.object(), type);
  return isEmpty(value) ? 0 : kWrongKind;
}

RVOValue slotOf(const HostValue& value, const InternedName& type) {
  switch (type.kind()) {
    case TypeKind::Logical:
      return RVOValue::ofLogical(value.real() != 0);
    case TypeKind::Int32:
      return RVOValue::ofInt32(static_cast<std::int32_t>(value.real()));
    case TypeKind::Double:
      return RVOValue::ofDouble(value.real());
    case TypeKind::Char:
    case TypeKind::CharVector:
      return RVOValue(hx::hxCreateString_UTF16(value.text()));
    default:
      break;
  }
  return RVOValue(boxInterface(value.kind() == HostValue::Kind::Object ? value.object() : nullptr, type));
}

Slots::~Slots() {
  for (std::size_t i = 0; i < mCount; ++i) {
    if (!isRaw(typeAt(i))) hx::hxDestroyArray(data()[i].array());
  }
}

HostValue HostValue::ofArray(const hx::hxArray* array) noexcept {
  const std::size_t count = hx::hxGetNumberOfElements(array);
  HostValue result(Kind::Empty);
  if (array && hx::hxGetClassId(array) == hx::hxChar) {
    result = ofText(hx::hxGetText(array));
  } else if (count > 0 && hx::hxGetClassId(array) == hx::hxObject) {
    result = ofObject(static_cast<RVOInterface*>(hx::hxGetElement(array, 0)));
  } else if (count > 1) {
    result = HostValue(Kind::Array);
  } else if (count == 1) {
    const double number = hx::hxGetNumber(array, 0);
    switch (hx::hxGetClassId(array)) {
      case hx::hxLogical:
        result = ofLogical(number != 0);
        break;
      case hx::hxInt32:
        result = ofInteger(static_cast<std::int32_t>(number));
        break;
      default:
        result = ofDouble(number);
        break;
    }
  }
  result.mArray = array;
  return result;
}

hx::hxArray* HostResult::toArray() && {
  const InternedName type = std::exchange(mType, InternedName());
  const RVOValue slot = std::exchange(mSlot, RVOValue());
  if (type.empty()) return nullptr;
  switch (type.kind()) {
    case TypeKind::Logical:
      return hx::hxCreateLogicalScalar(slot.logical());
    case TypeKind::Int32:
      return hx::hxCreateInt32Scalar(slot.int32());
    case TypeKind::Double:
      return hx::hxCreateDoubleScalar(slot.number());
    default:
      return slot.array() ? slot.array() : hx::hxCreateObjectMatrix(0, 0, type.c_str());
  }
}

}  // namespace ruvo
