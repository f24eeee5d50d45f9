#include "tarvelon/arplatform/documentation/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(documentation, ARPLATFORM_DOCUMENTATION_NAMES)
