#pragma once

#include <cstdint>
#include <vector>

#include "tarvelon/platform/files/arxml/ClassShape.h"
#include "tarvelon/platform/files/arxml/Source.h"

namespace Tarvelon::files::arxml {

/// The elements without a class in one element of an object, outside of the objects that it contains.
std::vector<std::uint32_t> foreignIn(const SourceFile& file, std::uint32_t element,
                                     const native::Instance& object, ClassShapes& known);

}  // namespace Tarvelon::files::arxml
