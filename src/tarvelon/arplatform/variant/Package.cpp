#include "tarvelon/arplatform/variant/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(variant, ARPLATFORM_VARIANT_NAMES)
