#include "arplatform/ecuc/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(ecuc, ARPLATFORM_ECUC_NAMES)
