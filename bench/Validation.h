#pragma once

namespace bench {

/// Measures lists with faults, in two sizes: the time for each fault must not depend on the size. Then
/// validates a model of 1,104,004 objects with names of 24 UTF-16 units, and prints the time for each object.
void reportValidation();

}  // namespace bench
