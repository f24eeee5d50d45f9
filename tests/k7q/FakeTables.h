#pragma once

#include "tests/k7q/Fake.h"

namespace fake {

/// What a property's meta entry gives.
K7Q::ImmutableProperty descriptorOf(const K7Q::IntrospectiveMethods& owner, unsigned id);

}  // namespace fake
