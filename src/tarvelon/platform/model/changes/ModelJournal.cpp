// The part of a model that keeps a journal.
#include <memory>

#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::metamodel::native {

Journal& NativeModel::requireJournal() {
  if (!mJournal) mJournal = std::make_unique<Journal>(*this);
  return *mJournal;
}

void NativeModel::dropIdleJournal() noexcept {
  // A listener is running: it belongs to the journal, and the journal continues when the listener returns.
  if (mJournal && mJournal->isTelling()) return;
  // Freeing a listener may run any code: it may release the last handle of the model, or end the journal.
  addRef();
  while (mJournal && mJournal->takeLeft()) {
  }
  if (mJournal && mJournal->depth() == 0 && mJournal->limit() == 0 && !mJournal->hasListeners() &&
      !mJournal->isWatched()) {
    mJournal.reset();
  }
  release();
}

void NativeModel::expire(Instance& instance) noexcept {
  mInstances.leaveClass(instance);
  if (mJournal) mJournal->forget(instance);
  instance.expire();
}

}  // namespace Tarvelon::metamodel::native
