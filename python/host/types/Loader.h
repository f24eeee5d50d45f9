#pragma once

namespace pyhost {

/// Loads and initialises the library of the metamodel, which is in the folder of the platform libraries.
/// Idempotent. Raises K7Q.LoadError; the text names the file, what was expected, what was found and what to
/// do.
void loadMetamodel();

}  // namespace pyhost
