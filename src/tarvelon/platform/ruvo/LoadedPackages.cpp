#include "tarvelon/platform/ruvo/LoadedPackages.h"

#include <utility>

#include "tarvelon/platform/ruvo/Registry.h"

namespace ruvo::factory {

constinit std::mutex LoadedPackages::sGuard;
constinit std::atomic<LoadedPackage*> LoadedPackages::sFirst = nullptr;
constinit LoadedPackage* LoadedPackages::sLast = nullptr;

void LoadedPackages::enter(LoadedPackage& package) noexcept {
  const std::scoped_lock lock(sGuard);
  if (std::exchange(package.mIsEntered, true)) return;
  LoadedPackage* last = std::exchange(sLast, &package);
  if (last && sFirst.load(std::memory_order_relaxed)) {
    last->mNext = &package;
  } else {
    sFirst.store(&package, std::memory_order_release);
  }
}

void LoadedPackages::registerAll(Package& root) {
  // In this order: who comes here may have the first already.
  const std::scoped_lock registering(ObjectSystem::guard());
  const std::scoped_lock lock(sGuard);
  while (const LoadedPackage* package = sFirst.load(std::memory_order_relaxed)) {
    ObjectSystem::registerPackage(root, package->mFullName, package->mInitializer);
    // Behind what may fail: one for which there is no memory stays the first.
    sFirst.store(package->mNext, std::memory_order_release);
  }
}

void enterAtLoad(LoadedPackage& package) noexcept { LoadedPackages::enter(package); }

}  // namespace ruvo::factory
