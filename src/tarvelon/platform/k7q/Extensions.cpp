#include <map>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/ClassMetaData.h"

namespace K7Q::mi {

struct RuvoExtensionsRegistryImpl::State {
  std::map<std::string, std::vector<Callback>> callbacks;
};

RuvoExtensionsRegistryImpl::RuvoExtensionsRegistryImpl() : mState(std::make_unique<State>()) {}
RuvoExtensionsRegistryImpl::~RuvoExtensionsRegistryImpl() = default;

void RuvoExtensionsRegistryImpl::addNonConstCallback(const std::string& className, Callback callback) {
  mState->callbacks[className].push_back(std::move(callback));
}

void RuvoExtensionsRegistryImpl::executeNonConstCallbacks(const std::string& className, ruvo::RVOClass* cls,
                                                          const ruvo::RVOClient* client) {
  const auto found = mState->callbacks.find(className);
  if (found == mState->callbacks.end()) return;
  // A copy: a callback may add others or clear them all.
  const auto callbacks = found->second;
  for (const Callback& callback : callbacks) callback(cls, client);
}

bool RuvoExtensionsRegistryImpl::hasCallbacks() const noexcept { return !mState->callbacks.empty(); }
void RuvoExtensionsRegistryImpl::clear() noexcept { mState->callbacks.clear(); }

RuvoExtensionsRegistryImpl& RuvoExtensionsRegistry::instance() {
  // Never destroyed: classes may be defined until the process ends.
  static auto& registry = *new RuvoExtensionsRegistryImpl;
  return registry;
}

}  // namespace K7Q::mi
