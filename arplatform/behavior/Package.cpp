#include "arplatform/behavior/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(behavior, ARPLATFORM_BEHAVIOR_NAMES)
