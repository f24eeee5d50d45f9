#include "tarvelon/module/EntryPoints.h"

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/module/ModuleRegistration.h"

namespace {

// The two guards know nothing of each other and are never cleared.
bool gIsInitialized = false;
bool gIsTerminated = false;

}  // namespace

void ZtInitialize_mm_arplatform_mi() {
  if (gIsInitialized) return;
  // Set before the work: a re-entrant call returns at once, and a failed initialisation is not retried.
  gIsInitialized = true;
  Tarvelon::metamodel::mi::initmetamodelPackageWrapper(Tarvelon::mi::getTarvelonRVOPackage());
  for (const auto& [name, initialize] : Tarvelon::metamodel::arplatform::mi::registrationMap()) {
    initialize(Tarvelon::metamodel::mi::getmetamodelRVOPackage());
  }
}

void ZtTerminate_mm_arplatform_mi() {
  if (gIsTerminated) return;
  gIsTerminated = true;
  for ([[maybe_unused]] const auto& entry : Tarvelon::metamodel::arplatform::mi::registrationMap()) {
    // Nothing is undone: packages, class infos and the map stay.
  }
}
