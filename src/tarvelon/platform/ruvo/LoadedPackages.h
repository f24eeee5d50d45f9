#pragma once

#include <atomic>

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace ruvo::factory {

/// The queue of packages that libraries have announced at load time and that are not registered yet.
/// Threads: any. enter() never waits, because the dynamic loader holds a lock while it loads a library.
class LoadedPackages {
 public:
  static void enter(LoadedPackage& package) noexcept;
  /// Registers the queued packages in the order of enter(). Cost when the queue is empty: two atomic loads.
  static void registerIn(Package& root) {
    if (sEntered.load(std::memory_order_relaxed) || sWaiting.load(std::memory_order_relaxed))
      registerAll(root);
  }

 private:
  static void registerAll(Package& root);
  static void queueEntered() noexcept;

  /// Newly entered packages: a stack with the last one on top.
  static constinit std::atomic<LoadedPackage*> sEntered;
  /// Packages taken from sEntered, in the order of enter(). Only written under ObjectSystem::guard().
  static constinit std::atomic<LoadedPackage*> sWaiting;
};

}  // namespace ruvo::factory
