#include "tarvelon/arplatform/ecuc/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(ecuc, ARPLATFORM_ECUC_NAMES)
