#pragma once

// What each package, class and enumeration of the platform's metamodel is for.
#include <string_view>

#include "arplatform/Names.h"
#include "arplatform/behavior/Purposes.h"
#include "arplatform/common/Purposes.h"
#include "arplatform/component/Purposes.h"
#include "arplatform/composition/Purposes.h"
#include "arplatform/documentation/Purposes.h"
#include "arplatform/ecuc/Purposes.h"
#include "arplatform/instance/Purposes.h"
#include "arplatform/interface/Purposes.h"
#include "arplatform/manifest/Purposes.h"
#include "arplatform/port/Purposes.h"
#include "arplatform/system/Purposes.h"
#include "arplatform/timingExtension/Purposes.h"
#include "arplatform/variant/Purposes.h"

namespace Tarvelon::metamodel::arplatform {

inline constexpr std::string_view kPurpose =
    "The AUTOSAR metamodel: software components, their behavior and their wiring for the classic platform, "
    "applications, services and their deployment for the adaptive one, and what both have in common.";

}  // namespace Tarvelon::metamodel::arplatform
