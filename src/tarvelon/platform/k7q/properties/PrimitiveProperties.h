#pragma once

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/k7q/properties/Records.h"

namespace K7Q::mi {

/// A required scalar property. Its values are raw slots.
template <class T>
class PrimitiveProperty final : public Record {
 public:
  using Record::Record;
  ruvo::RVOValue getValue(ruvo::RVOInterface* object) override { return read(this->readable(object)); }
  ruvo::RVOValue getSingleValuedValue(ClassObject& object) override { return read(Record::targetOf(object)); }
  void setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;
  void releaseValue(ruvo::RVOInterface* /*object*/, ruvo::RVOValue /*value*/) override {}
  const char* kind() const override { return "Primitive"; }

 private:
  ruvo::RVOValue read(const Target& target) const;
};

/// An optional scalar property. Its values are arrays with one element or none.
template <class T>
class OptionalPrimitiveProperty final : public Record {
 public:
  using Record::Record;
  ruvo::RVOValue getValue(ruvo::RVOInterface* object) override { return read(this->readable(object)); }
  ruvo::RVOValue getSingleValuedValue(ClassObject& object) override { return read(Record::targetOf(object)); }
  void setValue(ruvo::RVOInterface* object, ruvo::RVOValue value) override;
  const char* kind() const override { return "OptionalPrimitive"; }

 private:
  ruvo::RVOValue read(const Target& target) const;
};

/// The conversions of a scalar type between native values, slots and arrays.
template <class T>
struct ScalarForm;

template <>
struct ScalarForm<Boolean> {
  static constexpr const char* kType = "logical scalar";
  static constexpr const char* kOptionalType = "k7qlogical";
  static ruvo::RVOValue toSlot(Boolean value) { return ruvo::RVOValue::ofLogical(value); }
  static Boolean fromSlot(ruvo::RVOValue slot) { return slot.logical(); }
  static hx::hxArray* toArray(Boolean value) { return hx::hxCreateLogicalScalar(value); }
  static bool fits(double /*number*/) { return true; }
  static Boolean ofNumber(double number) { return number != 0; }
};

template <>
struct ScalarForm<Integer> {
  static constexpr const char* kType = "int32 scalar";
  static constexpr const char* kOptionalType = "k7qint32";
  static ruvo::RVOValue toSlot(Integer value) { return ruvo::RVOValue::ofInt32(value); }
  static Integer fromSlot(ruvo::RVOValue slot) { return slot.int32(); }
  static hx::hxArray* toArray(Integer value) { return hx::hxCreateInt32Scalar(value); }
  static bool fits(double number);
  static Integer ofNumber(double number) { return static_cast<int>(number); }
};

template <class T>
struct RealForm {
  static constexpr const char* kType = "double scalar";
  static constexpr const char* kOptionalType = "k7qdouble";
  static ruvo::RVOValue toSlot(T value) { return ruvo::RVOValue::ofDouble(value); }
  static T fromSlot(ruvo::RVOValue slot) { return slot.number(); }
  static hx::hxArray* toArray(T value) { return hx::hxCreateDoubleScalar(value); }
  static bool fits(double /*number*/) { return true; }
  static T ofNumber(double number) { return number; }
};
template <>
struct ScalarForm<Double> : RealForm<Double> {};
template <>
struct ScalarForm<Real> : RealForm<Real> {};

}  // namespace K7Q::mi
