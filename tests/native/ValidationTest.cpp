// Problems that editing cannot cause: the tests change internal data directly.
// tests/python/test_validation.py tests the problems that editing can cause.

#include <algorithm>
#include <set>

#include "tarvelon/platform/model/api/Validation.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/words/WordList.h"
#include "tests/native/Support.h"

namespace {

namespace native = Tarvelon::metamodel::native;
using native::Instance;
using native::Word;

Instance& instanceOf(const K7Q::ObjectHandle& object) {
  return *static_cast<Instance*>(static_cast<K7Q::NSInterface::ClassObjectIntf*>(object.getInterface()));
}

/// The stored word of a property that has a value, by the property's meta name.
Word& wordOf(const K7Q::ObjectHandle& object, std::string_view metaName) {
  Instance& instance = instanceOf(object);
  const auto& properties = instance.cls().slotProperties;
  for (unsigned slot = 0; slot < properties.size(); ++slot) {
    if (properties[slot]->metaName() == metaName && instance.has(slot)) return *instance.find(slot);
  }
  throw std::logic_error("the property has no value");
}

/// Replaces a word for the length of a scope. The model must be correct again before it is destroyed.
class Forced {
 public:
  Forced(Word& word, Word forced) : mWord(word), mKept(word) { mWord = forced; }
  ~Forced() { mWord = mKept; }
  Forced(const Forced&) = delete;
  Forced& operator=(const Forced&) = delete;

 private:
  Word& mWord;
  Word mKept;
};

/// The same for an element of a list.
class ForcedEntry {
 public:
  ForcedEntry(Word& list, std::uint32_t index, Instance* entry)
      : mList(*list.list), mIndex(index), mKept(mList.at(index)) {
    mList.set(index, Word{.object = entry});
  }
  ~ForcedEntry() { mList.set(mIndex, mKept); }
  ForcedEntry(const ForcedEntry&) = delete;
  ForcedEntry& operator=(const ForcedEntry&) = delete;

 private:
  native::WordList& mList;
  std::uint32_t mIndex;
  Word mKept;
};

std::string lineOf(const K7Q::Problem& problem) {
  return problem.path + "." + problem.property + ": " + problem.message + " [" + problem.rule + "]";
}

std::vector<std::string> linesOf(const K7Q::Model& model) {
  std::vector<std::string> lines;
  for (const auto& problem : K7Q::validate(model)) lines.push_back(lineOf(problem));
  return lines;
}

/// A package with two constants and a formula that refers to one of them.
class Validation : public testing::Test {
 protected:
  void SetUp() override {
    axles.set<"category">(u"VALUE");
    root.get<"PackagedElement">().add(axles);
    root.get<"PackagedElement">().add(wheels);
    root.get<"PackagedElement">().add(values);
    values.get<"SysConstValue">().add(value);
    root.get<"PackagedElement">().add(variants);
    variants.get<"SysConstValueSet">().add(values);
  }

  K7Q::Model model = K7Q::Model::create();
  K7Q::Model other = K7Q::Model::create();
  common::Package root = common::Package::create(model, u"Top");
  variant::SystemConst axles = variant::SystemConst::create(model, u"Axles");
  variant::SystemConst wheels = variant::SystemConst::create(model, u"Wheels");
  variant::SystemConstValueSet values = variant::SystemConstValueSet::create(model, u"Values");
  variant::SystemConstValue value = variant::SystemConstValue::create(model, 2.0, axles);
  variant::PredefinedVariant variants = variant::PredefinedVariant::create(model, u"Variant");
};

using Lines = std::vector<std::string>;

}  // namespace

TEST_F(Validation, FindsNothingInAModelThatIsRight) { EXPECT_EQ(linesOf(model), Lines{}); }

TEST_F(Validation, FindsAReferenceToADestroyedObject) {
  auto gone = variant::SystemConst::create(model, u"Gone");
  Instance* shell = &instanceOf(gone);
  gone.destroy();
  const Forced forced(wordOf(value, "SysConst"), Word{.object = shell});
  EXPECT_EQ(linesOf(model),
            Lines{"/Top/Values.SysConstValue[0].SysConst: refers to a SystemConst that was destroyed; set "
                  "another one, or remove the reference [dangling-reference]"});
}

TEST_F(Validation, FindsAReferenceToAnotherModel) {
  auto package = common::Package::create(other, u"Elsewhere");
  auto foreign = variant::SystemConst::create(other, u"Foreign");
  package.get<"PackagedElement">().add(foreign);
  const Forced forced(wordOf(value, "SysConst"), Word{.object = &instanceOf(foreign)});
  EXPECT_EQ(linesOf(model),
            Lines{"/Top/Values.SysConstValue[0].SysConst: refers to /Elsewhere/Foreign of another model; "
                  "create the object in this model and refer to that one [foreign-reference]"});
}

TEST_F(Validation, FindsAValueOfAWiderClassThanTheOneThatRedefines) {
  namespace port = Tarvelon::metamodel::arplatform::port;
  namespace interface = Tarvelon::metamodel::arplatform::interface;
  auto travel = interface::SenderReceiverInterface::create(model, false, u"Travel");
  auto test = interface::ClientServerInterface::create(model, false, u"Test");
  root.get<"PackagedElement">().add(travel);
  root.get<"PackagedElement">().add(test);
  const auto sender = port::DataSenderPort::create(model, travel, u"Sender");
  const Forced forced(wordOf(sender, "Interface"), Word{.object = &instanceOf(test)});
  ASSERT_EQ(K7Q::validate(sender).size(), 1U);
  EXPECT_EQ(lineOf(K7Q::validate(sender)[0]),
            "/Sender.Interface: expected SenderReceiverInterface, found the ClientServerInterface /Top/Test; "
            "set an object of that class or of a subclass [wrong-class]");
}

TEST_F(Validation, FindsAnObjectThatTwoHold) {
  auto second = variant::SystemConstValueSet::create(model, u"Second");
  root.get<"PackagedElement">().add(second);
  second.get<"SysConstValue">().add(variant::SystemConstValue::create(model, 1.0, wheels));
  const ForcedEntry forced(wordOf(second, "SysConstValue"), 0, &instanceOf(value));
  EXPECT_EQ(linesOf(model),
            Lines{"/Top/Second.SysConstValue: contains SystemConstValue, which is also contained elsewhere; "
                  "an object has one owner: remove it here or there [ownership]"});
}

TEST_F(Validation, FindsASequenceThatNamesAnObjectTwice) {
  auto second = variant::SystemConstValueSet::create(model, u"Second");
  root.get<"PackagedElement">().add(second);
  variants.get<"SysConstValueSet">().add(second);
  const ForcedEntry forced(wordOf(variants, "SysConstValueSet"), 1, &instanceOf(values));
  EXPECT_EQ(linesOf(model), Lines{"/Top/Variant.SysConstValueSet: contains the same object twice; remove the "
                                  "second entry [multiplicity]"});
}

TEST_F(Validation, FindsAnEmptyEntry) {
  const ForcedEntry forced(wordOf(variants, "SysConstValueSet"), 0, nullptr);
  EXPECT_EQ(linesOf(model),
            Lines{"/Top/Variant.SysConstValueSet: has an empty entry; remove it [multiplicity]"});
}

TEST_F(Validation, FindsAnEnumerationWithoutLiteral) {
  auto event = behavior::ModeSwitchEvent::create(model, behavior::ModeActivationKind::OnExit, u"Event");
  const Forced forced(wordOf(event, "Activation"), native::wordOf(std::int32_t{7}));
  ASSERT_FALSE(K7Q::validate(event).empty());
  EXPECT_EQ(lineOf(K7Q::validate(event)[0]),
            "/Event.activation: has the value 7, which is no literal; set one of 'OnEntry', 'OnExit', "
            "'OnTransition' [unknown-literal]");
}

TEST_F(Validation, LeavesToOthersWhatIsBrokenAlready) {
  auto event = behavior::ModeSwitchEvent::create(model, behavior::ModeActivationKind::OnExit, u"Event");
  const Forced forced(wordOf(event, "Activation"), native::wordOf(std::int32_t{7}));
  EXPECT_EQ(K7Q::validate(event).size(), 1U);
}

TEST_F(Validation, NamesEachRuleOnce) {
  std::set<std::string> ids;
  for (const auto& rule : K7Q::validationRules()) EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
  EXPECT_GT(ids.size(), 40U);
}

TEST_F(Validation, ListsWhatItLooksAtByClass) {
  const auto constants = K7Q::validatedObjects(model, "Tarvelon.metamodel.arplatform.variant.SystemConst");
  ASSERT_EQ(constants.size(), 2U);
  EXPECT_EQ(constants[0], axles);
  EXPECT_EQ(K7Q::validatedObjects(root, "Tarvelon.metamodel.foundation.NamedElement").size(), 5U);
  EXPECT_EQ(refusalOf<K7Q::UnknownName>([&] { K7Q::validatedObjects(model, "SystemConst"); }),
            "validatedObjects: there is no class 'SystemConst' in the metamodel; give its full name, as in "
            "'Tarvelon.metamodel.arplatform.behavior.Runnable'");
}

TEST_F(Validation, RefusesWhatIsNotValid) {
  root.destroy();
  expectNullReference([&] { K7Q::validate(root); });
  expectNullReference([&] { K7Q::pathOf(root); });
  model.getModelInterface()->close();
  expectNullReference([&] { K7Q::validate(model); });
}

TEST_F(Validation, TellsWhereAnObjectStands) {
  EXPECT_EQ(K7Q::pathOf(value), "/Top/Values.SysConstValue[0]");
  EXPECT_EQ(K7Q::pathOf(common::AdminData::create(model)), "(AdminData)");
  auto irv = behavior::IrvData::create(model);
  auto point = variant::VariationPoint::create(model);
  irv.set<"variationPoint">(point);
  irv.set<"Name">(u"Shared");
  EXPECT_EQ(K7Q::pathOf(point), "/Shared.variationPoint");
}
