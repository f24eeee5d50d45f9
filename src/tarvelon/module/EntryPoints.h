#pragma once

#include "tarvelon/boundary/Export.h"

/// The entry points of the module. The host calls them on one thread.
extern "C" {

/// Adds the package `Tarvelon.metamodel` to `Tarvelon` and runs all registered initialisers, which add the
/// packages of the module. A second call has no effect, also if the first one threw. The exception is
/// std::bad_alloc: after it, the next call does the remaining work. Throws what an initialiser throws.
TARVELON_API void ZtInitialize_mm_arplatform_mi();

/// Does nothing: the object system owns the packages and classes of the module until the process ends.
TARVELON_API void ZtTerminate_mm_arplatform_mi();
}
