#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "tarvelon/boundary/k7q/Reference.h"

namespace K7Q::CooperativeVisitor::internal {

std::size_t GetTag(const std::type_info& interface, const std::type_info& domain) {
  // By name: each library may have a type_info of its own for a type. Never destroyed, like whoever keeps the
  // numbers.
  using Names = std::pair<std::string, std::string>;
  static auto& tags = *new std::map<Names, std::size_t>;
  static std::mutex mutex;
  Names names(interface.name(), domain.name());
  const std::lock_guard lock(mutex);
  return tags.try_emplace(std::move(names), tags.size()).first->second;
}

}  // namespace K7Q::CooperativeVisitor::internal
