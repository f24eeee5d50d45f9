#include <algorithm>
#include <mutex>

#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/ruvo/ClassMembers.h"
#include "tarvelon/platform/ruvo/Registry.h"

namespace ruvo {

namespace {

/// Adds the class's own methods of that name. Returns whether one of them hides the methods of superclasses.
bool collect(std::span<RVOMethodInfo* const> records, const InternedName& name, OverloadSet& set) {
  bool hides = false;
  for (const RVOMethodInfo* record : records) {
    if (!(record->getName() == name) || record->isConstructor()) continue;
    set.candidates.push_back(record);
    hides |= (record->getFlags() & factory::kOverridesAllSignatures) != 0;
  }
  return hides;
}

}  // namespace

const PropertySlot* Class::findProperty(const InternedName& name) {
  if (name.empty()) return nullptr;
  auto& derived = members().derived();
  if (!derived.hasProperties.load(std::memory_order_acquire)) collectProperties();
  return derived.properties.find(name.entry());
}

void Class::collectProperties() {
  const std::scoped_lock lock(ObjectSystem::guard());
  auto& derived = members().derived();
  if (derived.hasProperties) return;
  for (Class* cls : linearization()) {
    for (const PropertySlot& slot : cls->properties()) derived.properties.insert(slot.name.entry(), &slot);
  }
  derived.hasProperties.store(true, std::memory_order_release);
}

// The overloads that take text call linearization() first: it defines all classes, which interns the names of
// their members. Only then can findInterned() find the name.

const PropertySlot* Class::findProperty(std::string_view name) {
  linearization();
  return findProperty(InternedName(internal::findInterned(name)));
}

const OverloadSet* Class::findMethods(const InternedName& name) {
  if (name.empty()) return nullptr;
  auto& derived = members().derived();
  if (const OverloadSet* known = derived.overloads.find(name.entry())) return known;
  auto set = std::make_unique<OverloadSet>();
  set->name = name;
  for (Class* cls : linearization()) {
    if (collect(cls->methods(), name, *set)) break;
  }
  if (set->candidates.empty()) return nullptr;
  set->candidates.shrink_to_fit();
  const std::scoped_lock lock(ObjectSystem::guard());
  // Another thread may have added the set in the meantime.
  if (const OverloadSet* known = derived.overloads.find(name.entry())) return known;
  derived.sets.reserve(derived.sets.size() + 1);
  derived.overloads.insert(name.entry(), set.get());
  derived.sets.push_back(std::move(set));
  return derived.sets.back().get();
}

const OverloadSet* Class::findMethods(std::string_view name) {
  linearization();
  return findMethods(InternedName(internal::findInterned(name)));
}

const OverloadSet* Class::constructors() {
  auto& derived = members().derived();
  if (!derived.hasConstructors.load(std::memory_order_acquire)) collectConstructors();
  return derived.constructors.candidates.empty() ? nullptr : &derived.constructors;
}

void Class::collectConstructors() {
  const std::scoped_lock lock(ObjectSystem::guard());
  Members& own = members();
  auto& derived = own.derived();
  if (derived.hasConstructors) return;
  OverloadSet found{mFullName, {}};
  for (const RVOMethodInfo* record : own.methods) {
    if (record->isConstructor()) found.candidates.push_back(record);
  }
  derived.constructors = std::move(found);
  derived.hasConstructors.store(true, std::memory_order_release);
}

std::string Class::nearestMember(std::string_view name) {
  std::vector<std::string_view> names;
  for (Class* cls : linearization()) {
    for (const PropertySlot& slot : cls->properties()) names.push_back(slot.name.view());
    for (const RVOMethodInfo* record : cls->methods()) {
      if (!record->isConstructor()) names.push_back(record->getName().view());
    }
  }
  return nearestName(name, names);
}

}  // namespace ruvo
