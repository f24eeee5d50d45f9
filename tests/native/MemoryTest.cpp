// The memory of objects, and the effects of failed allocations.

#include <functional>
#include <malloc.h>
#include <new>
#include <string>
#include <vector>

#include "examples/brake_model.h"
#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Support.h"
#include "tests/support/Uninstrumented.h"

namespace {

/// The bytes of all allocated blocks, including the allocator's overhead.
std::size_t bytesInUse() { return mallinfo2().uordblks; }

constexpr const char16_t* kText = u"abcdefghijklmnopqrstuvwx";

std::string utf8(const K7Q::String& text) { return K7Q::String::to_string(text); }

/// Objects with all kinds of links, and a text of everything that can be seen of them.
class Tangle {
 public:
  Tangle() {
    mRoot.get<"PackagedElement">().add(mPackage);
    mPackage.get<"PackagedElement">().add(mConstant);
    mPackage.get<"PackagedElement">().add(mOther);
    // With these the list has seven elements, which uses up its room.
    for (const char16_t* name : {u"1", u"2", u"3", u"4", u"5"})
      mPackage.get<"PackagedElement">().add(common::Package::create(mModel, name));
    mRoot.get<"PackagedElement">().add(mSecond);
    mOther.set<"category">(u"c");
    mFormula.get<"SysConst">().add(mConstant);
    mPackage.set<"adminData">(mData);
  }

  K7Q::Model mModel = K7Q::Model::create();
  common::AUTOSAR mRoot = common::AUTOSAR::create(mModel);
  common::Package mPackage = common::Package::create(mModel, u"P");
  common::Package mSecond = common::Package::create(mModel, u"Q");
  variant::SystemConst mConstant = variant::SystemConst::create(mModel, u"C");
  variant::SystemConst mOther = variant::SystemConst::create(mModel, u"D");
  variant::SystemConstDependentFormula mFormula = variant::SystemConstDependentFormula::create(mModel, u"f");
  common::Sdx mSdx = common::Sdx::create(mModel, mConstant);
  common::AdminData mData = common::AdminData::create(mModel);
  documentation::MultiLanguageOverviewParagraph mText =
      documentation::MultiLanguageOverviewParagraph::create(mModel);
  documentation::Modification mModification = documentation::Modification::create(mModel, mText);

  std::string shown() const {
    std::string all;
    const auto list = [&all](const auto& sequence) {
      for (const auto& element : sequence) all += describe(element) + " ";
      all += "|";
    };
    list(mRoot.get<"PackagedElement">());
    list(mPackage.get<"PackagedElement">());
    list(mFormula.get<"SysConst">());
    list(mFormula.get<"SysCString">());
    all += describe(mSdx.get<"sdx">()) + "|" + describe(mPackage.get<"adminData">()) + "|" +
           describe(mModification.get<"change">()) + "|" + describe(mModification.get<"reason">()) + "|" +
           utf8(mPackage.get<"Name">()) + utf8(mPackage.get<"category">());
    for (const K7Q::ClassObject& object : {K7Q::ClassObject(mConstant), K7Q::ClassObject(mOther),
                                           K7Q::ClassObject(mData), K7Q::ClassObject(mText)}) {
      all += "|" + describe(Access<foundation::Element>(object, "Owner").get());
    }
    return all;
  }

 private:
  template <class Handle>
  static std::string describe(const Handle& object) {
    const auto name = foundation::NamedElement::cast(object);
    return object.isNull() ? "-"
           : name.isNull() ? std::string(object.getInterface()->getRuvoName(false).view())
                           : utf8(name.template get<"Name">());
  }
};

/// Makes the first, then the second, ... allocation of a change fail, until it succeeds. After each failure
/// the model must be unchanged.
void failAtEveryAllocation(const std::function<void(Tangle&)>& change) {
  for (unsigned long allocation = 1; allocation < 100; ++allocation) {
    Tangle tangle;
    const std::string before = tangle.shown();
    utFailAllocation(allocation);
    bool hasFailed = false;
    try {
      change(tangle);
    } catch (const bedrock::core::except::bad_alloc&) {
      hasFailed = true;
    }
    utFailAllocation(0);
    if (!hasFailed) {
      EXPECT_GT(allocation, 1U) << "the change allocates nothing";
      EXPECT_NE(tangle.shown(), before) << "the change changes nothing";
      return;
    }
    EXPECT_EQ(tangle.shown(), before) << "allocation " << allocation;
    change(tangle);
    EXPECT_NE(tangle.shown(), before);
  }
  ADD_FAILURE() << "no end of allocations";
}

}  // namespace

UNINSTRUMENTED_TEST(Memory, OfAnObjectWithTwoTextsIsBelow200Bytes) {
  constexpr int kObjects = 100000;
  const auto model = K7Q::Model::create();
  common::SymbolProps::create(model, kText, kText).destroy();
  const std::size_t before = bytesInUse();
  for (int i = 0; i < kObjects; ++i) common::SymbolProps::create(model, kText, kText);
  // The two texts of 24 UTF-16 units each, without the overhead of their cells and of the allocator.
  constexpr std::size_t kTexts = std::size_t{2} * 24 * sizeof(char16_t);
  EXPECT_LE((bytesInUse() - before) / kObjects - kTexts, 200U);
}

UNINSTRUMENTED_TEST(Memory, OfAnObjectInASequenceIsBelow120BytesBesidesItsText) {
  constexpr int kObjects = 100000;
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model);
  const K7Q::String text(kText);
  const std::size_t before = bytesInUse();
  for (int i = 0; i < kObjects; ++i) {
    package.get<"PackagedElement">().add(variant::SystemConst::create(model, text));
  }
  // The model stores a copy of a text that is also used elsewhere: 24 UTF-16 units and the cell's header.
  constexpr std::size_t kCopy = 24 * sizeof(char16_t) + sizeof(K7Q::NSInterface::StringIntf);
  EXPECT_LE((bytesInUse() - before) / kObjects - kCopy, 120U);
}

UNINSTRUMENTED_TEST(Memory, IsGivenBackByDestroyAndClose) {
  const auto round = [] {
    const auto model = K7Q::Model::create();
    const auto package = common::Package::create(model);
    const auto target = variant::SystemConst::create(model, kText);
    for (int i = 0; i < 5000; ++i) {
      package.get<"PackagedElement">().add(variant::SystemConst::create(model, kText));
      variant::SystemConstValue::create(model, 1.0, target);
    }
    package.destroy();
    target.destroy();
    model.getModelInterface()->close();
  };
  round();
  const std::size_t before = bytesInUse();
  for (int i = 0; i < 10; ++i) round();
  // Blocks that the allocator keeps for reuse count as allocated.
  EXPECT_LE(bytesInUse(), before + before / 100);
}

UNINSTRUMENTED_TEST(Memory, OfAModelThatIsFilledAndEmptiedDoesNotGrow) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model);
  const auto round = [&] {
    for (int i = 0; i < 5000; ++i) {
      package.get<"PackagedElement">().add(variant::SystemConst::create(model, kText));
    }
    while (!package.get<"PackagedElement">().empty()) package.get<"PackagedElement">()[0].destroy();
  };
  round();
  const std::size_t before = bytesInUse();
  for (int i = 0; i < 10; ++i) round();
  // Blocks that the allocator keeps for reuse count as allocated.
  EXPECT_LE(bytesInUse(), before + before / 100);
}

UNINSTRUMENTED_TEST(Memory, OfAVehicleBuiltAndClosedAThousandTimesStaysAsItIsAfterTen) {
  const auto round = [] {
    const auto model = K7Q::Model::create();
    brake::build(model);
    model.close();
  };
  for (int i = 0; i < 10; ++i) round();
  const std::size_t afterTen = bytesInUse();
  for (int i = 10; i < 1000; ++i) round();
  EXPECT_LE(bytesInUse(), afterTen + afterTen / 100);
  EXPECT_GE(bytesInUse(), afterTen - afterTen / 100);
}

namespace {

/// Creates fifty thousand objects that contain and refer to others, and destroys them.
void buildAndDestroy(const K7Q::Model& model) {
  constexpr int kOfEach = 12500;
  const auto package = common::Package::create(model, kText);
  const auto elements = package.get<"PackagedElement">();
  for (int i = 0; i < kOfEach; ++i) {
    const auto constant = variant::SystemConst::create(model, kText);
    elements.add(constant);
    const auto formula = variant::SystemConstDependentFormula::create(model, kText);
    formula.get<"SysConst">().add(constant);
    common::Sdx::create(model, constant);
    const auto value = variant::SystemConstValue::create(model, 1.0, constant);
    value.destroy();
    Access<variant::SystemConstDependentFormula>(formula, "SysConst").sequence().get().generic_clear({});
  }
  for (const auto& each : Tarvelon::model::objects(model)) {
    if (each.isValid()) each.getClassObject()->destroy({});
  }
}

/// Runs a hundred rounds. The last round must not use more memory than the tenth.
template <class Round>
void expectNoGrowth(const K7Q::Model& model, Round round) {
  constexpr int kRounds = 100;
  std::size_t tenth = 0;
  for (int i = 1; i <= kRounds; ++i) {
    round();
    if (i == 10) tenth = bytesInUse();
  }
  EXPECT_LE(bytesInUse(), tenth + tenth / 100);
  EXPECT_TRUE(Tarvelon::model::objects(model).empty());
}

}  // namespace

UNINSTRUMENTED_TEST(Memory, OfAHundredRoundsDoesNotGrow) {
  const auto model = K7Q::Model::create();
  expectNoGrowth(model, [&] { buildAndDestroy(model); });
}

UNINSTRUMENTED_TEST(Memory, OfAHundredRoundsWithAHistoryDoesNotGrow) {
  const auto model = K7Q::Model::create();
  Tarvelon::model::setHistoryLimit(model, 3);
  expectNoGrowth(model, [&] {
    Tarvelon::model::Transaction transaction(model);
    buildAndDestroy(model);
    transaction.commit();
    Tarvelon::model::undo(model);
    Tarvelon::model::redo(model);
  });
}

UNINSTRUMENTED_TEST(Memory, OfTransactionsThatReferDoesNotGrow) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model, u"P");
  const auto caption = common::SdgCaption::create(model, u"C");
  std::vector<common::Sdg> referring;
  referring.reserve(20);
  for (int i = 0; i < 20; ++i) referring.push_back(common::Sdg::create(model));
  const auto round = [&] {
    {
      Tarvelon::model::Transaction transaction(model);
      for (const auto& each : referring) each.set<"sdgCaptionRef">(caption);
      package.get<"PackagedElement">().add(common::Package::create(model, u"Q"));
      transaction.commit();
    }
    for (const auto& each : referring) each.unset<"sdgCaptionRef">();
    package.get<"PackagedElement">()[0].destroy();
  };
  round();
  const std::size_t before = bytesInUse();
  for (int i = 0; i < 1000; ++i) round();
  EXPECT_LE(bytesInUse(), before + before / 100);
}

TEST(FailedAllocation, InAConstructorLeavesTheModelAsItWas) {
  failAtEveryAllocation([](Tangle& tangle) {
    tangle.mFormula.get<"SysCString">().add(variant::SystemConst::create(tangle.mModel, kText));
  });
  // The object in the argument stays with its owner until nothing can fail any more.
  failAtEveryAllocation(
      [](Tangle& tangle) { documentation::Modification::create(tangle.mModel, tangle.mText); });
}

TEST(FailedAllocation, InASetLeavesTheModelAsItWas) {
  failAtEveryAllocation([](Tangle& tangle) { tangle.mPackage.set<"category">(kText); });
  failAtEveryAllocation([](Tangle& tangle) { tangle.mPackage.set<"desc">(tangle.mText); });
  failAtEveryAllocation([](Tangle& tangle) { tangle.mSdx.set<"sdx">(tangle.mOther); });
}

TEST(FailedAllocation, InASequenceLeavesTheModelAsItWas) {
  failAtEveryAllocation([](Tangle& tangle) { tangle.mFormula.get<"SysCString">().add(tangle.mConstant); });
  failAtEveryAllocation([](Tangle& tangle) { tangle.mPackage.get<"PackagedElement">().add(tangle.mSecond); });
  failAtEveryAllocation([](Tangle& tangle) {
    const auto sequence =
        Access<variant::SystemConstDependentFormula>(tangle.mFormula, "SysConst").sequence();
    sequence.get().generic_replace({}, 0, refOf(tangle.mOther));
  });
}

TEST(FailedAllocation, InAnAssignmentLeavesBothSequencesAsTheyWere) {
  failAtEveryAllocation([](Tangle& tangle) {
    const Access<foundation::Package> from(tangle.mPackage, "PackagedElement");
    const Access<foundation::Package> to(tangle.mSecond, "PackagedElement");
    to.sequence().get().specialized_assign(from.sequence().getInterface());
  });
}
