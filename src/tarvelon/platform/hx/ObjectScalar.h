#pragma once

#include "tarvelon/boundary/hx/Array.h"

namespace hx {

/// A 1 by 1 object array that holds the element: hxCreateObjectMatrix() and hxSetElement() in one step, for
/// the form in which every object crosses the boundary. `className` outlives the array.
TARVELON_API hxArray* createObjectScalar(Element* element, const char* className);

}  // namespace hx
