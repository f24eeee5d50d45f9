#include "python/host/objects/Values.h"

#include <memory>

#include "python/host/objects/Docs.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace pyhost {

namespace {

bool isLogical(const ruvo::PropertySlot& slot) {
  const std::string_view type = slot.property->getDataType().view();
  return type == "logical scalar" || type == "k7qlogical";
}

/// Converts an int to the double with exactly that value. Raises K7Q.OutOfRange if there is none.
double exactDouble(PyObject* value, const Place& place) {
  const double number = enter(PyLong_AsDouble, value);
  const bool isTooLarge = number == -1 && PyErr_Occurred();
  if (isTooLarge && !PyErr_ExceptionMatches(PyExc_OverflowError)) throw PythonError();
  PyErr_Clear();
  if (!isTooLarge) {
    const Reference back = owned(PyLong_FromDouble, number);
    if (owned(PyLong_Type.tp_richcompare(value, back.get(), Py_EQ)).get() == Py_True) return number;
  }
  const std::string expected = place.property ? ruvo::expectedText(place.property->property->getDataType())
                                              : "a whole number of 64 bits at most";
  raise(errors().outOfRange, place.text() + "expected " + expected + ", got " + describePython(value));
}

// For a logical property any number is allowed. Elsewhere the number must be exactly representable as a
// double.
ruvo::HostValue fromLargeInteger(PyObject* value, const Place& place) {
  if (place.property && isLogical(*place.property)) return ruvo::HostValue::ofLogical(true);
  return ruvo::HostValue::ofDouble(exactDouble(value, place));
}

ruvo::HostValue fromInteger(PyObject* value, const Place& place) {
  int overflow = 0;
  const long long number = enter(PyLong_AsLongLongAndOverflow, value, &overflow);
  if (overflow != 0) return fromLargeInteger(value, place);
  if (number == -1 && PyErr_Occurred()) throw PythonError();
  return ruvo::HostValue::ofInteger(number);
}

/// The signatures of the overloads, each on its own line.
std::string signatures(const Place& place) {
  if (!place.overloads) return {};
  const std::string_view name = place.member.empty() ? place.cls.shortName() : place.member;
  const std::string lines = describeMethod(*place.overloads, name);
  std::string text = lines.find('\n') == std::string::npos ? "; there is\n    " : "; there are\n    ";
  for (const char each : lines) {
    text += each;
    if (each == '\n') text += "    ";
  }
  return text;
}

/// Converts a value that is not a built-in type: a number of another library. Raises K7Q.WrongType for other
/// values.
ruvo::HostValue fromForeign(PyObject* value, const Place& place) {
  // A weak proxy pretends to have every method, and its object could be destroyed during the call. So it is
  // refused.
  const bool isProxy = PyWeakref_CheckProxy(value) != 0;
  if (!isProxy && PyIndex_Check(value)) return fromInteger(owned(PyNumber_Index, value).get(), place);
  const std::string expected = place.property ? ruvo::expectedText(place.property->property->getDataType())
                                              : "a bool, int, float, str, model object or None";
  raise(errors().wrongType,
        place.text() + "expected " + expected + ", got " + describePython(value) + signatures(place));
}

ruvo::HostValue fromText(PyObject* value, TextBuffer& texts, const Place& place) {
  try {
    return ruvo::HostValue::ofText(texts.convert(value));
  } catch (const RefusedText& refused) {
    raiseRefused(refused, value, place.text());
  }
}

/// The beginning of a value's repr.
std::string shownPython(PyObject* value) {
  constexpr Py_ssize_t kLongest = 60;
  const bool isLong = PyUnicode_Check(value) && PyUnicode_GET_LENGTH(value) > kLongest;
  const Reference part = isLong ? owned(PyUnicode_Substring, value, 0, kLongest) : Reference::share(value);
  const Reference shown = owned(PyObject_Repr, part.get());
  if (PyUnicode_GET_LENGTH(shown.get()) <= kLongest) return toUtf8(shown.get());
  return toUtf8(owned(PyUnicode_Substring, shown.get(), 0, kLongest).get()) + "...";
}

std::string nameOfPythonType(PyTypeObject* type) {
  return isHostClass(reinterpret_cast<PyObject*>(type)) ? std::string(shownName(*asHostType(type)->cls))
                                                        : std::string(type->tp_name);
}

PyObject* scalar(const hx::hxArray* array, std::size_t index) {
  switch (hx::hxGetClassId(array)) {
    case hx::hxLogical:
      return PyBool_FromLong(hx::hxGetNumber(array, index) != 0 ? 1 : 0);
    case hx::hxInt32:
      return owned(PyLong_FromDouble, hx::hxGetNumber(array, index)).release();
    case hx::hxObject: {
      auto* element = static_cast<ruvo::RVOInterface*>(hx::hxGetElement(array, index));
      return element ? wrap(element) : Py_NewRef(Py_None);
    }
    default:
      return owned(PyFloat_FromDouble, hx::hxGetNumber(array, index)).release();
  }
}

/// Converts an array of several elements. No property or method returns one at present.
PyObject* toList(const hx::hxArray* array, std::size_t count) {
  Reference list = owned(PyList_New, static_cast<Py_ssize_t>(count));
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
  if (PyType_Check(value)) return "the class " + nameOfPythonType(reinterpret_cast<PyTypeObject*>(value));
  std::string result = nameOfPythonType(Py_TYPE(value));
  if (!PyLong_Check(value) && !PyFloat_Check(value) && !PyUnicode_Check(value)) return result;
  if (PyLong_Check(value) && _PyLong_NumBits(value) > 1000) return result + " of more than 1000 bits";
  return result + " " + shownPython(value);
}

ruvo::HostValue toHostValue(PyObject* value, TextBuffer& texts, const Place& place) {
  using ruvo::HostValue;
  if (PyUnicode_Check(value)) return fromText(value, texts, place);
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
      return owned(PyLong_FromLong, result.slot().int32()).release();
    case TypeKind::Double:
      return owned(PyFloat_FromDouble, result.slot().number()).release();
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
                     std::string_view member, const ruvo::OverloadSet* overloads)
    : mCount(count) {
  if (count > kMost) {
    raise(errors().wrongType, Place{cls, member}.text() + "got " + std::to_string(count) +
                                  " arguments, and no signature has more than " + std::to_string(kMost));
  }
  for (std::size_t index = 0; index < count; ++index) {
    auto* place = reinterpret_cast<ruvo::HostValue*>(mStorage) + index;
    const Place where{cls, member, index + 1, nullptr, overloads};
    std::construct_at(place, toHostValue(values[index], mTexts, where));
    mHasEmpty = mHasEmpty || place->kind() == ruvo::HostValue::Kind::Empty;
  }
}

}  // namespace pyhost
