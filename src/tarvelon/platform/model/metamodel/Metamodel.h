#pragma once

/// Every class of the metamodel with its row: what a program includes that uses the native handles.
///
/// Which constructors, properties and bases a class has follows from the rows that are seen; a program that
/// saw some of them in one file and others in another would have two meanings of one class.
#include "tarvelon/arplatform/Tables.h"  // IWYU pragma: export
#include "tarvelon/foundation/Table.h"   // IWYU pragma: export
#include "tarvelon/types/Table.h"        // IWYU pragma: export
