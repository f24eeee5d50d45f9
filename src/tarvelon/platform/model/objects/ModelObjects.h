#pragma once

#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// The objects without an owner, in the order of the model's index.
/// Cost: Proportional to the number of objects in the model.
std::vector<Instance*> rootsOf(const NativeModel& model);

}  // namespace Tarvelon::metamodel::native
