#pragma once

#include <span>

#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::metamodel::native {

struct ClassData;
class Instance;
class NativeModel;

/// Creates an object with the arguments of a constructor. Each argument sets the property that it is named
/// after. Raises what setting the property would raise; then the new object is removed again and nothing has
/// changed.
Instance& construct(NativeModel& model, const ClassData& cls, unsigned constructor,
                    std::span<const K7Q::Object> arguments);

}  // namespace Tarvelon::metamodel::native
