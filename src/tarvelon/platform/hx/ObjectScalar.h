#pragma once

#include "tarvelon/boundary/hx/Array.h"

namespace hx {

/// Creates a 1 by 1 object array with a new reference to `element`. Every object crosses the boundary in this
/// form.
/// Same as hxCreateObjectMatrix() followed by hxSetElement(), but faster. `className` must outlive the array.
TARVELON_API hxArray* createObjectScalar(Element* element, const char* className);

}  // namespace hx
