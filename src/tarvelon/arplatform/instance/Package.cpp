#include "tarvelon/arplatform/instance/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(instance, ARPLATFORM_INSTANCE_NAMES)
