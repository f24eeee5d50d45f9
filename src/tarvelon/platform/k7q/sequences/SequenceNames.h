#pragma once

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/ruvo/Interned.h"

namespace K7Q::mi {

/// The host class name for a property's sequence. The sequence may name the class itself. Otherwise the name
/// is `declared` with its "Immutable" words added or removed as the two flags say. `declared` has the form
/// ImmutableSequenceOfImmutableY or ImmutableSequenceOfE.
ruvo::InternedName sequenceName(const Generic::SequenceIntf& sequence, bool isSequenceImmutable,
                                bool isElementImmutable, const ruvo::InternedName& declared);

/// The name of the mutable class that belongs to an immutable class: without the "Immutable" at the start of
/// the last part. A name without "Immutable" is returned unchanged.
ruvo::InternedName mutableName(const ruvo::InternedName& immutableClass);

}  // namespace K7Q::mi
