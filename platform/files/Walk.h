#pragma once

#include "platform/tarvelon/NativeModel.h"

/// All objects of a model, whatever holds them.
namespace Tarvelon::files {

namespace walk {

template <auto Member>
struct Opens {
  friend const metamodel::native::InstanceIndex& instancesOf(const metamodel::native::NativeModel& model) {
    return model.*Member;
  }
};
// A model shows its table to nobody yet; naming a member in an explicit instantiation is no access to it.
template struct Opens<&metamodel::native::NativeModel::mInstances>;
const metamodel::native::InstanceIndex& instancesOf(const metamodel::native::NativeModel& model);

}  // namespace walk

/// Calls visit(Instance&) for each, in an order that only changes where objects come and go.
template <class Visit>
void forEachInstance(const metamodel::native::NativeModel& model, Visit visit) {
  walk::instancesOf(model).forEach(visit);
}

}  // namespace Tarvelon::files
