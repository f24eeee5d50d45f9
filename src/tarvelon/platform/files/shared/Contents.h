#pragma once

#include <cstddef>

#include "tarvelon/platform/model/objects/Cursor.h"

/// Iteration over contained objects, as a file nests them.
namespace Tarvelon::files {

using metamodel::native::Cursor;

/// Raises K7Q::Exception if `depth` is greater than kMaxDepth. `object` is named in the text.
void requireDepth(const metamodel::native::Instance& object, std::size_t depth);

}  // namespace Tarvelon::files
