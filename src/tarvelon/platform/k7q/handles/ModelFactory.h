#pragma once

#include <string>
#include <typeinfo>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace K7Q {

/// Makes a new, empty model of that name, which is its URI.
using ModelFactory = Model (*)(const std::u16string& name);

/// Says who makes models: Model::create() and FactoryIntf::createNewModel() ask the factory that was set
/// last, and raise K7Q::Exception while there is none. The native model library sets its own when it is
/// loaded. Null takes the factory away.
TARVELON_API void setModelFactory(ModelFactory factory);

/// Says that models of this class leave ModelCache::instance() when they are closed: then a URI that was
/// taken is free only when the cache has been told. Of models of other classes the cache has to ask each.
TARVELON_API void setUnbindingType(const std::type_info& type);

}  // namespace K7Q
