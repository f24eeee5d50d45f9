#include "python/host/NativeObjects.h"

namespace pyhost {

namespace {

PyMethodDef gFunctions[] = {{nullptr, nullptr, 0, nullptr}};

}  // namespace

PyMethodDef* searchFunctions() noexcept { return gFunctions; }

}  // namespace pyhost
