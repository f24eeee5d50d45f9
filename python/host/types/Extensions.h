#pragma once

#include "python/host/objects/Objects.h"

namespace pyhost {

/// Registers members that Python code adds to a class. The dict is merged with those added before. REQUIRES:
/// the type of the class has not been created yet; otherwise there is no effect.
void addExtension(const std::string& fullName, PyObject* members);

/// The added members of a class, null if there are none. Borrowed.
PyObject* extensionOf(const ruvo::Class& cls) noexcept;

}  // namespace pyhost
