#pragma once

namespace bench {

/// Measures files with many problems: the time for each problem must not depend on their number. Then saves
/// and loads a model of 1,101,000 objects with names of 24 UTF-16 units, each in a process of its own. Prints
/// the time for each object and the maximum memory in relation to the model.
void reportFiles();

}  // namespace bench
