#pragma once

#include <vector>

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// What nothing holds, in the order of the model's index.
/// Cost: proportional to the objects of the model.
std::vector<Instance*> rootsOf(const NativeModel& model);

}  // namespace Tarvelon::metamodel::native
