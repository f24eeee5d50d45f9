#pragma once

namespace bench {

/// Makes a million objects with two texts and prints what each takes besides its text, by the allocator's own
/// count.
void reportMemory();

}  // namespace bench
