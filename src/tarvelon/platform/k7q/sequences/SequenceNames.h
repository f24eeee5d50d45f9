#pragma once

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/ruvo/Interned.h"

namespace K7Q::mi {

/// The host class under which a property's sequence is announced: what the sequence says or, when it gives
/// back the declared class, that class with its words for immutable as they should be. `declared` is the
/// class ImmutableSequenceOfImmutableY or ImmutableSequenceOfE.
ruvo::InternedName sequenceName(const Generic::SequenceIntf& sequence, bool isSequenceImmutable,
                                bool isElementImmutable, const ruvo::InternedName& declared);

/// The mutable class of an immutable one: its dotted name without the first "Immutable" of the last part.
ruvo::InternedName mutableName(const ruvo::InternedName& immutableClass);

}  // namespace K7Q::mi
