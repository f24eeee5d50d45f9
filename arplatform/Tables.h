#pragma once

// Every row that has been entered. A class that is named but has no row is declared: its name can be spoken
// of, its properties and constructors are not known yet.
#include "arplatform/Names.h"
#include "arplatform/common/Table.h"
#include "arplatform/documentation/Table.h"
#include "arplatform/variant/Table.h"
