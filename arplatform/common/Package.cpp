#include "arplatform/common/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(common, ARPLATFORM_COMMON_NAMES)
