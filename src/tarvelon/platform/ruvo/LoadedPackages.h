#pragma once

#include <atomic>

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace ruvo::factory {

/// The packages that were entered while libraries were loaded and that are still to be registered.
/// Threads: any. Entering waits for nobody: a library is loaded under a lock of the loader.
class LoadedPackages {
 public:
  static void enter(LoadedPackage& package) noexcept;
  /// Registers them in the order in which they were entered. Cost when there is none: two loads.
  static void registerIn(Package& root) {
    if (sEntered.load(std::memory_order_relaxed) || sWaiting.load(std::memory_order_relaxed))
      registerAll(root);
  }

 private:
  static void registerAll(Package& root);
  static void queueEntered() noexcept;

  /// The last one first.
  static constinit std::atomic<LoadedPackage*> sEntered;
  /// In their order; written under ObjectSystem::guard().
  static constinit std::atomic<LoadedPackage*> sWaiting;
};

}  // namespace ruvo::factory
