#include "python/host/objects/Descriptors.h"
#include "python/host/objects/Docs.h"
#include "python/host/objects/Values.h"

namespace pyhost {

namespace {

struct Literal {
  PyObject_HEAD ruvo::Class* owner;
  const ruvo::OverloadSet* overloads;
};

struct ClassDoc {
  PyObject_HEAD ruvo::Class* cls;
};

PyTypeObject literalType{};
PyTypeObject classDocType{};

// Each reading creates a new Python object: only the value matters, not its identity.
PyObject* readLiteral(PyObject* descriptor, PyObject* /*self*/, PyObject* /*type*/) {
  return guarded([&] {
    const auto& literal = *reinterpret_cast<Literal*>(descriptor);
    return toPython(ruvo::callOverloads(*literal.owner, *literal.overloads, nullptr, {}));
  });
}

PyObject* readDoc(PyObject* descriptor, PyObject* /*self*/, PyObject* /*type*/) {
  return guarded(
      [&] { return toStr(describeClass(*reinterpret_cast<ClassDoc*>(descriptor)->cls)).release(); });
}

void readyDescriptor(PyTypeObject& type, const char* name, std::size_t size, descrgetfunc get) {
  prepareType(type, name, size, nullptr);
  type.tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION;
  type.tp_descr_get = get;
  require(PyType_Ready, &type);
}

}  // namespace

PyObject* newLiteral(ruvo::Class& owner, const ruvo::InternedName& name) {
  const ruvo::OverloadSet* overloads = owner.findMethods(name);
  auto* made = PyObject_New(Literal, &literalType);
  Reference result = owned(reinterpret_cast<PyObject*>(made));
  made->owner = &owner;
  made->overloads = overloads;
  return result.release();
}

PyObject* newClassDoc(ruvo::Class& cls) {
  auto* made = PyObject_New(ClassDoc, &classDocType);
  Reference result = owned(reinterpret_cast<PyObject*>(made));
  made->cls = &cls;
  return result.release();
}

void readyLiteralType() {
  readyDescriptor(literalType, "_tarvelon_host.Literal", sizeof(Literal), readLiteral);
}
void readyDocType() { readyDescriptor(classDocType, "_tarvelon_host.ClassDoc", sizeof(ClassDoc), readDoc); }

}  // namespace pyhost
