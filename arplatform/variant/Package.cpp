#include "arplatform/variant/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(variant, ARPLATFORM_VARIANT_NAMES)
