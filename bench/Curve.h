#pragma once

namespace bench {

/// Prints the cost of an object in models with 10,000 to 5,000,000 objects.
void reportCurve();

}  // namespace bench
