#pragma once

// The rows of all classes of the metamodel `arplatform`.
#include "tarvelon/arplatform/Names.h"
#include "tarvelon/arplatform/behavior/Table.h"
#include "tarvelon/arplatform/common/Table.h"
#include "tarvelon/arplatform/component/Table.h"
#include "tarvelon/arplatform/composition/Table.h"
#include "tarvelon/arplatform/documentation/Table.h"
#include "tarvelon/arplatform/ecuc/Table.h"
#include "tarvelon/arplatform/instance/Table.h"
#include "tarvelon/arplatform/interface/Table.h"
#include "tarvelon/arplatform/manifest/Table.h"
#include "tarvelon/arplatform/port/Table.h"
#include "tarvelon/arplatform/system/Table.h"
#include "tarvelon/arplatform/timingExtension/Table.h"
#include "tarvelon/arplatform/variant/Table.h"
