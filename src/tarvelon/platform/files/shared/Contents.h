#pragma once

#include <cstddef>

#include "tarvelon/platform/model/objects/Cursor.h"

/// What objects hold, as files nest it.
namespace Tarvelon::files {

using metamodel::native::Cursor;

/// Raises K7Q::Exception when an object stands deeper than a file may nest it.
void requireDepth(const metamodel::native::Instance& object, std::size_t depth);

}  // namespace Tarvelon::files
