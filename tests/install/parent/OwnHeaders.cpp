// Includes the library's headers and then this project's own headers, some of which have the same names.
#include <tarvelon/platform/files/Files.h>
#include <tarvelon/platform/model/api/Metamodel.h>
#include <tarvelon/platform/model/api/Reflection.h>
#include <tarvelon/platform/ruvo/ObjectSystem.h>

#if defined(OWN_TABLE) || defined(OWN_OBJECT)
#error "the library took headers of this project for its own"
#endif

#include "boundary/k7q/Object.h"
#include "types/Table.h"

#if !defined(OWN_TABLE) || !defined(OWN_OBJECT)
#error "this project's headers were not found"
#endif
