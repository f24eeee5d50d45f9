// The live views of many-valued properties.

#include "tests/native/SequenceFixture.h"

namespace {

using TextSequence = Sequence;

}  // namespace

TEST_F(Sequence, IsEmptyAtFirst) {
  EXPECT_EQ(sequence().generic_size({}), 0);
  EXPECT_TRUE(sequence().generic_empty({}));
  expectAssertion(kEmpty, [&] { sequence().generic_front({}); });
  expectAssertion(kEmpty, [&] { sequence().generic_back({}); });
  expectAssertion(kEmpty, [&] { sequence().generic_pop_front({}); });
  expectAssertion(kEmpty, [&] { sequence().generic_pop_back({}); });
  EXPECT_TRUE(begin().getInterface()->equal(end().getInterface()));
  EXPECT_FALSE((Access<variant::SystemConstDependentFormula>(mFormula, "SysConst").has()));
}

TEST_F(Sequence, ShowsElementsInOrder) {
  fill();
  EXPECT_EQ(names(), "abc");
  EXPECT_TRUE(sequence().generic_front({}).equals(ref(0)));
  EXPECT_TRUE(sequence().generic_at({}, 1).equals(ref(1)));
  EXPECT_TRUE(sequence().generic_back({}).equals(ref(2)));
  EXPECT_TRUE((Access<variant::SystemConstDependentFormula>(mFormula, "SysConst").has()));
}

TEST_F(Sequence, CarriesTheDeviantOfTheReader) {
  fill();
  EXPECT_EQ(sequence().generic_at(mModel.frozen().getDeviant(), 0).second(), K7Q::Deviant::kFrozen);
}

TEST_F(Sequence, TestsEveryIndex) {
  fill();
  expectAssertion(kNegative, [&] { sequence().generic_at({}, -1); });
  expectAssertion(kBeyond, [&] { sequence().generic_at({}, 3); });
  expectAssertion(kNegative, [&] { sequence().generic_erase({}, -1); });
  expectAssertion(kBeyond, [&] { sequence().generic_erase({}, 3); });
  expectAssertion(kNegative, [&] { sequence().generic_insert({}, -1, ref(0)); });
  expectAssertion(kBeyond, [&] { sequence().generic_insert({}, 4, ref(0)); });
  expectAssertion(kNegative, [&] { sequence().generic_replace({}, -1, ref(0)); });
  expectAssertion(kBeyond, [&] { sequence().generic_replace({}, 3, ref(0)); });
  EXPECT_EQ(names(), "abc");
}

TEST_F(Sequence, AddsAtBothEndsAndBetween) {
  sequence().generic_push_front({}, ref(1));
  sequence().generic_push_front({}, ref(0));
  sequence().generic_insert({}, 2, ref(2));
  EXPECT_EQ(names(), "abc");
  mConstants.push_back(variant::SystemConst::create(mModel, u"d"));
  sequence().generic_insert({}, 1, ref(3));
  EXPECT_EQ(names(), "adbc");
}

TEST_F(Sequence, HoldsAReferenceOnce) {
  fill();
  sequence().generic_push_back({}, ref(0));
  sequence().generic_push_front({}, ref(2));
  EXPECT_EQ(names(), "abc");
}

TEST_F(Sequence, MovesAnElementThatIsInsertedAgain) {
  fill();
  sequence().generic_insert({}, 3, ref(0));
  EXPECT_EQ(names(), "bca");
  sequence().generic_insert({}, 0, ref(0));
  EXPECT_EQ(names(), "abc");
  sequence().generic_insert({}, 1, ref(2));
  EXPECT_EQ(names(), "acb");
  sequence().generic_insert({}, 1, ref(2));
  sequence().generic_insert({}, 2, ref(2));
  EXPECT_EQ(names(), "acb");
}

TEST_F(Sequence, ReplacesAnElement) {
  fill();
  mConstants.push_back(variant::SystemConst::create(mModel, u"d"));
  sequence().generic_replace({}, 1, ref(3));
  EXPECT_EQ(names(), "adc");
  sequence().generic_replace({}, 1, ref(3));
  EXPECT_EQ(names(), "adc");
  // Destroying the replaced constant has no effect; destroying the new one removes it from the sequence.
  mConstants[1].destroy();
  mConstants[3].destroy();
  EXPECT_EQ(names(), "ac");
}

TEST_F(Sequence, ExchangesElementsWhenOneReplacesAnother) {
  fill();
  sequence().generic_replace({}, 0, ref(2));
  EXPECT_EQ(names(), "cba");
  sequence().generic_replace({}, 1, ref(0));
  EXPECT_EQ(names(), "cab");
  sequence().generic_replace({}, 1, ref(0));
  EXPECT_EQ(names(), "cab");
  for (const auto& constant : mConstants) EXPECT_TRUE(sequence().generic_contains({}, refOf(constant)));
}

TEST_F(Sequence, TakesAnotherOrderAsAWhole) {
  fill();
  rewrite({2, 0, 1});
  EXPECT_EQ(names(), "cab");
  rewrite({2, 1, 0});
  EXPECT_EQ(names(), "cba");
  rewrite({2, 1, 0});
  EXPECT_EQ(names(), "cba");
}

TEST_F(Sequence, TakesOtherContentsAsAWhole) {
  fill();
  for (const char16_t* name : {u"d", u"e"}) mConstants.push_back(variant::SystemConst::create(mModel, name));
  rewrite({3, 2, 4, 0, 3});
  EXPECT_EQ(names(), "dcea");
  EXPECT_FALSE(sequence().generic_contains({}, ref(1)));
  rewrite({});
  EXPECT_EQ(names(), "");
}

TEST_F(Sequence, StaysAsItIsWhenOneOfItsNewElementsIsRefused) {
  fill();
  const auto foreign = variant::SystemConst::create(K7Q::Model::create(), u"x");
  const std::vector refs{ref(2), refOf(foreign)};
  refusalOf<K7Q::WrongValue>([&] { rewritable(sequence()).rewrite({}, refs); });
  EXPECT_EQ(names(), "abc");
}

TEST_F(Sequence, ThatHoldsIsSeenInItsOrderByWhatIsComputedOfIt) {
  const auto package = common::Package::create(mModel, u"P");
  const auto elements = Access<foundation::Package>(package, "PackagedElement").sequence();
  const auto owned = Access<foundation::Element>(package, "OwnedElement").sequence();
  for (const auto& constant : mConstants) elements.get().generic_push_back({}, refOf(constant));
  EXPECT_TRUE(owned.get().generic_at({}, 0).equals(ref(0)));
  elements.get().generic_insert({}, 0, ref(2));
  EXPECT_TRUE(owned.get().generic_at({}, 0).equals(ref(2)));
  elements.get().generic_replace({}, 0, ref(1));
  EXPECT_TRUE(owned.get().generic_at({}, 0).equals(ref(1)));
}

TEST_F(Sequence, TakesElementsOut) {
  fill();
  sequence().generic_erase({}, 1);
  EXPECT_EQ(names(), "ac");
  sequence().generic_pop_front({});
  EXPECT_EQ(names(), "c");
  sequence().generic_pop_back({});
  EXPECT_EQ(names(), "");
  fill();
  EXPECT_EQ(sequence().generic_removeAll({}, ref(1)), 1);
  EXPECT_EQ(sequence().generic_removeAll({}, ref(1)), 0);
  EXPECT_EQ(names(), "ac");
  sequence().generic_clear({});
  EXPECT_EQ(names(), "");
  EXPECT_NO_THROW(sequence().generic_clear({}));
}

TEST_F(Sequence, TellsWhatItContains) {
  fill();
  EXPECT_TRUE(sequence().generic_contains({}, ref(1)));
  EXPECT_FALSE(sequence().generic_contains({}, refOf(variant::SystemConst::create(mModel, u"a"))));
  EXPECT_FALSE(sequence().generic_contains({}, refOf(mFormula)));
  EXPECT_FALSE(sequence().generic_contains({}, K7Q::Generic::Ref()));
  EXPECT_FALSE(sequence().generic_contains({}, refOf(K7Q::Object(K7Q::Integer(1)))));
}

TEST_F(Sequence, DoesNotTakeANumberInAnotherModelForItsOwn) {
  fill();
  const auto other = K7Q::Model::create();
  const auto formula = variant::SystemConstDependentFormula::create(other, u"f");
  const auto constant = variant::SystemConst::create(other, u"x");
  formula.get<"SysConst">().add(constant);
  EXPECT_FALSE(sequence().generic_contains({}, refOf(constant)));
}

TEST_F(Sequence, ChecksElementsLikeASet) {
  fill();
  EXPECT_EQ(
      refusalOf<K7Q::WrongType>([&] { sequence().generic_push_back({}, refOf(mFormula)); }),
      "SystemConstDependentFormula.SysConst: expected Tarvelon.metamodel.arplatform.variant.SystemConst, got "
      "Tarvelon.metamodel.arplatform.variant.SystemConstDependentFormula; give an object of that class or of "
      "a subclass");
  EXPECT_EQ(
      refusalOf<K7Q::WrongValue>([&] { sequence().generic_push_back({}, K7Q::Generic::Ref()); }),
      "SystemConstDependentFormula.SysConst: expected Tarvelon.metamodel.arplatform.variant.SystemConst, got "
      "nothing; give an object of that class or of a subclass");
  const auto foreign = variant::SystemConst::create(K7Q::Model::create(), u"x");
  refusalOf<K7Q::WrongValue>([&] { sequence().generic_insert({}, 0, refOf(foreign)); });
  const auto gone = variant::SystemConst::create(mModel, u"y");
  gone.destroy();
  refusalOf<K7Q::WrongValue>([&] { sequence().generic_replace({}, 0, refOf(gone)); });
  EXPECT_EQ(names(), "abc");
}

TEST_F(Sequence, ThatIsImmutableRefusesEveryChange) {
  fill();
  const auto handle = Access<variant::SystemConstDependentFormula>(mFormula, "SysConst").sequence(true);
  auto& view = handle.get();
  const K7Q::IteratorHandle at(view.generic_begin({}), {});
  const auto expectRefusal = [](auto call) {
    EXPECT_EQ(refusalOf(call),
              "this sequence of SystemConstDependentFormula.SysConst is immutable and cannot be changed; use "
              "the sequence of the mutable object");
  };
  expectRefusal([&] { view.generic_push_back({}, ref(0)); });
  expectRefusal([&] { view.generic_push_front({}, ref(0)); });
  expectRefusal([&] { view.generic_pop_back({}); });
  expectRefusal([&] { view.generic_pop_front({}); });
  expectRefusal([&] { view.generic_clear({}); });
  expectRefusal([&] { view.generic_insert({}, 0, ref(0)); });
  expectRefusal([&] { view.generic_insert({}, at.getInterface(), ref(0)); });
  expectRefusal([&] { view.generic_erase({}, 0); });
  expectRefusal([&] { view.generic_erase({}, at.getInterface()); });
  expectRefusal([&] { view.generic_erase({}, at.getInterface(), at.getInterface()); });
  expectRefusal([&] { view.generic_replace({}, 0, ref(0)); });
  expectRefusal([&] { view.generic_removeAll({}, ref(0)); });
  expectRefusal([&] { view.specialized_assign(&sequence()); });
  EXPECT_EQ(view.generic_size({}), 3);
}

TEST_F(Sequence, ThatIsComputedIsAlwaysImmutable) {
  const auto handle = Access<foundation::Element>(mFormula, "OwnedElement").sequence(false);
  EXPECT_EQ(refusalOf([&] { handle.get().generic_push_back({}, ref(0)); }),
            "SystemConstDependentFormula.OwnedElement is read-only and cannot be changed; change the values "
            "that it is computed from");
  EXPECT_STREQ(handle.get().generic_getRuvoName(false, false, ""),
               "Tarvelon.metamodel.foundation.ImmutableSequenceOfElement");
}

TEST_F(Sequence, RefusesChangesOnADeviantThatMayNotBeWritten) {
  fill();
  const auto frozen = mModel.frozen().getDeviant();
  EXPECT_THROW(sequence().generic_clear(frozen), K7Q::Exception);
  EXPECT_THROW(sequence().generic_push_back(frozen, ref(0)), K7Q::Exception);
  EXPECT_EQ(names(), "abc");
}

TEST_F(Sequence, IsNamedAfterItsElements) {
  const auto name = [&](bool isSequenceImmutable, bool isElementImmutable) {
    return std::string(sequence().generic_getRuvoName(isSequenceImmutable, isElementImmutable, "x"));
  };
  const std::string package = "Tarvelon.metamodel.arplatform.variant.";
  EXPECT_EQ(name(false, false), package + "SequenceOfSystemConst");
  EXPECT_EQ(name(true, false), package + "ImmutableSequenceOfSystemConst");
  EXPECT_EQ(name(false, true), package + "SequenceOfImmutableSystemConst");
  EXPECT_EQ(name(true, true), package + "ImmutableSequenceOfImmutableSystemConst");
}

TEST_F(Sequence, IsTheListItself) {
  const auto second = Access<variant::SystemConstDependentFormula>(mFormula, "SysConst").sequence();
  EXPECT_NE(second.getInterface(), mSequence.getInterface());
  fill();
  EXPECT_EQ(second.get().generic_size({}), 3);
  EXPECT_TRUE(second.get().specialized_equal(mSequence.getInterface()));
  mConstants[1].destroy();
  EXPECT_EQ(second.get().generic_size({}), 2);
}

TEST_F(Sequence, TakesOverTheElementsOfAnother) {
  fill();
  const auto other = Access<variant::SystemConstDependentFormula>(mFormula, "SysCString").sequence();
  EXPECT_FALSE(other.get().specialized_equal(mSequence.getInterface()));
  EXPECT_TRUE(other.get().specialized_assign(mSequence.getInterface()));
  EXPECT_TRUE(other.get().specialized_equal(mSequence.getInterface()));
  EXPECT_TRUE(other.get().specialized_assign(other.getInterface()));
  const auto value = variant::SystemConstValue::create(mModel);
  const auto texts = Access<variant::SystemConstValue>(value, "ValueVariationPoint").sequence();
  EXPECT_FALSE(other.get().specialized_assign(texts.getInterface()));
  EXPECT_FALSE(other.get().specialized_assign(nullptr));
  EXPECT_EQ(other.get().generic_size({}), 3);
}

TEST_F(Sequence, KeepsTheModelAlive) {
  fill();
  const K7Q::SequenceHandle handle = mSequence;
  mSequence = K7Q::SequenceHandle();
  mConstants.clear();
  mFormula = variant::SystemConstDependentFormula();
  mModel = K7Q::Model();
  EXPECT_EQ(handle.get().generic_size({}), 3);
}

TEST_F(Sequence, OfADestroyedObjectRaises) {
  fill();
  mFormula.destroy();
  expectNullReference([&] { sequence().generic_size({}); });
  expectNullReference([&] { sequence().generic_begin({}); });
  expectNullReference([&] { sequence().generic_contains({}, ref(0)); });
  expectNullReference([&] { sequence().generic_push_back({}, ref(0)); });
}

TEST_F(TextSequence, KeepsTextsAndDuplicates) {
  const auto value = variant::SystemConstValue::create(mModel);
  const Access<variant::SystemConstValue> points(value, "ValueVariationPoint");
  const auto handle = points.sequence();
  auto& texts = handle.get();
  const auto text = [](const char16_t* characters) { return K7Q::makeStringRef(K7Q::String(characters)); };
  texts.generic_push_back({}, text(u"b"));
  texts.generic_push_front({}, text(u"a"));
  texts.generic_push_back({}, text(u"b"));
  texts.generic_insert({}, 2, text(u""));
  EXPECT_EQ(texts.generic_size({}), 4);
  EXPECT_TRUE(points.has());
  EXPECT_TRUE(texts.generic_at({}, 0).equals(text(u"a")));
  EXPECT_TRUE(texts.generic_at({}, 2).equals(text(u"")));
  EXPECT_TRUE(texts.generic_contains({}, text(u"b")));
  EXPECT_FALSE(texts.generic_contains({}, text(u"c")));
  EXPECT_EQ(texts.generic_removeAll({}, text(u"b")), 2);
  texts.generic_replace({}, 1, text(u"z"));
  EXPECT_TRUE(texts.generic_back({}).equals(text(u"z")));
  EXPECT_STREQ(texts.generic_getRuvoName(false, false, ""), "K7Q.SequenceOfString");
  EXPECT_STREQ(texts.generic_getRuvoName(true, true, ""), "K7Q.ImmutableSequenceOfString");
}

TEST_F(TextSequence, IsChangedAsAWholeWhereItDiffers) {
  const auto value = variant::SystemConstValue::create(mModel);
  const auto handle = Access<variant::SystemConstValue>(value, "ValueVariationPoint").sequence();
  const auto expectAfter = [&](const std::vector<const char16_t*>& texts) {
    std::vector<K7Q::Generic::Ref> refs;
    refs.reserve(texts.size());
    for (const char16_t* text : texts) refs.push_back(K7Q::makeStringRef(K7Q::String(text)));
    rewritable(handle.get()).rewrite({}, refs);
    ASSERT_EQ(handle.get().generic_size({}), static_cast<int>(refs.size()));
    for (std::size_t i = 0; i < refs.size(); ++i)
      EXPECT_TRUE(handle.get().generic_at({}, static_cast<int>(i)).equals(refs[i])) << i;
  };
  expectAfter({u"a", u"b", u"c", u"b"});
  expectAfter({u"a", u"b"});
  expectAfter({u"a", u"x", u"y", u"b"});
  expectAfter({u"b", u"y", u"x", u"a"});
  expectAfter({u"y"});
  expectAfter({});
}

TEST_F(TextSequence, RefusesTextThatNoFileCouldHold) {
  const auto value = variant::SystemConstValue::create(mModel);
  const auto handle = Access<variant::SystemConstValue>(value, "ValueVariationPoint").sequence();
  EXPECT_EQ(refusalOf<K7Q::WrongValue>(
                [&] { handle.get().generic_push_back({}, K7Q::makeStringRef(K7Q::String(u"a\xDC00"))); }),
            "SystemConstValue.ValueVariationPoint: expected Unicode text that a file can hold, got the lone "
            "surrogate U+DC00 at position 2; remove it");
  refusalOf<K7Q::WrongValue>([&] { handle.get().generic_push_back({}, K7Q::Generic::Ref()); });
  EXPECT_TRUE(handle.get().generic_empty({}));
}

TEST_F(Sequence, ThatHoldsMovesAndReleases) {
  const auto first = common::Package::create(mModel, u"A");
  const auto second = common::Package::create(mModel, u"B");
  const auto elements = [](const common::Package& package) {
    return Access<foundation::Package>(package, "PackagedElement").sequence();
  };
  elements(first).get().generic_push_back({}, ref(0));
  elements(first).get().generic_push_back({}, ref(1));
  elements(second).get().generic_push_back({}, ref(2));
  elements(second).get().generic_replace({}, 0, ref(0));
  EXPECT_EQ(elements(first).get().generic_size({}), 1);
  EXPECT_TRUE(mConstants[2].get<"Namespace">().isNull());
  EXPECT_TRUE(mConstants[0].get<"Namespace">() == second);
  elements(first).get().generic_clear({});
  EXPECT_TRUE(mConstants[1].isValid());
  EXPECT_TRUE(mConstants[1].get<"Namespace">().isNull());
}

TEST_F(Sequence, StaysInOrderThroughManyInsertionsAndErasures) {
  std::vector<variant::SystemConst> expected;
  for (int step = 0; step < 2000; ++step) {
    const auto size = static_cast<int>(expected.size());
    const int place = size == 0 ? 0 : step * 7919 % (size + 1);
    if (step % 5 == 4 || step > 1600) {
      const int out = step % 3 == 0 ? 0 : step * 31 % size;
      sequence().generic_erase({}, out);
      expected.erase(expected.begin() + out);
    } else {
      const auto constant = variant::SystemConst::create(mModel);
      sequence().generic_insert({}, step % 2 == 0 ? 0 : place, refOf(constant));
      expected.insert(expected.begin() + (step % 2 == 0 ? 0 : place), constant);
    }
    ASSERT_EQ(sequence().generic_size({}), static_cast<int>(expected.size()));
    if (expected.empty()) break;
  }
  for (std::size_t i = 0; i < expected.size(); ++i) {
    ASSERT_TRUE(sequence().generic_at({}, static_cast<int>(i)).equals(refOf(expected[i])));
  }
}
