#pragma once

#include <cstddef>

#include "python/host/objects/Objects.h"

namespace pyhost {

/// The number of classes that have a Python type so far; 0 directly after the import.
std::size_t typesMade() noexcept;

}  // namespace pyhost
