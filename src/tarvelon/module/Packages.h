#pragma once

#include "tarvelon/arplatform/Names.h"
#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Package.h"

/// The fourteen packages: per package a getter, an initialiser and a static initialiser.
///
///   getXRVOPackage()            the object system's package; null until the object system has initialised it
///   initXPackageWrapper(p)      attaches the package's wrapper to its parent, found by name; once only
///   XStaticInitializePackage(p) registers the package's classes, enumerations and functions
#define ARPLATFORM_DECLARE_PACKAGE(P)                                  \
  TARVELON_API ruvo::RVOPackage* get##P##RVOPackage();                 \
  TARVELON_API void init##P##PackageWrapper(ruvo::RVOPackage* parent); \
  TARVELON_API void P##StaticInitializePackage(ruvo::RVOPackage* package);

namespace Tarvelon::metamodel::arplatform::mi {
ARPLATFORM_DECLARE_PACKAGE(arplatform)
}

#define ARPLATFORM_DECLARE_CHILD(P, NAMES)           \
  namespace Tarvelon::metamodel::arplatform::P::mi { \
  ARPLATFORM_DECLARE_PACKAGE(P)                      \
  }
ARPLATFORM_PACKAGES(ARPLATFORM_DECLARE_CHILD)
#undef ARPLATFORM_DECLARE_CHILD
