#pragma once

#include "tarvelon/binding/Registration.h"
#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/boundary/tarvelon/Rows.h"
#include "tarvelon/collections/EnumerationCompanions.h"
#include "tarvelon/module/Packages.h"

/// The code that all packages of the module share. The file of a package only calls ARPLATFORM_DEFINE_PACKAGE
/// with the name of the package and the list of its classes and enumerations.
namespace arplatform_module {

/// The state of one package of the module.
struct PackageState {
  const char* parentName;
  const char* name;
  void (*initializer)(ruvo::RVOPackage*);
  ruvo::RVOPackage* package = nullptr;
  bool isAttached = false;
  /// The next package in the list of packages that could not be attached for lack of memory.
  PackageState* nextRemaining = nullptr;
};

/// The package info, through which the object system initialises the package at its first use.
class PackageWrapper final : public ruvo::RVOPackageInfo {
 public:
  explicit PackageWrapper(PackageState& state) noexcept : mState(state) {}
  const char* getName() const override { return mState.name; }
  void initializePackage(ruvo::RVOPackage* package) override;

 private:
  PackageState& mState;
};

/// Adds the package to its parent package, which is created if it does not exist. Only the first call for a
/// package has an effect, even if it throws. If it throws std::bad_alloc, attachRemaining() tries again.
void attachPackage(PackageState& state);

/// Attaches the packages that attachPackage() could not attach for lack of memory. The entry point and the
/// initialiser of the root package call this function, because both run again after such a failure.
void attachRemaining();

/// Registers the package function MetaPackage(), after the classes of the package.
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

/// Defines the functions of child package P (module/Packages.h). NAMES is the list macro of its classes and
/// enumerations.
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
