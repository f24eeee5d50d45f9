#pragma once

#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/ruvo/Package.h"

/// The two factory classes of the package `Tarvelon.metamodel.arplatform`.
namespace Tarvelon::metamodel::arplatform::mi {

/// The class `Factory`: creates models, and objects of every class that is not abstract.
class FactoryWrapper final : public K7Q::mi::ClassMetaData {
 public:
  FactoryWrapper();
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;
};

/// The class `ImmutableFactory`: compares and converts factories, and creates nothing.
class ImmutableFactoryWrapper final : public K7Q::mi::ClassMetaData {
 public:
  ImmutableFactoryWrapper();
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;
};

/// Adds the two classes to the package, or as global classes if the package is null.
void registerFactories(ruvo::RVOPackage* package);

}  // namespace Tarvelon::metamodel::arplatform::mi
