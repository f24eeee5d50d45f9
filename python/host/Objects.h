#pragma once

#include <string>
#include <string_view>

#include "python/host/Errors.h"
#include "python/host/Reference.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace pyhost {

/// A Python object that shows a host object.
///
/// It owns a reference on the host object, whose host-data word points back at it: the same host object is
/// the same Python object for as long as that one is held.
struct HostObject {
  PyObject_HEAD ruvo::RVOInterface* interface;
  PyObject* weakReferences;
  /// The sequences of its properties that are held at present: each is one Python object for that time.
  struct HostSequence* sequences;
};

/// A host object that is a sequence. One that a property gave keeps its owner, which knows it while it lasts.
struct HostSequence {
  HostObject base;
  PyObject* owner;
  const ruvo::PropertySlot* slot;
  HostSequence* next;
  /// Those that walk it.
  struct HostIterator* iterators;
};

/// A host object that is an iterator: it keeps the sequence it walks alive.
struct HostIterator {
  HostObject base;
  PyObject* sequence;
  /// The others that walk the sequence.
  HostIterator* next;
  HostIterator* previous;
  /// Its element has been taken out of the sequence.
  bool isRetired;
};

/// What Python adds to a class, told by what the class publishes.
enum class TypeKind : std::uint8_t { Object, Enumeration, Sequence, Iterator, MetaProperties };

/// What a sequence holds.
enum class Elements : std::uint8_t { Objects, Values, Texts };

/// The Python type of a host class. Made when first touched, never freed; the class's host-data word points
/// at it.
struct HostType {
  PyHeapTypeObject heap;
  ruvo::Class* cls;
  TypeKind kind;
  /// Whether its methods make objects of a model.
  bool isFactory;
  /// Of a sequence: the record that gives the element at an index; null until it is looked for.
  const ruvo::RVOMethodInfo* at;
  /// Of a sequence, once `at` is known.
  Elements elements;
};

/// The root types, one for each kind; every host type derives from one of them.
extern PyTypeObject hostObjectType;
extern PyTypeObject enumerationType;
extern PyTypeObject sequenceType;
extern PyTypeObject iteratorType;
extern PyTypeObject metaPropertiesType;
/// The type of all host types and of the roots.
extern PyTypeObject hostMetaType;

/// Readies the types of this file and those of the other kinds, in order of inheritance.
void readyHostObjectType();
void readyEnumerationType();
void readySequenceType();
void readyIteratorType();
void readyMetaPropertiesType();
void readyHostMetaType();

inline bool isHostObject(PyObject* object) noexcept {
  return Py_TYPE(reinterpret_cast<PyObject*>(Py_TYPE(object))) == &hostMetaType;
}
inline HostObject* asHostObject(PyObject* object) noexcept { return reinterpret_cast<HostObject*>(object); }
inline PyObject* asPyObject(HostObject* object) noexcept { return reinterpret_cast<PyObject*>(object); }
inline ruvo::RVOInterface* interfaceOf(PyObject* object) noexcept { return asHostObject(object)->interface; }
inline PyTypeObject* asPyType(HostType* type) noexcept { return &type->heap.ht_type; }
inline HostType* asHostType(PyTypeObject* type) noexcept { return reinterpret_cast<HostType*>(type); }

/// The type that shows a class; makes it, and those of its superclasses, at the first call. Borrowed.
HostType* typeOf(ruvo::Class& cls);
/// The type of an object, brought up to date if the object system has narrowed the object since. Borrowed.
HostType* typeOf(PyObject* object);
/// Whether a class is an enumeration; defines nothing.
bool isEnumeration(const ruvo::Class& cls) noexcept;

/// How a type frees its objects.
destructor deallocatorOf(TypeKind kind) noexcept;

/// The sequence that a property of `owner` gave and that is still held; null if there is none. Borrowed.
PyObject* heldSequence(PyObject* owner, const ruvo::PropertySlot& slot) noexcept;
/// Makes `owner` know the sequence that its property has just given.
void holdSequence(PyObject* sequence, PyObject* owner, const ruvo::PropertySlot& slot) noexcept;

/// Whether a host object's native object stands in an open model; true for what is no model object.
bool isValid(const ruvo::RVOInterface* interface);

/// The Python object of a host object, which must not be null.
PyObject* wrap(ruvo::RVOInterface* interface);

/// Room for the Python object of a host object that is still to be made: made first, so that nothing can fail
/// behind the change.
class Room {
 public:
  explicit Room(HostType* type);
  Room(const Room&) = delete;
  Room& operator=(const Room&) = delete;
  ~Room();
  /// The Python object of a host object that has none. REQUIRES: a host object of the type's class; once.
  PyObject* fill(ruvo::RVOInterface* interface) noexcept;

 private:
  PyObject* mObject;
};

/// Names as people write them: the last two parts of a dotted name, "common.Package".
std::string_view shownName(std::string_view fullName) noexcept;
inline std::string_view shownName(const ruvo::Class& cls) noexcept {
  return shownName(cls.getFullName().view());
}

/// The native object behind a host object, which tells objects apart; null when there is none any more.
const void* nativeIdentity(const ruvo::RVOInterface* interface) noexcept;

}  // namespace pyhost
