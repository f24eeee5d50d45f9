// Saving models to files and loading them.

#include <bit>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/words/WordList.h"
#include "tests/files/Support.h"
#include "tests/support/SmallStack.h"

namespace {

namespace native = Tarvelon::metamodel::native;

/// Loads the text of a model and saves it again.
std::string again(const std::string& text) { return files::saveText(files::loadText(text).model); }

/// A behavior with a runnable and two events that start it.
K7Q::Model makeBehavior() {
  auto model = K7Q::Model::create();
  const auto owner = behavior::ApplicationComponentBehavior::create(
      model, behavior::TerminateAndRestartKind::NoSupport, u"Behavior");
  const auto step = behavior::Runnable::create(model, u"step", u"Step");
  owner.get<"Runnables">().add(step);
  for (const char16_t* name : {u"Each10ms", u"Each20ms"}) {
    const auto event = behavior::TimingEvent::create(model, 0.01, name);
    event.set<"StartOnEvent">(step);
    owner.get<"Events">().add(event);
    step.get<"Events">().add(event);
  }
  return model;
}

/// The internal list, which counts its changes.
const native::WordList& eventsOf(const K7Q::ClassObject& runnable) {
  const auto& instance = *static_cast<native::Instance*>(runnable.getClassObject());
  const auto& properties = instance.cls().slotProperties;
  for (unsigned slot = 0; slot < properties.size(); ++slot) {
    if (properties[slot]->metaName() == "Events" && instance.has(slot)) return *instance.find(slot)->list;
  }
  throw std::logic_error("the list was never filled");
}

TEST(SaveAndLoad, WritesOneValueALineAndNestsWhatIsHeld) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model, u"Brakes");
  package.set<"category">(u"STANDARD");
  package.get<"PackagedElement">().add(variant::SystemConst::create(model, u"Wheels"));
  EXPECT_EQ(objectsOf(files::saveText(model)),
            "  <common:Package xmi:id=\"_EPbT0ioBv_I\"\n"
            "      Name=\"Brakes\"\n"
            "      category=\"STANDARD\"\n"
            "  >\n"
            "    <PackagedElement xsi:type=\"variant:SystemConst\" xmi:id=\"_ASdLO-BSTaM\"\n"
            "        Name=\"Wheels\"\n"
            "    />\n"
            "  </common:Package>\n");
}

TEST(SaveAndLoad, GivesTheSameTextAgain) {
  const std::string text = files::saveText(makeBehavior());
  EXPECT_EQ(again(text), text);
}

TEST(SaveAndLoad, GivesAModelThatIsBuiltAgainTheSameText) {
  EXPECT_EQ(files::saveText(makeBehavior()), files::saveText(makeBehavior()));
}

TEST(SaveAndLoad, MakesReferencesForwardAndBackInTheirOrder) {
  const std::string text = files::saveText(makeBehavior());
  const auto first = text.find("Events=\"\n            _");
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(text.substr(first + 33, 14), "\n            _") << "a line each";
  EXPECT_EQ(again(text), text);
}

TEST(SaveAndLoad, KeepsTheOrderOfAListThatItsWayBackFillsFirst) {
  const auto model = K7Q::Model::create();
  std::vector<behavior::TimingEvent> events;
  for (const char16_t* name : {u"First", u"Second", u"Third"})
    events.push_back(behavior::TimingEvent::create(model, 0.01, name));
  const auto step = behavior::Runnable::create(model, u"step", u"Step");
  for (const std::size_t place : {2U, 0U, 1U}) step.get<"Events">().add(events[place]);
  const std::string text = files::saveText(model);
  EXPECT_EQ(again(text), text);
  const auto third = text.find("Third");
  const auto id = text.substr(text.rfind("xmi:id=\"", third) + 8, 12);
  EXPECT_NE(text.find("Events=\"\n          " + id + "\n"), std::string::npos) << text;
}

TEST(SaveAndLoad, PutsWhatAnAttributeListsBeforeWhatTheWayBackPutIn) {
  // Elements in order, then an earlier one, one that is not in the list yet, and one that was skipped.
  std::string objects = "<behavior:Runnable xmi:id=\"s\" Events=\"a d f b\"/>";
  for (const char* id : {"a", "b", "c", "d", "e"})
    objects += std::string("<behavior:TimingEvent xmi:id=\"") + id + "\" StartOnEvent=\"s\"/>";
  objects += "<behavior:TimingEvent xmi:id=\"f\"/>";
  // With and without another list that is filled later.
  for (const char* next : {"<behavior:Runnable Events=\"g\"/><behavior:TimingEvent xmi:id=\"g\"/>", ""}) {
    const std::string saved = files::saveText(files::loadText(fileOf(objects + next)).model);
    EXPECT_NE(
        saved.find(
            "Events=\"\n          a\n          d\n          f\n          b\n          c\n          e\n"),
        std::string::npos)
        << saved;
  }
}

TEST(SaveAndLoad, ArrangesAListOnce) {
  constexpr std::uint32_t kEvents = 1000;
  std::string events;
  std::string ids;
  for (std::uint32_t number = 0; number < kEvents; ++number) {
    events += "<behavior:TimingEvent xmi:id=\"e" + std::to_string(number) + "\" StartOnEvent=\"s\"/>";
    ids += "e" + std::to_string((number + kEvents / 2) % kEvents) + " ";
  }
  const std::string runnable = "<behavior:Runnable xmi:id=\"s\" Events=\"" + ids + "\"/>";
  const auto model = files::loadText(fileOf(runnable + events)).model;
  const auto all = Tarvelon::model::objects(model);
  ASSERT_EQ(all.size(), 1 + kEvents);
  const native::WordList& list = eventsOf(all[0]);
  EXPECT_EQ(list.at(0).object, all[1 + kEvents / 2].getClassObject());
  EXPECT_EQ(list.at(kEvents - 1).object, all[kEvents / 2].getClassObject());
  EXPECT_EQ(list.changes(), kEvents + 1) << "each has come, and then all were arranged";
}

TEST(SaveAndLoad, MakesTheWayBackThatAFileLeavesOut) {
  const std::string text = fileOf(
      "<behavior:Runnable xmi:id=\"r\"/><behavior:TimingEvent xmi:id=\"a\" StartOnEvent=\"r\"/>"
      "<behavior:TimingEvent xmi:id=\"b\"/><behavior:Runnable xmi:id=\"s\" Events=\"b\"/>");
  const std::string saved = files::saveText(files::loadText(text).model);
  EXPECT_NE(saved.find("Events=\"\n          a\n      \""), std::string::npos) << saved;
  EXPECT_NE(saved.find("StartOnEvent=\"s\""), std::string::npos) << saved;
}

TEST(SaveAndLoad, KeepsEveryTextAsItIs) {
  for (const std::u16string text :
       {u" blanks around ", u"tab\tline\nreturn\r\r\n", u"<a b=\"c\" d='e'>&amp;]]></a>",
        u"\x7F\x85\xA0\u2028\uFFFD", u"\U0001F600 \U0010FFFF \U0001FFFE", u"\u00E4\u0800\uD7FF\uE000"}) {
    const auto model = K7Q::Model::create();
    common::Package::create(model, text);
    variant::SystemConstValue::create(model).get<"ValueVariationPoint">().add(K7Q::String(text));
    EXPECT_EQ(again(files::saveText(model)), files::saveText(model));
    const auto loaded = files::loadText(files::saveText(model));
    EXPECT_TRUE(files::saveText(loaded.model) == files::saveText(model));
  }
}

TEST(SaveAndLoad, KeepsTextsLongerThanEveryBuffer) {
  const auto model = K7Q::Model::create();
  std::u16string text(500001, u'x');
  for (std::size_t place = 0; place < text.size(); place += 7) text[place] = u'\u00E4';
  const auto name = common::Package::create(model, text);
  const std::string saved = files::saveText(model);
  EXPECT_GT(saved.size(), text.size());
  EXPECT_EQ(again(saved), saved);
}

TEST(SaveAndLoad, KeepsEveryDoubleToItsLastBit) {
  std::string objects;
  for (const char* value :
       {"0.1", "-0", "5e-324", "1.7976931348623157e+308", "NaN", "-Infinity", "Infinity", "3"})
    objects += std::string("  <foundation:NumericalValueSpecification Value=\"") + value + "\"/>\n";
  const std::string saved = objectsOf(again(fileOf(objects)));
  for (const char* value :
       {"0.1", "-0", "5e-324", "1.7976931348623157e+308", "NaN", "-Infinity", "Infinity", "3"})
    EXPECT_NE(saved.find(std::string("Value=\"") + value + "\""), std::string::npos) << value << saved;
}

TEST(SaveAndLoad, KeepsAnEmptyTextThatIsSetAndNoneThatIsNot) {
  const auto model = K7Q::Model::create();
  common::Package::create(model);
  common::Package::create(model, u"");
  const std::string saved = objectsOf(again(files::saveText(model)));
  EXPECT_NE(saved.find("Name=\"\""), std::string::npos) << saved;
  EXPECT_EQ(saved.find("Name"), saved.rfind("Name")) << saved;
}

TEST(SaveAndLoad, SavesAnEmptyModel) {
  const std::string saved = files::saveText(K7Q::Model::create());
  EXPECT_EQ(objectsOf(saved), "");
  EXPECT_EQ(again(saved), saved);
}

TEST(SaveAndLoad, SaysHowMuchIsDone) {
  std::vector<double> done;
  const auto note = [&done](double fraction) { done.push_back(fraction); };
  const auto model = K7Q::Model::create();
  for (int count = 0; count < 40000; ++count) common::Package::create(model, u"Package");
  const std::string text = files::saveText(model, {note, true});
  ASSERT_EQ(done.size(), 3U);
  EXPECT_NEAR(done[0], 0.41, 0.01);
  EXPECT_EQ(done.back(), 1);
  done.clear();
  files::loadText(text, {note, false});
  ASSERT_EQ(done.size(), 1 + text.size() / (1 << 20));
  EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
  EXPECT_EQ(done.back(), 1);
}

TEST(SaveAndLoad, EndsWithWhatTheProgressRaises) {
  struct Cancelled {};
  const auto cancel = [](double) { throw Cancelled(); };
  const auto model = makeBehavior();
  EXPECT_THROW(files::saveText(model, {cancel, true}), Cancelled);
  EXPECT_THROW(files::loadText(files::saveText(model), {cancel, false}), Cancelled);
}

TEST(SaveAndLoad, RefusesAProgressThatChangesTheModel) {
  const auto model = K7Q::Model::create();
  std::vector<common::Package> packages;
  packages.reserve(20000);
  for (int count = 0; count < 20000; ++count) packages.push_back(common::Package::create(model, u"Package"));
  const std::string refusal =
      "the model was changed or closed while it was saved; the progress function and other threads must not "
      "change it";
  const auto add = [&](double) { common::Package::create(model, u"New"); };
  EXPECT_EQ(refusalOf([&] { files::saveText(model, {add, true}); }), refusal);
  const auto destroy = [&](double done) {
    if (done < 1) packages.back().destroy();
  };
  EXPECT_EQ(refusalOf([&] { files::saveText(model, {destroy, true}); }), refusal);
  const auto rename = [&](double) { packages.front().set<"Name">(u"Renamed"); };
  EXPECT_EQ(refusalOf([&] { files::saveText(model, {rename, true}); }), refusal);
  const auto close = [&](double) { model.getModelInterface()->close(); };
  EXPECT_EQ(refusalOf([&] { files::saveText(model, {close, true}); }), refusal);
}

TEST(SaveAndLoad, KeepsAModelOfWhichTheProgressDropsTheLastHandle) {
  auto model = K7Q::Model::create();
  for (int count = 0; count < 20000; ++count) common::Package::create(model, u"Package");
  const std::string expected = files::saveText(model);
  EXPECT_EQ(files::saveText(model, {[&](double) { model = K7Q::Model(); }, true}), expected);
  EXPECT_FALSE(model.isValid());
}

TEST(SaveAndLoad, RefusesAProgressThatTakesBackOrMakesAgain) {
  const auto model = K7Q::Model::create();
  for (int count = 0; count < 20000; ++count) common::Package::create(model, u"Package");
  Tarvelon::model::setHistoryLimit(model, 10);
  common::Package::create(model, u"New");
  const auto step = [&](bool (*take)(const K7Q::Model&)) {
    return refusalOf([&] { files::saveText(model, {[&](double) { take(model); }, true}); });
  };
  EXPECT_NE(step(Tarvelon::model::undo).find("was changed"), std::string::npos);
  EXPECT_NE(step(Tarvelon::model::redo).find("was changed"), std::string::npos);
}

TEST(SaveAndLoad, RefusesAProgressThatMovesWhatIsBeingWritten) {
  const auto model = K7Q::Model::create();
  const auto owner = common::Package::create(model, u"Owner");
  const auto next = common::Package::create(model, u"Next");
  std::vector<common::Package> held;
  held.reserve(20000);
  for (int count = 0; count < 20000; ++count) held.push_back(common::Package::create(model, u"Package"));
  for (const auto& each : held) owner.get<"PackagedElement">().add(each);
  const auto move = [&](double done) {
    for (const auto& each : held) {
      if (done < 1) next.get<"PackagedElement">().add(each);
    }
  };
  EXPECT_NE(refusalOf([&] { files::saveText(model, {move, true}); }).find("was changed"), std::string::npos);
  EXPECT_EQ(next.get<"PackagedElement">().size(), 20000);
}

TEST(SaveAndLoad, RefusesAProgressThatChangesTheModelInATransaction) {
  const auto model = K7Q::Model::create();
  for (int count = 0; count < 20000; ++count) common::Package::create(model, u"Package");
  const std::string text = files::saveText(model);
  {
    const Tarvelon::model::Transaction transaction(model);
    common::Package::create(model, u"New");
    const auto more = [&](double) { common::Package::create(model, u"Newer"); };
    EXPECT_NE(refusalOf([&] {
                files::saveText(model, {more, true});
              }).find("was changed"),
              std::string::npos);
    const auto none = [&](double) { const Tarvelon::model::Transaction inner(model); };
    EXPECT_NE(files::saveText(model, {none, true}), text);
  }
  EXPECT_EQ(files::saveText(model), text);
}

TEST(SaveAndLoad, LetsTheProgressChangeAnotherModel) {
  const auto model = K7Q::Model::create();
  for (int count = 0; count < 20000; ++count) common::Package::create(model, u"Package");
  const auto other = [](double) { common::Package::create(K7Q::Model::create(), u"Other").destroy(); };
  EXPECT_EQ(files::saveText(model, {other, true}), files::saveText(model));
}

TEST(SaveAndLoad, RefusesToNestDeeperThanAFileMay) {
  const auto model = K7Q::Model::create();
  auto above = common::Package::create(model, u"Top");
  for (int depth = 1; depth < files::kMaxDepth; ++depth) {
    const auto below = common::Package::create(model, u"Below");
    above.get<"PackagedElement">().add(below);
    above = below;
  }
  const std::string text = files::saveText(model);
  EXPECT_EQ(again(text), text);
  above.get<"PackagedElement">().add(common::Package::create(model, u"TooDeep"));
  for (int turn = 0; turn < 2; ++turn) {
    EXPECT_EQ(refusalOf([&] { files::saveText(model); }),
              "a Package is nested more than 1000 levels deep, the maximum of a file; nest the objects less "
              "deeply");
  }
}

TEST(SaveAndLoad, NeedsNoStackForWhatIsNested) {
  host::onSmallStack([] {
    const auto model = K7Q::Model::create();
    auto above = common::Package::create(model, u"Top");
    for (int depth = 1; depth < files::kMaxDepth; ++depth) {
      const auto below = common::Package::create(model, u"Below");
      above.get<"PackagedElement">().add(below);
      above = below;
    }
    const std::string text = files::saveText(model);
    EXPECT_EQ(again(text), text);
    EXPECT_GT(files::ecoreText().size(), 100000U);
  });
}

TEST(SaveAndLoad, RefusesAClosedModel) {
  const auto model = K7Q::Model::create();
  model.getModelInterface()->close();
  expectNullReference([&] { files::saveText(model); });
}

TEST(SaveAndLoad, LeavesTheProblemsOfALenientLoadWithTheModel) {
  auto loaded = files::loadText(fileOf("<common:Package Nam=\"Brakes\"/>"), {nullptr, true});
  const K7Q::Model model = loaded.model;
  loaded = {K7Q::Model::create(), {}};
  EXPECT_EQ(problemsOf(files::problems(model)),
            "3:17 common:Package has no property 'Nam'; did you mean 'Name'?\n");
  EXPECT_EQ(files::problems(model).count, 1U);
  EXPECT_EQ(files::problems(loaded.model).count, 0U);
  model.getModelInterface()->close();
  EXPECT_EQ(files::problems(model).count, 1U);
  EXPECT_EQ(files::problems({}).count, 0U);
}

}  // namespace
