#pragma once

namespace bench {

/// Creates a million objects with two texts each. Prints the memory of an object without its texts, as
/// counted by the allocator.
void reportMemory();

}  // namespace bench
