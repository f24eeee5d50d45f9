#include "tarvelon/boundary/k7q/ModelCache.h"

#include <algorithm>
#include <string_view>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/k7q/ModelFactory.h"
#include "tarvelon/platform/k7q/Texts.h"

namespace K7Q {

struct ModelCache::State {
  struct Entry {
    std::u16string uri;
    Model model;
  };
  std::vector<Entry> entries;

  const Entry* find(std::u16string_view uri) const noexcept {
    const auto found = std::find_if(entries.begin(), entries.end(), [uri](const Entry& entry) {
      return entry.uri == uri && entry.model.isValid();
    });
    return found == entries.end() ? nullptr : &*found;
  }
};

ModelCache::ModelCache() : mState(std::make_unique<State>()) {}
ModelCache::~ModelCache() = default;

ModelCache& ModelCache::instance() {
  // Never destroyed: it holds models whose library may be gone by then.
  static auto& cache = *new ModelCache;
  return cache;
}

void ModelCache::bindModel(const std::u16string& uri, const Model& model) {
  model.requireValid();
  const auto* known = mState->find(uri);
  if (known && known->model == model) return;
  if (known) throw WrongValue(text::uriTaken(uri));
  mState->entries.push_back({uri, model});
  // A model has one URI, and one that was closed keeps none.
  auto& entries = mState->entries;
  entries.erase(
      std::remove_if(entries.begin(), entries.end() - 1,
                     [&model](const auto& entry) { return entry.model == model || !entry.model.isValid(); }),
      entries.end() - 1);
}

std::u16string ModelCache::getNextAvailableModelUri(const std::u16string& name) const {
  std::u16string uri = name;
  for (unsigned number = 1; mState->find(uri); ++number) {
    const std::string digits = std::to_string(number);
    uri = name + std::u16string(digits.begin(), digits.end());
  }
  return uri;
}

Model ModelCache::find(const std::u16string& uri) const {
  const auto* known = mState->find(uri);
  return known ? known->model : Model();
}

std::vector<Model> ModelCache::models() const {
  std::vector<Model> models;
  for (const auto& entry : mState->entries) {
    if (entry.model.isValid()) models.push_back(entry.model);
  }
  return models;
}

void ModelCache::unbind(const NSInterface::ModelIntf* model) noexcept {
  auto& entries = mState->entries;
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [model](const auto& entry) { return entry.model.getInterface() == model; });
  if (found == entries.end()) return;
  // Out of the list first: the last handle on a model may come back here.
  const State::Entry unbound = std::move(*found);
  entries.erase(found);
}

namespace {

constinit ModelFactory gModelFactory = nullptr;

Model makeModel(const std::u16string& name) {
  if (!gModelFactory) throw Exception(text::kNoModelFactory);
  return gModelFactory(name);
}

}  // namespace

void setModelFactory(ModelFactory factory) { gModelFactory = factory; }
Model Model::create() { return makeModel({}); }
void Model::close() const {
  // One that is closed already may be closed again, so only a null handle is refused.
  if (isNull()) requireValid();
  DeviantAssertions::assertWritable(getDeviant(), getInterface());
  getModelInterface()->close();
}
Model NSInterface::FactoryIntf::createNewModel(const std::u16string& name) { return makeModel(name); }

}  // namespace K7Q
