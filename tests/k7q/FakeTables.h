#pragma once

#include "tests/k7q/Fake.h"

namespace fake {

/// Returns the descriptor of a property, for its meta entry.
K7Q::ImmutableProperty descriptorOf(const K7Q::IntrospectiveMethods& owner, unsigned id);

}  // namespace fake
