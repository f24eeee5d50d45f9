#include "bench/Model.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/BigModel.h"
#include "platform/tarvelon/Metamodel.h"
#include "platform/tarvelon/api/Search.h"

namespace bench {

namespace {

using namespace Tarvelon::metamodel::arplatform;
using Clock = std::chrono::steady_clock;

double since(Clock::time_point start) {
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

void reportSearch(const K7Q::Model& model, int behaviors) {
  const double before = bytesInUse();
  auto start = Clock::now();
  Tarvelon::model::find(model, u"/nothing");
  std::printf("  first search, which builds the index: %.1f ms, %.1f bytes an object\n", since(start) / 1e6,
              (bytesInUse() - before) / (behaviors * kObjectsOfABehavior));
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
  for (int i = 0; i < kElements; ++i) elements.add(variant::SystemConst::create(model, name("Const", i)));
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
    component.set<"Name">(name("Component", i));
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

void reportModel() { reportLarge(); }

}  // namespace bench
