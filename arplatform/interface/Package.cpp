#include "arplatform/interface/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(interface, ARPLATFORM_INTERFACE_NAMES)
