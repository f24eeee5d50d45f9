#include "tarvelon/platform/model/api/History.h"

#include <algorithm>
#include <exception>
#include <new>
#include <tuple>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/values/Values.h"

namespace Tarvelon::model {

namespace native = metamodel::native;
using native::Instance;
using native::Journal;
using native::NativeModel;
using native::Step;

namespace {

NativeModel& requireWritable(const K7Q::Model& model) {
  NativeModel& native = NativeModel::require(model);
  K7Q::DeviantAssertions::assertWritable(model.getDeviant(), &native);
  return native;
}

void requireOutside(const NativeModel& model, const char* what) {
  const Journal* journal = model.journal();
  if (!journal) return;
  journal->requireQuiet();
  if (journal->depth() != 0) {
    throw K7Q::Exception(std::string("cannot ") + what +
                         " while a transaction of the model is open; commit it or roll it back first");
  }
}

/// The word of a step as an object: a single value or an element of a list.
K7Q::Object valueOf(const Step& step, native::Word word, bool isThere, K7Q::Deviant deviant) {
  if (!isThere) return {};
  const native::Property& property = *step.object->cls().slotProperties[step.slot];
  switch (property.storage()) {
    case native::Storage::References:
      return {word.object, deviant};
    case native::Storage::Texts:
      return word.text ? K7Q::Object(word.text, K7Q::Deviant{}) : K7Q::Object(K7Q::String());
    case native::Storage::Enumerations:
      return property.enumeration()->box(native::integerOf(word));
    default:
      return native::toObject(property, &word, deviant);
  }
}

Change::Kind kindOf(const Step& step) noexcept {
  switch (step.kind) {
    case Step::Kind::Value:
      return Change::Kind::Set;
    case Step::Kind::Move:
    case Step::Kind::Exchange:
      return Change::Kind::Moved;
    case Step::Kind::Life:
      return step.hasAfter ? Change::Kind::Made : Change::Kind::Destroyed;
    case Step::Kind::Element:
      break;
  }
  if (step.hasBefore && step.hasAfter) return Change::Kind::Replaced;
  return step.hasAfter ? Change::Kind::Added : Change::Kind::Removed;
}

Change changeOf(const Step& step, K7Q::Deviant deviant) {
  Change change;
  change.kind = kindOf(step);
  change.object = K7Q::ClassObject(step.object, deviant);
  if (step.kind == Step::Kind::Life) return change;
  change.property = step.object->cls().slotProperties[step.slot];
  if (change.kind == Change::Kind::Moved) {
    change.from = static_cast<std::uint32_t>(step.before.bits);
    change.index = static_cast<std::uint32_t>(step.after.bits);
    return change;
  }
  change.index = step.index;
  change.before = valueOf(step, step.before, step.hasBefore, deviant);
  change.after = valueOf(step, step.after, step.hasAfter, deviant);
  return change;
}

void addChanges(std::vector<Change>& changes, const Step& step, K7Q::Deviant deviant) {
  changes.push_back(changeOf(step, deviant));
  if (step.kind != Step::Kind::Exchange) return;
  // A swap is reported as moves: the later element moves forward, then the earlier one moves back.
  Change& forward = changes.back();
  std::tie(forward.index, forward.from) = std::minmax({forward.from, forward.index});
  if (forward.from - forward.index == 1) return;
  Change back = forward;
  back.from = forward.index + 1;
  back.index = forward.from;
  changes.push_back(std::move(back));
}

/// The listener receives handles with the view of the handle that was given to listen().
Journal::Listener adapt(Listener listener, K7Q::Deviant deviant) {
  return [listener = std::move(listener), deviant](std::span<const Step> steps, const Instance* object) {
    std::vector<Change> changes;
    try {
      for (const Step& step : steps) {
        if (!object || step.object == object) addChanges(changes, step, deviant);
      }
    } catch (const std::bad_alloc&) {
      changes.clear();
    }
    listener(changes);
  };
}

std::uint64_t addListener(NativeModel& model, K7Q::Deviant deviant, Listener listener,
                          const Instance* object) {
  try {
    return model.requireJournal().listen(adapt(std::move(listener), deviant), object);
  } catch (...) {
    model.dropIdleJournal();
    throw;
  }
}

}  // namespace

Transaction::Transaction(const K7Q::Model& model) : mModel(model) {
  NativeModel& native = requireWritable(model);
  Journal& journal = native.requireJournal();
  journal.requireQuiet();
  try {
    mId = journal.beginTransaction();
  } catch (...) {
    native.dropIdleJournal();
    throw;
  }
}

// Closing a model ends its transactions.
Transaction::~Transaction() {
  if (isOpen()) rollBack();
}

bool Transaction::isOpen() const noexcept {
  if (!mModel.isValid()) return false;
  const Journal* journal = NativeModel::require(mModel).journal();
  return journal && journal->isOpen(mId);
}

void Transaction::requireOpen() const {
  NativeModel::require(mModel);
  if (!isOpen()) throw K7Q::Exception("the transaction has ended already; begin a new one");
}

void Transaction::commit() {
  requireOpen();
  NativeModel& model = NativeModel::require(mModel);
  if (!model.journal()->isInnermost(mId)) {
    throw K7Q::Exception("a nested transaction is still open; end it first");
  }
  model.journal()->commit();
  model.dropIdleJournal();
  native::auditAfter(model);
}

void Transaction::rollBack() {
  requireOpen();
  NativeModel& model = NativeModel::require(mModel);
  model.journal()->rollBackTransaction(mId);
  model.dropIdleJournal();
  native::auditAfter(model);
}

void setHistoryLimit(const K7Q::Model& model, std::size_t limit) {
  NativeModel& native = requireWritable(model);
  requireOutside(native, "change the limit of the history");
  if (limit > kMostBatches) {
    throw K7Q::OutOfRange("limit of the history: expected 0 to " + std::to_string(kMostBatches) + ", got " +
                          std::to_string(limit));
  }
  if (limit == 0 && !native.journal()) return;
  native.requireJournal().setLimit(limit);
  native.dropIdleJournal();
  native::auditAfter(native);
}

std::size_t historyLimit(const K7Q::Model& model) {
  const Journal* journal = NativeModel::require(model).journal();
  return journal ? journal->limit() : 0;
}

std::size_t undoable(const K7Q::Model& model) {
  const Journal* journal = NativeModel::require(model).journal();
  return journal ? journal->undoable() : 0;
}

std::size_t redoable(const K7Q::Model& model) {
  const Journal* journal = NativeModel::require(model).journal();
  return journal ? journal->redoable() : 0;
}

// A listener may release the caller's handle, and with it the model.
bool undo(const K7Q::Model& model) {
  const K7Q::Model kept(model);  // NOLINT(performance-unnecessary-copy-initialization)
  NativeModel& native = requireWritable(kept);
  requireOutside(native, "undo");
  if (undoable(model) == 0) return false;
  native.journal()->undo();
  native::auditAfter(native);
  return true;
}

bool redo(const K7Q::Model& model) {
  const K7Q::Model kept(model);  // NOLINT(performance-unnecessary-copy-initialization)
  NativeModel& native = requireWritable(kept);
  requireOutside(native, "redo");
  if (redoable(model) == 0) return false;
  native.journal()->redo();
  native::auditAfter(native);
  return true;
}

DelayedTelling::DelayedTelling() noexcept { native::Batch::delay(mDelay); }
DelayedTelling::~DelayedTelling() { native::Batch::endDelay(mDelay); }

Undertaking::Undertaking() noexcept : mExceptions(std::uncaught_exceptions()) {
  mDelay.made = &mMade;
  native::Batch::delay(mDelay);
}

Undertaking::~Undertaking() {
  const bool hasFailed = std::uncaught_exceptions() > mExceptions;
  if (native::Batch::endDelay(mDelay, hasFailed) || !hasFailed) return;
  // Without a journal: the created object is destroyed, which needs no memory.
  Instance* made = native::asInstance(mMade.getInterface());
  if (made && made->isAlive()) native::destroyTree(*made);
}

std::uint64_t listen(const K7Q::Model& model, Listener listener) {
  return addListener(NativeModel::require(model), model.getDeviant(), std::move(listener), nullptr);
}

std::uint64_t listen(const K7Q::ClassObject& object, Listener listener) {
  const Instance* instance = native::asInstance(object.getInterface());
  if (!instance) native::raiseNullReference();
  if (!instance->isAlive()) native::raiseLost(*instance);
  return addListener(instance->model(), object.getDeviant(), std::move(listener), instance);
}

void unlisten(const K7Q::Model& model, std::uint64_t listener) {
  if (!model.isValid()) return;
  NativeModel& native = NativeModel::require(model);
  if (!native.journal()) return;
  native.journal()->unlisten(listener);
  native.dropIdleJournal();
}

}  // namespace Tarvelon::model
