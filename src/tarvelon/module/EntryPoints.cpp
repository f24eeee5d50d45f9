#include "tarvelon/module/EntryPoints.h"

#include <new>

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/module/ModuleRegistration.h"
#include "tarvelon/module/PackageFrame.h"

namespace {

// The two flags are independent. Only std::bad_alloc clears gIsInitialized; nothing clears gIsTerminated.
bool gIsInitialized = false;
bool gIsTerminated = false;

void initializeMetamodel() {
  Tarvelon::metamodel::arplatform::mi::completeRegistration();
  Tarvelon::metamodel::mi::initmetamodelPackageWrapper(Tarvelon::mi::getTarvelonRVOPackage());
  for (const auto& [name, initialize] : Tarvelon::metamodel::arplatform::mi::registrationMap()) {
    initialize(Tarvelon::metamodel::mi::getmetamodelRVOPackage());
  }
  arplatform_module::attachRemaining();
}

}  // namespace

void ZtInitialize_mm_arplatform_mi() {
  if (gIsInitialized) return;
  // Set before the work, so that a nested call returns at once and a failed initialisation is not repeated.
  gIsInitialized = true;
  try {
    initializeMetamodel();
  } catch (const std::bad_alloc&) {
    // The next call continues the initialisation.
    gIsInitialized = false;
    throw;
  }
}

void ZtTerminate_mm_arplatform_mi() {
  if (gIsTerminated) return;
  gIsTerminated = true;
  for ([[maybe_unused]] const auto& entry : Tarvelon::metamodel::arplatform::mi::registrationMap()) {
    // Nothing is removed: packages, class infos and the map stay.
  }
}
