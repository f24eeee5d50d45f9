#include "tarvelon/arplatform/common/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(common, ARPLATFORM_COMMON_NAMES)
