#pragma once

#include <cstddef>
#include <utility>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/ruvo/Interned.h"

namespace ruvo {

class RVOClass;

/// Identifies the host, or the part of a host, for which the object system defines a class or calls a method.
/// It has no other functions.
class TARVELON_API RVOClient {
 public:
  RVOClient() = default;
  RVOClient(const RVOClient&) = delete;
  RVOClient& operator=(const RVOClient&) = delete;
  virtual ~RVOClient();
};

/// A host object: an instance of a host class that represents a native object.
///
/// Ownership: reference counted. Arrays and RVOInterfacePtr hold references. The release() of the last
///            reference calls the class's destroyInstance() with the bound pointer and then destroys the host
///            object.
/// Threads:   the thread that uses the model of the native object uses the host object. Descriptions of the
///            metamodel belong to no model, and all threads share their host objects.
class TARVELON_API RVOInterface : public hx::Element {
 public:
  /// The native pointer (an id of K7Q::DeviantRegistry) that is bound to this host object, null if there is
  /// none. `className` has no effect.
  void* getBoundPointer(const InternedName& className) const noexcept {
    static_cast<void>(className);
    return mBound;
  }
  /// The most derived host class that is known for the object. BindingRegistry::announce() may replace it by
  /// a subclass.
  RVOClass* getClass() const noexcept { return mClass; }

  /// A pointer for the host's own use, such as the script object for this host object. It is null at first;
  /// the object system does not use it.
  void* getHostData() const noexcept { return mHostData; }
  void setHostData(void* data) noexcept { mHostData = data; }

 protected:
  explicit RVOInterface(RVOClass* cls) noexcept : mClass(cls) {}
  ~RVOInterface() override;

  RVOClass* mClass;
  void* mBound = nullptr;
  void* mHostData = nullptr;
};

/// A smart pointer that holds a reference on a host object. It may be null.
///
/// Example:
///   const ruvo::RVOInterfacePtr object = ruvo::omGetArrayElement(array, 0);
///   void* id = object->getBoundPointer(className);
class RVOInterfacePtr {
 public:
  RVOInterfacePtr() noexcept = default;
  /// Adds a reference on the host object, which may be null.
  explicit RVOInterfacePtr(RVOInterface* object) noexcept : mObject(object) {
    if (mObject) mObject->addRef();
  }
  RVOInterfacePtr(const RVOInterfacePtr& other) noexcept : RVOInterfacePtr(other.mObject) {}
  RVOInterfacePtr(RVOInterfacePtr&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
  RVOInterfacePtr& operator=(RVOInterfacePtr other) noexcept {
    std::swap(mObject, other.mObject);
    return *this;
  }
  ~RVOInterfacePtr() {
    if (mObject) mObject->release();
  }

  /// REQUIRES, for the next two: not null.
  RVOInterface& operator*() const noexcept { return *mObject; }
  RVOInterface* operator->() const noexcept { return mObject; }
  operator RVOInterface*() const noexcept { return mObject; }  // NOLINT(google-explicit-constructor)

 private:
  RVOInterface* mObject = nullptr;
};

/// Element `index` of an object array; the result may be null.
/// REQUIRES: an object array of host objects; the index is in range.
inline RVOInterfacePtr omGetArrayElement(const hx::hxArray* array, std::size_t index) {
  return RVOInterfacePtr(static_cast<RVOInterface*>(hx::hxGetElement(array, index)));
}

/// The same function for the array with the object under construction, which a constructor gets.
inline RVOInterfacePtr rvoiGetArrayElement(const hx::hxArray* array, std::size_t index) {
  return omGetArrayElement(array, index);
}

/// Returns a new 1 by 1 array with the object, or a 0 by 0 object array of class `className` if the object is
/// null. The caller owns the array. Throws bedrock::core::except::bad_alloc; a host object without references
/// is then destroyed.
TARVELON_API hx::hxArray* boxInterface(RVOInterface* object, const InternedName& className);

}  // namespace ruvo
