#include "arplatform/instance/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(instance, ARPLATFORM_INSTANCE_NAMES)
