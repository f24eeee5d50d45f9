#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace ruvo {
namespace {

class PlainInfo : public factory::RuvoFactoryClassInfo {
 public:
  PlainInfo() : RuvoFactoryClassInfo("Plain", "A plain class") {}
  void defineMembers(RVOClass* /*cls*/, const RVOClient* /*client*/) override {}
  void destroyInstance(RVOClass* /*cls*/, const RVOClient* /*client*/, void* /*instance*/) override {}
};

class QueryInfo final : public PlainInfo {
 public:
  explicit QueryInfo(int query8) : mQuery8(query8) {}
  int query8() const override { return mQuery8; }

 private:
  int mQuery8;
};

TEST(ClassInfo, HasNameAndDescription) {
  const PlainInfo info;
  EXPECT_STREQ(info.getName(), "Plain");
  EXPECT_STREQ(info.getDescription(), "A plain class");
  EXPECT_STREQ(info.getDetailedDescription(), "A plain class");
}

TEST(ClassInfo, AnswersTheUnnamedQueries) {
  const PlainInfo info;
  EXPECT_EQ(info.query8(), 0);
  EXPECT_TRUE(info.query11());
  EXPECT_TRUE(info.query18());
}

TEST(ClassInfo, IsSavedConstructedOnLoadDestructibleAndLocked) {
  const PlainInfo info;
  EXPECT_TRUE(info.areChildrenSaved());
  EXPECT_TRUE(info.isConstructedOnLoad());
  EXPECT_TRUE(info.isDestructible());
  EXPECT_TRUE(info.isLocked());
}

TEST(ClassInfo, SaysNoToEveryOtherFlag) {
  PlainInfo info;
  EXPECT_FALSE(info.isHidden() || info.isCompatibleInexactProperties() || info.isFullNameDisplayed());
  EXPECT_FALSE(info.isHandleCompatible() || info.isEnumeration() || info.isAbstract());
  EXPECT_FALSE(info.useClassDefaultsOnLoad() || info.isSealed() || info.isPropertyTruncationAllowed());
  EXPECT_FALSE(info.arePropertiesCaseInsensitive() || info.areClassFunctionsAllowed());
  EXPECT_FALSE(info.areExtensionMethodsAllowed() || info.usesRootRecords());
  EXPECT_FALSE(info.doEventsHaveSeparateNamespace() || info.doesInexactPropertyNameIssueWarning());
  EXPECT_FALSE(info.usesCustomChildrenList() || info.allowInstanceUpdates() || info.isIDConsistent());
  EXPECT_FALSE(info.attemptToLoadProperty("x") || info.attemptToLoadMethod("x") ||
               info.attemptToLoadEvent("x"));
  EXPECT_FALSE(info.isPropertyNameReservedByThisClass("x"));
}

TEST(ClassInfo, HasNothingElse) {
  PlainInfo info;
  EXPECT_EQ(info.getAccess(), 0);
  EXPECT_EQ(info.getConnectAccess(), 0);
  EXPECT_EQ(info.getConnectivity(), 0);
  EXPECT_EQ(info.getArrayNature(), 0);
  EXPECT_EQ(info.getModule(), nullptr);
  EXPECT_EQ(info.getChildrenOfInstance(nullptr), nullptr);
}

TEST(ClassInfo, IsAnInstanceLeafByAllBitsButOne) {
  EXPECT_TRUE(QueryInfo(0).isInstanceLeaf());
  EXPECT_TRUE(QueryInfo(2).isInstanceLeaf());
  EXPECT_FALSE(QueryInfo(1).isInstanceLeaf());
  EXPECT_FALSE(QueryInfo(3).isInstanceLeaf());
  EXPECT_FALSE(QueryInfo(4).isInstanceLeaf());
}

TEST(ClassInfo, TellsThatMemoryIsExhausted) {
  utFailAllocation(1);
  EXPECT_THROW(new PlainInfo, bedrock::core::except::bad_alloc);
}

}  // namespace
}  // namespace ruvo
