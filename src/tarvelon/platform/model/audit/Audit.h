#pragma once

#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::model {

/// Checks all that must hold in a model between two changes, whatever was done to it before.
///
/// Returns an empty text when everything holds. Otherwise the text is one sentence, which names the first
/// invariant that does not hold and the object where this was seen:
///
///   owners and owned agree: common.Package 'A' (number 0) holds common.Package 'B' (number 1) in
///   PackagedElement, and the owner of that is nothing
///
/// A library that is built with TARVELON_AUDIT checks the same by itself behind changes
/// (changes/AuditHooks.h). In a listener the history is left out, which the change is not part of yet. Cost:
/// proportional to the objects, their values and the steps that undo and redo keep. Failure: kNullReference
/// for a closed model, std::bad_alloc. Threads: one at a time for each model.
TARVELON_API std::string audit(const K7Q::Model& model);

}  // namespace Tarvelon::model
