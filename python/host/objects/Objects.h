#pragma once

#include <string>
#include <string_view>

#include "python/host/interpreter/Errors.h"
#include "python/host/interpreter/Reference.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace pyhost {

/// The Python object of a host object.
///
/// It owns a reference on the host object. The host-data word of the host object points back to it, so a host
/// object has the same Python object as long as that Python object is referenced.
struct HostObject {
  PyObject_HEAD ruvo::RVOInterface* interface;
  PyObject* weakReferences;
  /// The sequences of its properties that have a Python object at present. While a sequence is referenced,
  /// reading the property returns the same Python object.
  struct HostSequence* sequences;
};

/// The Python object of a sequence. The sequence of a property holds a reference on its owner, and the owner
/// lists the sequence in `sequences`.
struct HostSequence {
  HostObject base;
  PyObject* owner;
  const ruvo::PropertySlot* slot;
  HostSequence* next;
  /// The iterators over this sequence (see IteratorGuard.h).
  struct HostIterator* iterators;
};

/// The Python object of an iterator. It holds a reference on its sequence.
struct HostIterator {
  HostObject base;
  PyObject* sequence;
  /// The next iterator over the same sequence.
  HostIterator* next;
  HostIterator* previous;
  /// Set when its element was removed from the sequence.
  bool isRetired;
};

/// The kind of a type decides what Python adds to it. It is found from the methods that the class publishes.
enum class TypeKind : std::uint8_t { Object, Enumeration, Sequence, Iterator, MetaProperties };

/// The kind of a sequence's elements.
enum class Elements : std::uint8_t { Objects, Values, Texts };

/// The Python type of a host class. Created on first use, never freed. The class's host-data word points to
/// it.
struct HostType {
  PyHeapTypeObject heap;
  ruvo::Class* cls;
  TypeKind kind;
  /// Whether its methods create objects of a model.
  bool isFactory;
  /// For a sequence: the record of at(index); null until it is first needed.
  const ruvo::RVOMethodInfo* at;
  /// For a sequence: the kind of its elements, valid when `at` is set.
  Elements elements;
};

/// The root types, one for each kind. Every host type derives from one of them.
extern PyTypeObject hostObjectType;
extern PyTypeObject enumerationType;
extern PyTypeObject sequenceType;
extern PyTypeObject iteratorType;
extern PyTypeObject metaPropertiesType;
/// The metatype of all host types and of the root types.
extern PyTypeObject hostMetaType;

/// Readies the root types and the metatype. Call them in the order of inheritance.
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
/// Whether a Python value is the type of a class of the object system. The root types are not: they have the
/// same metatype, but are plain PyTypeObjects.
inline bool isHostClass(PyObject* value) noexcept {
  return Py_TYPE(value) == &hostMetaType &&
         PyType_HasFeature(reinterpret_cast<PyTypeObject*>(value), Py_TPFLAGS_HEAPTYPE);
}
/// REQUIRES: isHostClass(), as is the type of each host object.
inline HostType* asHostType(PyTypeObject* type) noexcept { return reinterpret_cast<HostType*>(type); }

/// The type of a class. The first call creates it and the types of the superclasses. Borrowed.
HostType* typeOf(ruvo::Class& cls);
/// The type of an object. Updates the object's type first if the object system has narrowed the object's
/// class. Borrowed.
HostType* typeOf(PyObject* object);
/// Whether a class is an enumeration. Does not define the class.
bool isEnumeration(const ruvo::Class& cls) noexcept;

/// The function that frees objects of such a type.
destructor deallocatorOf(TypeKind kind) noexcept;

/// The Python object of a property's sequence, if one is referenced at present; null otherwise. Borrowed.
PyObject* heldSequence(PyObject* owner, const ruvo::PropertySlot& slot) noexcept;
/// Adds the sequence, which was just read from its property, to the list of `owner`.
void holdSequence(PyObject* sequence, PyObject* owner, const ruvo::PropertySlot& slot) noexcept;

/// Whether the native object is valid: not destroyed, in an open model. True for an object that is not part
/// of a model.
bool isValid(const ruvo::RVOInterface* interface);

/// The Python object of a host object. REQUIRES: `interface` is not null.
PyObject* wrap(ruvo::RVOInterface* interface);

/// Memory for the Python object of a host object that does not exist yet. It is allocated before the model is
/// changed, so that nothing can fail after the change.
class ObjectAllocation {
 public:
  explicit ObjectAllocation(HostType* type);
  ObjectAllocation(const ObjectAllocation&) = delete;
  ObjectAllocation& operator=(const ObjectAllocation&) = delete;
  ~ObjectAllocation();
  /// Makes the Python object. REQUIRES: `interface` has the type's class and no Python object; called at most
  /// once.
  PyObject* fill(ruvo::RVOInterface* interface) noexcept;

 private:
  PyObject* mObject;
};

/// The short form of a name: the last two parts of a dotted name, "common.Package".
std::string_view shownName(std::string_view fullName) noexcept;
inline std::string_view shownName(const ruvo::Class& cls) noexcept {
  return shownName(cls.getFullName().view());
}

/// The address of the native object, which identifies an object. If there is no native object, the address of
/// the binding or of `interface` itself.
const void* nativeIdentity(const ruvo::RVOInterface* interface) noexcept;

/// The member most similar to an unknown name: first among the members of the host class, then among those
/// that Python adds. Empty if no name is similar.
std::string nearestMember(HostType& type, const std::string& name);

}  // namespace pyhost
