#include "arplatform/documentation/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(documentation, ARPLATFORM_DOCUMENTATION_NAMES)
