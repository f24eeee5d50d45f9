#pragma once

#include <span>

#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::metamodel::native {

struct ClassData;
class Instance;
class NativeModel;

/// A new object with the arguments of a constructor, each of which fills the property that it is named after.
/// Raises what a set of the property would; then no object is left behind and nothing else has changed.
Instance& construct(NativeModel& model, const ClassData& cls, unsigned constructor,
                    std::span<const K7Q::Object> arguments);

}  // namespace Tarvelon::metamodel::native
