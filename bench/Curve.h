#pragma once

namespace bench {

/// Prints what an object costs in models from 10,000 to 5,000,000 of them.
void reportCurve();

}  // namespace bench
