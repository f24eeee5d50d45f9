#pragma once

#include <vector>

#include "python/host/objects/Objects.h"

namespace pyhost {

/// The names of an enumeration's literals in ascending order of value. A literal is a static method without
/// arguments that returns a value of the enumeration.
std::vector<ruvo::InternedName> literalsOf(ruvo::Class& cls);

/// A list of the values of all literals.
PyObject* listLiterals(ruvo::Class& cls);

/// `name`, with an underscore appended if it is a Python keyword.
std::string pythonName(std::string_view name);

}  // namespace pyhost
