#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/ClassMetaData.h"

namespace K7Q::mi {

struct RuvoExtensionsRegistryImpl::State {
  mutable std::mutex guard;
  std::map<std::string, std::vector<Callback>> callbacks;

  std::vector<Callback> of(const std::string& className) const {
    const std::scoped_lock lock(guard);
    const auto found = callbacks.find(className);
    return found == callbacks.end() ? std::vector<Callback>() : found->second;
  }
};

RuvoExtensionsRegistryImpl::RuvoExtensionsRegistryImpl() : mState(std::make_unique<State>()) {}
RuvoExtensionsRegistryImpl::~RuvoExtensionsRegistryImpl() = default;

void RuvoExtensionsRegistryImpl::addNonConstCallback(const std::string& className, Callback callback) {
  const std::scoped_lock lock(mState->guard);
  mState->callbacks[className].push_back(std::move(callback));
}

void RuvoExtensionsRegistryImpl::executeNonConstCallbacks(const std::string& className, ruvo::RVOClass* cls,
                                                          const ruvo::RVOClient* client) {
  // Iterates over a copy, because a callback may add callbacks or clear them.
  const auto callbacks = mState->of(className);
  for (const Callback& callback : callbacks) callback(cls, client);
}

bool RuvoExtensionsRegistryImpl::hasCallbacks() const noexcept {
  const std::scoped_lock lock(mState->guard);
  return !mState->callbacks.empty();
}

void RuvoExtensionsRegistryImpl::clear() noexcept {
  const std::scoped_lock lock(mState->guard);
  mState->callbacks.clear();
}

RuvoExtensionsRegistryImpl& RuvoExtensionsRegistry::instance() {
  // Never destroyed, because classes may be defined until the process ends.
  static auto& registry = *new RuvoExtensionsRegistryImpl;
  return registry;
}

}  // namespace K7Q::mi
