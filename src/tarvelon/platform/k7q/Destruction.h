#pragma once

#include <cstdint>

#include "tarvelon/boundary/Export.h"

namespace K7Q::mi {

/// How many times model objects have turned invalid: whoever destroys objects or closes a model counts it up,
/// once for all that go together. A list that outlives its elements looks whether it has moved, and then
/// drops those that went.
TARVELON_API extern std::uint64_t gDestructions;

}  // namespace K7Q::mi
