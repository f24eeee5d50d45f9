#include "tarvelon/arplatform/system/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(system, ARPLATFORM_SYSTEM_NAMES)
