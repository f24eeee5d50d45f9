#pragma once

#include "tarvelon/boundary/Export.h"

/// The entry points of the module. The host calls them on one thread.
extern "C" {

/// Adds the package `Tarvelon.metamodel` to `Tarvelon` and runs all registered initialisers, which add the
/// packages of the module. Throws what an initialiser throws. After a call that threw std::bad_alloc, the
/// next call does the remaining work. After any other call, successful or not, the next call has no effect.
TARVELON_API void ZtInitialize_mm_arplatform_mi();

/// Does nothing: the object system owns the packages and classes of the module until the process ends.
TARVELON_API void ZtTerminate_mm_arplatform_mi();
}
