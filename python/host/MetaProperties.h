#pragma once

#include "python/host/Objects.h"

namespace pyhost {

/// Whether a class is a list of meta properties, as MetaProperty() gives it; defines nothing.
bool isMetaProperties(ruvo::Class& cls);

}  // namespace pyhost
