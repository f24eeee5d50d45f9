#pragma once

#include "python/host/objects/Objects.h"

namespace pyhost {

/// Whether a class is the type of the result of MetaProperty(). Does not define the class.
bool isMetaProperties(ruvo::Class& cls);

}  // namespace pyhost
