#pragma once

#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/platform/k7q/sequences/HostList.h"

namespace K7Q::mi {

/// Adds the static records `make` and `makeUnique`, each for a model and an immutable model: they give a new
/// list of the class under definition, seen under the model's deviant.
void addListMakers(ruvo::RVOClass& cls, const ruvo::InternedName& self, const ElementKind& kind,
                   const ruvo::InternedName& element);

}  // namespace K7Q::mi
