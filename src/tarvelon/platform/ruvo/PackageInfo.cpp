#include <string>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ruvo/Package.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace ruvo {

RVOPackage::~RVOPackage() = default;

RVOPackageInfo::~RVOPackageInfo() = default;
const char* RVOPackageInfo::getDescription() const { return nullptr; }
const char* RVOPackageInfo::getDetailedDescription() const { return nullptr; }
bool RVOPackageInfo::attemptToLoadSubPackage(const char* /*name*/) { return false; }
void RVOPackageInfo::throwErrorForDefinitionOfExistingName(const char* name) {
  throw K7Q::Exception("package '" + std::string(getName()) + "' has a class '" + name +
                       "' already; give the new one another name");
}
bool RVOPackageInfo::attemptToLoadClass(const char* /*name*/) { return false; }
bool RVOPackageInfo::attemptToLoadFunction(const char* /*name*/) { return false; }
bool RVOPackageInfo::attemptToLoadType(const char* /*name*/) { return false; }
void* RVOPackageInfo::getMethodSelector() { return nullptr; }
bool RVOPackageInfo::isDestructible() const { return true; }
bool RVOPackageInfo::isLocked() const { return true; }
const char* RVOPackageInfo::getH1Line() const { return nullptr; }
const char* RVOPackageInfo::getHelpText() const { return nullptr; }

void* RVOPackageInfo::operator new(std::size_t size) {
  if (void* storage = utMalloc(size)) return storage;
  throw bedrock::core::except::bad_alloc();
}
void RVOPackageInfo::operator delete(void* storage) noexcept { utFree(storage); }

}  // namespace ruvo
