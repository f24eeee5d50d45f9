#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace K7Q {

/// Finds open models by URI. A bound model stays alive until it is closed or unbound, even without a handle.
///
/// One URI has at most one open model, and one model has at most one URI.
///
/// Threads: any thread may call these functions. A returned model is still used by one thread at a time, so
///          do not ask for a model that another thread is using.
///
/// Example:
///   ModelCache& cache = ModelCache::instance();
///   const std::u16string uri = cache.getNextAvailableModelUri(ModelCache::UNTITLED);
///   cache.bindModel(uri, model);
///   cache.find(uri) == model;
class TARVELON_API ModelCache {
 public:
  /// The cache of the process, which is never destroyed.
  static ModelCache& instance();

  /// The usual argument of getNextAvailableModelUri() for a new model.
  static constexpr const char16_t* UNTITLED = u"untitled";

  /// Binds the model to the URI, and unbinds the model from its former URI. Does not change the URI that the
  /// model itself stores. Throws K7Q::WrongValue if another open model is bound to the URI, and a
  /// K7Q::Exception with the text kNullReference for a null or closed model.
  void bindModel(const std::u16string& uri, const Model& model);
  /// Returns `name` if no open model is bound to it, otherwise the first free one of name1, name2, ... The
  /// URI is not reserved: if another thread binds it first, bindModel() throws.
  std::u16string getNextAvailableModelUri(const std::u16string& name) const;
  /// The open model that is bound to the URI, a null handle if there is none.
  Model find(const std::u16string& uri) const;
  /// All open models that are bound.
  std::vector<Model> models() const;
  /// The URIs of the models that models() returns, in the same order.
  std::vector<std::u16string> uris() const;
  /// Whether this model is bound to this URI.
  bool isBound(const std::u16string& uri, const Model& model) const;
  /// Removes a model from the cache. Does nothing if the model is not bound.
  void unbind(const NSInterface::ModelIntf* model) noexcept;

  ModelCache();
  ~ModelCache();
  ModelCache(const ModelCache&) = delete;
  ModelCache& operator=(const ModelCache&) = delete;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

namespace NSInterface {

/// The interface of the factories that create the objects of a model (tarvelon/Factory.h).
class TARVELON_API FactoryIntf : public FactoryObjectIntf {
 public:
  ~FactoryIntf() override;
  /// Creates a model with that URI. Does not bind the model in the ModelCache. Throws a K7Q::Exception if no
  /// library that can create models is loaded.
  static Model createNewModel(const std::u16string& name);
};

}  // namespace NSInterface
}  // namespace K7Q
