#pragma once

#include <span>
#include <string_view>

#include "tarvelon/boundary/tarvelon/Names.h"

namespace Tarvelon::metamodel::native {

class ClassMethods;

/// A package with the tables of its classes and the names of its enumerations, both in the order of
/// registration.
struct PackageRow {
  std::string_view name;
  std::span<const ClassMethods* const> classes;
  std::span<const EnumerationName* const> enumerations;
};

/// All packages that have classes. The packages of the platform are in the order of registration.
std::span<const PackageRow> packageRows() noexcept;

/// Returns the table of a class. Raises std::logic_error if no package names the class.
const ClassMethods& tableOf(const ClassName& name);

}  // namespace Tarvelon::metamodel::native
