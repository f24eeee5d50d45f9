#pragma once

#include "tarvelon/binding/Registration.h"
#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/boundary/tarvelon/Rows.h"
#include "tarvelon/collections/EnumerationCompanions.h"
#include "tarvelon/module/Packages.h"

/// What all packages of the module share; a package's own file says its name and its list of names.
namespace arplatform_module {

/// What the module knows of a package of its own.
struct PackageState {
  const char* parentName;
  const char* name;
  void (*initializer)(ruvo::RVOPackage*);
  ruvo::RVOPackage* package = nullptr;
  bool isAttached = false;
  /// The next one for which there was no memory.
  PackageState* nextRemaining = nullptr;
};

/// The object that the object system calls back when the package is first touched.
class PackageWrapper final : public ruvo::RVOPackageInfo {
 public:
  explicit PackageWrapper(PackageState& state) noexcept : mState(state) {}
  const char* getName() const override { return mState.name; }
  void initializePackage(ruvo::RVOPackage* package) override;

 private:
  PackageState& mState;
};

/// Attaches the wrapper to the parent of that name, which is brought into being, empty, if it does not exist.
/// Once for each package, also when it fails.
void attachPackage(PackageState& state);

/// Attaches those for which attachPackage() had no memory. The entry point and the root package call this:
/// they are run again after such a failure, the initialiser of a package is not.
void attachRemaining();

/// What every package registers behind its classes.
void finishPackage(ruvo::RVOPackage* package, K7Q::ImmutablePackage (*metaPackage)());

template <class X>
void registerClass(ruvo::RVOPackage* package) {
  binding::registerClassInfos(package, binding::kBinding<X>);
}

template <class E>
void registerEnumeration(ruvo::RVOPackage* package) {
  binding::addClassInfo(package, new binding::EnumerationWrapper(binding::kEnumerationBinding<E>));
  K7Q::mi::addCompanionInfos(package, K7Q::mi::kCompanions<E>);
}

}  // namespace arplatform_module

#define ARPLATFORM_REGISTER_CLASS(X) ::arplatform_module::registerClass<X>(package);
#define ARPLATFORM_REGISTER_ENUMERATION(E, ...) ::arplatform_module::registerEnumeration<E>(package);
#define ARPLATFORM_DEFINE_VALIDITY(E, ...) \
  bool E::isValid() const { return true; }
#define ARPLATFORM_SKIP(...)

/// Defines the functions of child package P, whose classes and enumerations the list macro NAMES gives in
/// order.
#define ARPLATFORM_DEFINE_PACKAGE(P, NAMES)                                                                  \
  namespace Tarvelon::metamodel::arplatform::P {                                                             \
  NAMES(ARPLATFORM_SKIP, ARPLATFORM_DEFINE_VALIDITY)                                                         \
  static K7Q::ImmutablePackage MetaPackage() {                                                               \
    return native::metaPackage("Tarvelon.metamodel.arplatform." #P);                                         \
  }                                                                                                          \
  namespace mi {                                                                                             \
  static constinit ::arplatform_module::PackageState gState{"Tarvelon.metamodel.arplatform", #P,             \
                                                            &P##StaticInitializePackage};                    \
  ruvo::RVOPackage* get##P##RVOPackage() { return gState.package; }                                          \
  void init##P##PackageWrapper(ruvo::RVOPackage* /*parent*/) { ::arplatform_module::attachPackage(gState); } \
  void P##StaticInitializePackage(ruvo::RVOPackage* package) {                                               \
    NAMES(ARPLATFORM_REGISTER_CLASS, ARPLATFORM_REGISTER_ENUMERATION)                                        \
    ::arplatform_module::finishPackage(package, &MetaPackage);                                               \
  }                                                                                                          \
  }                                                                                                          \
  }
