#pragma once

// Every row of the platform's metamodel.
#include "arplatform/Names.h"
#include "arplatform/behavior/Table.h"
#include "arplatform/common/Table.h"
#include "arplatform/component/Table.h"
#include "arplatform/composition/Table.h"
#include "arplatform/documentation/Table.h"
#include "arplatform/ecuc/Table.h"
#include "arplatform/instance/Table.h"
#include "arplatform/interface/Table.h"
#include "arplatform/manifest/Table.h"
#include "arplatform/port/Table.h"
#include "arplatform/system/Table.h"
#include "arplatform/timingExtension/Table.h"
#include "arplatform/variant/Table.h"
