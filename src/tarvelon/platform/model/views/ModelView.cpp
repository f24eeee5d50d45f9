// The life of a model, and what it answers through the interface of the boundary.

#include <typeinfo>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tarvelon/platform/k7q/handles/ModelFactory.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/metamodel/Described.h"
#include "tarvelon/platform/model/names/NameIndex.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::metamodel::native {

NativeModel::NativeModel(std::u16string uri) : mUri(std::move(uri)) {}

K7Q::Model NativeModel::make(const std::u16string& uri) { return {new NativeModel(uri), K7Q::Deviant{}}; }

NativeModel& NativeModel::require(const K7Q::Model& model) {
  auto* interface = model.getModelInterface();
  if (!interface) raiseNullReference();
  if (typeid(*interface) != typeid(NativeModel)) {
    throw K7Q::WrongType("expected a model of the native model library, got " + describe(model) +
                         "; create one with K7Q.Model.create()");
  }
  auto& native = *static_cast<NativeModel*>(interface);
  if (native.mIsClosed) raiseLost(native);
  return native;
}

// No handle on the model or on one of its objects is left.
NativeModel::~NativeModel() {
  Batch::forget(*this);
  mJournal.reset();
  expireAll();
}

void* NativeModel::cast(K7Q::CooperativeVisitor::TagPair tag) {
  using namespace K7Q::NSInterface;
  return castAmong<ModelIntf, ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
}

const ruvo::InternedName& NativeModel::getRuvoName(bool immutable) const {
  return ruvoNameOf(Described::Model, immutable);
}

K7Q::ImmutableType NativeModel::getMetaType(K7Q::Deviant deviant) const {
  if (mIsClosed) raiseLost(*this);
  return metaTypeOf(Described::Model, deviant);
}

void NativeModel::setUri(K7Q::Deviant /*deviant*/, std::u16string_view uri) {
  if (mIsClosed) raiseLost(*this);
  mUri = uri;
}

std::u16string NativeModel::getUri(K7Q::Deviant /*deviant*/) const {
  if (mIsClosed) raiseLost(*this);
  return mUri;
}

void NativeModel::close() {
  if (mIsClosed) return;
  if (mJournal) mJournal->requireQuiet();
  // The cache may hold the last reference.
  const K7Q::Model keep(this, K7Q::Deviant{});
  mIsClosed = true;
  K7Q::ModelCache::instance().unbind(this);
  Batch::forget(*this);
  // The journal frees the deleted objects that it keeps, which needs the other objects.
  mJournal.reset();
  expireAll();
}

// All objects expire together, so none is removed from another.
void NativeModel::expireAll() noexcept {
  noteDestruction();
  mNames.reset();
  mInstances.forEach([](Instance& instance) { instance.expire(); });
  mInstances.clear();
}

void initialize() {
  K7Q::setUnbindingType(typeid(NativeModel));
  K7Q::setModelFactory(&NativeModel::make);
}

namespace {

/// Sets the factory when the library is loaded. A program only needs to link the library.
struct Registration {
  Registration() { initialize(); }
} const kRegistration;

}  // namespace

}  // namespace Tarvelon::metamodel::native
