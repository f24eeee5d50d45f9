#include <functional>
#include <new>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/platform/k7q/handles/ModelFactory.h"
#include "tests/factory/Support.h"

using namespace factory;

namespace {

/// A model whose behaviour is set by the test.
class TestModel final : public K7Q::NSInterface::ModelIntf {
 public:
  TestModel() { ++sLive; }
  void addRef() const override { ++mReferences; }
  void release() const override {
    if (--mReferences == 0) delete this;
  }
  int numRef() const override { return mReferences; }
  const ruvo::InternedName& getRuvoName(bool) const override {
    static const ruvo::InternedName name("K7Q.Model");
    return name;
  }
  K7Q::ImmutableType getMetaType(K7Q::Deviant) const override { return {}; }
  bool isValid(K7Q::Deviant) const override { return mIsOpen; }
  void setUri(K7Q::Deviant deviant, std::u16string_view uri) override {
    if (sOnSetUri) sOnSetUri(*this, deviant, std::u16string(uri));
    mUri = uri;
  }
  std::u16string getUri(K7Q::Deviant) const override { return mUri; }
  void close() override {
    mIsOpen = false;
    K7Q::ModelCache::instance().unbind(this);
  }

  static std::function<void(TestModel&, K7Q::Deviant, const std::u16string&)> sOnSetUri;
  static int sLive;

 private:
  ~TestModel() override { --sLive; }
  bool mIsOpen = true;
  std::u16string mUri;
  mutable int mReferences = 0;
};
std::function<void(TestModel&, K7Q::Deviant, const std::u16string&)> TestModel::sOnSetUri;
int TestModel::sLive = 0;

constexpr K7Q::Deviant kDeviant{6};

/// Each test sets the model factory and cleans up, because all tests may run in one process.
class CreateNewModel : public testing::Test {
 protected:
  void SetUp() override { ZtInitialize_mm_arplatform_mi(); }
  void TearDown() override {
    for (const auto& model : K7Q::ModelCache::instance().models()) model.getModelInterface()->close();
    TestModel::sOnSetUri = nullptr;
  }
  static RVOInterfacePtr make() {
    return RVOInterfacePtr(host::callStatic("Factory", "createNewModel").object());
  }
  static void useTestModels() {
    K7Q::setModelFactory([](const std::u16string&) -> K7Q::Model { return {new TestModel, kDeviant}; });
  }
  static std::string uriOf(const RVOInterfacePtr& model) { return host::textOf(host::call(model, "getUri")); }
  static std::size_t bound() { return K7Q::ModelCache::instance().models().size(); }
};

TEST_F(CreateNewModel, GivesEachModelAUriOfItsOwn) {
  const auto first = make();
  const auto second = make();
  const auto third = make();
  EXPECT_EQ(uriOf(first), "untitled");
  EXPECT_EQ(uriOf(second), "untitled1");
  EXPECT_EQ(uriOf(third), "untitled2");
  EXPECT_NE(first, second);
}

TEST_F(CreateNewModel, GivesTheUriOfAClosedModelAgain) {
  const auto first = make();
  const auto second = make();
  host::call(first, "close");
  EXPECT_EQ(uriOf(make()), "untitled");
  EXPECT_EQ(uriOf(second), "untitled1");
}

TEST_F(CreateNewModel, PassesOverAUriThatAScriptGave) {
  const auto first = make();
  host::call(first, "setUri", {host::text(u"untitled1")});
  EXPECT_EQ(uriOf(make()), "untitled");
  EXPECT_EQ(uriOf(make()), "untitled2");
}

TEST_F(CreateNewModel, BindsTheModelWhichTheCacheHolds) {
  const void* native = nullptr;
  {
    const auto model = make();
    native = nativeOf(model).object;
  }
  const auto found = K7Q::ModelCache::instance().find(u"untitled");
  ASSERT_FALSE(found.isNull());
  EXPECT_EQ(static_cast<K7Q::ReferenceCountingIntf*>(found.getInterface()), native);
  EXPECT_TRUE(found.isValid());
}

TEST_F(CreateNewModel, LeavesAModelThatWasMadeWithoutItUnbound) {
  const auto model = host::newModel();
  EXPECT_EQ(bound(), 0U);
}

TEST_F(CreateNewModel, AsksForAModelOfTheUntitledName) {
  static std::u16string asked;
  K7Q::setModelFactory([](const std::u16string& name) -> K7Q::Model {
    asked = name;
    return {new TestModel, kDeviant};
  });
  make();
  EXPECT_EQ(asked, K7Q::ModelCache::UNTITLED);
  EXPECT_EQ(asked, u"untitled");
}

TEST_F(CreateNewModel, SetsTheUriUnderTheModelsDeviantWithAssertionsOff) {
  useTestModels();
  const Assertions on(true);
  int calls = 0;
  TestModel::sOnSetUri = [&](TestModel& model, K7Q::Deviant deviant, const std::u16string& uri) {
    ++calls;
    EXPECT_EQ(deviant, kDeviant);
    EXPECT_EQ(uri, u"untitled");
    EXPECT_FALSE(K7Q::DeviantAssertions::sAssertionsEnabled);
    EXPECT_TRUE(K7Q::DeviantAssertions::assertWritable({K7Q::Deviant::kReadOnly}, &model));
    EXPECT_EQ(bound(), 0U);
  };
  const auto model = make();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(bound(), 1U);
  EXPECT_EQ(nativeOf(model).deviant, kDeviant);
}

/// Checks that `action` leaves the assertion switch unchanged, for both states.
template <class Action>
void expectSwitchRestored(Action action) {
  for (const bool before : {true, false}) {
    const Assertions set(before);
    action();
    EXPECT_EQ(K7Q::DeviantAssertions::sAssertionsEnabled, before);
  }
}

TEST_F(CreateNewModel, RestoresTheAssertionSetting) {
  expectSwitchRestored([] { make(); });
}

TEST_F(CreateNewModel, RestoresTheAssertionSettingWhenNoModelIsMade) {
  K7Q::setModelFactory([](const std::u16string&) -> K7Q::Model { throw K7Q::WrongValue("no model today"); });
  expectSwitchRestored([] { EXPECT_EQ(raised(make), "no model today"); });
  EXPECT_EQ(bound(), 0U);
}

TEST_F(CreateNewModel, LeavesTheAssertionsOnWhileTheModelIsMade) {
  static bool wereOn = false;
  K7Q::setModelFactory([](const std::u16string&) -> K7Q::Model {
    wereOn = K7Q::DeviantAssertions::sAssertionsEnabled;
    return {new TestModel, kDeviant};
  });
  const Assertions on(true);
  make();
  EXPECT_TRUE(wereOn);
}

TEST_F(CreateNewModel, RestoresTheAssertionSettingWhenTheUriIsRefused) {
  useTestModels();
  TestModel::sOnSetUri = [](auto&&...) { throw K7Q::WrongValue("no such URI"); };
  expectSwitchRestored([] { EXPECT_EQ(raised(make), "no such URI"); });
  EXPECT_EQ(bound(), 0U);
  EXPECT_EQ(TestModel::sLive, 0);
}

TEST_F(CreateNewModel, RestoresTheAssertionSettingWhenTheModelCannotBeBound) {
  useTestModels();
  // Another model takes the URI after a free one was looked up and before it is bound.
  TestModel::sOnSetUri = [](TestModel&, K7Q::Deviant, const std::u16string& uri) {
    K7Q::ModelCache::instance().bindModel(uri, {new TestModel, kDeviant});
  };
  expectSwitchRestored([] {
    const auto taken = raised(make);
    EXPECT_NE(taken.find("is taken by another open model"), std::string::npos) << taken;
  });
  EXPECT_EQ(TestModel::sLive, 2) << "the two that took the URI, and none of those that were not bound";
}

TEST_F(CreateNewModel, RestoresTheAssertionSettingWhenMemoryIsExhausted) {
  useTestModels();
  TestModel::sOnSetUri = [](auto&&...) { throw std::bad_alloc(); };
  expectSwitchRestored([] { EXPECT_THROW(make(), std::bad_alloc); });
  EXPECT_EQ(TestModel::sLive, 0);
}

TEST_F(CreateNewModel, RaisesTheNullTextWhenThereIsNoModel) {
  K7Q::setModelFactory([](const std::u16string&) { return K7Q::Model(); });
  expectSwitchRestored(
      [] { EXPECT_EQ(raised(make), std::string(kNullText) + "boundary/k7q/Object.h:84: "); });
  EXPECT_EQ(bound(), 0U);
}

TEST_F(CreateNewModel, SaysWhenNobodyMakesModels) {
  K7Q::setModelFactory(nullptr);
  expectSwitchRestored([] { EXPECT_NE(raised(make).find("setModelFactory()"), std::string::npos); });
}

TEST_F(CreateNewModel, WorksAgainAfterAFailure) {
  useTestModels();
  TestModel::sOnSetUri = [](auto&&...) { throw K7Q::WrongValue("once"); };
  EXPECT_EQ(raised(make), "once");
  TestModel::sOnSetUri = nullptr;
  EXPECT_EQ(uriOf(make()), "untitled");
}

TEST_F(CreateNewModel, ClosedModelIsFoundNoMore) {
  const auto model = make();
  host::call(model, "close");
  EXPECT_EQ(bound(), 0U);
  EXPECT_TRUE(K7Q::ModelCache::instance().find(u"untitled").isNull());
  EXPECT_FALSE(host::call(model, "isvalid").slot().logical());
}

TEST_F(CreateNewModel, ScriptFindsBoundModelsByUri) {
  const auto first = make();
  const auto second = make();
  const auto found = host::callStatic("K7Q.Model", "find", {host::text(u"untitled1")});
  EXPECT_EQ(RVOInterfacePtr(found.object()), second);
  EXPECT_EQ(host::callStatic("K7Q.Model", "find", {host::text(u"untitled7")}).object(), nullptr);
  const auto uris = host::callStatic("K7Q.Model", "uris");
  const RVOInterfacePtr list(uris.object());
  EXPECT_EQ(host::call(list, "size").slot().int32(), 2);
  EXPECT_EQ(host::textOf(host::call(list, "at", {host::integer(1)})), "untitled");
}

}  // namespace
