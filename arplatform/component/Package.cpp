#include "arplatform/component/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(component, ARPLATFORM_COMPONENT_NAMES)
