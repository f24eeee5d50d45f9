#include "tarvelon/platform/model/objects/ModelObjects.h"

#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::metamodel::native {

std::vector<Instance*> rootsOf(const NativeModel& model) {
  std::vector<Instance*> roots;
  model.instances().forEach([&roots](Instance& object) {
    if (!object.owner() && object.isAlive()) roots.push_back(&object);
  });
  return roots;
}

}  // namespace Tarvelon::metamodel::native
