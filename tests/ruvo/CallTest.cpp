#include <stdexcept>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tests/ruvo/Fixture.h"

namespace ruvo::testing {
namespace {

class CallTest : public RuvoTest {
 protected:
  Native mNative;
};

TEST_F(CallTest, InstanceMethodGetsSelfInSlotZero) {
  Class& cls = addClass("X", [this](Definition& x) {
    x.method("f", {"int32 scalar"},
             [this](std::uint32_t& count, RVOValue*, int argumentCount, const RVOValue* slots) {
               EXPECT_EQ(count, 0U);
               ASSERT_EQ(argumentCount, 2);
               EXPECT_EQ(hx::hxGetNumberOfElements(slots[0].array()), 1U);
               EXPECT_STREQ(hx::hxGetClassName(slots[0].array()), full("X").c_str());
               EXPECT_EQ(omGetArrayElement(slots[0].array(), 0)->getBoundPointer(InternedName()),
                         mNative.mutableId());
               EXPECT_EQ(slots[1].int32(), -5);
             });
  });
  EXPECT_TRUE(call(object(cls, mNative), "f", Arguments{integer(-5)}).isVoid());
}

TEST_F(CallTest, StaticMethodIsCalledOnTheClassAndOnAnObject) {
  Class& cls = addClass("X", [](Definition& x) {
    x.staticMethod(
        "f", {"double scalar"},
        [](std::uint32_t& count, RVOValue* results, int argumentCount, const RVOValue* slots) {
          EXPECT_EQ(argumentCount, 1);
          giveInt32(count, results, static_cast<int>(slots[0].number()));
        },
        0, "int32 scalar");
  });
  EXPECT_EQ(callStatic(cls, "f", Arguments{number(3)}).slot().int32(), 3);
  EXPECT_EQ(call(object(cls, mNative), "f", Arguments{number(4)}).slot().int32(), 4);
}

TEST_F(CallTest, SelfAsArgumentMethodIsCalledBothWays) {
  Class& cls = addClass("X", [this](Definition& x) {
    x.selfAsArgument("eq", {full("X").c_str(), full("X").c_str()},
                     [](std::uint32_t& count, RVOValue* results, int argumentCount, const RVOValue* slots) {
                       EXPECT_EQ(argumentCount, 2);
                       const bool isSame =
                           omGetArrayElement(slots[0].array(), 0) == omGetArrayElement(slots[1].array(), 0);
                       giveInt32(count, results, isSame ? 1 : 0);
                     });
  });
  Native otherNative;
  const auto one = object(cls, mNative);
  const auto other = object(cls, otherNative);
  using testing::object;
  EXPECT_EQ(call(one, "eq", Arguments{object(one)}).slot().int32(), 1);
  EXPECT_EQ(call(one, "eq", Arguments{object(other)}).slot().int32(), 0);
  EXPECT_EQ(callStatic(cls, "eq", Arguments{object(one), object(one)}).slot().int32(), 1);
  EXPECT_THROW(call(one, "eq", Arguments{object(one), object(one)}), K7Q::WrongType);
}

TEST_F(CallTest, InstanceMethodIsCalledOnTheClassWithItsObjectFirst) {
  Class& cls =
      addClass("X", [](Definition& x) { x.method("f", {"char"}, giving(1), 0, "", "int32 scalar"); });
  const auto self = object(cls, mNative);
  EXPECT_EQ(callStatic(cls, "f", Arguments{testing::object(self), text(u"a")}).slot().int32(), 1);
  EXPECT_THROW(callStatic(cls, "f", Arguments{text(u"a")}), K7Q::WrongType);
}

TEST_F(CallTest, EmptySelfReachesTheMethod) {
  Class& cls = addClass("X", [](Definition& x) {
    x.method(
        "isvalid", {},
        [](std::uint32_t& count, RVOValue* results, int, const RVOValue* slots) {
          giveInt32(count, results, hx::hxGetNumberOfElements(slots[0].array()) != 0 ? 1 : 0);
        },
        0, "", "logical scalar");
  });
  EXPECT_FALSE(callStatic(cls, "isvalid", Arguments{HostValue()}).slot().logical());
}

TEST_F(CallTest, ResultHasTheTypeThatTheRecordDeclares) {
  Class& cls = addClass("X", [](Definition& x) {
    const auto giveText = [](std::uint32_t& count, RVOValue* results, int, const RVOValue*) {
      giveArray(count, results, hx::hxCreateString_UTF16(u"text"));
    };
    x.staticMethod("text", {}, giveText, 0, "char vector");
    x.staticMethod("nothing", {}, giving(1), 0, "void");
    x.staticMethod("forgotten", {}, {}, 0, "int32 scalar");
  });
  const HostResult result = callStatic(cls, "text", {});
  EXPECT_EQ(result.type(), InternedName("char vector"));
  EXPECT_TRUE(result.isArray());
  EXPECT_EQ(hx::get_ustring(result.slot().array()), u"text");
  EXPECT_TRUE(callStatic(cls, "nothing", {}).isVoid());
  EXPECT_TRUE(callStatic(cls, "forgotten", {}).isVoid());
}

TEST_F(CallTest, ObjectResultIsHeldByTheResult) {
  Class& cls = addClass("X", [this](Definition& x) {
    x.staticMethod(
        "make", {},
        [this](std::uint32_t& count, RVOValue* results, int, const RVOValue*) {
          giveArray(count, results, boxInterface(object(Class::get(full("X")), mNative), InternedName("X")));
        },
        0, full("X").c_str());
  });
  {
    const HostResult result = callStatic(cls, "make", {});
    ASSERT_NE(result.object(), nullptr);
    EXPECT_EQ(result.object()->references(), 1);
  }
  EXPECT_EQ(factory::basic::BindingRegistry::find(mNative.mutableId()), nullptr);
}

TEST_F(CallTest, ExceptionPassesThroughUnchangedAndLeavesNothing) {
  Class& cls = addClass("X", [](Definition& x) {
    x.method("f", {"char", "K7Q.ImmutableObject"},
             [](std::uint32_t&, RVOValue*, int, const RVOValue*) { throw std::logic_error("native text"); });
  });
  const auto self = object(cls, mNative);
  EXPECT_EQ(errorOf<std::logic_error>([&] {
              call(self, "f", Arguments{text(u"a"), testing::object(self)});
            }),
            "native text");
  EXPECT_EQ(self->references(), 1);
}

TEST_F(CallTest, AllocationThatFailsForASlotLeavesNothing) {
  bool isCalled = false;
  Class& cls = addClass("X", [&](Definition& x) {
    x.staticMethod("f", {"char", "char", "char"},
                   [&](std::uint32_t&, RVOValue*, int, const RVOValue*) { isCalled = true; });
  });
  const Arguments texts{text(u"a"), text(u"b"), text(u"c")};
  cls.findMethods("f");
  for (unsigned long nth = 1; nth <= 3; ++nth) {
    utFailAllocation(nth);
    EXPECT_THROW(callStatic(cls, "f", texts), bedrock::core::except::bad_alloc);
  }
  EXPECT_FALSE(isCalled);
}

TEST_F(CallTest, TakesMoreArgumentsThanAnyRecordHasToday) {
  Class& cls = addClass("X", [](Definition& x) {
    x.staticMethod(
        "f",
        {"char", "char", "char", "char", "char", "char", "char", "char", "char", "char", "char",
         "double scalar"},
        [](std::uint32_t& count, RVOValue* results, int argumentCount, const RVOValue* slots) {
          giveInt32(count, results, argumentCount + static_cast<int>(slots[11].number()));
        },
        0, "int32 scalar");
  });
  std::vector<HostValue> arguments(11, text(u"a"));
  arguments.push_back(number(30));
  EXPECT_EQ(callStatic(cls, "f", arguments).slot().int32(), 42);
}

TEST_F(CallTest, UnknownMethodIsNamedWithTheNearest) {
  Class& cls = addClass("X", [](Definition& x) { x.staticMethod("MetaClass", {}, {}); });
  const std::string text = "class '" + full("X") + "' has no method 'MetaClas'; did you mean 'MetaClass'?";
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { callStatic(cls, "MetaClas", {}); }), text);
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { call(object(cls, mNative), "MetaClas", {}); }), text);
}

class FunctionTest : public RuvoTest {
 protected:
  void addFunction(const char* name, const std::vector<const char*>& types, std::int32_t number) {
    auto* function = new factory::FunctionInfo(InternedName(name), factory::MethodAttributes(8));
    factory::impl::Invoker::createSignature("", "int32 scalar", nullptr, types, function->signature());
    function->native.thisAdjustment = number;
    function->invoker = [](const factory::impl::GeneratedMethod* record, const RVOClient*,
                           std::uint32_t* count, RVOValue* results, int, const RVOValue*) {
      giveInt32(*count, results, static_cast<std::int32_t>(record->native.thisAdjustment));
    };
    mPackage.addFunction(function);
  }
};

TEST_F(FunctionTest, IsChosenByItsArguments) {
  addFunction("f", {}, 1);
  addFunction("f", {"char"}, 2);
  EXPECT_EQ(callFunction(mPackage, "f", {}).slot().int32(), 1);
  EXPECT_EQ(callFunction(mPackage, "f", Arguments{text(u"a")}).slot().int32(), 2);
}

TEST_F(FunctionTest, IsNamedByItsPackageInErrors) {
  addFunction("MetaPackage", {}, 1);
  EXPECT_EQ(errorOf<K7Q::UnknownName>([&] { callFunction(mPackage, "MetaPackge", {}); }),
            "package '" + mName + "' has no function 'MetaPackge'; did you mean 'MetaPackage'?");
  EXPECT_EQ(errorOf<K7Q::WrongType>([&] { callFunction(mPackage, "MetaPackage", Arguments{integer(1)}); }),
            mName + ".MetaPackage: no signature takes (int32 scalar); there is\n    MetaPackage()");
}

}  // namespace
}  // namespace ruvo::testing
