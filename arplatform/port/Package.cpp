#include "arplatform/port/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(port, ARPLATFORM_PORT_NAMES)
