#pragma once

#include "tarvelon/boundary/Export.h"

namespace K7Q::mi {

/// Registers the host package `K7Q`: the classes that every model class derives from, models, and the
/// descriptions of the metamodel. Done when the library is loaded; who calls it makes sure that the library
/// is linked. Safe to call again.
TARVELON_API void initialize();

}  // namespace K7Q::mi
