#pragma once

#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace K7Q {

/// Makes a new, empty model of that name, which is its URI.
using ModelFactory = Model (*)(const std::u16string& name);

/// Says who makes models: Model::create() and FactoryIntf::createNewModel() ask the factory that was set
/// last, and raise K7Q::Exception while there is none. The native model library sets its own when it is
/// loaded. Null takes the factory away.
TARVELON_API void setModelFactory(ModelFactory factory);

}  // namespace K7Q
