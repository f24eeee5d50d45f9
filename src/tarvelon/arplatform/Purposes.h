#pragma once

// The descriptions of all packages, classes and enumerations of the metamodel `arplatform`.
#include <string_view>

#include "tarvelon/arplatform/Names.h"
#include "tarvelon/arplatform/behavior/Purposes.h"
#include "tarvelon/arplatform/common/Purposes.h"
#include "tarvelon/arplatform/component/Purposes.h"
#include "tarvelon/arplatform/composition/Purposes.h"
#include "tarvelon/arplatform/documentation/Purposes.h"
#include "tarvelon/arplatform/ecuc/Purposes.h"
#include "tarvelon/arplatform/instance/Purposes.h"
#include "tarvelon/arplatform/interface/Purposes.h"
#include "tarvelon/arplatform/manifest/Purposes.h"
#include "tarvelon/arplatform/port/Purposes.h"
#include "tarvelon/arplatform/system/Purposes.h"
#include "tarvelon/arplatform/timingExtension/Purposes.h"
#include "tarvelon/arplatform/variant/Purposes.h"

namespace Tarvelon::metamodel::arplatform {

inline constexpr std::string_view kPurpose =
    "The AUTOSAR metamodel: software components, their behavior and their wiring for the classic platform, "
    "applications, services and their deployment for the adaptive one, and what both have in common.";

}  // namespace Tarvelon::metamodel::arplatform
