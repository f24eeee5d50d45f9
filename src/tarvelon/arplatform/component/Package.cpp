#include "tarvelon/arplatform/component/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(component, ARPLATFORM_COMPONENT_NAMES)
