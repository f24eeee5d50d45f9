#include "arplatform/composition/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(composition, ARPLATFORM_COMPOSITION_NAMES)
