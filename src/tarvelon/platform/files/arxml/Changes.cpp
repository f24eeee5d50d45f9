#include "tarvelon/platform/files/arxml/Changes.h"

#include <algorithm>

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/hx/Utf.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/Referrers.h"

namespace Tarvelon::files::arxml {

namespace common = metamodel::arplatform::common;
using native::Instance;
using native::Word;

std::string pathOf(const Instance& object, ClassShapes& shapes) {
  std::string path;
  for (const Instance* each = &object; each; each = each->owner()) {
    const ClassShape& shape = shapes.of(each->cls());
    const Word* name = shape.isNamed() ? each->find(each->cls().nameSlot) : nullptr;
    if (name && name->text) {
      path.insert(0, "/" + hx::toUtf8(name->text->view()));
    } else if (each == &object) {
      return {};
    }
  }
  return path;
}

Changes::Changes(native::NativeModel& model, const Sources& sources, ClassShapes& shapes)
    : mSources(sources), mShapes(shapes) {
  std::uint32_t most = 0;
  model.forEachInstance([&most](const Instance& object) { most = std::max(most, object.number()); });
  mMarks.assign(most + 1U, false);
  std::vector<Instance*> moved;
  const native::ClassData& package = native::tableOf(common::Package::Interface::kName).data();
  const native::ClassData& base = native::tableOf(common::ReferenceBase::Interface::kName).data();
  bool haveBasesChanged = false;
  model.forEachInstance([&](Instance& object) {
    // A new object has changed too: it got an owner.
    if (!object.hasChanged()) return;
    mark(object);
    haveBasesChanged |= &object.cls() == &package || &object.cls() == &base;
    SourcePlace source;
    if (findSource(object, source) && hasMoved(object)) moved.push_back(&object);
  });
  for (Instance* object : moved) markReferrers(*object);
  if (haveBasesChanged) markRelative(model);
}

/// Marks all objects with relative references.
void Changes::markRelative(const native::NativeModel& model) {
  model.forEachInstance([this](const Instance& object) {
    SourcePlace source;
    if (!findSource(object, source)) return;
    if (std::ranges::binary_search(mSources.files[source.file].relative, source.element)) mark(object);
  });
}

void Changes::addDivided(const native::NativeModel& model) {
  model.forEachInstance([this](const Instance& object) {
    SourcePlace source;
    if (findSource(object, source) && !othersOf(mSources, source).empty()) mark(object);
  });
}

void Changes::mark(const Instance& object) {
  for (const Instance* each = &object; each && !mMarks[each->number()]; each = each->owner())
    mMarks[each->number()] = true;
}

bool Changes::hasMoved(const Instance& object) const {
  SourcePlace source;
  findSource(object, source);
  return pathOf(object, mShapes) != mSources.files[source.file].document.pathOf(source.element);
}

void Changes::markReferrers(Instance& root) {
  std::vector<Instance*> left{&root};
  while (!left.empty()) {
    Instance& object = *left.back();
    left.pop_back();
    if (Word* word = object.find(Instance::kReferrerSlot)) {
      native::Referrers(word->bits).forEach([&](native::Referrer referrer) {
        mark(object.model().instance(referrer.instance));
      });
    }
    native::forEachHeld(object, [&left](Instance& held, unsigned /*slot*/) { left.push_back(&held); });
  }
}

}  // namespace Tarvelon::files::arxml
