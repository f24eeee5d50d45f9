#pragma once

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace ruvo {

/// The only implementation of a host object.
class HostObject final : public RVOInterface {
 public:
  /// Creates an object without a binding and with a reference count of 0.
  static HostObject* create(Class& cls) { return new HostObject(cls); }

  void* bound() const noexcept { return mBound; }
  void setBound(void* pointer) noexcept { mBound = pointer; }
  void narrow(Class& cls) noexcept { mClass = &cls; }
  /// Makes the object permanent, for a native object that all threads share. REQUIRES: a reference count of
  /// 0.
  using RVOInterface::share;

  static void* operator new(std::size_t size);
  static void operator delete(void* storage) noexcept;

 private:
  explicit HostObject(Class& cls) noexcept : RVOInterface(&cls) {}
  ~HostObject() override;
  void dispose() override;
  void destroyBound() noexcept;
};

}  // namespace ruvo
