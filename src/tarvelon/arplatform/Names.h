#pragma once

#include "tarvelon/arplatform/behavior/Names.h"
#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/arplatform/component/Names.h"
#include "tarvelon/arplatform/composition/Names.h"
#include "tarvelon/arplatform/documentation/Names.h"
#include "tarvelon/arplatform/ecuc/Names.h"
#include "tarvelon/arplatform/instance/Names.h"
#include "tarvelon/arplatform/interface/Names.h"
#include "tarvelon/arplatform/manifest/Names.h"
#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/arplatform/system/Names.h"
#include "tarvelon/arplatform/timingExtension/Names.h"
#include "tarvelon/arplatform/variant/Names.h"

// The child packages in the order of their registration, each with the list macro of its classes and
// enumerations.
// clang-format off
#define ARPLATFORM_PACKAGES(PACKAGE)                                \
  PACKAGE(documentation,   ARPLATFORM_DOCUMENTATION_NAMES)          \
  PACKAGE(common,          ARPLATFORM_COMMON_NAMES)                 \
  PACKAGE(variant,         ARPLATFORM_VARIANT_NAMES)                \
  PACKAGE(interface,       ARPLATFORM_INTERFACE_NAMES)              \
  PACKAGE(port,            ARPLATFORM_PORT_NAMES)                   \
  PACKAGE(component,       ARPLATFORM_COMPONENT_NAMES)              \
  PACKAGE(behavior,        ARPLATFORM_BEHAVIOR_NAMES)               \
  PACKAGE(instance,        ARPLATFORM_INSTANCE_NAMES)               \
  PACKAGE(composition,     ARPLATFORM_COMPOSITION_NAMES)            \
  PACKAGE(ecuc,            ARPLATFORM_ECUC_NAMES)                   \
  PACKAGE(manifest,        ARPLATFORM_MANIFEST_NAMES)               \
  PACKAGE(timingExtension, ARPLATFORM_TIMING_EXTENSION_NAMES)       \
  PACKAGE(system,          ARPLATFORM_SYSTEM_NAMES)
// clang-format on
