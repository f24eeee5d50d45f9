#include <functional>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/Property.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace ruvo {
namespace {

class PlainProperty final : public factory::impl::PropertyImplBase {
 public:
  explicit PlainProperty(std::uint32_t attributes)
      : PropertyImplBase("plain", "A plain property", factory::PropertyAttributes(attributes)) {}
  const InternedName& getDataType() const override { return mType; }
  int getMemberGetAccess() const override { return 0; }
  int getMemberSetAccess() const override { return 0; }
  RVOValue getValue(RVOInterface* /*object*/) override { return RVOValue(); }
  void setValue(RVOInterface* /*object*/, RVOValue /*value*/) override {}
  void releaseValue(RVOInterface* /*object*/, RVOValue /*value*/) override {}

 private:
  InternedName mType;
};

/// The predicates in the order of their virtual slots, and the bit that each reads.
using Predicate = bool (RVOPropInfo::*)() const;
const std::vector<std::pair<Predicate, std::uint32_t>> kPredicates = {
    {&RVOPropInfo::predicate12, 1},    {&RVOPropInfo::predicate14, 2},     {&RVOPropInfo::predicate15, 4},
    {&RVOPropInfo::predicate16, 8},    {&RVOPropInfo::predicate17, 16},    {&RVOPropInfo::predicate18, 32},
    {&RVOPropInfo::predicate19, 64},   {&RVOPropInfo::predicate21, 128},   {&RVOPropInfo::predicate22, 256},
    {&RVOPropInfo::predicate23, 512},  {&RVOPropInfo::predicate24, 1024},  {&RVOPropInfo::predicate28, 4096},
    {&RVOPropInfo::predicate29, 8192}, {&RVOPropInfo::predicate30, 16384}, {&RVOPropInfo::predicate35, 32768},
};

TEST(Property, HasNameDescriptionAndAttributes) {
  const PlainProperty property(2048);
  EXPECT_STREQ(property.getName(), "plain");
  EXPECT_STREQ(property.getDescription(), "A plain property");
  EXPECT_STREQ(property.getDetailedDescription(), "A plain property");
  EXPECT_EQ(property.attributeWord(), 2048U);
}

TEST(Property, AnswersEachPredicateFromItsOwnBit) {
  for (const auto& [predicate, bit] : kPredicates) {
    EXPECT_FALSE((PlainProperty(0).*predicate)()) << bit;
    EXPECT_TRUE((PlainProperty(bit).*predicate)()) << bit;
    EXPECT_FALSE((PlainProperty(~bit).*predicate)()) << bit;
  }
}

TEST(Property, TurnsTheOnePredicateRound) {
  EXPECT_TRUE(PlainProperty(0).predicate25());
  EXPECT_FALSE(PlainProperty(2048).predicate25());
}

TEST(Property, HasDefaultsForWhatNobodySays) {
  PlainProperty property(0);
  EXPECT_EQ(property.getExtendedGetAccess(), 0);
  EXPECT_EQ(property.getExtendedSetAccess(), 0);
  EXPECT_EQ(property.getPartialMatchPriority(), 0);
  EXPECT_FALSE(property.hasInternalDefault() || property.isWarnOnCopyError() || property.isNeverAmbiguous());
  EXPECT_FALSE(property.isWeakReference());
  EXPECT_TRUE(property.isDestructible());
  EXPECT_EQ(property.getInterfaces(nullptr, nullptr), nullptr);
  EXPECT_EQ(property.getZtArrays(nullptr, nullptr), nullptr);
}

TEST(Property, TellsThatMemoryIsExhausted) {
  utFailAllocation(1);
  EXPECT_THROW(new PlainProperty(0), bedrock::core::except::bad_alloc);
}

}  // namespace
}  // namespace ruvo
