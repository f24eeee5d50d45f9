#pragma once

#include "python/host/Reference.h"

namespace pyhost {

/// The type of a package's functions.
void readyFunctionType();

}  // namespace pyhost
