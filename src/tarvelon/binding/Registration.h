#pragma once

#include "tarvelon/binding/ClassBinding.h"
#include "tarvelon/binding/Enumeration.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/ruvo/Package.h"

/// The registration of classes when a package is first used.
namespace binding {

/// The access number of all classes.
inline constexpr int kClassAccess = 2;

/// Adds the three class infos of a metamodel class and the eight class infos of its sequences and iterators.
/// Does nothing if the package is null.
void registerClassInfos(ruvo::RVOPackage* package, const ClassBinding& binding);

/// Adds a class info to the package, or as a global class if the package is null. Takes ownership.
void addClassInfo(ruvo::RVOPackage* package, ruvo::RVOClassInfo* info);

/// The class info of an enumeration.
class EnumerationWrapper final : public K7Q::mi::ClassMetaData {
 public:
  explicit EnumerationWrapper(const EnumerationBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const EnumerationBinding& mBinding;
};

}  // namespace binding
