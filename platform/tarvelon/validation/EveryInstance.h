#pragma once

#include "platform/tarvelon/NativeModel.h"

namespace Tarvelon::metamodel::native::validation {

/// Opens the one member of a model that lists its objects: an explicit instantiation may name it.
template <InstanceIndex NativeModel::*Member>
struct ListOf {
  friend const InstanceIndex& instancesOf(const NativeModel& model) noexcept { return model.*Member; }
};
const InstanceIndex& instancesOf(const NativeModel& model) noexcept;
template struct ListOf<&NativeModel::mInstances>;

/// Calls visit(const Instance&) for each object of the model, in order of their numbers.
template <class Visit>
void forEachInstance(const NativeModel& model, Visit visit) {
  instancesOf(model).forEach([&visit](Instance& instance) { visit(instance); });
}

}  // namespace Tarvelon::metamodel::native::validation
