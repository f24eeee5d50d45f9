#include "python/host/Values.h"

#include <memory>

namespace pyhost {

namespace {

ruvo::HostValue fromInteger(PyObject* value, const Place& place) {
  int overflow = 0;
  const long long number = PyLong_AsLongLongAndOverflow(value, &overflow);
  if (overflow != 0) {
    raise(errors().outOfRange,
          place.text() + "expected a whole number of 64 bits at most, got " + describePython(value));
  }
  if (number == -1 && PyErr_Occurred()) throw PythonError();
  return ruvo::HostValue::ofInteger(number);
}

/// What is none of Python's own kinds: a number of another library, or nothing that fits.
ruvo::HostValue fromForeign(PyObject* value, const Place& place) {
  if (PyIndex_Check(value)) return fromInteger(owned(PyNumber_Index(value)).get(), place);
  raise(errors().wrongType, place.text() + "expected a bool, int, float, str, model object or None, got " +
                                describePython(value));
}

PyObject* scalar(const hx::hxArray* array, std::size_t index) {
  switch (hx::hxGetClassId(array)) {
    case hx::hxLogical:
      return PyBool_FromLong(hx::hxGetNumber(array, index) != 0 ? 1 : 0);
    case hx::hxInt32:
      return owned(PyLong_FromDouble(hx::hxGetNumber(array, index))).release();
    case hx::hxObject: {
      auto* element = static_cast<ruvo::RVOInterface*>(hx::hxGetElement(array, index));
      return element ? wrap(element) : Py_NewRef(Py_None);
    }
    default:
      return owned(PyFloat_FromDouble(hx::hxGetNumber(array, index))).release();
  }
}

/// Several elements: no property or method gives them today, but an array may hold them.
PyObject* toList(const hx::hxArray* array, std::size_t count) {
  Reference list = owned(PyList_New(static_cast<Py_ssize_t>(count)));
  for (std::size_t index = 0; index < count; ++index) {
    PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(index), scalar(array, index));
  }
  return list.release();
}

}  // namespace

std::string Place::text() const {
  std::string result(cls.shortName());
  if (!member.empty()) result.append(".").append(member);
  if (argument != 0) result.append(", argument ").append(std::to_string(argument));
  return result + ": ";
}

std::string describePython(PyObject* value) {
  if (value == Py_None) return "None";
  std::string result = Py_TYPE(value)->tp_name;
  if (!PyLong_Check(value) && !PyFloat_Check(value) && !PyUnicode_Check(value)) return result;
  if (PyLong_Check(value) && _PyLong_NumBits(value) > 1000) return result + " of more than 1000 bits";
  std::string shown = toUtf8(owned(PyObject_Repr(value)).get());
  constexpr std::size_t kLongest = 60;
  if (shown.size() > kLongest) shown = shown.substr(0, kLongest) + "...";
  return result + " " + shown;
}

ruvo::HostValue toHostValue(PyObject* value, TextBuffer& texts, const Place& place) {
  using ruvo::HostValue;
  if (PyUnicode_Check(value)) return HostValue::ofText(texts.convert(value));
  if (isHostObject(value)) return HostValue::ofObject(interfaceOf(value));
  if (value == Py_None) return {};
  if (PyBool_Check(value)) return HostValue::ofLogical(value == Py_True);
  if (PyLong_Check(value)) return fromInteger(value, place);
  if (PyFloat_Check(value)) return HostValue::ofDouble(PyFloat_AS_DOUBLE(value));
  return fromForeign(value, place);
}

PyObject* toPython(const ruvo::HostResult& result) {
  using ruvo::internal::TypeKind;
  switch (result.type().kind()) {
    case TypeKind::Logical:
      return PyBool_FromLong(result.slot().logical() ? 1 : 0);
    case TypeKind::Int32:
      return owned(PyLong_FromLong(result.slot().int32())).release();
    case TypeKind::Double:
      return owned(PyFloat_FromDouble(result.slot().number())).release();
    default:
      return result.isArray() ? toPython(result.slot().array()) : Py_NewRef(Py_None);
  }
}

PyObject* toPython(const hx::hxArray* array) {
  if (hx::hxGetClassId(array) == hx::hxChar) return toUnicode(hx::hxGetText(array));
  const std::size_t count = hx::hxGetNumberOfElements(array);
  if (count == 1) return scalar(array, 0);
  return count == 0 ? Py_NewRef(Py_None) : toList(array, count);
}

Arguments::Arguments(PyObject* const* values, std::size_t count, const ruvo::Class& cls,
                     std::string_view member)
    : mCount(count) {
  if (count > kMost) {
    raise(errors().wrongType, Place{cls, member}.text() + "got " + std::to_string(count) +
                                  " arguments, and no signature has more than " + std::to_string(kMost));
  }
  for (std::size_t index = 0; index < count; ++index) {
    auto* place = reinterpret_cast<ruvo::HostValue*>(mStorage) + index;
    std::construct_at(place, toHostValue(values[index], mTexts, Place{cls, member, index + 1}));
    mHasEmpty = mHasEmpty || place->kind() == ruvo::HostValue::Kind::Empty;
  }
}

}  // namespace pyhost
