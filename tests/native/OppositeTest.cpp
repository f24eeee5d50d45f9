// Opposite references are kept consistent, whichever of the two is changed, and in whatever way.

#include <vector>

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

namespace {

namespace api = Tarvelon::model;
namespace native = Tarvelon::metamodel::native;
using K7Q::NSInterface::PropertyIntf;
namespace port = Tarvelon::metamodel::arplatform::port;

/// Runs the same changes on a model with a journal and on one without.
class Opposite : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    if (GetParam()) api::setHistoryLimit(mModel, 100);
  }
  void TearDown() override {
    shown::checkAgreement(mModel);
    if (!GetParam()) return;
    const std::string last = shown::everything(mModel);
    while (api::undo(mModel)) shown::checkAgreement(mModel);
    EXPECT_EQ(shown::everything(mModel), "");
    while (api::redo(mModel)) shown::checkAgreement(mModel);
    EXPECT_EQ(shown::everything(mModel), last);
  }

  behavior::Runnable runnable() { return behavior::Runnable::create(mModel); }
  behavior::InitEvent event() { return behavior::InitEvent::create(mModel); }
  static K7Q::SequenceHandle eventsOf(const behavior::Runnable& each) {
    return Access<behavior::Runnable>(each, "Events").sequence();
  }
  static void start(const behavior::InitEvent& each, const behavior::Runnable& what) {
    Access<behavior::Event>(each, "StartOnEvent").set(what);
  }
  static K7Q::Object startedBy(const behavior::InitEvent& each) {
    return Access<behavior::Event>(each, "StartOnEvent").get();
  }
  static Access<port::Port> optionOf(const K7Q::ClassObject& each) { return {each, "PortAPIOption"}; }
  static Access<behavior::PortAPIOption> portOf(const K7Q::ClassObject& each) { return {each, "Port"}; }
  static int size(const behavior::Runnable& each) { return eventsOf(each).get().generic_size({}); }

  K7Q::Model mModel = K7Q::Model::create();
};

/// Calls visit(property) for each property of the classes in a package and in its sub-packages.
template <class Visit>
void forEachProperty(const K7Q::NSInterface::PackageIntf& package, const Visit& visit) {
  for (const auto* cls : package.classes()) {
    for (unsigned id = 1; id <= cls->methods().numberOfProperties(); ++id) {
      if (const auto* property = cls->methods().descriptor(id)) visit(*property);
    }
  }
  for (const auto* below : package.subPackages()) forEachProperty(*below, visit);
}

}  // namespace

TEST(OppositeRows, NameEachOther) {
  int rows = 0;
  const auto root = Tarvelon::metamodel::native::metaPackage("Tarvelon.metamodel.arplatform");
  forEachProperty(*root.getPackage(), [&rows](const PropertyIntf& property) {
    const char* name = api::rowOf(property).opposite;
    if (!name) return;
    ++rows;
    const auto* type = api::findClass(property.typeName().view());
    ASSERT_NE(type, nullptr) << property.name();
    const unsigned id = idOf(*type, name);
    ASSERT_NE(id, 0U) << property.name();
    const PropertyIntf& back = *type->descriptor(id);
    ASSERT_NE(api::rowOf(back).opposite, nullptr) << property.name();
    EXPECT_STREQ(api::rowOf(back).opposite, property.name());
    EXPECT_EQ(back.typeName().view(), property.owner().name(false).view());
    for (const auto* each : {&property, &back}) {
      // Opposites must be stored references: not containment, not redefined, not derived.
      EXPECT_FALSE(each->isContainment());
      EXPECT_EQ(api::rowOf(*each).redefined, nullptr);
      EXPECT_EQ(api::rowOf(*each).derivation, Tarvelon::metamodel::Derivation::None);
    }
    EXPECT_NE(property.owner().name(false), type->name(false));
  });
  EXPECT_EQ(rows, 4);
}

TEST_P(Opposite, FollowsASetAnotherSetAndAnUnset) {
  const auto first = runnable();
  const auto second = runnable();
  const auto one = event();
  start(one, first);
  EXPECT_EQ(size(first), 1);
  start(one, first);
  EXPECT_EQ(size(first), 1);
  start(one, second);
  EXPECT_EQ(size(first), 0);
  EXPECT_EQ(size(second), 1);
  Access<behavior::Event>(one, "StartOnEvent").unset();
  EXPECT_EQ(size(second), 0);
}

TEST_P(Opposite, FollowsTheSequence) {
  const auto first = runnable();
  const auto second = runnable();
  const std::vector<behavior::InitEvent> events = {event(), event(), event()};
  const auto ofFirst = eventsOf(first);
  auto& sequence = ofFirst.get();
  sequence.generic_push_back({}, refOf(events[0]));
  sequence.generic_insert({}, 0, refOf(events[1]));
  EXPECT_TRUE(startedBy(events[0]) == first);
  EXPECT_TRUE(startedBy(events[1]) == first);
  sequence.generic_replace({}, 0, refOf(events[2]));
  EXPECT_TRUE(startedBy(events[1]).isNull());
  EXPECT_TRUE(startedBy(events[2]) == first);
  eventsOf(second).get().generic_push_front({}, refOf(events[2]));
  EXPECT_EQ(size(first), 1);
  EXPECT_TRUE(startedBy(events[2]) == second);
  sequence.generic_push_back({}, refOf(events[1]));
  sequence.generic_erase({}, 0);
  EXPECT_TRUE(startedBy(events[0]).isNull());
  sequence.generic_clear({});
  EXPECT_TRUE(startedBy(events[1]).isNull());
  EXPECT_EQ(size(second), 1);
}

TEST_P(Opposite, StaysWhereElementsOfTheSequenceChangePlaces) {
  const auto what = runnable();
  const std::vector<behavior::InitEvent> events = {event(), event(), event()};
  for (const auto& each : events) start(each, what);
  eventsOf(what).get().generic_replace({}, 0, refOf(events[2]));
  EXPECT_EQ(size(what), 3);
  EXPECT_TRUE(eventsOf(what).get().generic_at({}, 2).equals(refOf(events[0])));
  for (const auto& each : events) EXPECT_TRUE(startedBy(each) == what);
}

TEST_P(Opposite, LosesWhatIsDestroyedOnEitherSide) {
  const auto what = runnable();
  const std::vector<behavior::InitEvent> events = {event(), event(), event()};
  for (const auto& each : events) start(each, what);
  events[1].destroy();
  EXPECT_EQ(size(what), 2);
  what.destroy();
  EXPECT_TRUE(startedBy(events[0]).isNull());
  EXPECT_TRUE(startedBy(events[2]).isNull());
}

TEST_P(Opposite, OfASingleReferenceTakesThePartnersOfBoth) {
  const auto sender = port::DataSenderPort::create(mModel);
  const auto server = port::ServerPort::create(mModel);
  const auto first = behavior::PortAPIOption::create(mModel);
  const auto second = behavior::PortAPIOption::create(mModel);
  optionOf(sender).set(first);
  EXPECT_TRUE(portOf(first).get() == sender);
  portOf(second).set(server);
  EXPECT_TRUE(optionOf(server).get() == second);
  // Each of the two objects loses its former partner.
  optionOf(sender).set(second);
  EXPECT_TRUE(portOf(first).get().isNull());
  EXPECT_TRUE(optionOf(server).get().isNull());
  EXPECT_TRUE(portOf(second).get() == sender);
  portOf(first).set(sender);
  EXPECT_TRUE(portOf(second).get().isNull());
  portOf(first).unset();
  EXPECT_TRUE(optionOf(sender).get().isNull());
}

TEST_P(Opposite, LeavesAPortOfAnyOtherClass) {
  std::vector<K7Q::ClassObject> ports = {port::DataSenderPort::create(mModel),
                                         port::ServerPort::create(mModel),
                                         port::NvDataSenderReceiverPort::create(mModel),
                                         port::DataSenderReceiverPort::create(mModel),
                                         port::PersistencyProvidedRequiredPort::create(mModel),
                                         port::ServiceProvidedPort::create(mModel)};
  const auto option = behavior::PortAPIOption::create(mModel);
  for (const auto& from : ports) {
    for (const auto& to : ports) {
      optionOf(from).set(option);
      optionOf(to).set(option);
      for (const auto& each : ports) EXPECT_EQ(optionOf(each).has(), each == to);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Journals, Opposite, testing::Bool(),
                         [](const auto& mode) { return mode.param ? "WithHistory" : "WithoutHistory"; });
