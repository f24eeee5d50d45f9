#pragma once

namespace bench {

/// Validates lists of faults of two sizes, where the time for a fault must stay the same, and prints it.
/// Makes a model of 1,104,004 objects with names of 24 units, validates it, and prints what an object takes.
void reportValidation();

}  // namespace bench
