#include <stdexcept>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

using factory::basic::BindingRegistry;

class HostObjectTest : public RuvoTest {
 protected:
  Class& mClass = addClass("X");
  Native mNative;
};

TEST_F(HostObjectTest, EndsWithItsLastHolder) {
  std::vector<void*> ended;
  infoOf(mClass).onDestroy = [&](void* id) { ended.push_back(id); };
  RVOInterfacePtr first = object(mClass, mNative);
  RVOInterfacePtr second = first;
  hx::ArrayPtr array(boxInterface(first, mClass.getFullName()));
  first = RVOInterfacePtr();
  second = RVOInterfacePtr();
  EXPECT_TRUE(ended.empty());
  array.reset();
  EXPECT_EQ(ended, std::vector<void*>{mNative.mutableId()});
}

TEST_F(HostObjectTest, IsStillFoundWhileItsClassEndsIt) {
  bool isFound = false;
  infoOf(mClass).onDestroy = [&](void* id) { isFound = BindingRegistry::find(id) != nullptr; };
  object(mClass, mNative);
  EXPECT_TRUE(isFound);
}

TEST_F(HostObjectTest, EndsQuietlyWhenItsClassFails) {
  infoOf(mClass).onDestroy = [](void*) { throw std::runtime_error("failure"); };
  object(mClass, mNative);
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), nullptr);
}

TEST_F(HostObjectTest, EndsByTheClassToWhichItWasNarrowed) {
  Class& derived = addClass("Derived", [this](Definition& x) { x.base(full("X")); });
  int ends = 0;
  infoOf(derived).onDestroy = [&](void*) { ++ends; };
  RVOInterfacePtr known = object(mClass, mNative);
  object(derived, mNative);
  known = RVOInterfacePtr();
  EXPECT_EQ(ends, 1);
}

TEST_F(HostObjectTest, KeepsTheHostsWord) {
  const RVOInterfacePtr known = object(mClass, mNative);
  EXPECT_EQ(known->getHostData(), nullptr);
  int word = 0;
  known->setHostData(&word);
  EXPECT_EQ(known->getHostData(), &word);
}

TEST_F(HostObjectTest, GivesItsOnePointerUnderEveryName) {
  const RVOInterfacePtr known = object(mClass, mNative);
  EXPECT_EQ(known->getBoundPointer(InternedName("K7Q.ClassObject")), mNative.mutableId());
  EXPECT_EQ(known->getBoundPointer(InternedName("logical scalar")), mNative.mutableId());
}

TEST_F(HostObjectTest, IsReadFromAnArray) {
  const RVOInterfacePtr known = object(mClass, mNative);
  const hx::ArrayPtr array(boxInterface(known, mClass.getFullName()));
  EXPECT_EQ(omGetArrayElement(array.get(), 0), known);
  EXPECT_EQ(rvoiGetArrayElement(array.get(), 0), known);
  EXPECT_EQ(known->references(), 2);
}

TEST_F(HostObjectTest, BoxOfNoneIsEmptyAndKeepsTheClass) {
  const hx::ArrayPtr array(boxInterface(nullptr, mClass.getFullName()));
  EXPECT_EQ(hx::hxGetNumberOfElements(array.get()), 0U);
  EXPECT_EQ(hx::hxGetClassId(array.get()), hx::hxObject);
  EXPECT_STREQ(hx::hxGetClassName(array.get()), full("X").c_str());
}

TEST_F(HostObjectTest, BoxOfOneIsOneByOne) {
  const RVOInterfacePtr known = object(mClass, mNative);
  const hx::ArrayPtr array(boxInterface(known, mClass.getFullName()));
  EXPECT_EQ(hx::hxGetRows(array.get()), 1U);
  EXPECT_EQ(hx::hxGetColumns(array.get()), 1U);
}

TEST_F(HostObjectTest, NewOneGoesWhenThereIsNoMemoryForItsBox) {
  int ends = 0;
  infoOf(mClass).onDestroy = [&](void*) { ++ends; };
  RVOInterface* made = BindingRegistry::announce(mNative.mutableId(), mClass.getFullName());
  utFailAllocation(1);
  EXPECT_THROW(boxInterface(made, mClass.getFullName()), bedrock::core::except::bad_alloc);
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(BindingRegistry::find(mNative.mutableId()), nullptr);
}

}  // namespace
}  // namespace ruvo::testing
