#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ruvo/Property.h"
#include "tarvelon/platform/ruvo/Conversion.h"
#include "tarvelon/platform/ruvo/NameEntry.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace ruvo {

namespace {

using internal::TypeKind;

/// An optional scalar type, which is passed as an array, and the type of the scalar in it.
struct OptionalScalar {
  LiteralName type;
  LiteralName scalar;
  hx::hxClassId classId;
};

constinit OptionalScalar gOptionalScalars[] = {
    {LiteralName("k7qlogical"), LiteralName("logical scalar"), hx::hxLogical},
    {LiteralName("k7qint32"), LiteralName("int32 scalar"), hx::hxInt32},
    {LiteralName("k7qdouble"), LiteralName("double scalar"), hx::hxDouble},
};

const OptionalScalar* optionalScalarOf(const InternedName& type) {
  for (const OptionalScalar& scalar : gOptionalScalars) {
    if (scalar.type.get() == type) return &scalar;
  }
  return nullptr;
}

/// The arguments of one property write, with its checks and error texts.
struct Write {
  RVOInterface* object;
  const PropertySlot& slot;
  const HostValue& value;
  const InternedName& type;

  std::string where() const { return memberText(classOf(*object), slot.name.view()); }

  void store(RVOValue converted) const { slot.property->setValue(object, converted); }
  void storeArray(hx::hxArray* array) const {
    const hx::ArrayPtr owned(array);
    store(RVOValue(array));
  }

  [[noreturn]] void throwWrongType() const {
    throw K7Q::WrongType(mismatchText(where(), expectedText(type), value));
  }
  void requireFit(const InternedName& scalar) const {
    const int fit = fitOf(value, scalar);
    if (fit == kOutOfRange) throw K7Q::OutOfRange(mismatchText(where(), rangeText(scalar), value));
    if (fit < 0) throwWrongType();
  }
  /// Checks that an empty value may unset the property.
  void requireOptional() const {
    if (!slot.guard || slot.guard->isOptional()) return;
    throw K7Q::WrongValue(where() + ": expected " + expectedText(type) +
                          ", got an empty value; the property is required and cannot be unset");
  }
};

void setScalar(const Write& write) {
  if (write.value.kind() == HostValue::Kind::Empty) write.requireOptional();
  write.requireFit(write.type);
  write.store(slotOf(write.value, write.type));
}

void setText(const Write& write) {
  if (write.value.kind() == HostValue::Kind::Empty) {
    write.requireOptional();
    write.storeArray(hx::hxCreateNumericMatrix(0, 0, hx::hxChar, hx::hxReal));
    return;
  }
  write.requireFit(write.type);
  write.storeArray(hx::hxCreateString_UTF16(write.value.text()));
}

hx::hxArray* scalarArray(const HostValue& value, hx::hxClassId classId) {
  switch (classId) {
    case hx::hxLogical:
      return hx::hxCreateLogicalScalar(value.real() != 0);
    case hx::hxInt32:
      return hx::hxCreateInt32Scalar(static_cast<std::int32_t>(value.real()));
    default:
      return hx::hxCreateDoubleScalar(value.real());
  }
}

void setOptionalScalar(const Write& write, const OptionalScalar& scalar) {
  if (isEmpty(write.value)) {
    write.requireOptional();
    write.storeArray(hx::hxCreateNumericMatrix(0, 0, scalar.classId, hx::hxReal));
    return;
  }
  const bool isText = write.value.kind() == HostValue::Kind::Text;
  // The record itself raises the error for several elements.
  if (!isText && hx::hxGetNumberOfElements(write.value.array()) > 1) {
    write.storeArray(hx::hxDuplicateArray(write.value.array()));
    return;
  }
  write.requireFit(scalar.scalar.get());
  write.storeArray(scalarArray(write.value, scalar.classId));
}

void setObject(const Write& write) {
  if (isEmpty(write.value)) {
    write.requireOptional();
    return write.storeArray(boxInterface(nullptr, write.type));
  }
  const bool isObject = write.value.kind() == HostValue::Kind::Object;
  // If the class does not exist yet, no object can be an instance of it: the record refuses the value.
  if (!isObject || (Class::find(write.type) && fitOf(*write.value.object(), write.type) < 0))
    write.throwWrongType();
  write.storeArray(boxInterface(write.value.object(), write.type));
}

const PropertySlot& propertyOf(RVOInterface* self, std::string_view name) {
  Class& cls = classOf(*self);
  if (const PropertySlot* slot = cls.findProperty(name)) return *slot;
  throwUnknownMember(cls, "property", name);
}

}  // namespace

HostResult getProperty(RVOInterface* self, const PropertySlot& slot) {
  const RVOValue value = slot.property->getValue(self);
  return HostResult(value, slot.property->getDataType());
}

void setProperty(RVOInterface* self, const PropertySlot& slot, const HostValue& value) {
  if (slot.guard) slot.guard->requireSettable(self);
  const InternedName& type = slot.property->getDataType();
  const Write write{self, slot, value, type};
  switch (type.kind()) {
    case TypeKind::Logical:
    case TypeKind::Int32:
    case TypeKind::Double:
      return setScalar(write);
    case TypeKind::Char:
    case TypeKind::CharVector:
      return setText(write);
    case TypeKind::Void:
      write.throwWrongType();
    case TypeKind::Class:
      break;
  }
  const OptionalScalar* scalar = optionalScalarOf(type);
  return scalar ? setOptionalScalar(write, *scalar) : setObject(write);
}

HostResult getProperty(RVOInterface* self, std::string_view property) {
  return getProperty(self, propertyOf(self, property));
}

void setProperty(RVOInterface* self, std::string_view property, const HostValue& value) {
  setProperty(self, propertyOf(self, property), value);
}

}  // namespace ruvo
