#include "tarvelon/boundary/k7q/ClassMetaData.h"

#include <utility>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"

namespace K7Q::mi {

using ruvo::factory::basic::BindingRegistry;

ClassMetaData::ClassMetaData(const char* name, const char* description) noexcept
    : HandleClassInfo(name, description) {}
ClassMetaData::~ClassMetaData() = default;

void ClassMetaData::destroyInstance(ruvo::RVOClass* /*cls*/, const ruvo::RVOClient* /*client*/,
                                    void* instance) {
  const auto info = DeviantRegistry::getVariantInfo(instance);
  BindingRegistry::remove(instance);
  if (info.object) info.object->release();
}

void destroyMetaPropertyInstance(void* instance) {
  BindingRegistry::remove(instance);
  ::operator delete(instance);
}

}  // namespace K7Q::mi
