#include "tarvelon/arplatform/manifest/Table.h"
#include "tarvelon/module/PackageFrame.h"

ARPLATFORM_DEFINE_PACKAGE(manifest, ARPLATFORM_MANIFEST_NAMES)
