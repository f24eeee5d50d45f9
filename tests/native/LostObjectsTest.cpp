// Error texts for destroyed objects, closed models, and indices out of range.

#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/SequenceFixture.h"

namespace {

namespace api = Tarvelon::model;

std::string detailOf(const std::string& text) { return text.substr(text.rfind(": ") + 2); }

bool endsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

class LostObjects : public testing::Test {
 protected:
  const K7Q::Model mModel = K7Q::NSInterface::FactoryIntf::createNewModel(u"brakes");
  const common::Package mPackage = common::Package::create(mModel, u"Brakes");
};

TEST_F(LostObjects, ADestroyedOneIsToldByItsClass) {
  mPackage.destroy();
  EXPECT_EQ(api::lossOf(mPackage), "common.Package was destroyed");
  for (const auto& text :
       {refusalOf([&] { Access<foundation::NamedElement>(mPackage, "Name").get(); }),
        refusalOf([&] { api::qualifiedName(mPackage); }), refusalOf([&] { api::referrers(mPackage); })}) {
    EXPECT_EQ(text.find("Assertion failed: " + std::string(kNullText) + " at platform/model/"), 0U) << text;
    EXPECT_EQ(detailOf(text), "common.Package was destroyed");
  }
}

TEST_F(LostObjects, OneThatMayComeBackIsToldByItsName) {
  api::setHistoryLimit(mModel, 1);
  mPackage.destroy();
  EXPECT_EQ(api::lossOf(mPackage), "common.Package 'Brakes' was destroyed");
  api::undo(mModel);
  EXPECT_EQ(api::lossOf(mPackage), "");
}

TEST_F(LostObjects, OneOfAClosedModelIsToldWithTheModel) {
  mModel.close();
  EXPECT_EQ(api::lossOf(mPackage), "common.Package: the model 'brakes' is closed");
  EXPECT_EQ(api::lossOf(mModel), "the model 'brakes' is closed");
  EXPECT_TRUE(endsWith(refusalOf([&] { Access<foundation::NamedElement>(mPackage, "Name").get(); }),
                       ": the model 'brakes' is closed"));
  EXPECT_TRUE(endsWith(refusalOf([&] { api::objects(mModel); }), ": the model 'brakes' is closed"));
  EXPECT_TRUE(endsWith(refusalOf([&] { api::undo(mModel); }), ": the model 'brakes' is closed"));
}

TEST_F(LostObjects, AModelWithoutAUriIsJustTheModel) {
  const auto model = K7Q::Model::create();
  model.close();
  EXPECT_EQ(api::lossOf(model), "the model is closed");
}

TEST_F(LostObjects, OfOneThatIsThereAndOfNoneThereIsNothingToTell) {
  EXPECT_EQ(api::lossOf(mPackage), "");
  EXPECT_EQ(api::lossOf(mModel), "");
  EXPECT_EQ(api::lossOf(K7Q::Object()), "");
}

TEST_F(Sequence, TellsItsPropertyWhenTheObjectIsGone) {
  const auto sequence = mFormula.get<"SysConst">();
  mFormula.destroy();
  EXPECT_TRUE(
      endsWith(refusalOf([&] { sequence.size(); }),
               "SystemConstDependentFormula.SysConst: variant.SystemConstDependentFormula was destroyed"));
}

TEST_F(Sequence, TellsTheIndexAndHowManyThereAre) {
  fill();
  EXPECT_TRUE(endsWith(refusalOf([&] { sequence().generic_at({}, 7); }),
                       ": SystemConstDependentFormula.SysConst has 3 elements; the index was 7 counted from "
                       "0, 8 counted from 1"));
  EXPECT_TRUE(endsWith(refusalOf([&] { sequence().generic_insert({}, -1, ref(0)); }),
                       ": SystemConstDependentFormula.SysConst has 3 elements; the index was -1 counted from "
                       "0, 0 counted from 1"));
  sequence().generic_clear({});
  EXPECT_TRUE(
      endsWith(refusalOf([&] { sequence().generic_front({}); }), ": SystemConstDependentFormula.SysConst"));
}

}  // namespace
