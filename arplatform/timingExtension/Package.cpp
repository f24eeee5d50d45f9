#include "arplatform/timingExtension/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(timingExtension, ARPLATFORM_TIMING_EXTENSION_NAMES)
