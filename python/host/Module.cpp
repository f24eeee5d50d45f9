#include "python/host/interpreter/Console.h"
#include "python/host/objects/Descriptors.h"
#include "python/host/objects/Functions.h"
#include "python/host/types/Loader.h"
#include "python/host/types/Packages.h"

namespace pyhost {

namespace {

// The object system exists once in the process, and its Python objects belong to the interpreter that loaded
// it.
void requireMainInterpreter() {
  if (PyInterpreterState_Get() == PyInterpreterState_Main()) return;
  PyErr_SetString(
      PyExc_ImportError,
      "Tarvelon works only in the main interpreter of a process, and this is a subinterpreter; start another "
      "process");
  throw PythonError();
}

void readyTypes() {
  static bool isReady = false;
  if (isReady) return;
  readyHostMetaType();
  readyHostObjectType();
  readyEnumerationType();
  readySequenceType();
  readyIteratorType();
  readyMetaPropertiesType();
  readyPropertyType();
  readyMethodType();
  readyLiteralType();
  readyDocType();
  readyFunctionType();
  isReady = true;
}

void addType(PyObject* module, const char* name, PyTypeObject& type) {
  require(PyModule_AddObjectRef, module, name, reinterpret_cast<PyObject*>(&type));
}

int fill(PyObject* module) {
  return guarded(-1, [&] {
    requireMainInterpreter();
    if (!addErrorClasses(module)) return -1;
    readyTypes();
    addType(module, "HostClass", hostMetaType);
    addType(module, "HostObject", hostObjectType);
    addType(module, "Enumeration", enumerationType);
    addType(module, "Sequence", sequenceType);
    addType(module, "Iterator", iteratorType);
    addType(module, "MetaProperties", metaPropertiesType);
    require(PyModule_AddStringConstant, module, "version", TARVELON_VERSION);
    for (const auto functions :
         {searchFunctions, historyFunctions, fileFunctions, validationFunctions, copyFunctions}) {
      require(PyModule_AddFunctions, module, functions());
    }
    redirectConsole();
    loadMetamodel();
    return 0;
  });
}

PyModuleDef_Slot gSlots[] = {{Py_mod_exec, reinterpret_cast<void*>(&fill)}, {0, nullptr}};

PyModuleDef gModule{};

}  // namespace

}  // namespace pyhost

PyMODINIT_FUNC PyInit__tarvelon_host() {
  using namespace pyhost;  // NOLINT(google-build-using-namespace)
  gModule.m_base = PyModuleDef_HEAD_INIT;
  gModule.m_name = "_tarvelon_host";
  gModule.m_doc = "The Python view of the object system. Import the packages K7Q and Tarvelon instead.";
  gModule.m_methods = packageFunctions();
  gModule.m_slots = gSlots;
  return PyModuleDef_Init(&gModule);
}
