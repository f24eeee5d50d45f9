#include "python/host/types/Packages.h"

#include <algorithm>

#include "python/host/interpreter/Console.h"
#include "python/host/objects/Docs.h"
#include "python/host/objects/Functions.h"
#include "python/host/objects/Values.h"
#include "python/host/types/Describe.h"
#include "python/host/types/Enumeration.h"
#include "python/host/types/Extensions.h"
#include "python/host/types/Types.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/platform/model/metamodel/Documentation.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace pyhost {

namespace {

/// The Python object of a function of a package. It is an attribute of the package's module.
struct Function {
  PyObject_HEAD vectorcallfunc vectorcall;
  ruvo::Package* package;
  PyObject* name;
};

PyTypeObject functionType{};

Function* asFunction(PyObject* object) noexcept { return reinterpret_cast<Function*>(object); }

std::string textOf(PyObject* name) {
  if (!PyUnicode_Check(name))
    raise(errors().wrongType, "expected a dotted name as str, got " + describePython(name));
  return toUtf8(name);
}

ruvo::HostValue textArgument(PyObject* text, TextBuffer& texts, const std::string& function) {
  try {
    return ruvo::HostValue::ofText(texts.convert(text));
  } catch (const RefusedText& refused) {
    raiseRefused(refused, text, function + ": ");
  }
}

PyObject* call(PyObject* self, PyObject* const* arguments, std::size_t flagged, PyObject* keywords) {
  return guarded([&] {
    const Function& function = *asFunction(self);
    const std::string name = toUtf8(function.name);
    const auto count = static_cast<std::size_t>(PyVectorcall_NARGS(flagged));
    if ((keywords && PyTuple_GET_SIZE(keywords) != 0) || count > Arguments::kMost) {
      raise(errors().wrongType,
            name + ": expected arguments by position, at most as many as a signature has");
    }
    TextBuffer texts;
    std::vector<ruvo::HostValue> values;
    // A function belongs to no class, so error texts name its package instead.
    for (std::size_t i = 0; i < count; ++i) {
      if (isHostObject(arguments[i])) {
        values.push_back(ruvo::HostValue::ofObject(interfaceOf(arguments[i])));
      } else if (PyUnicode_Check(arguments[i])) {
        values.push_back(textArgument(arguments[i], texts, name));
      } else {
        raise(errors().wrongType,
              name + ": expected a str or a model object, got " + describePython(arguments[i]));
      }
    }
    PyObject* result = toPython(ruvo::callFunction(*function.package, name, values));
    requirePrinted();
    return result;
  });
}

PyObject* represent(PyObject* self) {
  return guarded([&] {
    const Function& function = *asFunction(self);
    const std::string fullName =
        std::string(function.package->getFullName().view()) + "." + toUtf8(function.name);
    return toStr("<function " + fullName + ">").release();
  });
}

PyObject* doc(PyObject* self, void* /*closure*/) {
  return guarded([&] {
    const Function& function = *asFunction(self);
    const std::string name = toUtf8(function.name);
    const auto records = function.package->findFunctions(name);
    return toStr(describeMethod({ruvo::InternedName(name), {records.begin(), records.end()}}, name))
        .release();
  });
}

PyObject* nameOf(PyObject* self, void* /*closure*/) { return Py_NewRef(asFunction(self)->name); }

PyGetSetDef gMembers[] = {{"__doc__", doc, nullptr, nullptr, nullptr},
                          {"__name__", nameOf, nullptr, nullptr, nullptr},
                          {nullptr, nullptr, nullptr, nullptr, nullptr}};

void deallocate(PyObject* self) {
  drop(asFunction(self)->name);
  PyObject_Free(self);
}

PyObject* newFunction(ruvo::Package& package, PyObject* name) {
  auto* made = PyObject_New(Function, &functionType);
  Reference result = owned(reinterpret_cast<PyObject*>(made));
  made->vectorcall = call;
  made->package = &package;
  made->name = Py_NewRef(name);
  return result.release();
}

/// Finds a class with that name in the direct sub-packages of a package. Returns its full name, or empty.
std::string nameBelow(ruvo::Package& package, const std::string& name) {
  for (const std::string_view each : package.packageNames()) {
    const ruvo::Class* cls = package.findPackage(each)->findClass(name);
    if (cls) return std::string(cls->getFullName().view());
  }
  return {};
}

/// The same, in the sub-packages and then in the sibling packages: users often look for a class there.
std::string nameNextDoor(ruvo::Package& package, const std::string& name) {
  const std::string below = nameBelow(package, name);
  return below.empty() && package.parent() ? nameBelow(*package.parent(), name) : below;
}

[[noreturn]] void raiseUnknownMember(ruvo::Package& package, PyObject* name) {
  auto names = package.packageNames();
  const auto classes = package.classNames();
  names.insert(names.end(), classes.begin(), classes.end());
  for (const auto* function : package.functions()) names.push_back(function->getName().view());
  const std::string text = toUtf8(name);
  std::string hint;
  if (!text.starts_with("_")) {
    hint = ruvo::nearestName(text, names);
    if (hint.empty()) hint = nameNextDoor(package, text);
  }
  raiseUnknownName(name, "package '" + std::string(package.getFullName().view()) +
                             "' has no package or class " + ruvo::quotedName(text) +
                             (hint.empty() ? "" : "; did you mean '" + hint + "'?"));
}

PyObject* isPackage(Given arguments) {
  return PyBool_FromLong(ruvo::Package::find(textOf(arguments[0])) ? 1 : 0);
}

PyObject* member(Given arguments) {
  ruvo::Package& package = ruvo::Package::get(textOf(arguments[0]));
  const std::string name = textOf(arguments[1]);
  if (ruvo::Class* cls = package.findClass(name)) return Py_NewRef(reinterpret_cast<PyObject*>(typeOf(*cls)));
  if (!package.findFunctions(name).empty()) return newFunction(package, arguments[1]);
  raiseUnknownMember(package, arguments[1]);
}

PyObject* memberNames(Given arguments) {
  ruvo::Package& package = ruvo::Package::get(textOf(arguments[0]));
  Reference list = owned(PyList_New, 0);
  const auto append = [&list](std::string_view text) {
    require(PyList_Append, list.get(), toStr(text).get());
  };
  for (const auto& each : package.packageNames()) append(each);
  for (const auto* function : package.functions()) append(function->getName().view());
  for (const auto& each : package.classNames()) append(each);
  return list.release();
}

PyObject* describe(Given arguments) {
  const std::string text = textOf(arguments[0]);
  if (ruvo::Package* package = ruvo::Package::find(text)) return describePackage(*package);
  if (ruvo::Class* cls = ruvo::Class::find(text)) return describeClassRecords(*cls);
  const std::size_t dot = text.rfind('.');
  ruvo::Package* parent = dot == std::string::npos ? nullptr : ruvo::Package::find(text.substr(0, dot));
  if (parent) raiseUnknownMember(*parent, toStr(text.substr(dot + 1)).get());
  ruvo::Package::get(text);
  return Py_NewRef(Py_None);
}

Reference listOfTexts(const std::vector<std::string>& texts) {
  Reference list = owned(PyList_New, 0);
  for (const std::string& text : texts) require(PyList_Append, list.get(), toStr(text).get());
  return list;
}

PyObject* documentation(Given arguments) {
  const std::string fullName = textOf(arguments[0]);
  Reference constructors = owned(PyList_New, 0);
  for (const auto& names : constructorNames(fullName))
    require(PyList_Append, constructors.get(), listOfTexts(names).get());
  Reference dict = owned(PyDict_New);
  const std::string_view purpose = Tarvelon::metamodel::native::purposeOf(fullName);
  require(PyDict_SetItemString, dict.get(), "purpose", toStr(purpose).get());
  require(PyDict_SetItemString, dict.get(), "constructors", constructors.get());
  return dict.release();
}

PyObject* plainTypeOf(Given arguments) { return toStr(plainType(textOf(arguments[0]))).release(); }

PyObject* extend(Given arguments) {
  if (!PyDict_Check(arguments[1])) raise(errors().wrongType, "extend(className, members: dict)");
  addExtension(textOf(arguments[0]), arguments[1]);
  return Py_NewRef(Py_None);
}

PyObject* attributeName(Given arguments) { return toStr(pythonName(textOf(arguments[0]))).release(); }

PyObject* statistics(Given /*none*/) {
  Reference dict = owned(PyDict_New);
  const auto put = [&dict](const char* key, std::size_t number) {
    require(PyDict_SetItemString, dict.get(), key, owned(PyLong_FromSize_t, number).get());
  };
  put("types", typesMade());
  put("bindings", ruvo::factory::basic::BindingRegistry::size());
  put("arrays", hx::hxLiveArrays());
  put("objects", Tarvelon::metamodel::native::liveObjects());
  return dict.release();
}

/// The candidate most similar to a name.
PyObject* nearest(Given arguments) {
  if (!PyList_Check(arguments[1])) raise(errors().wrongType, "nearest: expected a name and a list");
  std::vector<std::string> names;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(arguments[1]); ++i) {
    names.push_back(textOf(Reference::share(PyList_GET_ITEM(arguments[1], i)).get()));
  }
  const std::vector<std::string_view> candidates(names.begin(), names.end());
  return toStr(ruvo::nearestName(textOf(arguments[0]), candidates)).release();
}

PyObject* quoted(Given arguments) { return toStr(ruvo::quotedName(textOf(arguments[0]))).release(); }

constexpr FunctionRow kFunctions[] = {
    {"isPackage", 1, isPackage, "Whether a package with that dotted name exists."},
    {"member", 2, member, "The class or function with that name in a package."},
    {"memberNames", 1, memberNames, "The names of a package's packages, functions and classes."},
    {"describe", 1, describe, "All that is registered for a package or class, as dicts and lists."},
    {"documentation", 1, documentation,
     "The documentation of a package, class or enumeration, given by its dotted name: a dict. 'purpose' is "
     "one or two sentences. 'constructors' has for each constructor, in the order of describe(), a list of "
     "the names of its arguments, 'model' first. Both are empty if there is no documentation."},
    {"plainType", 1, plainTypeOf,
     "The type of a property's values, for users: the name of the mutable class, not of a view or sequence."},
    {"quoted", 1, quoted, "A name between quotes, as in errors: a very long name is shortened."},
    {"nearest", 2, nearest, "The most similar name in a list; empty if none is similar."},
    {"extend", 2, extend, "Adds members to a class before its type is created."},
    {"attributeName", 1, attributeName,
     "The attribute for a name of the host: with an underscore if it is a keyword."},
    {"statistics", 0, statistics, "The numbers of types, bound host objects, host arrays and model objects."},
};

}  // namespace

PyMethodDef* packageFunctions() noexcept { return Published<kFunctions>::methods(); }

void readyFunctionType() {
  PyTypeObject& type = functionType;
  prepareType(type, "_tarvelon_host.Function", sizeof(Function), nullptr);
  type.tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_HAVE_VECTORCALL;
  type.tp_dealloc = deallocate;
  type.tp_call = PyVectorcall_Call;
  type.tp_vectorcall_offset = offsetof(Function, vectorcall);
  type.tp_getset = gMembers;
  type.tp_repr = represent;
  require(PyType_Ready, &type);
}

}  // namespace pyhost
