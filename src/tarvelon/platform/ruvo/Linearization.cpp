#include <algorithm>
#include <mutex>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/ruvo/ClassMembers.h"
#include "tarvelon/platform/ruvo/Registry.h"

namespace ruvo {

namespace {

using Order = std::vector<Class*>;

/// Whether a class is in one of the orders, but not at its front.
bool isWaitedFor(const Class* cls, const std::vector<Order>& orders) {
  return std::any_of(orders.begin(), orders.end(), [cls](const Order& order) {
    return !order.empty() && std::find(order.begin() + 1, order.end(), cls) != order.end();
  });
}

/// The first class that no order requires after another class; null if there is none.
Class* nextOf(const std::vector<Order>& orders) {
  for (const Order& order : orders) {
    if (!order.empty() && !isWaitedFor(order.front(), orders)) return order.front();
  }
  return nullptr;
}

bool isExhausted(const std::vector<Order>& orders) {
  return std::all_of(orders.begin(), orders.end(), [](const Order& order) { return order.empty(); });
}

[[noreturn]] void throwInconsistent(const Class& cls, const std::vector<Order>& orders) {
  std::string names;
  for (const Order& order : orders) {
    if (order.empty()) continue;
    const std::string name = std::string("'").append(order.front()->getFullName().view()).append("'");
    if (names.find(name) == std::string::npos) names.append(names.empty() ? "" : ", ").append(name);
  }
  throw K7Q::Exception("class '" + std::string(cls.getFullName().view()) +
                       "': its superclasses have no consistent order: each of " + names +
                       " must come after another; list each class before its superclasses");
}

/// The C3 merge: the result keeps the order of each superclass's linearization, and the order in which the
/// superclasses are listed.
void merge(Order& result, std::vector<Order> orders) {
  while (!isExhausted(orders)) {
    Class* next = nextOf(orders);
    if (!next) throwInconsistent(*result.front(), orders);
    result.push_back(next);
    for (Order& order : orders) {
      if (!order.empty() && order.front() == next) order.erase(order.begin());
    }
  }
}

/// Sets a flag while it exists. The flag of a class is set while its order is computed, so that a class among
/// its own superclasses is detected.
class Mark {
 public:
  explicit Mark(bool& flag) noexcept : mFlag(flag) { mFlag = true; }
  ~Mark() { mFlag = false; }
  Mark(const Mark&) = delete;
  Mark& operator=(const Mark&) = delete;

 private:
  bool& mFlag;
};

}  // namespace

std::span<Class* const> Class::superClasses() {
  Members& own = members();
  auto& derived = own.derived();
  if (derived.hasSuperClasses.load(std::memory_order_acquire)) return derived.superClasses;
  const std::scoped_lock lock(ObjectSystem::guard());
  Order found;
  for (const InternedName& name : own.superClassNames) {
    Class* cls = find(name);
    if (!cls) {
      throw K7Q::UnknownName("class '" + std::string(mFullName.view()) + "': there is no class '" +
                             std::string(name.view()) + "', which is listed as a superclass");
    }
    found.push_back(cls);
  }
  if (!derived.hasSuperClasses) derived.superClasses = std::move(found);
  derived.hasSuperClasses.store(true, std::memory_order_release);
  return derived.superClasses;
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
std::span<Class* const> Class::linearization() {
  auto& derived = members().derived();
  if (derived.hasLinearization.load(std::memory_order_acquire)) return derived.linearization;
  const std::scoped_lock lock(ObjectSystem::guard());
  if (derived.hasLinearization) return derived.linearization;
  if (derived.isLinearizing) {
    throw K7Q::Exception("class '" + std::string(mFullName.view()) +
                         "' is one of its own superclasses; remove it from them");
  }
  const Mark mark(derived.isLinearizing);
  const auto supers = superClasses();
  std::vector<Order> orders;
  for (Class* super : supers) {
    const auto order = super->linearization();
    orders.emplace_back(order.begin(), order.end());
  }
  orders.emplace_back(supers.begin(), supers.end());
  Order result{this};
  merge(result, std::move(orders));
  derived.linearization = std::move(result);
  derived.hasLinearization.store(true, std::memory_order_release);
  return derived.linearization;
}

bool Class::isKindOf(const Class& other) {
  if (this == &other) return true;
  const auto order = linearization();
  return std::find(order.begin(), order.end(), &other) != order.end();
}

}  // namespace ruvo
