#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Assertion.h"
#include "tarvelon/boundary/k7q/Reference.h"
#include "tarvelon/boundary/ruvo/Interned.h"

namespace K7Q {

class ImmutableType;
class Model;

namespace NSInterface {

/// The interface of everything that a handle can refer to: model objects, models, factories, descriptions and
/// values in object form.
class TARVELON_API ObjectIntf : public ReferenceCountingIntf {
 public:
  ~ObjectIntf() override;
  /// The dotted name of the object's own host class, the immutable or the mutable one.
  virtual const ruvo::InternedName& getRuvoName(bool immutable) const = 0;
  /// Whether the object can be used: it is not destroyed, and its model is open. Always true for an object
  /// that belongs to no model, such as a description.
  virtual bool isValid(Deviant deviant) const;
  /// The description of the object's class or type. Throws a K7Q::Exception with the text kNullReference if
  /// isValid() is false.
  virtual ImmutableType getMetaType(Deviant deviant) const = 0;
};

/// The interface of the objects of a model.
class TARVELON_API ClassObjectIntf : public ObjectIntf {
 public:
  ~ClassObjectIntf() override;
  /// Destroys the object and all objects that it contains, and removes the references of other objects to
  /// them. Handles on destroyed objects are invalid: isValid() returns false, and other functions throw. Undo
  /// makes the objects valid again.
  virtual void destroy(Deviant deviant) = 0;
  /// The model of the object, with the given deviant.
  virtual Model getModel(Deviant deviant) const = 0;
};

/// The interface of objects that create model objects.
class TARVELON_API FactoryObjectIntf : public ObjectIntf {
 public:
  ~FactoryObjectIntf() override;
  /// The model in which the factory creates objects, with the given deviant.
  virtual Model getModel(Deviant deviant) const = 0;
};

/// The interface of models.
class TARVELON_API ModelIntf : public ObjectIntf {
 public:
  ~ModelIntf() override;
  /// The URI is a text that the model stores. Setting it does not bind the model in the ModelCache.
  virtual void setUri(Deviant deviant, std::u16string_view uri) = 0;
  virtual std::u16string getUri(Deviant deviant) const = 0;
  /// Closes the model. All its objects become invalid and their memory is freed. Closing a model twice has no
  /// effect.
  virtual void close() = 0;

  /// A counter that changes whenever objects of the model become invalid or valid again. A list of objects
  /// compares the counter with an earlier value, and looks for invalid elements only if the values differ.
  std::uint64_t destructions() const noexcept { return mDestructions; }
  /// Increments the counter, once for all objects that are destroyed together.
  void noteDestruction() noexcept { ++mDestructions; }

 private:
  std::uint64_t mDestructions = 0;
};

}  // namespace NSInterface

/// Base of all handles: a pointer to an object and the deviant under which the object is seen.
///
/// A handle is passed by value and has the size of two pointers. A handle whose name begins with `Immutable`
/// only reads; the others read and write.
///
/// Ownership: a handle holds a reference on the object, and a handle on a model object keeps the model alive.
///            A reference does not keep an object in its model: the object can be destroyed, and its handles
///            then become invalid.
/// Errors:    functions on a null or invalid handle throw a K7Q::Exception with the text kNullReference.
/// Threads:   one thread at a time uses a model, its objects and all handles on them. Different threads may
///            use different models without locks.
///
/// Example:
///   const auto brakes = common::Package::create(model, u"Brakes");
///   const auto same = brakes;       // same == brakes
///   brakes.destroy();
///   same.isValid();                 // false
class TARVELON_API ObjectHandle {
 public:
  /// A null handle.
  constexpr ObjectHandle() noexcept = default;
  /// Adds a reference on the object, which may be null.
  ObjectHandle(NSInterface::ObjectIntf* interface, Deviant deviant) noexcept
      : mInterface(interface), mDeviant(deviant) {
    if (mInterface) mInterface->addRef();
  }
  ObjectHandle(const ObjectHandle& other) noexcept : ObjectHandle(other.mInterface, other.mDeviant) {}
  ObjectHandle(ObjectHandle&& other) noexcept
      : mInterface(std::exchange(other.mInterface, nullptr)), mDeviant(other.mDeviant) {}
  ObjectHandle& operator=(const ObjectHandle& other) noexcept {
    ObjectHandle copy(other);
    swap(copy);
    return *this;
  }
  ObjectHandle& operator=(ObjectHandle&& other) noexcept {
    swap(other);
    return *this;
  }
  ~ObjectHandle() {
    if (mInterface) mInterface->release();
  }

  /// The object, without a reference for the caller; null for a null handle.
  NSInterface::ObjectIntf* getInterface() const noexcept { return mInterface; }
  /// The deviant under which the handle shows the object.
  Deviant getDeviant() const noexcept { return mDeviant; }
  /// Whether the handle refers to no object. A handle that is not null may still be invalid.
  bool isNull() const noexcept { return mInterface == nullptr; }
  /// False for a null handle, a destroyed object and an object of a closed model. Never throws.
  bool isValid() const { return mInterface && mInterface->isValid(mDeviant); }
  /// Throws a K7Q::Exception with the text kNullReference if isValid() is false. The text names the caller's
  /// source position.
  void requireValid(const char* file = __builtin_FILE(), int line = __builtin_LINE()) const {
    if (!isValid()) LocalAsserter(file, line) = Asserter::MakeAlways(kNullReference);
  }
  /// Handles are equal if they refer to the same object; the deviants may differ.
  friend bool operator==(const ObjectHandle& left, const ObjectHandle& right) noexcept {
    return left.mInterface == right.mInterface;
  }

 protected:
  void swap(ObjectHandle& other) noexcept {
    std::swap(mInterface, other.mInterface);
    std::swap(mDeviant, other.mDeviant);
  }
  void setDeviantWord(Deviant deviant) noexcept { mDeviant = deviant; }

 private:
  NSInterface::ObjectIntf* mInterface = nullptr;
  Deviant mDeviant;
};

/// A read-only handle on any object. Every handle converts to it.
class TARVELON_API ImmutableObject : public ObjectHandle {
 public:
  using ObjectHandle::ObjectHandle;
  explicit ImmutableObject(const ObjectHandle& handle) noexcept : ObjectHandle(handle) {}
};

/// A handle on any object that also writes. Property values pass as K7Q::Object, scalars and texts included
/// (k7q/Primitives.h).
class TARVELON_API Object : public ImmutableObject {
 public:
  using ImmutableObject::ImmutableObject;
  constexpr Object() noexcept = default;
  /// Deleted: a read-only handle does not convert to a handle that writes.
  explicit Object(const ObjectHandle& handle) = delete;
};

/// A read-only handle on a model object of any class.
class TARVELON_API ImmutableClassObject : public ImmutableObject {
 public:
  constexpr ImmutableClassObject() noexcept = default;
  ImmutableClassObject(NSInterface::ClassObjectIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(interface, deviant) {}
  NSInterface::ClassObjectIntf* getClassObject() const noexcept {
    return static_cast<NSInterface::ClassObjectIntf*>(getInterface());
  }
};

/// A handle on a model object of any class that reads and writes. X::cast() of a native handle converts it to
/// class X.
///
/// Example:
///   const K7Q::ClassObject object = methods.create(model, 0, {});
///   const auto package = common::Package::cast(object);  // null if the object is no Package
class TARVELON_API ClassObject : public Object {
 public:
  constexpr ClassObject() noexcept = default;
  ClassObject(NSInterface::ClassObjectIntf* interface, Deviant deviant) noexcept
      : Object(interface, deviant) {}
  NSInterface::ClassObjectIntf* getClassObject() const noexcept {
    return static_cast<NSInterface::ClassObjectIntf*>(getInterface());
  }
};

/// A read-only handle on a factory.
class TARVELON_API ImmutableFactoryObject : public ImmutableObject {
 public:
  constexpr ImmutableFactoryObject() noexcept = default;
  ImmutableFactoryObject(NSInterface::FactoryObjectIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(interface, deviant) {}
};

/// A handle on a factory. Its class with functions is Factory in tarvelon/Factory.h.
class TARVELON_API FactoryObject : public Object {
 public:
  constexpr FactoryObject() noexcept = default;
  FactoryObject(NSInterface::FactoryObjectIntf* interface, Deviant deviant) noexcept
      : Object(interface, deviant) {}
  NSInterface::FactoryObjectIntf* getFactoryObject() const noexcept {
    return static_cast<NSInterface::FactoryObjectIntf*>(getInterface());
  }
};

/// A read-only handle on a model, for example the result of Model::frozen().
class TARVELON_API ImmutableModel : public ImmutableObject {
 public:
  constexpr ImmutableModel() noexcept = default;
  ImmutableModel(NSInterface::ModelIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(interface, deviant) {}
  NSInterface::ModelIntf* getModelInterface() const noexcept {
    return static_cast<NSInterface::ModelIntf*>(getInterface());
  }
  /// The deviant for seeing `object` through this model handle. If this handle is null, the result keeps only
  /// the kFrozen bit of the object's deviant.
  Deviant deviantFor(const ObjectHandle& object) const noexcept {
    return isNull() ? Deviant{object.getDeviant().word & Deviant::kFrozen} : getDeviant();
  }
};

/// A handle on a model. A model owns its objects.
///
/// Ownership: releasing the last handle on the model and on its objects frees the model, unless the model is
///            bound in the ModelCache. close() frees the objects earlier.
/// Threads:   one thread at a time uses a model and everything that belongs to it. A model may pass from one
///            thread to another. Models are independent of each other.
///
/// Example:
///   const K7Q::Model model = K7Q::Model::create();
///   const auto brakes = common::Package::create(model, u"Brakes");
///   const auto view = brakes.asView(model.frozen());
///   view.get<"Name">();             // reads
///   view.set<"Name">(u"Wheels");    // throws K7Q::Exception
class TARVELON_API Model : public Object {
 public:
  constexpr Model() noexcept = default;
  Model(NSInterface::ModelIntf* interface, Deviant deviant) noexcept : Object(interface, deviant) {}
  /// The interface of the model, for example to set the URI; null for a null handle. The caller gets no
  /// reference.
  NSInterface::ModelIntf* getModelInterface() const noexcept {
    return static_cast<NSInterface::ModelIntf*>(getInterface());
  }
  /// Creates a model without objects and with an empty URI. Throws a K7Q::Exception if no library that can
  /// create models is loaded (native::initialize() in tarvelon/Packages.h).
  static Model create();
  /// Closes the model and removes it from the ModelCache. All objects become invalid and their memory is
  /// freed. Closing a model twice has no effect. Throws a K7Q::Exception for a null handle and for a frozen
  /// or read-only view.
  void close() const;
  /// The same model as a view that cannot be written. All handles that are obtained through this view,
  /// directly or indirectly, cannot write either.
  ImmutableModel frozen() const {
    return {getModelInterface(), Deviant{getDeviant().word | Deviant::kFrozen}};
  }
  /// The same model with the same deviant, as a handle that only reads.
  operator ImmutableModel() const {  // NOLINT(google-explicit-constructor)
    return {getModelInterface(), getDeviant()};
  }
};

}  // namespace K7Q
