#pragma once

#include <memory>

#include "tarvelon/boundary/hx/Array.h"

namespace hx {

struct ArrayDeleter {
  void operator()(hxArray* array) const noexcept { hxDestroyArray(array); }
};

/// Owns an array and destroys it at the end of the scope.
using ArrayPtr = std::unique_ptr<hxArray, ArrayDeleter>;

}  // namespace hx
