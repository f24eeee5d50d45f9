// Models in files and back.

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "platform/files/Files.h"
#include "tests/native/Support.h"

namespace {

using namespace Tarvelon::metamodel::arplatform;
namespace files = Tarvelon::files;

/// A model with a package that holds a behavior with a runnable and an event that starts it.
K7Q::Model makeBrakes() {
  auto model = K7Q::Model::create();
  const auto package = common::Package::create(model, u"Brakes");
  package.set<"category">(u"STANDARD");
  const auto wheels = variant::SystemConst::create(model, u"DrivenWheels");
  package.get<"PackagedElement">().add(wheels);
  return model;
}

TEST(SaveAndLoad, GivesTheSameTextAgain) {
  const std::string text = files::saveText(makeBrakes());
  const std::string again = files::saveText(files::loadText(text).model);
  EXPECT_EQ(text, again);
  EXPECT_EQ(text, "");
}

}  // namespace
