#include "tarvelon/boundary/ruvo/Class.h"

#include <cstring>
#include <utility>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/ruvo/ClassMembers.h"
#include "tarvelon/platform/ruvo/Immortal.h"
#include "tarvelon/platform/ruvo/NameEntry.h"
#include "tarvelon/platform/ruvo/Registry.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace ruvo {

namespace {

std::string quoted(const Class& cls) { return "class '" + std::string(cls.getFullName().view()) + "'"; }

}  // namespace

std::recursive_mutex& ObjectSystem::guard() noexcept {
  static constinit std::recursive_mutex guard;
  return guard;
}

std::vector<Class*>& ObjectSystem::globals() noexcept {
  static Immortal<std::vector<Class*>> classes;
  return *classes;
}

void ObjectSystem::addClass(std::vector<Class*>& classes, std::unique_ptr<RVOClassInfo> info,
                            const InternedName& fullName, int access) {
  std::unique_ptr<Class> cls(new Class(info.get(), fullName, access));
  static_cast<void>(info.release());
  classes.push_back(cls.get());
  // From here on, other threads can find the class.
  entryOf(fullName).bearer.store(cls.release(), std::memory_order_release);
}

void RVOClass::addGlobalClass(RVOClassInfo* info) {
  std::unique_ptr<RVOClassInfo> owned(info);
  const char* name = info->getName();
  if (!name || !*name || std::strchr(name, '.')) {
    throw K7Q::Exception("a class without a package must report a short name without a dot, got '" +
                         std::string(name ? name : "") + "'");
  }
  const InternedName fullName{std::string_view(name)};
  const std::scoped_lock lock(ObjectSystem::guard());
  if (bearerOf(fullName)) {
    throw K7Q::Exception("the class '" + std::string(name) +
                         "' already exists; give the new one another name");
  }
  ObjectSystem::addClass(ObjectSystem::globals(), std::move(owned), fullName, info->getAccess());
}

Class::Class(RVOClassInfo* info, const InternedName& fullName, int access)
    : mFullName(fullName), mInfo(info), mAccess(access) {}

Class::~Class() {
  entryOf(mFullName).bearer.store(nullptr, std::memory_order_release);
  mMembers.reset();
  delete mInfo;
}

Class::Members::~Members() {
  for (RVOMethodInfo* record : methods) delete record;
  for (const PropertySlot& slot : properties) delete slot.property;
  delete mDerived.load(std::memory_order_relaxed);
}

Class::Members::Derived& Class::Members::makeDerived() {
  const std::scoped_lock lock(ObjectSystem::guard());
  Derived* made = mDerived.load(std::memory_order_relaxed);
  if (!made) {
    made = new Derived;
    mDerived.store(made, std::memory_order_release);
  }
  return *made;
}

void Class::Members::shrink() {
  superClassNames.shrink_to_fit();
  methods.shrink_to_fit();
  properties.shrink_to_fit();
}

Class* Class::find(std::string_view fullName) {
  if (Class* known = bearerOf(InternedName(internal::findInterned(fullName)))) return known;
  // A name without a dot can only be a class without a package, and bearerOf() has found none.
  if (fullName.find('.') == std::string_view::npos) return nullptr;
  Package* package = Package::find(parentName(fullName));
  return package ? package->findClass(lastName(fullName)) : nullptr;
}

Class* Class::find(const InternedName& fullName) {
  Class* known = bearerOf(fullName);
  return known ? known : find(fullName.view());
}

Class& Class::get(std::string_view fullName) {
  if (Class* cls = find(fullName)) return *cls;
  if (fullName.find('.') == std::string_view::npos) {
    std::vector<std::string_view> names;
    for (const Class* cls : globals()) names.push_back(cls->getFullName().view());
    throw K7Q::UnknownName("no class " + quotedName(fullName) + didYouMean(fullName, names));
  }
  Package& package = Package::get(parentName(fullName));
  const std::string_view name = lastName(fullName);
  throw K7Q::UnknownName("package '" + std::string(package.getFullName().view()) + "' has no class " +
                         quotedName(name) + didYouMean(name, package.classNames()));
}

Class& Class::get(const InternedName& fullName) {
  Class* known = bearerOf(fullName);
  return known ? *known : get(fullName.view());
}

std::vector<Class*> Class::globals() {
  const std::scoped_lock lock(ObjectSystem::guard());
  return ObjectSystem::globals();
}

std::string_view Class::shortName() const noexcept { return lastName(mFullName.view()); }

void Class::define() {
  if (isDefined()) return;
  // Waits if another thread is defining the class.
  const std::scoped_lock lock(ObjectSystem::guard());
  if (mState == State::Defined) return;
  if (mState == State::Failed) std::rethrow_exception(mFailure);
  if (mState == State::Defining) {
    throw K7Q::Exception(quoted(*this) +
                         " is used while it is being defined; its definition may only mention its name");
  }
  mMembers = std::make_unique<Members>();
  mState = State::Defining;
  try {
    mInfo->defineMembers(this, ObjectSystem::client());
  } catch (const std::bad_alloc&) {
    // The next use starts the definition again from the beginning.
    mMembers.reset();
    mState = State::Known;
    throw;
  } catch (...) {
    mFailure = std::current_exception();
    mState = State::Failed;
    throw;
  }
  mMembers->shrink();
  mState.store(State::Defined, std::memory_order_release);
}

void Class::requireDefining(const char* member) const {
  if (mState == State::Defining) return;
  throw K7Q::Exception(quoted(*this) + " is not being defined; a " + member +
                       " can be added only by its definition");
}

void Class::addSuperClass(const InternedName& fullName, int /*isPublic*/, int /*isVirtual*/,
                          int /*isConstructed*/) {
  requireDefining("superclass");
  mMembers->superClassNames.push_back(fullName);
}

void Class::addMethod(RVOMethodInfo* record) {
  std::unique_ptr<RVOMethodInfo> owned(record);
  requireDefining("method");
  mMembers->methods.push_back(record);
  static_cast<void>(owned.release());
}

void Class::addProperty(RVOPropInfo* property, RVOPropInfo* /*same*/) {
  std::unique_ptr<RVOPropInfo> owned(property);
  requireDefining("property");
  const InternedName name{std::string_view(property->getName())};
  for (const PropertySlot& slot : mMembers->properties) {
    if (slot.name == name) {
      throw K7Q::Exception(quoted(*this) + " has a property '" + std::string(name.view()) +
                           "' already; give the new one another name");
    }
  }
  mMembers->properties.push_back({name, property, dynamic_cast<PropertyGuard*>(property), this});
  static_cast<void>(owned.release());
}

std::span<const InternedName> Class::superClassNames() { return members().superClassNames; }
std::span<RVOMethodInfo* const> Class::methods() { return members().methods; }
std::span<const PropertySlot> Class::properties() { return members().properties; }

}  // namespace ruvo
