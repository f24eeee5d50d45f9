#pragma once

#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/ruvo/Package.h"

namespace Tarvelon::mi {
/// The package `Tarvelon`.
TARVELON_API ruvo::RVOPackage* getTarvelonRVOPackage();
}  // namespace Tarvelon::mi

namespace Tarvelon::metamodel::mi {
/// Hangs the package `Tarvelon.metamodel` below the given one.
TARVELON_API void initmetamodelPackageWrapper(ruvo::RVOPackage* parent);
TARVELON_API ruvo::RVOPackage* getmetamodelRVOPackage();
}  // namespace Tarvelon::metamodel::mi

namespace Tarvelon::metamodel::types {
/// Brings the metamodel `types` up; safe to call again.
TARVELON_API void initialize();
}  // namespace Tarvelon::metamodel::types

namespace Tarvelon::metamodel::foundation {
/// Brings the metamodel `foundation` up; safe to call again.
TARVELON_API void initialize();
}  // namespace Tarvelon::metamodel::foundation

namespace Tarvelon::metamodel::native {

/// Sets the model factory of this library, so that K7Q::Model::create() makes models. It is done when the
/// library is loaded; who calls it makes sure that the library is linked. Safe to call again.
TARVELON_API void initialize();

/// The description of a package of the metamodel by its dotted name: `Tarvelon.metamodel.arplatform`, one of
/// its children, `Tarvelon.metamodel.foundation`, `Tarvelon.metamodel.types` or `K7Q`. Raises
/// K7Q::UnknownName for another name.
TARVELON_API K7Q::ImmutablePackage metaPackage(std::string_view dottedName);

}  // namespace Tarvelon::metamodel::native
