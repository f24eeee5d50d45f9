#pragma once

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace ruvo {

/// The one kind of host object there is.
class HostObject final : public RVOInterface {
 public:
  /// An object without a binding and without a holder.
  static HostObject* create(Class& cls) { return new HostObject(cls); }

  void* bound() const noexcept { return mBound; }
  void setBound(void* pointer) noexcept { mBound = pointer; }
  void narrow(Class& cls) noexcept { mClass = &cls; }
  /// For a native object that all threads share. REQUIRES: no holder.
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
