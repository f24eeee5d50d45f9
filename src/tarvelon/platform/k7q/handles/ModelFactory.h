#pragma once

#include <string>
#include <typeinfo>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace K7Q {

/// Creates a new, empty model with `name` as its URI.
using ModelFactory = Model (*)(const std::u16string& name);

/// Sets the function that creates models for Model::create() and FactoryIntf::createNewModel(). Without a
/// factory both raise K7Q::Exception. The native model library sets its own factory when it is loaded. Null
/// removes the factory.
TARVELON_API void setModelFactory(ModelFactory factory);

/// Declares that models of this class are unbound from ModelCache::instance() when they are closed. The cache
/// can then remember which URIs are free. For models of other classes it must ask each model.
TARVELON_API void setUnbindingType(const std::type_info& type);

}  // namespace K7Q
