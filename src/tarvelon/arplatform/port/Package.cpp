#include "tarvelon/arplatform/port/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(port, ARPLATFORM_PORT_NAMES)
