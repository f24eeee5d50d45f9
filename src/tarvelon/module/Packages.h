#pragma once

#include "tarvelon/arplatform/Names.h"
#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Package.h"

/// Declares three functions for package P of the module. The module has the root package `arplatform` and its
/// child packages.
///
///   getPRVOPackage()            returns the package of the object system; null until it is initialised
///   initPPackageWrapper(p)      adds the package to its parent package; only the first call has an effect.
///                               The parent is found by name, so `p` is not used.
///   PStaticInitializePackage(p) registers the classes, enumerations and functions of the package in `p`
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
