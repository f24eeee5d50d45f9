#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace ruvo {

RVOClass::~RVOClass() = default;

RVOClassInfo::~RVOClassInfo() = default;
int RVOClassInfo::getAccess() const { return 0; }
void RVOClassInfo::updateInstance(void* /*instance*/) {}
bool RVOClassInfo::isHidden() const { return false; }
bool RVOClassInfo::isCompatibleInexactProperties() const { return false; }
bool RVOClassInfo::isFullNameDisplayed() const { return false; }
bool RVOClassInfo::isPropertyNameReservedByThisClass(const char* /*name*/) const { return false; }
bool RVOClassInfo::canOtherClassContainThisClass(InternedName /*other*/) const { return true; }
bool RVOClassInfo::canThisClassContainOtherClass(InternedName /*other*/) const { return true; }
bool RVOClassInfo::isHandleCompatible() const { return false; }
bool RVOClassInfo::isEnumeration() const { return false; }
int RVOClassInfo::getConnectAccess() const { return 0; }
int RVOClassInfo::getConnectivity() const { return 0; }
bool RVOClassInfo::areChildrenSaved() const { return true; }
bool RVOClassInfo::isAbstract() const { return false; }
bool RVOClassInfo::useClassDefaultsOnLoad() const { return false; }
bool RVOClassInfo::isSealed() const { return false; }
bool RVOClassInfo::isPropertyTruncationAllowed() const { return false; }
bool RVOClassInfo::isConstructedOnLoad() const { return true; }
bool RVOClassInfo::arePropertiesCaseInsensitive() const { return false; }
bool RVOClassInfo::isInstanceLeaf() const { return (query8() & ~2) == 0; }
bool RVOClassInfo::isDestructible() const { return true; }
bool RVOClassInfo::isLocked() const { return true; }
bool RVOClassInfo::attemptToLoadProperty(const char* /*name*/) { return false; }
bool RVOClassInfo::attemptToLoadMethod(const char* /*name*/) { return false; }
bool RVOClassInfo::attemptToLoadEvent(const char* /*name*/) { return false; }
void RVOClassInfo::instanceLoaded(RVOInterfacePtr /*object*/, const RVOLoadInfo* /*info*/) {}
bool RVOClassInfo::customSave(RVOInterfacePtr /*object*/, RVOValue& /*value*/, RVODataTypePtr& /*type*/) {
  return false;
}
bool RVOClassInfo::customLoad(RVOInterfacePtr& /*object*/, RVOValue /*value*/, RVODataTypePtr& /*type*/) {
  return false;
}
void* RVOClassInfo::getModule() { return nullptr; }
bool RVOClassInfo::areClassFunctionsAllowed() const { return false; }
bool RVOClassInfo::areExtensionMethodsAllowed() const { return false; }
bool RVOClassInfo::usesRootRecords() const { return false; }
bool RVOClassInfo::doEventsHaveSeparateNamespace() const { return false; }
bool RVOClassInfo::doesInexactPropertyNameIssueWarning() { return false; }
bool RVOClassInfo::usesCustomChildrenList() const { return false; }
int RVOClassInfo::getArrayNature() const { return 0; }
void* RVOClassInfo::getChildrenOfInstance(RVOInterface* /*object*/) const { return nullptr; }
void RVOClassInfo::classIsAbstract() {}
bool RVOClassInfo::allowInstanceUpdates() const { return false; }
bool RVOClassInfo::isIDConsistent() const { return false; }

void* RVOClassInfo::operator new(std::size_t size) {
  if (void* storage = utMalloc(size)) return storage;
  throw bedrock::core::except::bad_alloc();
}
void RVOClassInfo::operator delete(void* storage) noexcept { utFree(storage); }

namespace factory {

RuvoFactoryClassInfo::~RuvoFactoryClassInfo() = default;
const char* RuvoFactoryClassInfo::getName() const { return mName; }
const char* RuvoFactoryClassInfo::getDescription() const { return mDescription; }
const char* RuvoFactoryClassInfo::getDetailedDescription() const { return getDescription(); }
int RuvoFactoryClassInfo::query8() const { return 0; }
bool RuvoFactoryClassInfo::query11() const { return true; }
bool RuvoFactoryClassInfo::query18() const { return true; }

}  // namespace factory
}  // namespace ruvo
