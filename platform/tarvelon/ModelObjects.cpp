#include "platform/tarvelon/ModelObjects.h"

#include "platform/tarvelon/NativeModel.h"

namespace Tarvelon::metamodel::native {

namespace {

using Index = InstanceIndex NativeModel::*;
Index indexOfModels();

// The model keeps its index to itself, and reading it here changes nothing.
template <Index Member>
struct Reach {
  friend Index indexOfModels() { return Member; }
};
template struct Reach<&NativeModel::mInstances>;

}  // namespace

std::vector<Instance*> rootsOf(const NativeModel& model) {
  std::vector<Instance*> roots;
  (model.*indexOfModels()).forEach([&roots](Instance& object) {
    if (!object.owner()) roots.push_back(&object);
  });
  return roots;
}

}  // namespace Tarvelon::metamodel::native
