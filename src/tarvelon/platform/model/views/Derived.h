#pragma once

#include <vector>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

namespace Tarvelon::metamodel::native {

class ClassMethods;
class Instance;
class Property;

/// The value of a single-valued derived property, null if there is none.
K7Q::NSInterface::ObjectIntf* derivedValue(const Instance& object, const Property& property) noexcept;

/// A new sequence of the objects that a read row of the class selects. Its reference count is 0: the first
/// handle on it takes it over.
K7Q::Generic::SequenceIntf* readKind(const Instance& object, const ClassMethods& cls, const ReadRow& row,
                                     K7Q::Deviant deviant);

/// The values of a many-valued derived property.
std::vector<Instance*> derivedValues(const Instance& object, const Property& property);

}  // namespace Tarvelon::metamodel::native
