// What an object answers through the interface of the boundary: its class, its model, its end.
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::metamodel::native {

void* Instance::cast(K7Q::CooperativeVisitor::TagPair tag) {
  return mClass->answersTag(tag.interface) ? static_cast<ClassObjectIntf*>(this) : nullptr;
}

const ruvo::InternedName& Instance::getRuvoName(bool immutable) const {
  return mClass->names[immutable ? 1 : 0];
}

K7Q::ImmutableType Instance::getMetaType(K7Q::Deviant deviant) const {
  if (!isAlive()) raiseLost(*this);
  return {&mClass->description, deviant};
}

void Instance::destroy(K7Q::Deviant /*deviant*/) {
  if (!isAlive()) raiseLost(*this);
  destroyTree(*this);
}

K7Q::Model Instance::getModel(K7Q::Deviant deviant) const {
  if (!isAlive()) raiseLost(*this);
  return {mModel, deviant};
}

}  // namespace Tarvelon::metamodel::native
