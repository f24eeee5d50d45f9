#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::factory {
namespace {

using impl::Invoker;
using impl::MethodImpl;
using impl::RuvoConstructor;

RVOMethodSignaturePtr signatureOf(const char* names, const char* result, const char* self,
                                  const std::vector<const char*>& arguments) {
  RVOMethodSignaturePtr signature;
  Invoker::createSignature(names, result, self, arguments, signature);
  return signature;
}

std::unique_ptr<MethodImpl> recordOf(std::uint32_t flags) {
  return std::make_unique<MethodImpl>(InternedName("name"), MethodAttributes(flags), "description");
}

TEST(Signature, HasNoSelfWhereNoneIsGiven) {
  const auto signature = signatureOf("", "void", nullptr, {});
  EXPECT_TRUE(signature->self().empty());
  EXPECT_TRUE(signature->arguments().empty());
  EXPECT_EQ(signature->result(), InternedName("void"));
}

TEST(Signature, KeepsItsTextsAsTheyStand) {
  const auto signature =
      signatureOf(" aName, aBody", "K7Q.Object", "K7Q.Model", {"char vector", "double scalar"});
  EXPECT_STREQ(signature->parameterNames(), " aName, aBody");
  EXPECT_EQ(signature->self(), InternedName("K7Q.Model"));
  ASSERT_EQ(signature->arguments().size(), 2U);
  EXPECT_EQ(signature->arguments()[0], InternedName("char vector"));
  EXPECT_EQ(signature->arguments()[1], InternedName("double scalar"));
}

TEST(Signature, TakesMoreArgumentsThanAnyRecordHasToday) {
  const std::vector<const char*> types(20, "int32 scalar");
  EXPECT_EQ(signatureOf("", "void", nullptr, types)->arguments().size(), 20U);
}

TEST(Signature, TakesNoParameterNames) {
  EXPECT_STREQ(signatureOf(nullptr, "void", nullptr, {})->parameterNames(), "");
}

TEST(Signature, IsSharedByItsCopies) {
  auto first = signatureOf("", "void", nullptr, {"char"});
  RVOMethodSignaturePtr second = first;
  first = RVOMethodSignaturePtr();
  EXPECT_FALSE(first);
  EXPECT_EQ(second->arguments()[0], InternedName("char"));
  const RVOMethodSignaturePtr third = std::move(second);
  EXPECT_FALSE(second);  // NOLINT(bugprone-use-after-move)
  EXPECT_TRUE(third);
}

TEST(Signature, TellsThatMemoryIsExhausted) {
  signatureOf("", "void", nullptr, {"char"});
  RVOMethodSignaturePtr signature;
  const char* const types[] = {"char"};
  utFailAllocation(1);
  EXPECT_THROW(Invoker::createSignature("", "void", nullptr, types, signature),
               bedrock::core::except::bad_alloc);
  EXPECT_FALSE(signature);
}

TEST(Record, AnswersFromItsFlagWord) {
  const auto none = recordOf(0);
  EXPECT_TRUE(none->isLocked());
  EXPECT_TRUE(none->isVisible());
  EXPECT_FALSE(none->isSealed() || none->isStatic() || none->isAbstract() || none->isDestructible());
  EXPECT_FALSE(none->doesMethodOverrideAllSignatures());
  EXPECT_FALSE(recordOf(1)->isLocked());
  EXPECT_FALSE(recordOf(2)->isVisible());
  EXPECT_TRUE(recordOf(4)->isSealed());
  EXPECT_TRUE(recordOf(8)->isStatic());
  EXPECT_TRUE(recordOf(16)->isAbstract());
  EXPECT_TRUE(recordOf(32)->isDestructible());
  EXPECT_TRUE(recordOf(512)->doesMethodOverrideAllSignatures());
}

TEST(Record, TestsTheAccessBitsInTheirOrder) {
  EXPECT_EQ(recordOf(0)->getMemberAccess(), 0);
  EXPECT_EQ(recordOf(64)->getMemberAccess(), 5);
  EXPECT_EQ(recordOf(256)->getMemberAccess(), 2);
  EXPECT_EQ(recordOf(128)->getMemberAccess(), 1);
  EXPECT_EQ(recordOf(64 | 256)->getMemberAccess(), 2);
  EXPECT_EQ(recordOf(64 | 128 | 256)->getMemberAccess(), 1);
}

TEST(Record, HasDefaultsForWhatNobodySays) {
  const auto record = recordOf(0);
  EXPECT_STREQ(record->getDetailedDescription(), "description");
  EXPECT_FALSE(record->isConstructor() || record->isLookupScope() || record->isFirstArgDispatch());
  EXPECT_FALSE(record->isExplicit());
  EXPECT_EQ(record->getExtendedAccess(), 0);
}

TEST(Record, OfAConstructorSaysSo) {
  EXPECT_TRUE(RuvoConstructor(InternedName("X"), MethodAttributes(0), "").isConstructor());
}

TEST(Record, PassesItselfToItsInvoker) {
  const auto record = recordOf(0);
  record->invoker = [](const impl::GeneratedMethod* self, const RVOClient*, std::uint32_t* count,
                       RVOValue* results, int, const RVOValue*) {
    EXPECT_STREQ(self->getDescription(), "description");
    results[0] = RVOValue::ofInt32(7);
    *count = 3;
  };
  std::uint32_t count = 0;
  RVOValue result;
  record->invoke(nullptr, count, &result, 0, nullptr);
  EXPECT_EQ(result.int32(), 7);
  EXPECT_EQ(count, 3U);
}

TEST(Record, TellsThatMemoryIsExhausted) {
  const InternedName name("name");
  utFailAllocation(1);
  EXPECT_THROW(new MethodImpl(name, MethodAttributes(0), ""), bedrock::core::except::bad_alloc);
}

TEST(FunctionInfo, IsARecordWithoutDescription) {
  const FunctionInfo function(InternedName("MetaPackage"), MethodAttributes(8));
  EXPECT_EQ(function.getName(), InternedName("MetaPackage"));
  EXPECT_STREQ(function.getDescription(), "");
  EXPECT_TRUE(function.isStatic());
}

TEST(MethodAttributes, AnswersFromItsWord) {
  EXPECT_TRUE(MethodAttributes(0).isLocked());
  EXPECT_FALSE(MethodAttributes(1).isLocked());
  EXPECT_TRUE(MethodAttributes(512).doesMethodOverrideAllSignatures());
  EXPECT_FALSE(MethodAttributes(4096).doesMethodOverrideAllSignatures());
}

TEST(NativeFunction, GivesBackWhatItWasMadeOf) {
  struct Adder {
    int base;
    int add(int number) const { return base + number; }
  };
  using Free = int (*)(int);
  const Free twice = [](int number) { return number * 2; };
  EXPECT_EQ(impl::NativeFunction::of(twice).as<Free>()(21), 42);
  const auto member = impl::NativeFunction::ofMember(&Adder::add).asMember<int (Adder::*)(int) const>();
  EXPECT_EQ((Adder{40}.*member)(2), 42);
}

TEST(ValidateSelfPointer, AcceptsAnObject) {
  int object = 0;
  impl::validateSelfPointer(&object);
  impl::validateSelfPointer(&object, *recordOf(0));
}

TEST(ValidateSelfPointer, RefusesNoneAndNamesTheRecord) {
  const auto record = recordOf(0);
  EXPECT_EQ(testing::errorOf<K7Q::WrongValue>([&] { impl::validateSelfPointer(nullptr, *record); }),
            "method 'name': expected an object to call it on, got an empty value");
  EXPECT_EQ(testing::errorOf<K7Q::WrongValue>([] { impl::validateSelfPointer(nullptr); }),
            "the method: expected an object to call it on, got an empty value");
}

}  // namespace
}  // namespace ruvo::factory
