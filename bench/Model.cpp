#include "bench/Model.h"

#include <cstdio>
#include <string>
#include <vector>

#include "bench/BigModel.h"
#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/api/Search.h"

namespace bench {

namespace {

using namespace Tarvelon::metamodel::arplatform;

void reportSearch(const K7Q::Model& model, int behaviors) {
  const double before = bytesInUse();
  const double index = secondsOf([&] { Tarvelon::model::find(model, u"/nothing"); });
  std::printf("  first search, which builds the index: %.1f ms, %.1f bytes an object\n", 1e3 * index,
              (bytesInUse() - before) / (behaviors * kObjectsOfABehavior));
  std::size_t found = 0;
  const double all = secondsOf([&] {
    found = Tarvelon::model::instances(model, behavior::Runnable::Interface::sIntrospectiveMethods).size();
  });
  std::printf("  instances: %.1f ns each of %zu\n", 1e9 * all / static_cast<double>(found), found);
}

void reportRemoval(const K7Q::Model& model) {
  constexpr int kElements = 100000;
  auto package = common::Package::create(model, u"Elements");
  auto elements = package.get<"PackagedElement">();
  for (int i = 0; i < kElements; ++i) elements.add(variant::SystemConst::create(model, name("Const", i)));
  const double seconds = secondsOf([&] {
    auto& sequence = elements.get();
    while (!sequence.generic_empty(elements.getDeviant())) sequence.generic_erase(elements.getDeviant(), 0);
  });
  std::printf("  take the first of 100000 elements out, to the last: %.0f ns each\n",
              1e9 * seconds / kElements);
}

void reportLarge() {
  constexpr int kBehaviors = 1000;
  const auto model = K7Q::Model::create();
  auto components = makeComponents(model, kBehaviors);
  std::printf("a model of %d objects\n", kBehaviors * (kObjectsOfABehavior + 1));
  reportSearch(model, kBehaviors);
  reportRemoval(model);
  const int objects = kBehaviors * (kObjectsOfABehavior + 1);
  const double seconds = destroyByRoot(model, components);
  std::printf("  destroy it by its root: %.0f ns an object\n", 1e9 * seconds / objects);
}

}  // namespace

void reportModel() { reportLarge(); }

}  // namespace bench
