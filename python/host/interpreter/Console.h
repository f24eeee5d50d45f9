#pragma once

#include "python/host/interpreter/Errors.h"

namespace pyhost {

/// Redirects the host's output (`disp`) to `sys.stdout`.
void redirectConsole() noexcept;

/// Raises the error that sys.stdout has raised since the last call. Such an error is stored first, because no
/// exception may pass through the native code that prints.
void requirePrinted();

}  // namespace pyhost
