#pragma once

#include "platform/tarvelon/NativeModel.h"

/// All objects of a model, whatever holds them.
namespace Tarvelon::files {

/// Calls visit(Instance&) for each, in an order that only changes where objects come and go.
template <class Visit>
void forEachInstance(const metamodel::native::NativeModel& model, Visit visit) {
  model.instances().forEach(visit);
}

}  // namespace Tarvelon::files
