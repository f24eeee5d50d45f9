#pragma once

#include <cstddef>
#include <utility>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/ruvo/Interned.h"

namespace ruvo {

class RVOClass;

/// The client that asks: a host, or the part of one, on whose behalf a class is defined or a method called.
class TARVELON_API RVOClient {
 public:
  RVOClient() = default;
  RVOClient(const RVOClient&) = delete;
  RVOClient& operator=(const RVOClient&) = delete;
  virtual ~RVOClient();
};

/// One host object: an instance of a host class, tied to the native pointer that was bound to it.
///
/// Ownership: counted; it goes when the last array or RVOInterfacePtr that holds it goes, and then its
/// class's destroyInstance() is called with the bound pointer.
/// Threads:   it belongs to the thread that uses the model of the native object. Of what belongs to no model,
///            classes, properties and types of the metamodel, all threads have the same host object.
class TARVELON_API RVOInterface : public hx::Element {
 public:
  /// The native pointer bound to this instance, null while none is. There is one, whatever class is asked
  /// for.
  void* getBoundPointer(const InternedName& className) const noexcept {
    static_cast<void>(className);
    return mBound;
  }
  RVOClass* getClass() const noexcept { return mClass; }

  /// A word for the host's own object that shows this instance; the object system only keeps it, null at
  /// first.
  void* getHostData() const noexcept { return mHostData; }
  void setHostData(void* data) noexcept { mHostData = data; }

 protected:
  explicit RVOInterface(RVOClass* cls) noexcept : mClass(cls) {}
  ~RVOInterface() override;

  RVOClass* mClass;
  void* mBound = nullptr;
  void* mHostData = nullptr;
};

/// An owning pointer to a host object.
class RVOInterfacePtr {
 public:
  RVOInterfacePtr() noexcept = default;
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

  RVOInterface& operator*() const noexcept { return *mObject; }
  RVOInterface* operator->() const noexcept { return mObject; }
  operator RVOInterface*() const noexcept { return mObject; }  // NOLINT(google-explicit-constructor)

 private:
  RVOInterface* mObject = nullptr;
};

/// Element `index` of an object array. REQUIRES: an object array, index in range.
inline RVOInterfacePtr omGetArrayElement(const hx::hxArray* array, std::size_t index) {
  return RVOInterfacePtr(static_cast<RVOInterface*>(hx::hxGetElement(array, index)));
}

/// The same for the array that holds the object under construction.
inline RVOInterfacePtr rvoiGetArrayElement(const hx::hxArray* array, std::size_t index) {
  return omGetArrayElement(array, index);
}

/// A 1 by 1 object array of the object, or the empty array of `className` when it is null.
TARVELON_API hx::hxArray* boxInterface(RVOInterface* object, const InternedName& className);

}  // namespace ruvo
