#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tests/support/Host.h"

using K7Q::Model;
using K7Q::ModelCache;

namespace {

class TestModel final : public K7Q::NSInterface::ModelIntf {
 public:
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
  void setUri(K7Q::Deviant, std::u16string_view) override {}
  std::u16string getUri(K7Q::Deviant) const override { return {}; }
  void close() override { mIsOpen = false; }

 private:
  bool mIsOpen = true;
  mutable int mReferences = 0;
};

Model newModel() { return {new TestModel, K7Q::Deviant()}; }

}  // namespace

TEST(ModelCache, FindsABoundModelAndKeepsItAlive) {
  ModelCache cache;
  const Model model = newModel();
  cache.bindModel(u"a", model);
  EXPECT_EQ(model.getInterface()->numRef(), 2);
  EXPECT_EQ(cache.find(u"a"), model);
  EXPECT_TRUE(cache.find(u"b").isNull());
  ASSERT_EQ(cache.models().size(), 1U);

  cache.unbind(model.getModelInterface());
  cache.unbind(model.getModelInterface());
  EXPECT_EQ(model.getInterface()->numRef(), 1);
  EXPECT_TRUE(cache.find(u"a").isNull());
}

TEST(ModelCache, RefusesTheUriOfAnotherOpenModel) {
  ModelCache cache;
  const Model first = newModel();
  const Model second = newModel();
  cache.bindModel(u"a", first);
  cache.bindModel(u"a", first);
  EXPECT_THROW(cache.bindModel(u"a", second), K7Q::WrongValue);
  EXPECT_EQ(host::raised([&] { cache.bindModel(u"a", second); }),
            "the URI \"a\" is taken by another open model; getNextAvailableModelUri(\"a\") gives a free one");
  first.getModelInterface()->close();
  cache.bindModel(u"a", second);
  EXPECT_EQ(cache.find(u"a"), second);
  EXPECT_EQ(cache.models().size(), 1U);
}

TEST(ModelCache, BindsAModelToOneUri) {
  ModelCache cache;
  const Model model = newModel();
  cache.bindModel(u"a", model);
  cache.bindModel(u"b", model);
  EXPECT_TRUE(cache.find(u"a").isNull());
  EXPECT_EQ(cache.find(u"b"), model);
  EXPECT_EQ(model.getInterface()->numRef(), 2);
}

TEST(ModelCache, RefusesAnEmptyHandleAndAClosedModel) {
  ModelCache cache;
  EXPECT_THROW(cache.bindModel(u"a", Model()), K7Q::Exception);
  const Model model = newModel();
  model.getModelInterface()->close();
  EXPECT_THROW(cache.bindModel(u"a", model), K7Q::Exception);
}

TEST(ModelCache, CountsUpToAFreeUri) {
  ModelCache cache;
  EXPECT_EQ(cache.getNextAvailableModelUri(ModelCache::UNTITLED), u"untitled");
  cache.bindModel(u"untitled", newModel());
  cache.bindModel(u"untitled1", newModel());
  EXPECT_EQ(cache.getNextAvailableModelUri(ModelCache::UNTITLED), u"untitled2");
}

TEST(ModelCache, IsOne) { EXPECT_EQ(&ModelCache::instance(), &ModelCache::instance()); }
