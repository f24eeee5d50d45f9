#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/Property.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace ruvo {

RVOPropInfo::~RVOPropInfo() = default;
int RVOPropInfo::getExtendedGetAccess() const { return 0; }
int RVOPropInfo::getExtendedSetAccess() const { return 0; }
bool RVOPropInfo::hasInternalDefault() const { return false; }
bool RVOPropInfo::isWarnOnCopyError() const { return false; }
bool RVOPropInfo::isNeverAmbiguous() const { return false; }
int RVOPropInfo::getPartialMatchPriority() const { return 0; }
bool RVOPropInfo::isWeakReference() const { return false; }
bool RVOPropInfo::isDestructible() const { return true; }
void* RVOPropInfo::getInterfaces(const RVOClient* /*client*/, RVOInterface* /*object*/) { return nullptr; }
void* RVOPropInfo::getZtArrays(const RVOClient* /*client*/, RVOInterface* /*object*/) { return nullptr; }

namespace factory::impl {

PropertyImplBase::~PropertyImplBase() = default;

void* PropertyImplBase::operator new(std::size_t size) {
  if (void* storage = utMalloc(size)) return storage;
  throw bedrock::core::except::bad_alloc();
}
void PropertyImplBase::operator delete(void* storage) noexcept { utFree(storage); }

}  // namespace factory::impl
}  // namespace ruvo
