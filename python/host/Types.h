#pragma once

#include <cstddef>
#include <string>

#include "python/host/Objects.h"

namespace pyhost {

/// The number of classes that have a Python type so far; 0 directly after the import.
std::size_t typesMade() noexcept;

/// The member most similar to an unknown name: first among the members of the host class, then among those
/// that Python adds. Empty if no name is similar.
std::string nearestMember(HostType& type, const std::string& name);

}  // namespace pyhost
