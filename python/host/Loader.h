#pragma once

namespace pyhost {

/// Opens the library of the metamodel, which lies beside the libraries of the platform, and initialises it;
/// once. Raises K7Q.LoadError, which names the file, what was expected and the cure.
void loadMetamodel();

}  // namespace pyhost
