#pragma once

#include "python/host/Objects.h"

namespace pyhost {

/// What Python code adds to a class: a dict of members, beside those added before. It counts when it comes
/// before the class's first use.
void addExtension(const std::string& fullName, PyObject* members);

/// Borrowed; null for a class without extension.
PyObject* extensionOf(const ruvo::Class& cls) noexcept;

}  // namespace pyhost
