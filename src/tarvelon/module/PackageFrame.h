#pragma once

#include "tarvelon/binding/Registration.h"
#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/boundary/tarvelon/Rows.h"
#include "tarvelon/collections/EnumerationCompanions.h"
#include "tarvelon/module/Packages.h"

/// What all packages of the module share; a package's own file says its name and its list of names.
namespace arplatform_module {

/// The states of a package that the module keeps: its object-system package and whether it was attached.
struct PackageState {
  ruvo::RVOPackage* package = nullptr;
  bool isAttached = false;
};

using StaticInitializer = void (*)(ruvo::RVOPackage*);

/// The object that the object system calls back when the package is first touched.
class PackageWrapper final : public ruvo::RVOPackageInfo {
 public:
  PackageWrapper(const char* name, PackageState& state, StaticInitializer initializer) noexcept
      : mName(name), mState(state), mInitializer(initializer) {}
  const char* getName() const override { return mName; }
  void initializePackage(ruvo::RVOPackage* package) override;

 private:
  const char* mName;
  PackageState& mState;
  StaticInitializer mInitializer;
};

/// Attaches the wrapper to the parent of that name, which is brought into being, empty, if it does not exist.
void attachPackage(const char* parentName, const char* name, PackageState& state,
                   StaticInitializer initializer);

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
#define ARPLATFORM_DEFINE_PACKAGE(P, NAMES)                                         \
  namespace Tarvelon::metamodel::arplatform::P {                                    \
  NAMES(ARPLATFORM_SKIP, ARPLATFORM_DEFINE_VALIDITY)                                \
  static K7Q::ImmutablePackage MetaPackage() {                                      \
    return native::metaPackage("Tarvelon.metamodel.arplatform." #P);                \
  }                                                                                 \
  namespace mi {                                                                    \
  static ::arplatform_module::PackageState gState;                                  \
  ruvo::RVOPackage* get##P##RVOPackage() { return gState.package; }                 \
  void init##P##PackageWrapper(ruvo::RVOPackage* /*parent*/) {                      \
    ::arplatform_module::attachPackage("Tarvelon.metamodel.arplatform", #P, gState, \
                                       &P##StaticInitializePackage);                \
  }                                                                                 \
  void P##StaticInitializePackage(ruvo::RVOPackage* package) {                      \
    NAMES(ARPLATFORM_REGISTER_CLASS, ARPLATFORM_REGISTER_ENUMERATION)               \
    ::arplatform_module::finishPackage(package, &MetaPackage);                      \
  }                                                                                 \
  }                                                                                 \
  }
