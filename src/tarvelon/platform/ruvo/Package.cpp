#include <algorithm>
#include <cstring>
#include <utility>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/ruvo/LoadedPackages.h"
#include "tarvelon/platform/ruvo/NameEntry.h"
#include "tarvelon/platform/ruvo/Registry.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace ruvo {

namespace {

InternedName joined(const InternedName& package, std::string_view shortName) {
  std::string name(package.view());
  if (!name.empty()) name += '.';
  return InternedName(std::string_view(name += shortName));
}

std::string described(const Package& package) {
  return package.parent() ? "package '" + std::string(package.getFullName().view()) + "'"
                          : "the root package";
}

/// Returns the short name that an info reports, or raises K7Q::Exception if it is not a short name.
std::string_view requireShortName(const char* name, std::string_view kind, const Package& package) {
  if (name && *name && !std::strchr(name, '.')) return name;
  throw K7Q::Exception("a " + std::string(kind) + " added to " + described(package) +
                       " must report a short name without a dot, got '" + (name ? name : "") + "'");
}

/// The result of following a full name through the packages.
struct Descent {
  Package* last;             ///< the last existing package on the path
  std::string_view missing;  ///< the full name of the first missing package; empty if all exist
};

Descent descend(std::string_view fullName) {
  Package* package = &Package::root();
  for (std::size_t start = 0; start < fullName.size();) {
    // A dot at the very beginning counts as part of the missing name.
    const std::size_t end = std::min(fullName.find('.', std::max<std::size_t>(start, 1)), fullName.size());
    const std::string_view part = fullName.substr(start, end - start);
    const bool isName = !part.empty() && part.front() != '.';
    Package* child = isName ? package->findPackage(part) : nullptr;
    if (!child) return {package, fullName.substr(0, end)};
    package = child;
    start = end + 1;
    if (start == fullName.size()) return {package, fullName};
  }
  return {package, {}};
}

/// Asks the infos of a package to load a missing name; true if one of them has loaded it.
template <class Infos, class Ask>
bool isBroughtIn(const Infos& infos, Ask ask) {
  for (std::size_t i = 0; i < infos.size(); ++i) {
    if (ask(*infos[i].info)) return true;
  }
  return false;
}

}  // namespace

Package& ObjectSystem::root() {
  static Package& root = *new Package(nullptr, InternedName());
  factory::LoadedPackages::registerIn(root);
  return root;
}

Package& ObjectSystem::registerPackage(Package& root, std::string_view fullName,
                                       std::function<void(RVOPackage*)> initializer) {
  const std::scoped_lock lock(guard());
  Package* package = &root;
  std::string_view rest = fullName;
  do {
    const std::size_t dot = std::min(rest.find('.'), rest.size());
    if (dot == 0 || dot + 1 == rest.size()) {
      throw K7Q::Exception("expected the name of a package, as in 'first.second', got '" +
                           std::string(fullName) + "'");
    }
    package = &childOf(*package, rest.substr(0, dot));
    rest.remove_prefix(std::min(dot + 1, rest.size()));
  } while (!rest.empty());
  if (initializer) addInitializer(*package, std::move(initializer));
  return *package;
}

Package& ObjectSystem::childOf(Package& parent, std::string_view shortName) {
  auto& packages = parent.mContent->packages;
  const auto found = std::find_if(packages.begin(), packages.end(),
                                  [&](const Package* child) { return child->shortName() == shortName; });
  if (found != packages.end()) return **found;
  std::unique_ptr<Package> child(new Package(&parent, joined(parent.mFullName, shortName)));
  packages.push_back(child.get());
  return *child.release();
}

void ObjectSystem::addInitializer(Package& package, std::function<void(RVOPackage*)> initializer) {
  package.mContent->initializers.push_back(std::move(initializer));
  if (package.isPopulated()) package.mState = Package::State::Attached;
}

Package::Package(Package* parent, const InternedName& fullName)
    : mParent(parent), mFullName(fullName), mContent(std::make_unique<Content>()) {}

Package::~Package() {
  for (Package* child : mContent->packages) delete child;
  for (Class* cls : mContent->classes) delete cls;
  for (factory::FunctionInfo* function : mContent->functions) delete function;
}

Package& Package::root() { return ObjectSystem::root(); }

Package* Package::find(std::string_view fullName) {
  const Descent descent = descend(fullName);
  if (!descent.missing.empty()) return nullptr;
  descent.last->populate();
  return descent.last;
}

Package& Package::get(std::string_view fullName) {
  const auto [last, missing] = descend(fullName);
  last->populate();
  if (missing.empty()) return *last;
  Package& known = *last;
  std::string what = "no package " + quotedName(missing);
  std::string near = nearestName(lastName(missing), known.packageNames());
  if (!near.empty()) what += "; did you mean '" + std::string(joined(known.mFullName, near).view()) + "'?";
  throw K7Q::UnknownName(what);
}

std::string_view Package::shortName() const noexcept { return lastName(mFullName.view()); }

// Parents are populated first, because their initializers may add infos to the packages below.
void Package::populate() {
  if (isPopulated()) return;
  // Waits if another thread is populating the package. A nested call of the same thread returns at once.
  const std::scoped_lock lock(ObjectSystem::guard());
  if (mState == State::Populated || mState == State::Populating) return;
  std::vector<Package*> line{this};
  while (line.back()->mState == State::Attached && line.back()->mParent) {
    line.push_back(line.back()->mParent);
  }
  for (auto package = line.rbegin(); package != line.rend(); ++package) (*package)->populateAlone();
}

void Package::populateAlone() {
  if (mState == State::Populated || mState == State::Populating) return;
  if (mState == State::Failed) std::rethrow_exception(mContent->failure);
  mState = State::Populating;
  try {
    runInitializers();
  } catch (const std::bad_alloc&) {
    mState = State::Attached;
    throw;
  } catch (...) {
    mContent->failure = std::current_exception();
    mState = State::Failed;
    throw;
  }
  mState.store(State::Populated, std::memory_order_release);
}

void Package::runInitializers() {
  auto& initializers = mContent->initializers;
  auto& functions = mContent->functions;
  while (!initializers.empty()) {
    // The initializer's place in the list is kept, so that it can be put back without an allocation. The
    // initializer may add others to the list.
    auto initializer = std::move(initializers.front());
    const std::size_t functionsBefore = functions.size();
    try {
      initializer(this);
    } catch (const std::bad_alloc&) {
      // The functions of an unpopulated package are not visible to anybody, so they can be deleted. Classes
      // and child packages may be in use already; they stay.
      std::for_each(functions.begin() + static_cast<std::ptrdiff_t>(functionsBefore), functions.end(),
                    [](const factory::FunctionInfo* function) { delete function; });
      functions.resize(functionsBefore);
      mContent->visitOrigins([](Origin& origin) { origin = Origin::EarlierRun; });
      initializers.front() = std::move(initializer);
      throw;
    }
    initializers.erase(initializers.begin());
    mContent->visitOrigins([](Origin& origin) { origin = Origin::Settled; });
  }
}

Origin Package::originOfNew() const noexcept {
  return mState == State::Populating ? Origin::ThisRun : Origin::Settled;
}

template <class Visit>
void Package::Content::visitOrigins(Visit visit) {
  const auto visitMarked = [&visit](Origin& origin) {
    if (origin != Origin::Settled) visit(origin);
  };
  for (Class* cls : classes) visitMarked(cls->mOrigin);
  for (const Package* child : packages) {
    for (Info& each : child->mContent->infos) visitMarked(each.origin);
  }
}

std::vector<std::string_view> Package::packageNames() {
  populate();
  const std::scoped_lock lock(ObjectSystem::guard());
  std::vector<std::string_view> names;
  for (const Package* child : mContent->packages) names.push_back(child->shortName());
  return names;
}

std::vector<std::string_view> Package::classNames() {
  std::vector<std::string_view> names;
  for (const Class* cls : classes()) names.push_back(cls->shortName());
  return names;
}

std::vector<Class*> Package::classes() {
  populate();
  const std::scoped_lock lock(ObjectSystem::guard());
  return mContent->classes;
}

std::vector<factory::FunctionInfo*> Package::functions() {
  populate();
  const std::scoped_lock lock(ObjectSystem::guard());
  return mContent->functions;
}

Package* Package::findPackage(std::string_view shortName) {
  populate();
  const std::scoped_lock lock(ObjectSystem::guard());
  const auto find = [&]() -> Package* {
    for (Package* child : mContent->packages) {
      if (child->shortName() == shortName) return child;
    }
    return nullptr;
  };
  if (Package* child = find()) return child;
  const std::string name(shortName);
  const bool isThere = isBroughtIn(
      mContent->infos, [&](RVOPackageInfo& info) { return info.attemptToLoadSubPackage(name.c_str()); });
  return isThere ? find() : nullptr;
}

Class* Package::findClass(std::string_view shortName) {
  populate();
  std::string fullName(mFullName.view());
  if (mParent) fullName += '.';
  fullName += shortName;
  const auto find = [&] { return bearerOf(InternedName(internal::findInterned(fullName))); };
  if (shortName.find('.') != std::string_view::npos) return nullptr;
  if (Class* cls = find()) return cls;
  const std::scoped_lock lock(ObjectSystem::guard());
  const std::string name(shortName);
  const bool isThere = isBroughtIn(mContent->infos, [&](RVOPackageInfo& info) {
    return info.attemptToLoadClass(name.c_str()) || info.attemptToLoadType(name.c_str());
  });
  return isThere ? find() : nullptr;
}

std::vector<const factory::FunctionInfo*> Package::findFunctions(std::string_view name) {
  populate();
  const std::scoped_lock lock(ObjectSystem::guard());
  std::vector<const factory::FunctionInfo*> found;
  const auto collect = [&] {
    std::copy_if(mContent->functions.begin(), mContent->functions.end(), std::back_inserter(found),
                 [&](const auto* function) { return function->getName().view() == name; });
  };
  collect();
  if (!found.empty()) return found;
  const std::string text(name);
  if (isBroughtIn(mContent->infos,
                  [&](RVOPackageInfo& info) { return info.attemptToLoadFunction(text.c_str()); })) {
    collect();
  }
  return found;
}

void Package::addPackageInfo(RVOPackageInfo* info) {
  std::unique_ptr<RVOPackageInfo> owned(info);
  const std::scoped_lock lock(ObjectSystem::guard());
  Package& child = ObjectSystem::childOf(*this, requireShortName(info->getName(), "package", *this));
  for (Content::Info& known : child.mContent->infos) {
    if (known.origin != Origin::EarlierRun) continue;
    known.origin = Origin::ThisRun;
    return;
  }
  // An info must never be stored without its initializer. After reserve(), push_back() cannot fail, so it
  // comes last.
  child.mContent->infos.reserve(child.mContent->infos.size() + 1);
  ObjectSystem::addInitializer(child, [info](RVOPackage* package) { info->initializePackage(package); });
  child.mContent->infos.push_back({std::move(owned), originOfNew()});
}

void Package::addClass(RVOClassInfo* info, int access) {
  std::unique_ptr<RVOClassInfo> owned(info);
  const std::string_view shortName = requireShortName(info->getName(), "class", *this);
  const InternedName fullName = joined(mFullName, shortName);
  const std::scoped_lock lock(ObjectSystem::guard());
  if (Class* known = bearerOf(fullName)) {
    if (known->mOrigin == Origin::EarlierRun) {
      known->mOrigin = Origin::ThisRun;
      return;
    }
    for (const auto& each : mContent->infos)
      each.info->throwErrorForDefinitionOfExistingName(info->getName());
    throw K7Q::Exception(described(*this) + " has a class '" + std::string(shortName) +
                         "' already; give the new one another name");
  }
  ObjectSystem::addClass(mContent->classes, std::move(owned), fullName, access);
  mContent->classes.back()->mOrigin = originOfNew();
}

void Package::addFunction(factory::FunctionInfo* function) {
  std::unique_ptr<factory::FunctionInfo> owned(function);
  const std::scoped_lock lock(ObjectSystem::guard());
  mContent->functions.push_back(function);
  static_cast<void>(owned.release());
}

RVOPackage* RVOPackage::getPackage(const InternedName& fullName) { return Package::find(fullName.view()); }

RVOPackage* factory::registerRuvoPackage(const std::string& fullName,
                                         std::function<void(RVOPackage*)> initializer) {
  return &ObjectSystem::registerPackage(Package::root(), fullName, std::move(initializer));
}

}  // namespace ruvo
