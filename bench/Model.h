#pragma once

namespace bench {

/// Builds large models and prints the cost of an object: creating, memory, finding, removing, destroying.
void reportModel();

}  // namespace bench
