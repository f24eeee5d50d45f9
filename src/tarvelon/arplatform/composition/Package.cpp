#include "tarvelon/arplatform/composition/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(composition, ARPLATFORM_COMPOSITION_NAMES)
