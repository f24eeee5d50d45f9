#pragma once

#include <vector>

#include "python/host/Objects.h"

namespace pyhost {

/// The names of an enumeration's literals in ascending order of value: its static methods without arguments
/// that give a value of the enumeration itself.
std::vector<ruvo::InternedName> literalsOf(ruvo::Class& cls);

/// A list of the values of all literals.
PyObject* listLiterals(ruvo::Class& cls);

/// `name`, with an underscore behind if it is a keyword of Python's.
std::string pythonName(std::string_view name);

}  // namespace pyhost
