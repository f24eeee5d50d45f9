#pragma once

namespace bench {

/// Makes a model of 1,104,004 objects with names of 24 units, validates it, and prints what an object takes.
void reportValidation();

}  // namespace bench
