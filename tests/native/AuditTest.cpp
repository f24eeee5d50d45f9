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
      "owners and contained objects agree: common.Package 'P' (number 0) contains in PackagedElement "
      "variant.SystemConst 'C' (number 1), whose owner is nothing");
  held.setOwner(&at(mPackage), slot + 1);
  EXPECT_NE(api::audit(mModel), "");
  held.setOwner(&at(mPackage), slot);
}

TEST_F(Audit, SeesAnOwnerThatDoesNotHold) {
  at(mRunnable).setOwner(&at(mPackage), at(mConstant).ownerSlot());
  expect(
      "owners and contained objects agree: behavior.Runnable 'R' (number 3) has the owner common.Package 'P' "
      "(number 0), but cannot be reached from an object without an owner");
  at(mRunnable).setOwner(nullptr, 0);
}

TEST_F(Audit, SeesAnObjectThatIsHeldTwice) {
  const Word second = elements().at(1);
  reveal<ListWordsOf>(elements())[1] = elements().at(0);
  expect(
      "owners and contained objects agree: variant.SystemConst 'C' (number 1) has two owners, one of them is "
      "common.Package 'P' (number 0)");
  reveal<ListWordsOf>(elements())[1] = second;
}

TEST_F(Audit, SeesAReferenceThatIsNotKnown) {
  const auto caption = common::SdgCaption::create(mModel, u"c");
  const auto data = common::Sdg::create(mModel, u"g");
  data.set<"sdgCaptionRef">(caption);
  const Broken broken(referrersOf(caption).bits, 0);
  expect(
      "references and referrers agree: common.Sdg (number 6) has in SdgCaptionRef common.SdgCaption 'c' "
      "(number 5), which does not list it as a referrer");
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
      "references and referrers agree: behavior.Runnable 'S' (number 6) lists as referrer the number ";
  const auto textWith = [&](std::uint64_t bits) {
    const Broken broken(known.bits, bits);
    return api::audit(mModel);
  };
  const unsigned slot = slotOf(mEvent, "StartOnEvent");
  EXPECT_EQ(textWith(only(77, slot)),
            sentence + "77, slot " + std::to_string(slot) + ", but no object has that number");
  EXPECT_EQ(textWith(only(0, slotOf(mPackage, "PackagedElement"))),
            sentence + "0, slot " + std::to_string(slotOf(mPackage, "PackagedElement")) +
                ", but that slot holds no reference");
  EXPECT_EQ(textWith(only(4, slot)),
            sentence + "4, slot " + std::to_string(slot) +
                ", but behavior.InitEvent 'E' (number 4) does not refer to it there");
  // For references in a list, the audit only compares numbers, because searching the list for each of them is
  // slow.
  const unsigned events = slotOf(mRunnable, "Events");
  EXPECT_EQ(textWith(only(3, events)),
            "references and referrers agree: 2 references are in the model, but 3 are listed as referrers of "
            "their targets");
}

TEST_F(Audit, SeesOppositesThatDisagree) {
  const Broken list(reveal<SizeOf>(events()), 0);
  const Broken referrer(referrersOf(mEvent).bits, 0);
  expect(
      "opposites agree: behavior.InitEvent 'E' (number 4) has in StartOnEvent behavior.Runnable 'R' (number "
      "3), but that object does not have it in Events");
}

TEST_F(Audit, SeesAnObjectThatRefersToADestroyedOne) {
  at(mRunnable).markDeleted();
  expect(
      "an existing object refers to no destroyed one: behavior.InitEvent 'E' (number 4) has in StartOnEvent "
      "the destroyed behavior.Runnable 'R' (number 3)");
  at(mRunnable).restore();
}

TEST_F(Audit, SeesAnObjectThatIsHalfDestroyed) {
  at(mOther).setDying(true);
  expect("no destruction is incomplete: variant.SystemConst 'D' (number 2) is only partly destroyed");
  at(mOther).setDying(false);
}

TEST_F(Audit, SeesAValueThatBelongsToNoProperty) {
  const auto slot = at(mOther).cls().slotProperties.size();
  const Broken broken(reveal<StateOf>(at(mOther)), reveal<StateOf>(at(mOther)) | std::uint64_t{1} << slot);
  expect("each value belongs to a property: variant.SystemConst 'D' (number 2) has a value in slot " +
         std::to_string(slot));
}

TEST_F(Audit, SeesATextThatIsNotCounted) {
  const Broken broken(wordOf(mOther, "Name").text, wordOf(mConstant, "Name").text);
  expect(
      "texts count their references: a text of variant.SystemConst 'C' (number 2) has 1 references but is "
      "stored more often");
}

TEST_F(Audit, SeesANumberThatIsNoPlace) {
  const Broken broken(reveal<NumberOf>(at(mOther)), 77);
  expect("the number of an object is its position: the object at 2 has the number 77");
}

TEST_F(Audit, SeesAShellThatNobodyHolds) {
  mOther.destroy();
  const Broken broken(reveal<HandlesOf>(at(mOther)), 0);
  expect("an expired object is kept only for its handles: the object with the number 2 has no handle");
}

TEST_F(Audit, SeesFreePlacesThatAreNotChained) {
  common::Package::create(mModel).destroy();
  {
    const Broken broken(reveal<FirstWithRoomOf>(index()), InstanceIndex::kNone);
    expect("slabs with free places form a list: 1 slabs have free places, but the list has 0");
  }
  const Broken broken(reveal<EmptyOf>(index()), 0);
  expect("slabs with free places form a list: the chunk that is kept empty has objects");
}

TEST_F(Audit, SeesListsOfClassesThatDisagree) {
  const std::string sentence = "the lists of the classes contain all objects: ";
  auto& list = constants();
  {
    const Broken broken(list.numbers[0], 0);
    expect(sentence +
           "the list of variant.SystemConst has the number 0, but no object of the class has that number");
  }
  {
    const Broken broken(list.numbers, std::vector<std::uint32_t>{2, 1});
    expect(sentence + "variant.SystemConst 'D' (number 2) has a wrong position for the list of its class");
  }
  {
    const Broken broken(list.gaps, 1);
    expect(sentence + "the list of variant.SystemConst has a wrong number of gaps");
  }
  const Broken broken(list.numbers, std::vector<std::uint32_t>{1});
  expect(sentence + "5 objects exist, but the lists contain 4");
}

TEST_F(Audit, SeesANameThatTheIndexDoesNotKnow) {
  api::find(mModel, u"/P/D");
  wordOf(mOther, "Name").text->release();
  wordOf(mOther, "Name").text = K7Q::NSInterface::StringIntf::make(u"X");
  expect("the index of names contains all named objects: it lacks variant.SystemConst 'X' (number 2)");
}

TEST_F(Audit, SeesAnIdThatTwoObjectsHave) {
  Tarvelon::files::saveText(mModel);
  Word& id = *at(mOther).find(native::ClassData::kIdSlot);
  const Broken broken(id.bits, at(mConstant).find(native::ClassData::kIdSlot)->bits);
  EXPECT_TRUE(api::audit(mModel).starts_with("ids are unique: variant.SystemConst '"));
}

TEST_F(Audit, SeesAHistoryWithoutItsRoom) {
  api::setHistoryLimit(mModel, 2);
  mPackage.set<"Name">(u"1");
  mPackage.set<"Name">(u"2");
  {
    const Broken broken(reveal<LimitOf>(journal()), 1);
    expect("the history keeps at most its limit and has memory for it: it keeps more batches than its limit");
  }
  const Broken broken(reveal<LimitOf>(journal()), 1000);
  expect("the history keeps at most its limit and has memory for it: the memory is not reserved");
}

TEST_F(Audit, SeesBatchesThatDoNotEnd) {
  api::Transaction transaction(mModel);
  mPackage.set<"Name">(u"1");
  {
    const Broken broken(reveal<DepthOf>(journal()), 0);
    expect(
        "each open transaction is an open batch: 1 transactions are open, but batches are nested to a depth "
        "of 0");
  }
  transaction.commit();
  api::setHistoryLimit(mModel, 2);
  mPackage.set<"Name">(u"2");
  std::swap(reveal<OpenOf>(journal()), reveal<UndoOf>(journal())[0]);
  expect("no step is open after the last batch has ended: 1 steps are open");
  std::swap(reveal<OpenOf>(journal()), reveal<UndoOf>(journal())[0]);
}

TEST_F(Audit, SeesADestroyedObjectThatNoStepRestores) {
  at(mOther).setOwner(nullptr, 0);
  const Broken list(reveal<SizeOf>(elements()), 1);
  at(mOther).markDeleted();
  expect(
      "a destroyed object is kept only if a step can restore it: no step restores the destroyed "
      "variant.SystemConst 'D' (number 2)");
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
      "undo and redo have reserved memory: common.Package 'P' (number 0) has room for 0 more entries in its "
      "values, but undo or redo can add 1");
}

TEST_F(Audit, SeesRoomInAListThatTheJournalMisses) {
  api::setHistoryLimit(mModel, 2);
  mConstant.destroy();
  const Broken broken(reveal<CapacityOf>(elements()), 1);
  expect(
      "undo and redo have reserved memory: common.Package 'P' (number 0) has room for 0 more entries in its "
      "PackagedElement, but undo or redo can add 1");
}

TEST_F(Audit, SeesRoomForReferrersThatTheJournalMisses) {
  const auto other = behavior::InitEvent::create(mModel, u"F");
  Access<behavior::Event>(other, "StartOnEvent").set(mRunnable);
  api::setHistoryLimit(mModel, 2);
  Access<behavior::Event>(other, "StartOnEvent").unset();
  const Broken broken(referrersOf(mRunnable).bits, only(4, slotOf(mEvent, "StartOnEvent")));
  expect(
      "undo and redo have reserved memory: behavior.Runnable 'R' (number 3) has room for 0 more entries in "
      "its referrers, but undo or redo can add 1");
}

TEST_F(Audit, SeesAPlaceThatWasChangedWithoutAStep) {
  api::setHistoryLimit(mModel, 2);
  mPackage.set<"Name">(u"Q");
  native::Step& step = reveal<UndoOf>(journal())[0][0];
  {
    const Broken broken(step.after, step.before);
    expect(
        "every change is recorded in the journal: common.Package 'Q' (number 0) was changed without a step, "
        "in Name");
  }
  mPackage.get<"PackagedElement">().add(variant::SystemConst::create(mModel, u"X"));
  native::Step& last = reveal<UndoOf>(journal()).back()[0];
  const Broken broken(last.index, 7);
  expect(
      "every change is recorded in the journal: common.Package 'Q' (number 0) has in PackagedElement a list "
      "that is too short for a step");
}

#ifdef TARVELON_AUDIT
TEST_F(Audit, EndsAProcessWithTheInvariantTheObjectAndTheStep) {
  api::setHistoryLimit(mModel, 2);
  at(mOther).setDying(true);
  EXPECT_DEATH(mPackage.set<"Name">(u"Q"),
               "audit: no destruction is incomplete: variant.SystemConst 'D' .number 2. is only partly "
               "destroyed; found after common.Package 'Q' .number 0..Name: char vector \"[A-Z]\" -> char "
               "vector \"Q\"");
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
