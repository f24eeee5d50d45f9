#pragma once

#include "python/host/interpreter/Reference.h"

namespace pyhost {

/// Readies the type of a package's functions.
void readyFunctionType();

}  // namespace pyhost
