#pragma once

#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/ruvo/Package.h"

/// The two factory classes at the root of the metamodel.
namespace Tarvelon::metamodel::arplatform::mi {

/// Makes models and, for one model, the objects of every class that can be made.
class FactoryWrapper final : public K7Q::mi::ClassMetaData {
 public:
  FactoryWrapper();
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;
};

/// Compares factories and converts them; makes nothing.
class ImmutableFactoryWrapper final : public K7Q::mi::ClassMetaData {
 public:
  ImmutableFactoryWrapper();
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;
};

/// Adds the two classes to the package, or as global classes when there is none.
void registerFactories(ruvo::RVOPackage* package);

}  // namespace Tarvelon::metamodel::arplatform::mi
