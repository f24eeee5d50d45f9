#include "arplatform/manifest/Table.h"
#include "module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(manifest, ARPLATFORM_MANIFEST_NAMES)
