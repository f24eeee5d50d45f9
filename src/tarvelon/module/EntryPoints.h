#pragma once

#include "tarvelon/boundary/Export.h"

/// The module's two plain entry points, called by the host on one thread.
extern "C" {

/// Hangs the package `Tarvelon.metamodel` below `Tarvelon` and runs every registered initialiser with it.
/// Once only, also when it fails; an exception of an initialiser passes. Want of memory alone is no failure:
/// after std::bad_alloc the next call does what is left to do.
TARVELON_API void ZtInitialize_mm_arplatform_mi();

/// Takes nothing down: what was given to the object system stays with it. Once only.
TARVELON_API void ZtTerminate_mm_arplatform_mi();
}
