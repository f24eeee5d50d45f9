#include <memory>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ruvo/Package.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo {
namespace {

class PlainInfo final : public RVOPackageInfo {
 public:
  const char* getName() const override { return "plain"; }
  void initializePackage(RVOPackage* /*package*/) override {}
};

TEST(PackageInfo, SaysNothingByDefault) {
  PlainInfo info;
  EXPECT_EQ(info.getDescription(), nullptr);
  EXPECT_EQ(info.getDetailedDescription(), nullptr);
  EXPECT_EQ(info.getMethodSelector(), nullptr);
  EXPECT_EQ(info.getH1Line(), nullptr);
  EXPECT_EQ(info.getHelpText(), nullptr);
  EXPECT_TRUE(info.isDestructible());
  EXPECT_TRUE(info.isLocked());
}

TEST(PackageInfo, LoadsNothingByDefault) {
  PlainInfo info;
  EXPECT_FALSE(info.attemptToLoadSubPackage("x") || info.attemptToLoadClass("x"));
  EXPECT_FALSE(info.attemptToLoadFunction("x") || info.attemptToLoadType("x"));
}

TEST(PackageInfo, NamesWhatExists) {
  PlainInfo info;
  EXPECT_EQ(testing::errorOf<K7Q::Exception>([&] { info.throwErrorForDefinitionOfExistingName("X"); }),
            "package 'plain' has a class 'X' already; give the new one another name");
}

TEST(PackageInfo, MayBeMadeInStorageThatIsThere) {
  // As a wrapper does it: the memory comes from utCalloc() and is freed with the object.
  void* storage = utCalloc(1, sizeof(PlainInfo));
  RVOPackageInfo* info = new (storage) PlainInfo;
  EXPECT_STREQ(info->getName(), "plain");
  delete info;
}

TEST(PackageInfo, TellsThatMemoryIsExhausted) {
  utFailAllocation(1);
  EXPECT_THROW(new PlainInfo, bedrock::core::except::bad_alloc);
}

}  // namespace
}  // namespace ruvo
