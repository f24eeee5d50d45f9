#pragma once

#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::model {

/// Checks all invariants of a model.
///
/// Returns an empty text if all of them hold. Otherwise returns one sentence that names the first invariant
/// that does not hold and the object where this was found:
///
///   owners and owned agree: common.Package 'A' (number 0) holds common.Package 'B' (number 1) in
///   PackagedElement, and the owner of that is nothing
///
/// A library that is built with TARVELON_AUDIT runs the same checks by itself after changes
/// (changes/AuditHooks.h). If a listener calls the function, it does not check the history, because the
/// current change is not in the history yet.
///
/// Cost:    Proportional to the number of objects, their values, and the steps in the history.
/// Errors:  K7Q::Exception with the text kNullReference for a closed model; std::bad_alloc.
/// Threads: One thread at a time for each model.
TARVELON_API std::string audit(const K7Q::Model& model);

}  // namespace Tarvelon::model
