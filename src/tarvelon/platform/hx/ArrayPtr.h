#pragma once

#include <memory>

#include "tarvelon/boundary/hx/Array.h"

namespace hx {

struct ArrayDeleter {
  void operator()(hxArray* array) const noexcept { hxDestroyArray(array); }
};

/// An array that goes with its scope.
using ArrayPtr = std::unique_ptr<hxArray, ArrayDeleter>;

}  // namespace hx
