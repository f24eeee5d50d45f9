#include "python/host/types/Enumeration.h"

#include <algorithm>
#include <array>

#include "python/host/objects/Values.h"
#include "tarvelon/boundary/ruvo/Method.h"

namespace pyhost {

PyTypeObject enumerationType{};

namespace {

/// The name of the literal, or the number of a value without a literal.
Reference textOf(PyObject* value) {
  return Reference(toPython(ruvo::call(interfaceOf(value), "toString", {})));
}

PyObject* show(PyObject* value) {
  return guarded([&] { return textOf(value).release(); });
}

bool hasLiteral(ruvo::Class& cls, std::string_view text) {
  const auto literals = literalsOf(cls);
  return std::any_of(literals.begin(), literals.end(), [&](const auto& name) { return name.view() == text; });
}

PyObject* represent(PyObject* value) {
  return guarded([&] {
    ruvo::Class& cls = *typeOf(value)->cls;
    const std::string text = toUtf8(textOf(value).get());
    const std::string name(shownName(cls));
    return toStr(hasLiteral(cls, text) ? name + "." + pythonName(text) : name + "(" + text + ")").release();
  });
}

Py_hash_t hash(PyObject* value) {
  return guarded(Py_hash_t{-1}, [&] {
    const Py_hash_t result = enter(PyObject_Hash, textOf(value).get());
    if (result == -1) throw PythonError();
    return result;
  });
}

constexpr const char* kComparisons[] = {"lt", "le", "eq", "ne", "gt", "ge"};
static_assert(Py_LT == 0 && Py_LE == 1 && Py_EQ == 2 && Py_NE == 3 && Py_GT == 4 && Py_GE == 5);

PyObject* compare(PyObject* left, PyObject* right, int operation) {
  return guarded([&]() -> PyObject* {
    if (!isHostObject(right) || typeOf(left) != typeOf(right)) Py_RETURN_NOTIMPLEMENTED;
    const std::array arguments{ruvo::HostValue::ofObject(interfaceOf(left)),
                               ruvo::HostValue::ofObject(interfaceOf(right))};
    return toPython(ruvo::callStatic(*typeOf(left)->cls, kComparisons[operation], arguments));
  });
}

PyObject* format(PyObject* value, PyObject* specification) {
  return guarded([&] {
    if (!PyUnicode_Check(specification)) {
      raise(errors().wrongType, "__format__: expected a str, got " + describePython(specification));
    }
    return owned(PyObject_Format, textOf(value).get(), specification).release();
  });
}

PyMethodDef gMethods[] = {{"__format__", format, METH_O, "Formats the literal like a str."},
                          {nullptr, nullptr, 0, nullptr}};

}  // namespace

bool isEnumeration(const ruvo::Class& cls) noexcept {
  return std::string_view(cls.info().getDescription()) == "An enumeration";
}

std::vector<ruvo::InternedName> literalsOf(ruvo::Class& cls) {
  std::vector<ruvo::InternedName> names;
  for (const auto* record : cls.methods()) {
    const auto& signature = *record->getSignature();
    const bool isLiteral = (record->getFlags() & ruvo::factory::kStatic) != 0 &&
                           signature.arguments().empty() && signature.result() == cls.getFullName();
    if (isLiteral) names.push_back(record->getName());
  }
  return names;
}

PyObject* listLiterals(ruvo::Class& cls) {
  Reference list = owned(PyList_New, 0);
  for (const auto& name : literalsOf(cls)) {
    const Reference value(toPython(ruvo::callStatic(cls, name.view(), {})));
    require(PyList_Append, list.get(), value.get());
  }
  return list.release();
}

std::string pythonName(std::string_view name) {
  static constexpr std::string_view kKeywords[] = {
      "False", "None",     "True",  "and",    "as",   "assert", "async",  "await",    "break",
      "class", "continue", "def",   "del",    "elif", "else",   "except", "finally",  "for",
      "from",  "global",   "if",    "import", "in",   "is",     "lambda", "nonlocal", "not",
      "or",    "pass",     "raise", "return", "try",  "while",  "with",   "yield"};
  const bool isKeyword = std::find(std::begin(kKeywords), std::end(kKeywords), name) != std::end(kKeywords);
  return std::string(name) + (isKeyword ? "_" : "");
}

void readyEnumerationType() {
  PyTypeObject& type = enumerationType;
  prepareType(type, "_tarvelon_host.Enumeration", sizeof(HostObject), "The base of all enumeration values.");
  Py_SET_TYPE(reinterpret_cast<PyObject*>(&type), &hostMetaType);
  type.tp_base = &hostObjectType;
  type.tp_flags |= Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_dealloc = deallocatorOf(TypeKind::Enumeration);
  type.tp_str = show;
  type.tp_repr = represent;
  type.tp_hash = hash;
  type.tp_richcompare = compare;
  type.tp_methods = gMethods;
  require(PyType_Ready, &type);
}

}  // namespace pyhost
