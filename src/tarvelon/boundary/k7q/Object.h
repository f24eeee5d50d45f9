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

/// What every model object answers.
class TARVELON_API ObjectIntf : public ReferenceCountingIntf {
 public:
  ~ObjectIntf() override;
  /// The host class of the object itself, the immutable or the mutable one.
  virtual const ruvo::InternedName& getRuvoName(bool immutable) const = 0;
  /// Whether the object still stands in a model that is open.
  virtual bool isValid(Deviant deviant) const;
  /// Raises kNullReference when isValid() is false, else returns the description of the object's class or
  /// type.
  virtual ImmutableType getMetaType(Deviant deviant) const = 0;
};

class TARVELON_API ClassObjectIntf : public ObjectIntf {
 public:
  ~ClassObjectIntf() override;
  /// Takes the object out of its model; whoever still holds it has an invalid object.
  virtual void destroy(Deviant deviant) = 0;
  virtual Model getModel(Deviant deviant) const = 0;
};

class TARVELON_API FactoryObjectIntf : public ObjectIntf {
 public:
  ~FactoryObjectIntf() override;
  /// The model that it makes objects for.
  virtual Model getModel(Deviant deviant) const = 0;
};

class TARVELON_API ModelIntf : public ObjectIntf {
 public:
  ~ModelIntf() override;
  virtual void setUri(Deviant deviant, std::u16string_view uri) = 0;
  virtual std::u16string getUri(Deviant deviant) const = 0;
  /// Ends the model: every object of it turns invalid at once. Closing twice is no error.
  virtual void close() = 0;

  /// Differs from before when objects of the model have turned invalid, or valid again: a list that outlives
  /// its elements looks whether it has moved, and then drops those that went.
  std::uint64_t destructions() const noexcept { return mDestructions; }
  /// Counts it up, once for all that go together.
  void noteDestruction() noexcept { ++mDestructions; }

 private:
  std::uint64_t mDestructions = 0;
};

}  // namespace NSInterface

/// The two-word value of every model handle. Passes by value; copying takes a reference, destruction drops
/// it.
/// Threads: one thread at a time uses a model and all handles on it and its objects. Different threads may
///          use different models without locks.
class TARVELON_API ObjectHandle {
 public:
  constexpr ObjectHandle() noexcept = default;
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

  NSInterface::ObjectIntf* getInterface() const noexcept { return mInterface; }
  Deviant getDeviant() const noexcept { return mDeviant; }
  bool isNull() const noexcept { return mInterface == nullptr; }
  /// False for a null handle, a destroyed object or a closed model; never fails.
  bool isValid() const { return mInterface && mInterface->isValid(mDeviant); }
  /// Raises kNullReference unless isValid().
  void requireValid(const char* file = __builtin_FILE(), int line = __builtin_LINE()) const {
    if (!isValid()) LocalAsserter(file, line) = Asserter::MakeAlways(kNullReference);
  }
  /// Handles are equal when they hold the same native object.
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

class TARVELON_API ImmutableObject : public ObjectHandle {
 public:
  using ObjectHandle::ObjectHandle;
  explicit ImmutableObject(const ObjectHandle& handle) noexcept : ObjectHandle(handle) {}
};

class TARVELON_API Object : public ImmutableObject {
 public:
  using ImmutableObject::ImmutableObject;
  constexpr Object() noexcept = default;
  /// What writes comes of what writes alone.
  explicit Object(const ObjectHandle& handle) = delete;
};

class TARVELON_API ImmutableClassObject : public ImmutableObject {
 public:
  constexpr ImmutableClassObject() noexcept = default;
  ImmutableClassObject(NSInterface::ClassObjectIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(interface, deviant) {}
  NSInterface::ClassObjectIntf* getClassObject() const noexcept {
    return static_cast<NSInterface::ClassObjectIntf*>(getInterface());
  }
};

class TARVELON_API ClassObject : public Object {
 public:
  constexpr ClassObject() noexcept = default;
  ClassObject(NSInterface::ClassObjectIntf* interface, Deviant deviant) noexcept
      : Object(interface, deviant) {}
  NSInterface::ClassObjectIntf* getClassObject() const noexcept {
    return static_cast<NSInterface::ClassObjectIntf*>(getInterface());
  }
};

class TARVELON_API ImmutableFactoryObject : public ImmutableObject {
 public:
  constexpr ImmutableFactoryObject() noexcept = default;
  ImmutableFactoryObject(NSInterface::FactoryObjectIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(interface, deviant) {}
};

class TARVELON_API FactoryObject : public Object {
 public:
  constexpr FactoryObject() noexcept = default;
  FactoryObject(NSInterface::FactoryObjectIntf* interface, Deviant deviant) noexcept
      : Object(interface, deviant) {}
  NSInterface::FactoryObjectIntf* getFactoryObject() const noexcept {
    return static_cast<NSInterface::FactoryObjectIntf*>(getInterface());
  }
};

class TARVELON_API ImmutableModel : public ImmutableObject {
 public:
  constexpr ImmutableModel() noexcept = default;
  ImmutableModel(NSInterface::ModelIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(interface, deviant) {}
  NSInterface::ModelIntf* getModelInterface() const noexcept {
    return static_cast<NSInterface::ModelIntf*>(getInterface());
  }
  /// The deviant of a view of `object` by this model. A null handle is no model that could thaw what is
  /// frozen.
  Deviant deviantFor(const ObjectHandle& object) const noexcept {
    return isNull() ? Deviant{object.getDeviant().word & Deviant::kFrozen} : getDeviant();
  }
};

/// A handle on a model. Holding it, or any object of it, keeps the model alive.
/// Threads: a model with all that belongs to it is used by one thread at a time; it may pass from one to
///          another. Models are independent of each other.
class TARVELON_API Model : public Object {
 public:
  constexpr Model() noexcept = default;
  Model(NSInterface::ModelIntf* interface, Deviant deviant) noexcept : Object(interface, deviant) {}
  NSInterface::ModelIntf* getModelInterface() const noexcept {
    return static_cast<NSInterface::ModelIntf*>(getInterface());
  }
  /// A new model with no objects and an empty URI.
  static Model create();
  /// Ends the model: every object of it turns invalid at once, and what they took is free again. Closing
  /// twice is no error. Raises kNullReference for a null handle, and when the view refuses writing.
  void close() const;
  /// The same model on a deviant that refuses writing, and so do all handles that are made of it.
  ImmutableModel frozen() const {
    return {getModelInterface(), Deviant{getDeviant().word | Deviant::kFrozen}};
  }
  operator ImmutableModel() const {  // NOLINT(google-explicit-constructor)
    return {getModelInterface(), getDeviant()};
  }
};

}  // namespace K7Q
