#pragma once

#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/platform/k7q/sequences/HostList.h"

namespace K7Q::mi {

/// Adds the static methods `make` and `makeUnique` to a sequence class, each with an overload for a model and
/// for an immutable model. They create an empty list under the model's deviant.
void addListMakers(ruvo::RVOClass& cls, const ruvo::InternedName& self, const ElementKind& kind,
                   const ruvo::InternedName& element);

}  // namespace K7Q::mi
