#pragma once

#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/ruvo/Package.h"

namespace Tarvelon::mi {
/// The host package `Tarvelon`, the root of all packages of the product.
TARVELON_API ruvo::RVOPackage* getTarvelonRVOPackage();
}  // namespace Tarvelon::mi

namespace Tarvelon::metamodel::mi {
/// Adds the host package `Tarvelon.metamodel` to `parent`.
TARVELON_API void initmetamodelPackageWrapper(ruvo::RVOPackage* parent);
/// The host package `Tarvelon.metamodel`.
TARVELON_API ruvo::RVOPackage* getmetamodelRVOPackage();
}  // namespace Tarvelon::metamodel::mi

namespace Tarvelon::metamodel::types {
/// Initialises the metamodel `types`. Calling it again has no effect.
TARVELON_API void initialize();
}  // namespace Tarvelon::metamodel::types

namespace Tarvelon::metamodel::foundation {
/// Initialises the metamodel `foundation`. Calling it again has no effect.
TARVELON_API void initialize();
}  // namespace Tarvelon::metamodel::foundation

namespace Tarvelon::metamodel::native {

/// Registers the model library, so that K7Q::Model::create() can create models. The library registers itself
/// when it is loaded; a program calls this function so that the linker does not drop the library. Calling it
/// again has no effect.
TARVELON_API void initialize();

/// The description of a package of the metamodel. The dotted name is `Tarvelon.metamodel.arplatform`, the
/// name of one of its child packages, `Tarvelon.metamodel.foundation`, `Tarvelon.metamodel.types` or `K7Q`.
/// Throws K7Q::UnknownName for any other name; the text lists the packages.
///
/// Example:
///   const auto package = native::metaPackage("Tarvelon.metamodel.arplatform.common");
///   for (const auto* cls : package.getPackage()->classes()) print(cls->name());
TARVELON_API K7Q::ImmutablePackage metaPackage(std::string_view dottedName);

}  // namespace Tarvelon::metamodel::native
