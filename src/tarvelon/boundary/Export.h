#pragma once

#include "tarvelon/boundary/Compiler.h"  // IWYU pragma: export

/// Marks what one library declares and another one uses. Everything without it is hidden.
#define TARVELON_API __attribute__((visibility("default")))
