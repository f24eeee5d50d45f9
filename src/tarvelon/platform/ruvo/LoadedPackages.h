#pragma once

#include <atomic>
#include <mutex>

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace ruvo::factory {

/// The packages that were entered while libraries were loaded and that are still to be registered.
class LoadedPackages {
 public:
  static void enter(LoadedPackage& package) noexcept;
  /// Registers them in the order in which they were entered. Cost when there is none: one load.
  static void registerIn(Package& root) {
    if (sFirst.load(std::memory_order_acquire)) registerAll(root);
  }

 private:
  static void registerAll(Package& root);

  static constinit std::mutex sGuard;
  static constinit std::atomic<LoadedPackage*> sFirst;
  static constinit LoadedPackage* sLast;
};

}  // namespace ruvo::factory
