// Steps on files: first and later saves, to memory and to a path, and loading of correct and of broken files.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tarvelon/platform/files/Files.h"
#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

namespace {

namespace files = Tarvelon::files;

std::vector<std::string> idsIn(const std::string& text) {
  constexpr std::string_view kBefore = " xmi:id=\"";
  std::vector<std::string> ids;
  for (auto place = text.find(kBefore); place != text.npos; place = text.find(kBefore, place + 1)) {
    const auto first = place + kBefore.size();
    ids.push_back(text.substr(first, text.find('"', first) - first));
  }
  return ids;
}

std::string contentsOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// The engine's objects from this one down, in the order of State::tree().
void collect(ObjectPointer object, std::vector<ObjectPointer>& all) {
  all.push_back(object);
  for (const Slot& slot : classOf(*object).slots) {
    if (!slot.holds()) continue;
    const Property& property = slot.narrowest;
    if (!slot.isMany()) {
      K7Q::Object held;
      property.owner->methods->get(held, object, {}, property.row->id);
      if (!held.isNull()) collect(static_cast<ObjectPointer>(held.getInterface()), all);
      continue;
    }
    const auto sequence = sequenceOf(object, slot);
    for (int index = 0; index < sequence.get().generic_size({}); ++index)
      collect(static_cast<ObjectPointer>(sequence.get().generic_at({}, index).value()), all);
  }
}

}  // namespace

std::vector<ObjectPointer> treeOf(ObjectPointer root) {
  std::vector<ObjectPointer> all;
  collect(root, all);
  return all;
}

std::vector<int> Mirror::inFileOrder() const {
  const Ids known = ids();
  std::vector<int> order;
  for (const auto& root : files::roots(native)) {
    const auto tree = now.tree(known.at(root.getInterface()));
    order.insert(order.end(), tree.begin(), tree.end());
  }
  return order;
}

/// Checks that an object keeps its id, and that all ids differ.
void World::noteFileIds(Mirror& model, const std::string& text) {
  const auto ids = idsIn(text);
  const auto order = model.inFileOrder();
  if (ids.size() != order.size() || order.size() != model.now.objects.size())
    throw Fault("a file has " + std::to_string(ids.size()) + " objects of " +
                std::to_string(model.now.objects.size()));
  if (std::set<std::string>(ids.begin(), ids.end()).size() != ids.size())
    throw Fault("two objects have one id in a file");
  for (std::size_t place = 0; place < ids.size(); ++place) {
    const auto known = model.fileIds.emplace(order[place], ids[place]).first;
    if (known->second != ids[place]) throw Fault("#" + std::to_string(order[place]) + " has got another id");
  }
}

/// The text of a saved model; empty if memory ran out.
std::string World::savedText(Mirror& model) {
  const bool toPath = !mOptions.folder.empty() && mIn->oneIn(4);
  const std::string path = mOptions.folder + "/model" + std::to_string(below(2)) + ".xmi";
  std::string text;
  double last = 0;
  files::SaveOptions options;
  options.isDurable = false;
  if (mIn->oneIn(2)) options.progress = [&last](double done) { last = done; };
  say("save" + (toPath ? " to a file" : std::string()));
  const bool isMade = attempt(Expect::Ok, [&] {
    if (toPath) {
      files::save(model.native, path, options);
    } else {
      text = files::saveText(model.native, options);
    }
  });
  if (!isMade) return {};
  if (toPath) text = contentsOf(path);
  if (options.progress && last != 1) throw Fault("progress of a save did not come to its end");
  noteFileIds(model, text);
  return text;
}

/// Saves with a progress callback that raises or changes the model. Either may end the save, without other
/// effects.
void World::breakSave() {
  Mirror& model = mirror();
  const int id = anyObject();
  const bool raises = id < 0 || mIn->oneIn(2);
  say(raises ? "save with a progress that raises" : "save with a progress that destroys " + told(id));
  bool isDestroyed = false;
  try {
    files::saveText(model.native, {[&](double) {
                                     if (raises) throw Fault("on purpose");
                                     if (!isDestroyed) model.handle(id).getClassObject()->destroy({});
                                     isDestroyed = true;
                                   },
                                   false});
    // In a short save the callback is only called after everything is written.
    if (raises) throw Fault("the save went on");
  } catch (const Fault& fault) {
    if (std::string_view(fault.what()) != "on purpose") throw;
  } catch (const K7Q::Exception& refusal) {
    say(std::string("  refused: ") + refusal.what());
  }
  if (!isDestroyed) return;
  State next = model.now;
  next.destroy(id);
  model.commit(std::move(next), true);
}

void World::save() {
  if (mIn->oneIn(16)) return breakSave();
  const std::string text = savedText(mirror());
  if (!text.empty() && mIn->oneIn(2) && files::saveText(mirror().native) != text)
    throw Fault("a second save gives another text");
}

void World::adoptWhole(const Mirror& original, K7Q::Model made, bool keepsIds) {
  std::vector<ObjectPointer> objects;
  for (const auto& root : files::roots(made)) {
    const auto tree = treeOf(root.getClassObject());
    objects.insert(objects.end(), tree.begin(), tree.end());
  }
  const auto order = original.inFileOrder();
  if (objects.size() != order.size()) throw Fault("a copy of a model has another number of objects");
  std::map<int, int> copies;
  for (const int id : order) copies.emplace(id, static_cast<int>(copies.size()));
  const State from = original.now;
  const auto fileIds = original.fileIds;
  const auto added = addModel(std::move(made));
  for (const auto& [id, copy] : copies) {
    Object object = from.at(id);
    if (object.owner >= 0) object.owner = copies.at(object.owner);
    for (auto& entry : object.values) {
      for (Item& item : entry.second) item.object = item.object < 0 ? -1 : copies.at(item.object);
    }
    added->now.objects.emplace(copy, std::move(object));
    if (keepsIds && fileIds.contains(id)) added->fileIds[copy] = fileIds.at(id);
  }
  for (ObjectPointer object : objects) added->add(object);
  added->check(true);
}

void World::load(bool isBroken) {
  Mirror& model = mirror();
  std::string text = savedText(model);
  if (text.empty()) return;
  if (isBroken) return loadBroken(std::move(text));
  say("load what was saved as model " + std::to_string(mNumbers));
  files::Loaded loaded;
  const bool isLenient = mIn->oneIn(4);
  if (!attempt(Expect::Ok, [&] { loaded = files::loadText(text, {nullptr, isLenient}); })) return;
  if (loaded.problems.count != 0) throw Fault("a problem in what was saved");
  if (files::saveText(loaded.model) != text) throw Fault("what was loaded is saved as another text");
  adoptWhole(model, loaded.model, true);
}

/// Removes, duplicates or changes a part of the text. It must be refused, or loaded as a model that can be
/// saved.
void World::loadBroken(std::string text) {
  const std::size_t from = (below(256) * 256 + below(256)) % text.size();
  const std::size_t length = std::min<std::size_t>(1 + below(64), text.size() - from);
  const std::size_t how = below(3);
  if (how == 0) text.erase(from, length);
  if (how == 1) text.insert(from, text.substr(from, length));
  if (how == 2) text[from] = static_cast<char>(below(256));
  const bool isLenient = !mIn->oneIn(4);
  say("load what was saved and broken at " + std::to_string(from));
  files::Loaded loaded;
  if (!attempt(Expect::Any, [&] { loaded = files::loadText(text, {nullptr, isLenient}); })) return;
  const std::string saved = files::saveText(loaded.model);
  if (files::saveText(files::loadText(saved).model) != saved)
    throw Fault("what was loaded of a broken file is saved as another text");
}

}  // namespace world
