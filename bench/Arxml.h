#pragma once

namespace bench {

/// Loads and saves generated ARXML files of 1 to 100 MB and a folder of 1,000 files, each in a process of its
/// own, beside expat without handlers and, if it is installed, pugixml on the same text. Prints the processor
/// time and the memory for each element.
void reportArxml();

}  // namespace bench
