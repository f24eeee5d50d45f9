#include <array>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/boundary/k7q/Sequence.h"

namespace K7Q::CooperativeVisitor::internal {

namespace {

template <class... Types>
std::array<std::string_view, sizeof...(Types)> namesOf(FixedTags<Types...> /*list*/) {
  return {typeid(Types).name()...};
}

/// The index of a name in KernelTags; KernelTags::kCount if it is not in the list.
std::size_t fixedTagOf(std::string_view name) {
  std::size_t place = 0;
  for (const std::string_view each : namesOf(KernelTags())) {
    if (each == name) break;
    ++place;
  }
  return place;
}

}  // namespace

std::size_t GetTag(const std::type_info& interface, const std::type_info& domain) {
  // Compares names, because each library may have its own type_info object for the same type.
  if (std::string_view(domain.name()) == typeid(VisitationDomain).name()) {
    const std::size_t fixed = fixedTagOf(interface.name());
    if (fixed != KernelTags::kCount) return fixed;
  }
  // Never destroyed, because callers keep the tags until the process ends.
  using Names = std::pair<std::string, std::string>;
  static auto& tags = *new std::map<Names, std::size_t>;
  static constinit std::mutex mutex;
  Names names(interface.name(), domain.name());
  const std::lock_guard lock(mutex);
  return tags.try_emplace(std::move(names), KernelTags::kCount + tags.size()).first->second;
}

}  // namespace K7Q::CooperativeVisitor::internal
