#pragma once

namespace bench {

/// Builds large models and prints what an object costs: to make, to keep, to find, to take out, to destroy.
void reportModel();

}  // namespace bench
