#pragma once

namespace bench {

/// Saves and loads a model of 1,101,000 objects with names of 24 units, each in a process of its own, and
/// prints the time for an object and the most memory in use in relation to the model.
void reportFiles();

}  // namespace bench
