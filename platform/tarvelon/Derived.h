#pragma once

#include <vector>

namespace K7Q::NSInterface {
class ObjectIntf;
}

namespace Tarvelon::metamodel::native {

class Instance;
class Property;

/// The value of a derived property of one value, null if there is none.
K7Q::NSInterface::ObjectIntf* derivedValue(const Instance& object, const Property& property) noexcept;

/// The values of a derived property of many values.
std::vector<Instance*> derivedValues(const Instance& object, const Property& property);

}  // namespace Tarvelon::metamodel::native
