#include <new>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/module/EntryPoints.h"
#include "tarvelon/module/ModuleRegistration.h"
#include "tarvelon/module/Packages.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace arplatform = Tarvelon::metamodel::arplatform;

namespace {

// Each test runs in its own process, because the guards are never reset.

int gCalls = 0;
void countCall(ruvo::RVOPackage* /*package*/) { ++gCalls; }

bool isAttached() {
  auto* metamodel = ruvo::Package::find("Tarvelon.metamodel");
  return metamodel && metamodel->findPackage("arplatform");
}

TEST(Load, RegistersTheInitialiserAndAttachesNothing) {
  const auto& map = arplatform::mi::registrationMap();
  ASSERT_EQ(map.size(), 1U);
  EXPECT_EQ(map.begin()->first, "arplatform");
  EXPECT_EQ(map.begin()->second, &arplatform::mi::initarplatformPackageWrapper);
  EXPECT_FALSE(isAttached());
}

TEST(Load, BringsTheLowerMetamodelsUp) {
  EXPECT_NE(ruvo::Package::find("Tarvelon.metamodel.foundation"), nullptr);
  EXPECT_NE(ruvo::Package::find("Tarvelon.metamodel.types"), nullptr);
}

TEST(Registration, OverwritesAnEntryThatIsThere) {
  arplatform::mi::registrationMap()["arplatform"] = &countCall;
  const arplatform::mi::arplatformModuleRegistration again;
  EXPECT_EQ(arplatform::mi::registrationMap().size(), 1U);
  EXPECT_EQ(arplatform::mi::registrationMap()["arplatform"], &arplatform::mi::initarplatformPackageWrapper);
}

TEST(Initialize, AttachesTheRootPackage) {
  ZtInitialize_mm_arplatform_mi();
  EXPECT_TRUE(isAttached());
}

TEST(Initialize, DoesNothingTheSecondTime) {
  ZtInitialize_mm_arplatform_mi();
  arplatform::mi::registrationMap()["arplatform"] = &countCall;
  ZtInitialize_mm_arplatform_mi();
  EXPECT_EQ(gCalls, 0);
}

TEST(Initialize, GivesEachInitialiserTheMetamodelPackage) {
  static ruvo::RVOPackage* given = nullptr;
  arplatform::mi::registrationMap()["another"] = [](ruvo::RVOPackage* package) { given = package; };
  ZtInitialize_mm_arplatform_mi();
  EXPECT_EQ(given, ruvo::Package::find("Tarvelon.metamodel"));
}

TEST(Initialize, IsNotRetriedAfterAFailure) {
  arplatform::mi::registrationMap()["aFailing"] = [](ruvo::RVOPackage*) { throw 7; };
  EXPECT_THROW(ZtInitialize_mm_arplatform_mi(), int);
  EXPECT_NO_THROW(ZtInitialize_mm_arplatform_mi());
  EXPECT_FALSE(isAttached());
}

TEST(Initialize, DoesWhatIsLeftWhenMemoryRanOut) {
  int failures = 0;
  for (unsigned long n = 1; !isAttached(); ++n) {
    utFailAllocation(n);
    try {
      ZtInitialize_mm_arplatform_mi();
    } catch (const std::bad_alloc&) {
      ++failures;
    }
    utFailAllocation(0);
  }
  EXPECT_GT(failures, 0);
  EXPECT_NE(ruvo::Class::find("Tarvelon.metamodel.arplatform.common.Package"), nullptr);
}

TEST(Initialize, ReturnsAtOnceWhenItIsReentered) {
  arplatform::mi::registrationMap()["aReentrant"] = [](ruvo::RVOPackage*) {
    ++gCalls;
    ZtInitialize_mm_arplatform_mi();
  };
  ZtInitialize_mm_arplatform_mi();
  EXPECT_EQ(gCalls, 1);
}

TEST(Terminate, CallsNoInitialiser) {
  arplatform::mi::registrationMap()["arplatform"] = &countCall;
  ZtTerminate_mm_arplatform_mi();
  ZtTerminate_mm_arplatform_mi();
  EXPECT_EQ(gCalls, 0);
}

TEST(Terminate, LeavesALaterInitialiseAllItsWork) {
  ZtTerminate_mm_arplatform_mi();
  ZtInitialize_mm_arplatform_mi();
  EXPECT_TRUE(isAttached());
}

TEST(Terminate, LeavesTheClassesUsable) {
  ZtInitialize_mm_arplatform_mi();
  ZtTerminate_mm_arplatform_mi();
  EXPECT_FALSE(ruvo::Class::get("Tarvelon.metamodel.arplatform.common.Package").methods().empty());
}

}  // namespace
