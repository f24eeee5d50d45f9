#include "tarvelon/arplatform/timingExtension/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(timingExtension, ARPLATFORM_TIMING_EXTENSION_NAMES)
