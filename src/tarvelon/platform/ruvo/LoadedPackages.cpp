#include "tarvelon/platform/ruvo/LoadedPackages.h"

#include <utility>

#include "tarvelon/platform/ruvo/Registry.h"

namespace ruvo::factory {

constinit std::atomic<LoadedPackage*> LoadedPackages::sEntered = nullptr;
constinit std::atomic<LoadedPackage*> LoadedPackages::sWaiting = nullptr;

void LoadedPackages::enter(LoadedPackage& package) noexcept {
  if (package.mIsEntered.exchange(true)) return;
  package.mNext = sEntered.load(std::memory_order_relaxed);
  while (!sEntered.compare_exchange_weak(package.mNext, &package, std::memory_order_release)) {
  }
}

void LoadedPackages::queueEntered() noexcept {
  LoadedPackage* entered = sEntered.exchange(nullptr, std::memory_order_acquire);
  LoadedPackage* inOrder = nullptr;
  while (entered) {
    LoadedPackage* const earlier = std::exchange(entered->mNext, inOrder);
    inOrder = std::exchange(entered, earlier);
  }
  LoadedPackage* last = sWaiting.load(std::memory_order_relaxed);
  while (last && last->mNext) last = last->mNext;
  if (last) {
    last->mNext = inOrder;
  } else {
    sWaiting.store(inOrder, std::memory_order_relaxed);
  }
}

void LoadedPackages::registerAll(Package& root) {
  const std::scoped_lock lock(ObjectSystem::guard());
  queueEntered();
  while (const LoadedPackage* package = sWaiting.load(std::memory_order_relaxed)) {
    ObjectSystem::registerPackage(root, package->mFullName, package->mInitializer);
    // Removed only after registration: if memory is exhausted, the package stays first in the queue.
    sWaiting.store(package->mNext, std::memory_order_relaxed);
  }
}

void enterAtLoad(LoadedPackage& package) noexcept { LoadedPackages::enter(package); }

}  // namespace ruvo::factory
