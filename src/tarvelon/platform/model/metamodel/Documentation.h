#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"

/// What people are told of the metamodel beside its records: help() and the pages of `describe` show it.
///
/// Cost: nothing at start-up; each call walks the rows that it needs. Threads: any.
namespace Tarvelon::metamodel::native {

/// What a package, class or enumeration of the metamodel is for: one or two sentences. The name is dotted and
/// whole; an immutable view is for what its class is for. Empty for any other name. Lives as long as the
/// process.
TARVELON_API std::string_view purposeOf(std::string_view dottedName);

/// The names of the arguments behind the model, for each constructor of a class in order of registration:
/// {{}, {"symbol", "name"}} of `behavior.Runnable`. Empty for an abstract class and for a name that no class
/// has.
TARVELON_API std::vector<std::vector<std::string>> argumentNames(std::string_view className);

/// The same of one list as a record declares it: " aSymbol, aName" gives {"symbol", "name"}.
TARVELON_API std::vector<std::string> splitArgumentNames(std::string_view declared);

}  // namespace Tarvelon::metamodel::native
