#pragma once

#include "tarvelon/boundary/Export.h"

namespace K7Q::mi {

/// Registers the host package `K7Q`: the base classes of all model classes, the model classes, and the
/// classes that describe the metamodel. Runs automatically when the library is loaded. Call it to make sure
/// that the linker keeps the library. Idempotent.
TARVELON_API void initialize();

}  // namespace K7Q::mi
