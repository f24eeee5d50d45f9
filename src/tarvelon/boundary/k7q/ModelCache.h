#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace K7Q {

/// The models that are bound to a URI, which keeps them alive until they are closed.
/// Threads: any. A model that find() or models() gives belongs to one thread at a time all the same: ask for
///          what no other thread uses meanwhile.
class TARVELON_API ModelCache {
 public:
  static ModelCache& instance();

  /// The stem of the URIs of new models.
  static constexpr const char16_t* UNTITLED = u"untitled";

  /// Raises K7Q::WrongValue for a URI that is taken by another open model.
  void bindModel(const std::u16string& uri, const Model& model);
  /// `name`, or the first of name1, name2, ... that no bound model has. Another thread may bind one of that
  /// URI before bindModel(), which then refuses it.
  std::u16string getNextAvailableModelUri(const std::u16string& name) const;
  /// The model of that URI, empty if there is none.
  Model find(const std::u16string& uri) const;
  std::vector<Model> models() const;
  /// The URIs of these models, in the same order.
  std::vector<std::u16string> uris() const;
  /// Whether the model is bound, to that URI.
  bool isBound(const std::u16string& uri, const Model& model) const;
  /// Forgets a model; one that is not bound is no error.
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

class TARVELON_API FactoryIntf : public FactoryObjectIntf {
 public:
  ~FactoryIntf() override;
  /// A new model of that name.
  static Model createNewModel(const std::u16string& name);
};

}  // namespace NSInterface
}  // namespace K7Q
