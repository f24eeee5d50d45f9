#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"

/// The documentation of the metamodel. help() and the pages of `describe` show it.
///
/// Cost:    Nothing at start-up. Each call searches the rows.
/// Threads: Any.
namespace Tarvelon::metamodel::native {

/// The purpose of a package, class or enumeration of the metamodel, in one or two sentences. The name is the
/// full dotted name; for the name of an immutable view, the purpose of its class is returned. Empty for any
/// other name. The text is valid as long as the process.
TARVELON_API std::string_view purposeOf(std::string_view dottedName);

/// The names of the arguments after the model, for each constructor of a class in order of registration: {{},
/// {"symbol", "name"}} for `behavior.Runnable`. Empty for an abstract class and for an unknown name.
TARVELON_API std::vector<std::vector<std::string>> argumentNames(std::string_view className);

/// Splits a parameter list as a record declares it: " aSymbol, aName" gives {"symbol", "name"}.
TARVELON_API std::vector<std::string> splitArgumentNames(std::string_view declared);

}  // namespace Tarvelon::metamodel::native
