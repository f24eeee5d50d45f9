#pragma once

#include <span>
#include <string_view>

#include "tarvelon/boundary/tarvelon/Names.h"

namespace Tarvelon::metamodel::native {

class ClassMethods;

/// A package with the tables of its classes and the names of its enumerations, in the order of registration.
struct PackageRow {
  std::string_view name;
  std::span<const ClassMethods* const> classes;
  std::span<const EnumerationName* const> enumerations;
};

/// All packages that have classes; those of the platform in the order of registration.
std::span<const PackageRow> packageRows() noexcept;

/// The table of a class that is named in some package.
const ClassMethods& tableOf(const ClassName& name);

}  // namespace Tarvelon::metamodel::native
