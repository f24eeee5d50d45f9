#pragma once

#include "tarvelon/binding/ClassBinding.h"
#include "tarvelon/binding/Enumeration.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/boundary/ruvo/Package.h"

/// What a package registers when it is first touched.
namespace binding {

/// The access value that every class is added with.
inline constexpr int kClassAccess = 2;

/// Adds the three class infos of a class and its eight sequence and iterator companions. A null package
/// registers nothing.
void registerClassInfos(ruvo::RVOPackage* package, const ClassBinding& binding);

/// Adds one info to the package, or as a global class when there is none.
void addClassInfo(ruvo::RVOPackage* package, ruvo::RVOClassInfo* info);

/// The wrapper of an enumeration: a value class.
class EnumerationWrapper final : public K7Q::mi::ClassMetaData {
 public:
  explicit EnumerationWrapper(const EnumerationBinding& binding);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  const EnumerationBinding& mBinding;
};

}  // namespace binding
