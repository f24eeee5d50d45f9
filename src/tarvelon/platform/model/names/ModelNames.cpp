// The part of a model that keeps an index of names.
#include <memory>

#include "tarvelon/platform/model/names/NameIndex.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::metamodel::native {

const NameIndex& NativeModel::names() {
  if (mNames && !mNames->isComplete()) mNames.reset();
  if (!mNames) mNames = std::make_unique<NameIndex>(*this);
  return *mNames;
}

void NativeModel::enterName(const Instance& object, bool hadName) noexcept {
  mNames->noteName(object, hadName);
}

void NativeModel::enterOwner(const Instance& object) noexcept { mNames->noteOwner(object); }

}  // namespace Tarvelon::metamodel::native
