#pragma once

/// Includes all classes of the metamodel with their rows. A program that uses the native handles includes
/// this header.
///
/// The constructors, properties and bases of a class follow from the rows that the compiler has seen. If a
/// program included some rows in one file and others in another, one class would have two definitions.
#include "tarvelon/arplatform/Tables.h"  // IWYU pragma: export
#include "tarvelon/foundation/Table.h"   // IWYU pragma: export
#include "tarvelon/types/Table.h"        // IWYU pragma: export
