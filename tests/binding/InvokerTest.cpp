#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tarvelon/binding/Conversion.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/support/Host.h"

namespace {

using host::RVOInterfacePtr;
using ruvo::RVOValue;

struct DestroyArray {
  void operator()(hx::hxArray* array) const { hx::hxDestroyArray(array); }
};
using ArrayPtr = std::unique_ptr<hx::hxArray, DestroyArray>;

/// Calls records directly, with slots that a host would never pass, because it checks its arguments.
class Invoker : public testing::Test {
 protected:
  void SetUp() override {
    host::openModule();
    mModel = host::newModel();
  }

  static const ruvo::RVOMethodInfo& record(const char* className, std::string_view method,
                                           std::size_t index = 0) {
    for (const auto* candidate : host::cls(className).methods()) {
      if (candidate->getName().view() == method && index-- == 0) return *candidate;
    }
    throw K7Q::Exception(std::string("no record ") + std::string(method));
  }
  static ArrayPtr box(const RVOInterfacePtr& object) {
    return ArrayPtr(ruvo::boxInterface(object, object->getClass()->getFullName()));
  }
  static ArrayPtr empty() { return ArrayPtr(hx::hxCreateObjectMatrix(0, 0, "K7Q.Object")); }
  RVOInterfacePtr make(const char* className) { return host::make(className, {host::object(mModel)}); }
  static RVOInterfacePtr literal(const char* name) {
    return RVOInterfacePtr(host::callStatic("variant.BindingTimeKind", name).object());
  }
  RVOInterfacePtr mModel;
};

TEST_F(Invoker, RaisesAResultCountOfZeroToOne) {
  const auto self = box(make("common.Package"));
  const RVOValue slot(self.get());
  RVOValue result;
  std::uint32_t count = 0;
  record("common.Package", "isvalid").invoke(nullptr, count, &result, 1, &slot);
  EXPECT_EQ(count, 1U);
  count = 3;
  record("common.Package", "isvalid").invoke(nullptr, count, &result, 1, &slot);
  EXPECT_EQ(count, 3U);
}

TEST_F(Invoker, LeavesTheCountOfAVoidMethodAlone) {
  const auto self = box(make("common.Package"));
  const RVOValue slot(self.get());
  std::uint32_t count = 0;
  record("common.Package", "destroy").invoke(nullptr, count, nullptr, 1, &slot);
  EXPECT_EQ(count, 0U);
}

TEST_F(Invoker, EmptySelfReachesIsvalid) {
  const auto self = empty();
  const RVOValue slot(self.get());
  RVOValue result = RVOValue::ofLogical(true);
  std::uint32_t count = 0;
  record("common.Package", "isvalid").invoke(nullptr, count, &result, 1, &slot);
  EXPECT_FALSE(result.logical());
}

TEST_F(Invoker, EmptySelfRaisesTheNullTextElsewhere) {
  const auto self = empty();
  const RVOValue slot(self.get());
  RVOValue result;
  std::uint32_t count = 0;
  const auto text =
      host::raised([&] { record("common.Package", "destroy").invoke(nullptr, count, &result, 1, &slot); });
  EXPECT_EQ(text.find("Assertion failed: Cannot access NULL ref. Use isValid() before calling methods at "),
            0U)
      << text;
  EXPECT_EQ(count, 0U);
}

TEST_F(Invoker, ReadsElementZeroOfSeveralObjects) {
  const auto first = make("common.Package");
  ArrayPtr two(hx::hxCreateObjectMatrix(1, 2, "Tarvelon.metamodel.arplatform.common.Package"));
  hx::hxSetElement(two.get(), 0, first);
  hx::hxSetElement(two.get(), 1, make("common.Package"));
  const RVOValue slot(two.get());
  RVOValue result;
  std::uint32_t count = 0;
  record("common.Package", "cast").invoke(nullptr, count, &result, 1, &slot);
  const ArrayPtr owned(result.array());
  EXPECT_EQ(hx::hxGetElement(owned.get(), 0), static_cast<hx::Element*>(first));
}

TEST_F(Invoker, LogicalArgumentOfTwoIsTrue) {
  EXPECT_TRUE(binding::Conversion<K7Q::Boolean>::fromSlot(RVOValue::ofWord(2)));
  EXPECT_FALSE(binding::Conversion<K7Q::Boolean>::fromSlot(RVOValue::ofWord(0)));
}

TEST_F(Invoker, NamesTheResultByTheObjectsOwnClass) {
  const auto sdx = make("common.Sdx");
  host::set(sdx, "sdx", host::object(make("common.Package")));
  EXPECT_EQ(host::className(host::getObject(sdx, "sdx")), "Tarvelon.metamodel.arplatform.common.Package");
}

TEST_F(Invoker, TheSameObjectTwiceIsOneHostObjectWithOneReference) {
  const auto sdx = make("common.Sdx");
  const auto* native = [&] {
    const auto package = make("common.Package");
    host::set(sdx, "sdx", host::object(package));
    return K7Q::DeviantRegistry::getVariantInfo(package->getBoundPointer({})).object;
  }();
  const auto first = host::getObject(sdx, "sdx");
  const auto count = native->numRef();
  const auto second = host::getObject(sdx, "sdx");
  EXPECT_EQ(first, second);
  EXPECT_EQ(native->numRef(), count);
}

TEST_F(Invoker, EmptyEnumerationArgumentIsTheLiteralZero) {
  const auto self = empty();
  const RVOValue slot(self.get());
  RVOValue result;
  std::uint32_t count = 0;
  record("variant.BindingTimeKind", "toString").invoke(nullptr, count, &result, 1, &slot);
  const ArrayPtr text(result.array());
  EXPECT_EQ(hx::hxGetText(text.get()), u"SystemDesignTime");
  record("variant.BindingTimeKind", "isvalid").invoke(nullptr, count, &result, 1, &slot);
  EXPECT_TRUE(result.logical());
}

TEST_F(Invoker, EnumerationArgumentSaysWhetherAValueWasPassed) {
  const auto nothing = empty();
  const auto value = box(literal("CodeGenerationTime"));
  using Enumeration = binding::Conversion<binding::AnyEnumeration>;
  EXPECT_EQ(Enumeration::fromSlot(RVOValue(nothing.get())).wasPassed, 0);
  EXPECT_EQ(Enumeration::fromSlot(RVOValue(value.get())).wasPassed, 1);
  EXPECT_NE(Enumeration::fromSlot(RVOValue(value.get())).value, 0);
}

TEST_F(Invoker, ComparesEnumerationsByNumberWhateverTheirClass) {
  const auto packaging =
      RVOInterfacePtr(host::callStatic("common.ArxmlFilePackagingKind", "SingleFile").object());
  const auto left = box(packaging);
  const auto right = box(literal("CodeGenerationTime"));
  const std::array<RVOValue, 2> slots{RVOValue(left.get()), RVOValue(right.get())};
  RVOValue result;
  std::uint32_t count = 0;
  record("variant.BindingTimeKind", "eq").invoke(nullptr, count, &result, 2, slots.data());
  EXPECT_TRUE(result.logical());
}

TEST_F(Invoker, FailedAllocationsLeaveNothingBehind) {
  // Defines the class before, so that only the allocations of the call itself are tested.
  host::getText(host::make("common.Package", {host::object(mModel), host::text(u"P")}), "Name");
  const auto arrays = hx::hxLiveArrays();
  const auto bindings = ruvo::factory::basic::BindingRegistry::size();
  bool isDone = false;
  for (unsigned long n = 1; !isDone; ++n) {
    ASSERT_LT(n, 100U) << "it never succeeds";
    utFailAllocation(n);
    try {
      const auto package = host::make("common.Package", {host::object(mModel), host::text(u"P")});
      host::getText(package, "Name");
      isDone = true;
    } catch (const std::bad_alloc&) {
    }
    utFailAllocation(0);
    ASSERT_EQ(hx::hxLiveArrays(), arrays) << n;
    ASSERT_EQ(ruvo::factory::basic::BindingRegistry::size(), bindings) << n;
  }
}

}  // namespace
