#include "tarvelon/module/EntryPoints.h"

#include <new>

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/module/ModuleRegistration.h"
#include "tarvelon/module/PackageFrame.h"

namespace {

// The two guards know nothing of each other and are never cleared.
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
  // Set before the work: a re-entrant call returns at once, and a failed initialisation is not retried.
  gIsInitialized = true;
  try {
    initializeMetamodel();
  } catch (const std::bad_alloc&) {
    // Want of memory is no failure of the initialisation: the next call does what is left.
    gIsInitialized = false;
    throw;
  }
}

void ZtTerminate_mm_arplatform_mi() {
  if (gIsTerminated) return;
  gIsTerminated = true;
  for ([[maybe_unused]] const auto& entry : Tarvelon::metamodel::arplatform::mi::registrationMap()) {
    // Nothing is undone: packages, class infos and the map stay.
  }
}
