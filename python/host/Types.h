#pragma once

#include <cstddef>

#include "python/host/Objects.h"

namespace pyhost {

/// How many classes have a Python type so far: none right after the import.
std::size_t typesMade() noexcept;

}  // namespace pyhost
