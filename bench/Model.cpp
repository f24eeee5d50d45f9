#include "bench/Model.h"

#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <string>
#include <vector>

#include "platform/tarvelon/Metamodel.h"
#include "platform/tarvelon/api/History.h"
#include "platform/tarvelon/api/Search.h"

namespace bench {

namespace {

using namespace Tarvelon::metamodel::arplatform;
using Clock = std::chrono::steady_clock;

constexpr int kRunnables = 100;
constexpr int kObjectsOfABehavior = 1 + kRunnables * (1 + 4 * 2 + 2);
constexpr std::size_t kUnits = 24;
/// Behaviors, runnables, accesses and events have names.
constexpr int kNamesOfABehavior = 1 + kRunnables * (1 + 4 + 2);

std::size_t bytesInUse() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

double since(Clock::time_point start) {
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

/// A name of 24 units: a word and a number.
std::u16string name(const char16_t* word, int number) {
  std::u16string text(word);
  std::u16string digits;
  for (; number > 0 || digits.empty(); number /= 10)
    digits.insert(digits.begin(), static_cast<char16_t>(u'0' + number % 10));
  text.append(kUnits - text.size() - digits.size(), u'_');
  return text.append(digits);
}

struct Shared {
  interface::FlowData data;
  port::DataReceiverPort port;
};

behavior::ApplicationComponentBehavior makeBehavior(const K7Q::Model& model, const Shared& shared,
                                                    int number) {
  auto result = behavior::ApplicationComponentBehavior::create(model);
  result.set<"Name">(name(u"Behavior", number));
  for (int i = 0; i < kRunnables; ++i) {
    auto runnable = behavior::Runnable::create(model, name(u"step", i), name(u"Step", i));
    result.get<"Runnables">().add(runnable);
    for (int k = 0; k < 4; ++k) {
      auto access = behavior::FlowDataAccess::create(
          model, instance::FlowDataPortInstanceRef::create(model, shared.data, shared.port),
          behavior::DataAccessKind::ImplicitRead, name(u"Access", k));
      runnable.get<"dataAccess">().add(access);
    }
    for (int k = 0; k < 2; ++k) {
      auto event = behavior::TimingEvent::create(model, 0.01, name(u"Event", 2 * i + k));
      event.set<"StartOnEvent">(runnable);
      result.get<"Events">().add(event);
    }
  }
  return result;
}

struct Figures {
  long objects;
  double build;
  double bytes;
  double destroy;
};

Shared makeShared(const K7Q::Model& model) {
  return {interface::FlowData::create(model), port::DataReceiverPort::create(model)};
}

Figures measure(int behaviors) {
  const auto before = bytesInUse();
  const auto model = K7Q::Model::create();
  const Shared shared = makeShared(model);
  const auto start = Clock::now();
  for (int i = 0; i < behaviors; ++i) makeBehavior(model, shared, i);
  const double build = since(start);
  const long objects = static_cast<long>(behaviors) * kObjectsOfABehavior;
  const double text = 2.0 * kUnits * (kNamesOfABehavior + kRunnables) * behaviors;
  const double bytes = static_cast<double>(bytesInUse() - before) - text;
  const auto end = Clock::now();
  model.getModelInterface()->close();
  return {objects, build / static_cast<double>(objects), bytes / static_cast<double>(objects),
          since(end) / static_cast<double>(objects)};
}

void reportCurve() {
  std::printf(
      "models of behaviors with 100 runnables each; nanoseconds and bytes an object, names of 24 units\n");
  std::printf("  %9s %8s %8s %8s\n", "objects", "build", "bytes", "close");
  for (const int behaviors : {9, 91, 1000, 4542}) {
    const Figures figures = measure(behaviors);
    std::printf("  %9ld %8.0f %8.1f %8.0f\n", figures.objects, figures.build, figures.bytes, figures.destroy);
  }
}

void reportSearch(const K7Q::Model& model, int behaviors) {
  const auto before = bytesInUse();
  auto start = Clock::now();
  Tarvelon::model::find(model, u"/nothing");
  std::printf("  first search, which builds the index: %.1f ms, %.1f bytes an object\n", since(start) / 1e6,
              static_cast<double>(bytesInUse() - before) / (behaviors * kObjectsOfABehavior));
  std::vector<std::u16string> paths;
  paths.reserve(100000);
  for (int i = 0; i < 100000; ++i) {
    paths.push_back(u"/" + name(u"Component", i * 7 % behaviors) + u"/" +
                    name(u"Behavior", i * 7 % behaviors) + u"/" + name(u"Step", i * 13 % kRunnables) + u"/" +
                    name(u"Access", i % 4));
  }
  start = Clock::now();
  long found = 0;
  for (const auto& path : paths) found += Tarvelon::model::find(model, path).isNull() ? 0 : 1;
  std::printf("  find a path of four names: %.0f ns (%ld of 100000 found)\n", since(start) / 1e5, found);
  start = Clock::now();
  const auto runnables =
      Tarvelon::model::instances(model, behavior::Runnable::Interface::sIntrospectiveMethods);
  std::printf("  instances: %.1f ns each of %zu\n", since(start) / static_cast<double>(runnables.size()),
              runnables.size());
}

void reportRemoval(const K7Q::Model& model) {
  constexpr int kElements = 100000;
  auto package = common::Package::create(model, u"Elements");
  auto elements = package.get<"PackagedElement">();
  for (int i = 0; i < kElements; ++i) elements.add(variant::SystemConst::create(model, name(u"Const", i)));
  const auto start = Clock::now();
  auto& sequence = elements.get();
  while (!sequence.generic_empty(elements.getDeviant())) sequence.generic_erase(elements.getDeviant(), 0);
  std::printf("  take the first of 100000 elements out, to the last: %.0f ns each\n",
              since(start) / kElements);
}

void reportLarge() {
  constexpr int kBehaviors = 1000;
  const auto model = K7Q::Model::create();
  const Shared shared = makeShared(model);
  std::vector<component::AtomicComponent> components;
  for (int i = 0; i < kBehaviors; ++i) {
    auto component = component::AtomicComponent::create(model);
    component.set<"Name">(name(u"Component", i));
    component.set<"Behavior">(makeBehavior(model, shared, i));
    components.push_back(component);
  }
  std::printf("a model of %d objects\n", kBehaviors * (kObjectsOfABehavior + 1));
  reportSearch(model, kBehaviors);
  reportRemoval(model);
  auto vehicle = common::Package::create(model, u"Vehicle");
  for (const auto& component : components) vehicle.get<"PackagedElement">().add(component);
  components.clear();
  const int objects = kBehaviors * (kObjectsOfABehavior + 1);
  const auto start = Clock::now();
  vehicle.destroy();
  std::printf("  destroy it by its root: %.0f ns an object\n", since(start) / objects);
}

}  // namespace

void reportModel() {
  reportCurve();
  reportLarge();
}

}  // namespace bench
