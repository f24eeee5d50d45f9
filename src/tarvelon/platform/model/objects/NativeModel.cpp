#include "tarvelon/platform/model/objects/NativeModel.h"

#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

Instance& NativeModel::add(const ClassData& cls, unsigned values) {
  mInstances.reserve(cls);
  Instance& instance = mInstances.make(*this, cls);
  try {
    instance.reserve(values);
  } catch (...) {
    mInstances.leaveClass(instance);
    instance.expire();
    throw;
  }
  return instance;
}

}  // namespace Tarvelon::metamodel::native
