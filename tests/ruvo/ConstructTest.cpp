#include <stdexcept>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

using factory::basic::BindingRegistry;

class ConstructTest : public RuvoTest {
 protected:
  /// A constructor that binds the test's native object.
  Body binding() {
    return [this](std::uint32_t& count, RVOValue* results, int, const RVOValue*) {
      BindingRegistry::announceForConstructor(mNative.mutableId(), InternedName(), results[0].array(), true);
      if (count == 0) count = 1;
    };
  }
  Native mNative;
};

TEST_F(ConstructTest, GivesTheObjectThatItsConstructorBound) {
  Class& cls = addClass("X", [this](Definition& x) { x.constructor({}, binding()); });
  const RVOInterfacePtr made = construct(cls, {});
  EXPECT_EQ(made->getBoundPointer(InternedName()), mNative.mutableId());
  EXPECT_EQ(made->getClass(), &cls);
  EXPECT_EQ(made->references(), 1);
}

TEST_F(ConstructTest, ConstructorGetsTheEmptyObjectInResultSlotZero) {
  Class& cls = addClass("X", [this](Definition& x) {
    x.constructor({"char vector"}, [this](std::uint32_t& count, RVOValue* results, int argumentCount,
                                          const RVOValue* slots) {
      EXPECT_EQ(count, 0U);
      EXPECT_EQ(argumentCount, 1);
      EXPECT_EQ(hx::get_ustring(slots[0].array()), u"name");
      EXPECT_EQ(hx::hxGetNumberOfElements(results[0].array()), 1U);
      const RVOInterfacePtr object = rvoiGetArrayElement(results[0].array(), 0);
      EXPECT_EQ(object->getBoundPointer(InternedName()), nullptr);
      BindingRegistry::announceForConstructor(mNative.mutableId(), InternedName(), results[0].array(), true);
    });
  });
  construct(cls, Arguments{text(u"name")});
}

TEST_F(ConstructTest, DropsEverythingWhenTheConstructorFails) {
  Class& cls = addClass("X", [](Definition& x) {
    x.constructor({"char"},
                  [](std::uint32_t&, RVOValue*, int, const RVOValue*) { throw std::logic_error("native"); });
  });
  infoOf(cls).onDestroy = [](void*) { ADD_FAILURE() << "nothing was bound"; };
  EXPECT_EQ(errorOf<std::logic_error>([&] { construct(cls, Arguments{text(u"a")}); }), "native");
}

TEST_F(ConstructTest, EndsWhatWasBoundWhenTheConstructorFailsLater) {
  int ends = 0;
  Class& cls = addClass("X", [this](Definition& x) {
    x.constructor({}, [this](std::uint32_t& count, RVOValue* results, int, const RVOValue* slots) {
      binding()(count, results, 0, slots);
      throw std::logic_error("native");
    });
  });
  infoOf(cls).onDestroy = [&](void*) { ++ends; };
  EXPECT_EQ(errorOf<std::logic_error>([&] { construct(cls, {}); }), "native");
  EXPECT_EQ(ends, 1);
}

TEST_F(ConstructTest, RefusesAnObjectThatWasNotBound) {
  Class& cls = addClass("X", [](Definition& x) { x.constructor({}, {}); });
  EXPECT_EQ(errorOf<K7Q::Exception>([&] { construct(cls, {}); }),
            "X: the constructor has not bound an object; it must bind one");
}

TEST_F(ConstructTest, AbstractClassSaysSo) {
  Class& cls = addClass("X", [](Definition& x) { x.staticMethod("f", {}, {}); });
  EXPECT_EQ(errorOf<K7Q::WrongType>([&] { construct(cls, {}); }),
            "class '" + full("X") + "' is abstract: it has no constructor; none of its subclasses has one");
}

TEST_F(ConstructTest, AbstractClassNamesThoseBelowIt) {
  Class& cls = addClass("X", [](Definition& x) { x.staticMethod("f", {}, {}); });
  addClass("Y", [this](Definition& x) {
    x.base(full("X"));
    x.constructor({}, {});
  });
  addClass("Z", [this](Definition& x) { x.base(full("X")); });
  EXPECT_EQ(errorOf<K7Q::WrongType>([&] { construct(cls, {}); }),
            "class '" + full("X") +
                "' is abstract: it has no constructor; construct one of its subclasses: " + full("Y"));
}

TEST_F(ConstructTest, ListsTheConstructorsThereAre) {
  Class& model = addClass("Model");
  Class& cls = addClass("Runnable", [this](Definition& x) {
    x.constructor({full("Model").c_str()}, {});
    x.constructor({full("Model").c_str(), "char vector", "char vector"}, {}, " aSymbol, aName");
  });
  const auto object = RuvoTest::object(model, mNative);
  const std::string type = full("Model");
  EXPECT_EQ(errorOf<K7Q::WrongType>([&] {
              construct(cls, Arguments{testing::object(object), integer(1)});
            }),
            "Runnable: no constructor takes (" + type + ", int32 scalar); there are\n    Runnable(" + type +
                ")\n    Runnable(" + type + ", char vector aSymbol, char vector aName)");
}

TEST_F(ConstructTest, AllocationThatFailsLeavesNothing) {
  bool isCalled = false;
  Class& cls = addClass("X", [&](Definition& x) {
    x.constructor({"char"}, [&](std::uint32_t&, RVOValue*, int, const RVOValue*) { isCalled = true; });
  });
  const Arguments arguments{text(u"a")};
  cls.constructors();
  for (unsigned long nth = 1; nth <= 3; ++nth) {
    utFailAllocation(nth);
    EXPECT_THROW(construct(cls, arguments), bedrock::core::except::bad_alloc) << nth;
  }
  EXPECT_FALSE(isCalled);
}

}  // namespace
}  // namespace ruvo::testing
