#include "arplatform/behavior/Names.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(behavior, ARPLATFORM_BEHAVIOR_NAMES)
