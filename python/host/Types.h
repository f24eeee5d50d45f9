#pragma once

#include <cstddef>
#include <string>

#include "python/host/Objects.h"

namespace pyhost {

/// How many classes have a Python type so far: none right after the import.
std::size_t typesMade() noexcept;

/// The member of a class that an unknown name may have been meant for: of the host's or, if none of these is
/// near, of those that Python adds. Empty if no name is near.
std::string nearestMember(HostType& type, const std::string& name);

}  // namespace pyhost
