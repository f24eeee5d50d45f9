#pragma once

#include <string>

#include "tarvelon/boundary/tarvelon/Factory.h"

namespace Tarvelon::metamodel::native {

class ClassMethods;

/// Creates objects of one model and holds a handle on this model. It has no other state.
class Factory final : public arplatform::NSInterface::FactoryIntf {
 public:
  explicit Factory(const K7Q::Model& model) noexcept
      : mModel(model.getModelInterface(), writable(model.getDeviant())) {}

  void addRef() const override { ++mReferences; }
  void release() const override {
    if (--mReferences == 0) delete this;
  }
  int numRef() const override { return mReferences; }
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  bool isValid(K7Q::Deviant /*deviant*/) const override { return mModel.isValid(); }
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  K7Q::Model getModel(K7Q::Deviant deviant) const override;

  K7Q::ClassObject create(K7Q::Deviant deviant, const K7Q::IntrospectiveMethods& cls, unsigned constructor,
                          std::span<const K7Q::Object> arguments) override;
  K7Q::Object createFromString(K7Q::Deviant deviant, const K7Q::String& cls) override;
  K7Q::Object createFromString(K7Q::Deviant deviant, const K7Q::String& cls,
                               const K7Q::String& name) override;

 private:
  /// The model handle is always writable: callers check the view before they call this interface.
  static K7Q::Deviant writable(K7Q::Deviant deviant) noexcept {
    return {deviant.word & ~(K7Q::Deviant::kReadOnly | K7Q::Deviant::kFrozen)};
  }

  mutable std::int32_t mReferences = 0;
  K7Q::Model mModel;
};

}  // namespace Tarvelon::metamodel::native
