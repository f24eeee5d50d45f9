#pragma once

#include "python/host/Reference.h"

namespace pyhost {

/// The functions of the extension module by which its Python side finds packages and classes. Names are
/// dotted.
PyMethodDef* packageFunctions() noexcept;

void readyFunctionType();

}  // namespace pyhost
