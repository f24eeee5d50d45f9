#include "tarvelon/arplatform/behavior/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(behavior, ARPLATFORM_BEHAVIOR_NAMES)
