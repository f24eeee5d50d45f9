#include "tarvelon/arplatform/interface/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(interface, ARPLATFORM_INTERFACE_NAMES)
