// The audit must report each broken invariant. The tests break a model by changing its internal data
// directly.

#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/audit/Audit.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/words/WordList.h"
#include "tests/native/Support.h"

namespace {

namespace api = Tarvelon::model;
namespace native = Tarvelon::metamodel::native;
using native::Instance;
using native::InstanceIndex;
using native::Journal;
using native::NativeModel;
using native::Word;

/// Gives access to a private member of a class: an explicit instantiation may name private members.
template <class Tag, typename Tag::Member kMember>
struct Reveal {
  friend typename Tag::Member memberOf(Tag /*tag*/) { return kMember; }
};
#define TARVELON_REVEAL(TAG, TYPE, CLASS, MEMBER) \
  struct TAG {                                    \
    using Member = TYPE CLASS::*;                 \
    friend Member memberOf(TAG);                  \
  };                                              \
  template struct Reveal<TAG, &CLASS::MEMBER>;

using Words = Word[2];
TARVELON_REVEAL(StateOf, std::uint64_t, Instance, mState)
TARVELON_REVEAL(NumberOf, std::uint32_t, Instance, mNumber)
TARVELON_REVEAL(HandlesOf, std::int32_t, Instance, mReferences)
TARVELON_REVEAL(WordsOf, Words, Instance, mWords)
TARVELON_REVEAL(FirstWithRoomOf, std::uint32_t, InstanceIndex, mFirstWithRoom)
TARVELON_REVEAL(EmptyOf, std::uint32_t, InstanceIndex, mEmpty)
TARVELON_REVEAL(UndoOf, std::vector<std::vector<native::Step>>, Journal, mUndo)
TARVELON_REVEAL(OpenOf, std::vector<native::Step>, Journal, mOpen)
TARVELON_REVEAL(LimitOf, std::size_t, Journal, mLimit)
TARVELON_REVEAL(DepthOf, unsigned, Journal, mDepth)
TARVELON_REVEAL(SizeOf, std::uint32_t, native::WordList, mSize)
TARVELON_REVEAL(ListWordsOf, Word*, native::WordList, mWords)
TARVELON_REVEAL(CapacityOf, std::uint32_t, native::WordList, mCapacity)

template <class Tag, class Object>
auto& reveal(const Object& object) {
  return const_cast<Object&>(object).*memberOf(Tag());
}

/// Changes a member for the length of a scope, and restores it so that the model can be destroyed.
template <class T>
class Broken {
 public:
  Broken(T& member, std::type_identity_t<T> value) : mMember(member), mBefore(member) { member = value; }
  Broken(const Broken&) = delete;
  Broken& operator=(const Broken&) = delete;
  ~Broken() { mMember = mBefore; }

 private:
  T& mMember;
  T mBefore;
};

class Audit : public testing::Test {
 protected:
  Audit() {
    mPackage.get<"PackagedElement">().add(mConstant);
    mPackage.get<"PackagedElement">().add(mOther);
    Access<behavior::Event>(mEvent, "StartOnEvent").set(mRunnable);
  }
  static Instance& at(const K7Q::ClassObject& object) {
    return static_cast<Instance&>(*object.getClassObject());
  }
  NativeModel& model() const { return at(mPackage).model(); }
  const InstanceIndex& index() const { return model().instances(); }
  Journal& journal() const { return *model().journal(); }
  static unsigned slotOf(const K7Q::ClassObject& object, std::string_view name) {
    const auto& properties = at(object).cls().slotProperties;
    unsigned slot = 0;
    while (slot < properties.size() && properties[slot]->metaName() != name) ++slot;
    EXPECT_LT(slot, properties.size());
    return slot;
  }
  static Word& wordOf(const K7Q::ClassObject& object, std::string_view name) {
    return *at(object).find(slotOf(object, name));
  }
  static Word& referrersOf(const K7Q::ClassObject& object) {
    return *at(object).find(Instance::kReferrerSlot);
  }
  /// The word of a referrer set that contains a single referrer.
  static std::uint64_t only(std::uint64_t number, unsigned slot) {
    return ((number << 8 | slot) + 1) << 1 | 1;
  }
  native::WordList& elements() const { return *wordOf(mPackage, "PackagedElement").list; }
  native::WordList& events() const { return *wordOf(mRunnable, "Events").list; }
  InstanceIndex::ClassList& constants() const {
    for (const auto& list : index().classes()) {
      if (list.cls == &at(mConstant).cls()) return const_cast<InstanceIndex::ClassList&>(list);
    }
    throw std::logic_error("no list");
  }
  void expect(const std::string& text) const { EXPECT_EQ(api::audit(mModel), text); }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mPackage = common::Package::create(mModel, u"P");
  variant::SystemConst mConstant = variant::SystemConst::create(mModel, u"C");
  variant::SystemConst mOther = variant::SystemConst::create(mModel, u"D");
  behavior::Runnable mRunnable = behavior::Runnable::create(mModel, u"R", u"R");
  behavior::InitEvent mEvent = behavior::InitEvent::create(mModel, u"E");
};

}  // namespace

TEST_F(Audit, FindsNothingInASoundModel) {
  api::setHistoryLimit(mModel, 10);
  mConstant.destroy();
  mEvent.destroy();
  mOther.set<"Name">(u"F");
  api::undo(mModel);
  api::find(mModel, u"/P/D");
  Tarvelon::files::saveText(mModel);
  expect("");
}

TEST_F(Audit, OfAClosedModelIsRefused) {
  mModel.close();
  expectNullReference([this] { api::audit(mModel); });
}

TEST_F(Audit, SeesAnOwnerThatIsNotTheHolder) {
  Instance& held = at(mConstant);
  const unsigned slot = held.ownerSlot();
  held.setOwner(nullptr, 0);
  expect(
      "owners and owned agree: common.Package 'P' (number 0) holds in PackagedElement variant.SystemConst "
      "'C' "
      "(number 1), and the owner of that is nothing");
  held.setOwner(&at(mPackage), slot + 1);
  EXPECT_NE(api::audit(mModel), "");
  held.setOwner(&at(mPackage), slot);
}

TEST_F(Audit, SeesAnOwnerThatDoesNotHold) {
  at(mRunnable).setOwner(&at(mPackage), at(mConstant).ownerSlot());
  expect(
      "owners and owned agree: behavior.Runnable 'R' (number 3) says that common.Package 'P' (number 0) "
      "holds "
      "it, and no way down from an object without an owner leads to it");
  at(mRunnable).setOwner(nullptr, 0);
}

TEST_F(Audit, SeesAnObjectThatIsHeldTwice) {
  const Word second = elements().at(1);
  reveal<ListWordsOf>(elements())[1] = elements().at(0);
  expect(
      "owners and owned agree: variant.SystemConst 'C' (number 1) is held twice, and once by common.Package "
      "'P' (number 0)");
  reveal<ListWordsOf>(elements())[1] = second;
}

TEST_F(Audit, SeesAReferenceThatIsNotKnown) {
  const auto caption = common::SdgCaption::create(mModel, u"c");
  const auto data = common::Sdg::create(mModel, u"g");
  data.set<"sdgCaptionRef">(caption);
  const Broken broken(referrersOf(caption).bits, 0);
  expect(
      "references and referrers agree: common.Sdg (number 6) has in SdgCaptionRef common.SdgCaption 'c' "
      "(number 5), "
      "which does not know of it");
}

TEST_F(Audit, SeesReferrersThatDoNotRefer) {
  const auto idle = behavior::InitEvent::create(mModel, u"F");
  Access<behavior::Event>(idle, "StartOnEvent").set(mRunnable);
  Access<behavior::Event>(idle, "StartOnEvent").unset();
  const auto unused = behavior::Runnable::create(mModel, u"S", u"S");
  Access<behavior::Event>(idle, "StartOnEvent").set(unused);
  Access<behavior::Event>(idle, "StartOnEvent").unset();
  Word& known = referrersOf(unused);
  const std::string sentence =
      "references and referrers agree: behavior.Runnable 'S' (number 6) knows of a reference by number ";
  const auto textWith = [&](std::uint64_t bits) {
    const Broken broken(known.bits, bits);
    return api::audit(mModel);
  };
  const unsigned slot = slotOf(mEvent, "StartOnEvent");
  EXPECT_EQ(textWith(only(77, slot)), sentence + "77, slot " + std::to_string(slot) + ", where no object is");
  EXPECT_EQ(textWith(only(0, slotOf(mPackage, "PackagedElement"))),
            sentence + "0, slot " + std::to_string(slotOf(mPackage, "PackagedElement")) +
                ", which refers to nothing");
  EXPECT_EQ(textWith(only(4, slot)), sentence + "4, slot " + std::to_string(slot) +
                                         ", and behavior.InitEvent 'E' (number 4) does not have it there");
  // For references in a list, the audit only compares numbers, because searching the list for each of them is
  // slow.
  const unsigned events = slotOf(mRunnable, "Events");
  EXPECT_EQ(
      textWith(only(3, events)),
      "references and referrers agree: 2 references are in the model, and 3 are known to what they refer to");
}

TEST_F(Audit, SeesOppositesThatDisagree) {
  const Broken list(reveal<SizeOf>(events()), 0);
  const Broken referrer(referrersOf(mEvent).bits, 0);
  expect(
      "opposites agree: behavior.InitEvent 'E' (number 4) has in StartOnEvent behavior.Runnable 'R' (number "
      "3), "
      "which does not have it in Events");
}

TEST_F(Audit, SeesALivingObjectThatHasABuriedOne) {
  at(mRunnable).markDeleted();
  expect(
      "what lives has nothing that is gone: behavior.InitEvent 'E' (number 4) has in StartOnEvent the buried "
      "behavior.Runnable 'R' (number 3)");
  at(mRunnable).restore();
}

TEST_F(Audit, SeesAnObjectThatIsHalfDestroyed) {
  at(mOther).setDying(true);
  expect("no object is left half destroyed: variant.SystemConst 'D' (number 2) is");
  at(mOther).setDying(false);
}

TEST_F(Audit, SeesAValueThatBelongsToNoProperty) {
  const auto slot = at(mOther).cls().slotProperties.size();
  const Broken broken(reveal<StateOf>(at(mOther)), reveal<StateOf>(at(mOther)) | std::uint64_t{1} << slot);
  expect("values belong to properties: variant.SystemConst 'D' (number 2) has one in slot " +
         std::to_string(slot));
}

TEST_F(Audit, SeesATextThatIsNotCounted) {
  const Broken broken(wordOf(mOther, "Name").text, wordOf(mConstant, "Name").text);
  expect(
      "texts are counted: one of variant.SystemConst 'C' (number 2) has 1 references and is stored in more "
      "places");
}

TEST_F(Audit, SeesANumberThatIsNoPlace) {
  const Broken broken(reveal<NumberOf>(at(mOther)), 77);
  expect("numbers are places: at 2 stands an object of number 77");
}

TEST_F(Audit, SeesAShellThatNobodyHolds) {
  mOther.destroy();
  const Broken broken(reveal<HandlesOf>(at(mOther)), 0);
  expect("shells have handles: the one of number 2 has none");
}

TEST_F(Audit, SeesFreePlacesThatAreNotChained) {
  common::Package::create(mModel).destroy();
  {
    const Broken broken(reveal<FirstWithRoomOf>(index()), InstanceIndex::kNone);
    expect("free places are chained: 1 slabs have some, and the chain has 0");
  }
  const Broken broken(reveal<EmptyOf>(index()), 0);
  expect("free places are chained: the chunk that is kept as an empty one is none");
}

TEST_F(Audit, SeesListsOfClassesThatDisagree) {
  const std::string sentence = "lists of classes agree with a walk: ";
  auto& list = constants();
  {
    const Broken broken(list.numbers[0], 0);
    expect(sentence + "the list of variant.SystemConst has number 0, where no object of the class is");
  }
  {
    const Broken broken(list.numbers, std::vector<std::uint32_t>{2, 1});
    expect(sentence + "variant.SystemConst 'D' (number 2) does not know its place in the list of its class");
  }
  {
    const Broken broken(list.gaps, 1);
    expect(sentence + "the gaps of variant.SystemConst are miscounted");
  }
  const Broken broken(list.numbers, std::vector<std::uint32_t>{1});
  expect(sentence + "5 objects are there, and the lists have 4");
}

TEST_F(Audit, SeesANameThatTheIndexDoesNotKnow) {
  api::find(mModel, u"/P/D");
  wordOf(mOther, "Name").text->release();
  wordOf(mOther, "Name").text = K7Q::NSInterface::StringIntf::make(u"X");
  expect("the index of names agrees with a walk: it does not know variant.SystemConst 'X' (number 2)");
}

TEST_F(Audit, SeesAnIdThatTwoObjectsHave) {
  Tarvelon::files::saveText(mModel);
  Word& id = *at(mOther).find(native::ClassData::kIdSlot);
  const Broken broken(id.bits, at(mConstant).find(native::ClassData::kIdSlot)->bits);
  EXPECT_TRUE(api::audit(mModel).starts_with("no two objects have one id: variant.SystemConst '"));
}

TEST_F(Audit, SeesAHistoryWithoutItsRoom) {
  api::setHistoryLimit(mModel, 2);
  mPackage.set<"Name">(u"1");
  mPackage.set<"Name">(u"2");
  {
    const Broken broken(reveal<LimitOf>(journal()), 1);
    expect("a history has room for what it may keep: it keeps more than its limit");
  }
  const Broken broken(reveal<LimitOf>(journal()), 1000);
  expect("a history has room for what it may keep: it has not reserved it");
}

TEST_F(Audit, SeesBatchesThatDoNotEnd) {
  api::Transaction transaction(mModel);
  mPackage.set<"Name">(u"1");
  {
    const Broken broken(reveal<DepthOf>(journal()), 0);
    expect("open transactions are batches: 1 are open in a depth of 0");
  }
  transaction.commit();
  api::setHistoryLimit(mModel, 2);
  mPackage.set<"Name">(u"2");
  std::swap(reveal<OpenOf>(journal()), reveal<UndoOf>(journal())[0]);
  expect("batches that have ended leave nothing open: 1 steps are");
  std::swap(reveal<OpenOf>(journal()), reveal<UndoOf>(journal())[0]);
}

TEST_F(Audit, SeesWhatIsBuriedForGood) {
  at(mOther).setOwner(nullptr, 0);
  const Broken list(reveal<SizeOf>(elements()), 1);
  at(mOther).markDeleted();
  expect(
      "a step can bring back what is buried: none brings back the buried variant.SystemConst 'D' (number 2)");
  at(mOther).restore();
  at(mOther).setOwner(&at(mPackage), at(mConstant).ownerSlot());
}

TEST_F(Audit, SeesRoomForValuesThatTheJournalMisses) {
  mPackage.set<"category">(u"c");
  api::setHistoryLimit(mModel, 2);
  mPackage.set<"category">(u"");
  auto& capacity = reveal<WordsOf>(at(mPackage))[1].bits;
  const Broken broken(capacity, capacity - at(mPackage).room());
  expect(
      "room covers the journal: common.Package 'P' (number 0) has room for 0 more in its values, and the "
      "journal "
      "can bring back 1");
}

TEST_F(Audit, SeesRoomInAListThatTheJournalMisses) {
  api::setHistoryLimit(mModel, 2);
  mConstant.destroy();
  const Broken broken(reveal<CapacityOf>(elements()), 1);
  expect(
      "room covers the journal: common.Package 'P' (number 0) has room for 0 more in its PackagedElement, "
      "and the "
      "journal can bring back 1");
}

TEST_F(Audit, SeesRoomForReferrersThatTheJournalMisses) {
  const auto other = behavior::InitEvent::create(mModel, u"F");
  Access<behavior::Event>(other, "StartOnEvent").set(mRunnable);
  api::setHistoryLimit(mModel, 2);
  Access<behavior::Event>(other, "StartOnEvent").unset();
  const Broken broken(referrersOf(mRunnable).bits, only(4, slotOf(mEvent, "StartOnEvent")));
  expect(
      "room covers the journal: behavior.Runnable 'R' (number 3) has room for 0 more in its referrers, and "
      "the "
      "journal can bring back 1");
}

TEST_F(Audit, SeesAPlaceThatWasChangedWithoutAStep) {
  api::setHistoryLimit(mModel, 2);
  mPackage.set<"Name">(u"Q");
  native::Step& step = reveal<UndoOf>(journal())[0][0];
  {
    const Broken broken(step.after, step.before);
    expect(
        "places are as the journal left them: common.Package 'Q' (number 0) was changed without a step in "
        "Name");
  }
  mPackage.get<"PackagedElement">().add(variant::SystemConst::create(mModel, u"X"));
  native::Step& last = reveal<UndoOf>(journal()).back()[0];
  const Broken broken(last.index, 7);
  expect(
      "places are as the journal left them: common.Package 'Q' (number 0) has a list in PackagedElement that "
      "is "
      "too short for a step");
}

#ifdef TARVELON_AUDIT
TEST_F(Audit, EndsAProcessWithTheInvariantTheObjectAndTheStep) {
  api::setHistoryLimit(mModel, 2);
  at(mOther).setDying(true);
  EXPECT_DEATH(
      mPackage.set<"Name">(u"Q"),
      "audit: no object is left half destroyed: variant.SystemConst 'D' .number 2. is; found after "
      "common.Package 'Q' .number 0..Name: char vector \"[A-Z]\" -> char vector \"Q\"");
  at(mOther).setDying(false);
}

TEST_F(Audit, LooksAtTheObjectsOfTheLastStepsWhateverTheSizeOfTheModel) {
  for (int count = 0; count < 5000; ++count) common::Package::create(mModel);
  api::setHistoryLimit(mModel, 2);
  api::audit(mModel);
  const Broken broken(referrersOf(mRunnable).bits, 0);
  EXPECT_DEATH(mEvent.set<"Name">(u"Q"), "audit: references and referrers agree: behavior.InitEvent 'Q'");
}
#endif
