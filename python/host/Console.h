#pragma once

#include "python/host/Errors.h"

namespace pyhost {

/// Sends what the host prints (`disp`) through `sys.stdout`.
void redirectConsole() noexcept;

/// Raises what went wrong in sys.stdout since the last call; native code cannot be unwound from within a
/// print.
void requirePrinted();

}  // namespace pyhost
