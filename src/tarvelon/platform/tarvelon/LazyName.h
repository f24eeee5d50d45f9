#pragma once

#include <atomic>

#include "tarvelon/boundary/ruvo/Interned.h"

namespace Tarvelon::metamodel::native {

/// A name that is put together when it is first asked for. Threads: any.
class LazyName {
 public:
  /// `make` gives its text.
  template <class Make>
  const ruvo::InternedName& get(Make make) const {
    const std::atomic_ref<ruvo::InternedName> name(mName);
    if (name.load(std::memory_order_acquire).empty()) {
      // Written once: who reads the result later reads it without a fence.
      ruvo::InternedName none;
      name.compare_exchange_strong(none, ruvo::InternedName(make()), std::memory_order_acq_rel,
                                   std::memory_order_acquire);
    }
    return mName;
  }

 private:
  mutable ruvo::InternedName mName;
};

}  // namespace Tarvelon::metamodel::native
