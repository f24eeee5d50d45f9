#include "bench/Validation.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/api/Validation.h"

namespace bench {

namespace {

using namespace Tarvelon::metamodel::arplatform;  // NOLINT(google-build-using-namespace)

constexpr int kBehaviors = 1000;
constexpr int kRunnables = 100;
constexpr int kAccesses = 4;
constexpr int kEvents = 2;

/// A text of 24 UTF-16 units that ends with a number.
std::u16string name(char16_t kind, int number) {
  std::u16string text(24, u'0');
  text[0] = kind;
  for (std::size_t place = text.size() - 1; number > 0; number /= 10)
    text[place--] = static_cast<char16_t>(u'0' + number % 10);
  return text;
}

void addRunnable(const K7Q::Model& model, behavior::ApplicationComponentBehavior& owner, int number,
                 const interface::FlowData& data, const port::DataReceiverPort& from) {
  auto runnable = behavior::Runnable::create(model, name(u'S', number), name(u'R', number));
  owner.get<"Runnables">().add(runnable);
  for (int each = 0; each < kAccesses; ++each) {
    auto where = instance::FlowDataPortInstanceRef::create(model, data, from);
    runnable.get<"dataAccess">().add(behavior::FlowDataAccess::create(
        model, where, behavior::DataAccessKind(behavior::DataAccessKind::ImplicitRead), name(u'A', each)));
  }
  for (int each = 0; each < kEvents; ++each) {
    auto event = behavior::TimingEvent::create(model, 0.01, name(u'E', number * kEvents + each));
    event.set<"StartOnEvent">(runnable);
    owner.get<"Events">().add(event);
  }
}

/// Builds the model and returns the number of objects.
int build(const K7Q::Model& model) {
  auto root = common::Package::create(model, u"Vehicle");
  auto type = Tarvelon::metamodel::types::ImplementationDataType::create(model, u"UInt16");
  auto flow = interface::SenderReceiverInterface::create(model, false, u"Flow");
  auto data = interface::FlowData::create(model, u"%d", u"Value");
  data.set<"Type">(type);
  flow.get<"DataElements">().add(data);
  root.get<"PackagedElement">().add(type);
  root.get<"PackagedElement">().add(flow);
  for (int number = 0; number < kBehaviors; ++number) {
    auto mapping = instance::ComponentInstanceRef::create(model);
    auto component = component::AtomicComponent::create(model, mapping, name(u'C', number));
    auto from = port::DataReceiverPort::create(model, flow, u"In");
    component.get<"ReceiverPorts">().add(from);
    auto owner = behavior::ApplicationComponentBehavior::create(
        model, behavior::TerminateAndRestartKind(behavior::TerminateAndRestartKind::NoSupport), u"Behavior");
    component.set<"Behavior">(owner);
    root.get<"PackagedElement">().add(component);
    for (int each = 0; each < kRunnables; ++each) addRunnable(model, owner, each, data, from);
  }
  return 4 + kBehaviors * (4 + kRunnables * (1 + 2 * kAccesses + kEvents));
}

/// Measures a list in which every element has a fault. Each problem names the index in the list.
void reportFaultsInOneList(int count) {
  const auto model = K7Q::Model::create();
  const auto values = variant::SystemConstValueSet::create(model, u"Values");
  for (int each = 0; each < count; ++each) {
    values.get<"SysConstValue">().add(variant::SystemConstValue::create(model));
  }
  const std::clock_t started = std::clock();
  const std::size_t problems = K7Q::validate(values).size();
  const double seconds = static_cast<double>(std::clock() - started) / CLOCKS_PER_SEC;
  std::printf("validating a list of %d faults: %.0f ns of CPU time a fault, %zu problems\n", count,
              1e9 * seconds / count, problems);
}

}  // namespace

void reportValidation() {
  for (const int count : {10000, 100000}) reportFaultsInOneList(count);
  const auto model = K7Q::Model::create();
  const int objects = build(model);
  double best = 0;
  std::size_t problems = 0;
  for (int round = 0; round < 3; ++round) {
    const std::clock_t started = std::clock();
    problems = K7Q::validate(model).size();
    const double each = 1e9 * static_cast<double>(std::clock() - started) / CLOCKS_PER_SEC / objects;
    best = round == 0 ? each : std::min(best, each);
  }
  std::printf("validating %d objects: %.0f ns of CPU time an object, %zu problems\n", objects, best,
              problems);
}

}  // namespace bench
