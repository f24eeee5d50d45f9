#include "tarvelon/boundary/k7q/ModelCache.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <string_view>
#include <utility>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/k7q/ModelFactory.h"
#include "tarvelon/platform/k7q/Texts.h"

namespace K7Q {

// A model that belongs to another thread is asked for nothing but whether it is open, and no handle on it is
// copied or dropped: one that was closed stays until its own thread unbinds it.
struct ModelCache::State {
  struct Entry {
    std::u16string uri;
    Model model;
  };
  using Entries = std::vector<Entry>;
  std::mutex guard;
  Entries entries;

  Entries::iterator find(std::u16string_view uri) noexcept {
    return std::find_if(entries.begin(), entries.end(),
                        [uri](const Entry& entry) { return entry.uri == uri && entry.model.isValid(); });
  }
  Entries::iterator find(const NSInterface::ModelIntf* model) noexcept {
    return std::find_if(entries.begin(), entries.end(),
                        [model](const Entry& entry) { return entry.model.getModelInterface() == model; });
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
  State::Entry entry{uri, model};
  const std::scoped_lock lock(mState->guard);
  auto& entries = mState->entries;
  const auto taken = mState->find(uri);
  const auto known = mState->find(model.getModelInterface());
  if (taken != entries.end()) {
    if (taken == known) return;
    throw WrongValue(text::uriTaken(uri));
  }
  // A model has one URI.
  if (known != entries.end()) {
    std::swap(*known, entry);
    std::rotate(known, known + 1, entries.end());
  } else {
    entries.push_back(std::move(entry));
  }
}

std::u16string ModelCache::getNextAvailableModelUri(const std::u16string& name) const {
  const std::scoped_lock lock(mState->guard);
  std::u16string uri = name;
  for (unsigned number = 1; mState->find(uri) != mState->entries.end(); ++number) {
    const std::string digits = std::to_string(number);
    uri = name + std::u16string(digits.begin(), digits.end());
  }
  return uri;
}

Model ModelCache::find(const std::u16string& uri) const {
  const std::scoped_lock lock(mState->guard);
  const auto found = mState->find(uri);
  return found == mState->entries.end() ? Model() : found->model;
}

std::vector<Model> ModelCache::models() const {
  const std::scoped_lock lock(mState->guard);
  std::vector<Model> models;
  for (const auto& entry : mState->entries) {
    if (entry.model.isValid()) models.push_back(entry.model);
  }
  return models;
}

std::vector<std::u16string> ModelCache::uris() const {
  const std::scoped_lock lock(mState->guard);
  std::vector<std::u16string> uris;
  for (const auto& entry : mState->entries) {
    if (entry.model.isValid()) uris.push_back(entry.uri);
  }
  return uris;
}

bool ModelCache::isBound(const std::u16string& uri, const Model& model) const {
  const std::scoped_lock lock(mState->guard);
  const auto found = mState->find(model.getModelInterface());
  return found != mState->entries.end() && found->uri == uri;
}

void ModelCache::unbind(const NSInterface::ModelIntf* model) noexcept {
  // Goes behind the lock: the last handle on a model may come back here.
  State::Entry unbound;
  const std::scoped_lock lock(mState->guard);
  const auto found = mState->find(model);
  if (found == mState->entries.end()) return;
  std::swap(*found, unbound);
  mState->entries.erase(found);
}

namespace {

constinit std::atomic<ModelFactory> gModelFactory = nullptr;

Model makeModel(const std::u16string& name) {
  const ModelFactory make = gModelFactory.load(std::memory_order_acquire);
  if (!make) throw Exception(text::kNoModelFactory);
  return make(name);
}

}  // namespace

void setModelFactory(ModelFactory factory) { gModelFactory.store(factory, std::memory_order_release); }
Model Model::create() { return makeModel({}); }
void Model::close() const {
  // One that is closed already may be closed again, so only a null handle is refused.
  if (isNull()) requireValid();
  DeviantAssertions::assertWritable(getDeviant(), getInterface());
  getModelInterface()->close();
  ModelCache::instance().unbind(getModelInterface());
}
Model NSInterface::FactoryIntf::createNewModel(const std::u16string& name) { return makeModel(name); }

}  // namespace K7Q
