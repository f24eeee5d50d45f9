#include "arplatform/system/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(system, ARPLATFORM_SYSTEM_NAMES)
