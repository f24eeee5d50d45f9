#include "tarvelon/boundary/k7q/ModelCache.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <string_view>
#include <typeinfo>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/k7q/handles/ModelFactory.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

namespace {

constinit std::atomic<const std::type_info*> gUnbindingType = nullptr;

std::u16string numbered(std::u16string_view name, unsigned number) {
  std::u16string uri(name);
  if (number == 0) return uri;
  const std::string digits = std::to_string(number);
  return uri.append(digits.begin(), digits.end());
}

}  // namespace

// A model may belong to another thread. So the cache only asks models whether they are open, and never copies
// or drops a handle of a model just for searching. The entry of a closed model stays until its own thread
// unbinds it.
struct ModelCache::State {
  struct Entry {
    std::u16string uri;
    Model model;
    /// Whether the model's class unbinds a model when the model is closed (setUnbindingType()).
    bool isUnbinding;
  };
  using Entries = std::list<Entry>;
  using Place = Entries::iterator;
  std::mutex guard;
  Entries entries;
  /// The last entry bound to each URI; all earlier entries with that URI are closed. The keys are the
  /// entries' own texts.
  std::map<std::u16string_view, Place> byUri;
  std::map<const NSInterface::ModelIntf*, Place> byModel;
  /// For each name, a lower bound of the first free number. noteFree() lowers it when a URI becomes free.
  /// Only used while notUnbinding is 0, because other models may be closed without notice.
  std::map<std::u16string, unsigned, std::less<>> nextNumbers;
  std::size_t notUnbinding = 0;

  Place find(std::u16string_view uri) noexcept {
    const auto found = byUri.find(uri);
    return found != byUri.end() && found->second->model.isValid() ? found->second : entries.end();
  }
  Place find(const NSInterface::ModelIntf* model) noexcept {
    const auto found = byModel.find(model);
    return found == byModel.end() ? entries.end() : found->second;
  }
  void takeOut(Place place, Entries& taken) noexcept;
  void putIn(State& made) noexcept;
  void noteFree(std::u16string_view uri) noexcept;
};

void ModelCache::State::takeOut(Place place, Entries& taken) noexcept {
  const auto known = byUri.find(place->uri);
  if (known != byUri.end() && known->second == place) {
    byUri.erase(known);
    noteFree(place->uri);
  }
  byModel.erase(place->model.getModelInterface());
  if (!place->isUnbinding) --notUnbinding;
  taken.splice(taken.end(), entries, place);
}

/// Moves the only entry of another State into this one. Needs no memory: `made` has allocated all nodes.
void ModelCache::State::putIn(State& made) noexcept {
  const Place place = made.entries.begin();
  byUri.erase(place->uri);
  byUri.merge(made.byUri);
  byModel.merge(made.byModel);
  if (!place->isUnbinding) ++notUnbinding;
  entries.splice(entries.end(), made.entries);
}

/// Lowers the bounds in nextNumbers for a free URI. A URI may be a numbered form of several names: "a12" is
/// number 12 of "a" and number 2 of "a1".
void ModelCache::State::noteFree(std::u16string_view uri) noexcept {
  const auto lower = [this](std::u16string_view name, unsigned number) {
    const auto found = nextNumbers.find(name);
    if (found == nextNumbers.end()) return;
    found->second = std::min(found->second, number);
    if (number == 0) nextNumbers.erase(found);
  };
  lower(uri, 0);
  constexpr std::size_t kDigits = 9;
  unsigned number = 0;
  unsigned power = 1;
  for (std::size_t digits = 1; digits <= kDigits && digits <= uri.size(); ++digits, power *= 10) {
    const char16_t digit = uri[uri.size() - digits];
    if (digit < u'0' || digit > u'9') break;
    number += static_cast<unsigned>(digit - u'0') * power;
    if (digit != u'0') lower(uri.substr(0, uri.size() - digits), number);
  }
}

ModelCache::ModelCache() : mState(std::make_unique<State>()) {}
ModelCache::~ModelCache() = default;

ModelCache& ModelCache::instance() {
  // Never destroyed: it holds models whose library may be unloaded at that time.
  static auto& cache = *new ModelCache;
  return cache;
}

void ModelCache::bindModel(const std::u16string& uri, const Model& model) {
  model.requireValid();
  auto* interface = model.getModelInterface();
  const std::type_info* unbinding = gUnbindingType.load(std::memory_order_acquire);
  const bool isUnbinding = this == &instance() && unbinding && typeid(*interface) == *unbinding;
  // Everything that allocates memory or drops a handle happens outside the lock: `made` and `unbound` are
  // destroyed after the lock is released.
  State made;
  const auto place = made.entries.insert(made.entries.end(), {uri, model, isUnbinding});
  made.byUri.emplace(place->uri, place);
  made.byModel.emplace(interface, place);
  State::Entries unbound;
  const std::scoped_lock lock(mState->guard);
  const auto taken = mState->find(std::u16string_view(uri));
  const auto known = mState->find(interface);
  if (taken != mState->entries.end()) {
    if (taken == known) return;
    throw WrongValue(text::uriTaken(uri));
  }
  // A model has only one URI, so its former entry is removed.
  if (known != mState->entries.end()) mState->takeOut(known, unbound);
  mState->putIn(made);
}

std::u16string ModelCache::getNextAvailableModelUri(const std::u16string& name) const {
  const std::scoped_lock lock(mState->guard);
  auto& next = mState->nextNumbers;
  if (mState->notUnbinding != 0) next.clear();
  const auto known = next.find(name);
  unsigned number = known == next.end() ? 0 : known->second;
  std::u16string uri = numbered(name, number);
  while (mState->find(std::u16string_view(uri)) != mState->entries.end()) uri = numbered(name, ++number);
  constexpr unsigned kMost = 999999999;
  if (mState->notUnbinding == 0 && number != 0 && number <= kMost) next.insert_or_assign(name, number);
  return uri;
}

Model ModelCache::find(const std::u16string& uri) const {
  const std::scoped_lock lock(mState->guard);
  const auto found = mState->find(std::u16string_view(uri));
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
  // Destroyed after the lock is released: dropping the last handle on a model may call the cache again.
  State::Entries unbound;
  const std::scoped_lock lock(mState->guard);
  const auto found = mState->find(model);
  if (found != mState->entries.end()) mState->takeOut(found, unbound);
}

namespace {

constinit std::atomic<ModelFactory> gModelFactory = nullptr;

Model makeModel(const std::u16string& name) {
  const ModelFactory make = gModelFactory.load(std::memory_order_acquire);
  if (!make) throw Exception(text::kNoModelFactory);
  return make(name);
}

}  // namespace

void setUnbindingType(const std::type_info& type) { gUnbindingType.store(&type, std::memory_order_release); }
void setModelFactory(ModelFactory factory) { gModelFactory.store(factory, std::memory_order_release); }
Model Model::create() { return makeModel({}); }
void Model::close() const {
  // A model may be closed twice, so requireValid() is only called for a null handle, for which it throws.
  if (isNull()) requireValid();
  DeviantAssertions::assertWritable(getDeviant(), getInterface());
  getModelInterface()->close();
  ModelCache::instance().unbind(getModelInterface());
}
Model NSInterface::FactoryIntf::createNewModel(const std::u16string& name) { return makeModel(name); }

}  // namespace K7Q
