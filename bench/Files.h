#pragma once

namespace bench {

/// Saves and loads a model of 1,101,000 objects with names of 24 units, each in a process of its own, and
/// prints the time for an object and the most memory in use in relation to the model. Before that what files
/// of many problems take, where the time for a problem must stay the same.
void reportFiles();

}  // namespace bench
