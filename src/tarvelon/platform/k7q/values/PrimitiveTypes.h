#pragma once

#include "tarvelon/boundary/k7q/Introspection.h"

namespace K7Q::NSInterface {

/// The metamodel's description of a scalar type, and of the text type.
const DataTypeIntf& primitiveType(ScalarIntf::Type type);
const DataTypeIntf& stringType();

}  // namespace K7Q::NSInterface
