#include "tests/fuzz/World.h"

#include <algorithm>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tests/fuzz/Catalog.h"

namespace fuzz {

namespace {

constexpr std::size_t kMost = 64;
/// The first objects are never dropped: two models, and the factory of the first.
constexpr std::size_t kKept = 3;

constexpr const char* kFactory = "Tarvelon.metamodel.arplatform.Factory";
constexpr const char* kModel = "K7Q.Model";

using ruvo::HostValue;
using ruvo::RVOInterfacePtr;

RVOInterfacePtr callStatic(const char* cls, const char* method, std::span<const HostValue> arguments = {}) {
  return RVOInterfacePtr(ruvo::callStatic(ruvo::Class::get(cls), method, arguments).object());
}

bool isOpen(ruvo::RVOInterface* model) { return ruvo::call(model, "isvalid", {}).slot().logical(); }

void closeBoundModels() {
  const auto uris = callStatic(kModel, "uris");
  for (int left = ruvo::call(uris, "size", {}).slot().int32(); left > 0; --left) {
    const HostValue index = HostValue::ofInteger(left);
    const auto uri = ruvo::call(uris, "at", {&index, 1});
    const HostValue text = HostValue::ofText(hx::hxGetText(uri.slot().array()));
    const auto model = callStatic(kModel, "find", {&text, 1});
    if (model) ruvo::call(model, "close", {});
  }
}

}  // namespace

World::World() {
  addModel(kFactory, "createNewModel");
  addModel(kModel, "create");
  const HostValue model = HostValue::ofObject(mHeld.front().object);
  mHeld.push_back({callStatic(kFactory, "createNewFactory", {&model, 1}), {}});
}

World::~World() {
  mHeld.clear();
  closeBoundModels();
}

void World::addModel(const char* cls, const char* method) { mHeld.push_back({callStatic(cls, method), {}}); }

RVOInterfacePtr World::openModel() {
  for (std::size_t i = 0; i < kKept - 1; ++i) {
    if (isOpen(mHeld[i].object)) return mHeld[i].object;
  }
  mHeld[0].object = callStatic(kModel, "create");
  return mHeld[0].object;
}

void World::keep(ruvo::RVOInterface* object, ruvo::RVOInterface* self, Input& input) {
  if (!object || find(object)) return;
  Held held{RVOInterfacePtr(object), {}};
  const Kind kind = Catalog::instance().membersOf(ruvo::classOf(*object)).kind;
  if (kind == Kind::ValueIterator && self) {
    const Held* from = find(self);
    held.sequence = from && from->sequence ? from->sequence : RVOInterfacePtr(self);
  }
  if (mHeld.size() < kMost) {
    mHeld.push_back(std::move(held));
  } else {
    mHeld[kKept + input.below(kMost - kKept)] = std::move(held);
  }
}

void World::drop(std::size_t index) {
  if (index >= kKept) mHeld.erase(mHeld.begin() + static_cast<std::ptrdiff_t>(index));
}

Held* World::find(const ruvo::RVOInterface* object) noexcept {
  const auto found =
      std::find_if(mHeld.begin(), mHeld.end(), [&](const Held& each) { return each.object == object; });
  return found == mHeld.end() ? nullptr : &*found;
}

ruvo::RVOInterface* World::fitting(ruvo::Class& cls, std::size_t from) {
  for (std::size_t i = 0; i < mHeld.size(); ++i) {
    ruvo::RVOInterface* object = mHeld[(from + i) % mHeld.size()].object;
    if (ruvo::classOf(*object).isKindOf(cls)) return object;
  }
  return nullptr;
}

void World::forgetValueIterators() {
  std::erase_if(mHeld, [](const Held& each) { return each.sequence != nullptr; });
}

}  // namespace fuzz
