// Steps that only read: searches, validation, texts, differences. They must not change anything, and the same
// model must give the same result twice.

#include <algorithm>
#include <set>

#include "tarvelon/platform/model/api/Difference.h"
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Json.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/api/Validation.h"
#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

namespace {

/// Problems that only a fault of the engine can cause.
constexpr std::string_view kBroken[] = {"dangling-reference", "foreign-reference", "ownership",
                                        "multiplicity",       "unknown-literal",   "wrong-class"};

std::string textOf(const std::vector<K7Q::Problem>& problems) {
  std::string text;
  for (const auto& each : problems) text += each.path + " " + each.rule + " " + each.message + "\n";
  return text;
}

}  // namespace

void World::search() {
  Mirror& model = mirror();
  const int id = anyObject();
  say("search");
  if (api::undoLabel(model.native).empty() != (api::undoable(model.native) == 0) ||
      api::redoLabel(model.native).empty() != (api::redoable(model.native) == 0)) {
    throw Fault("there is a label without anything to undo or redo, or none with it");
  }
  if (id < 0 || mIn->oneIn(3)) return checkNames(model.native, model.now, model.ids());
  const std::u16string name = model.now.qualifiedName(id);
  std::vector<K7Q::ClassObject> found;
  attempt(Expect::Ok, [&] { found = api::findAll(model.native, name); });
  attempt(Expect::Ok, [&] { api::referrers(model.handle(id)); });
  attempt(Expect::Ok, [&] { api::instances(model.native, *model.now.at(id).cls->methods); });
}

void World::validate() {
  Mirror& model = mirror();
  const int id = anyObject();
  const bool isWhole = id < 0 || mIn->oneIn(2);
  say("validate" + (isWhole ? std::string() : " " + told(id)));
  std::vector<K7Q::Problem> problems;
  const auto look = [&] { return isWhole ? K7Q::validate(model.native) : K7Q::validate(model.handle(id)); };
  if (!attempt(Expect::Ok, [&] { problems = look(); })) return;
  for (const auto& each : problems) {
    if (std::ranges::find(kBroken, each.rule) != std::end(kBroken) && each.rule != "dangling-reference")
      throw Fault("the model is broken: " + each.path + " " + each.rule + " " + each.message);
    if (!each.object.isValid()) throw Fault("a problem of an object that is not there");
  }
  if (textOf(look()) != textOf(problems)) throw Fault("validate() gives other problems the second time");
}

/// Computes differences and texts of a model, two models, or two objects.
void World::compare() {
  Mirror& model = mirror();
  Mirror& other = *mModels[below(mModels.size())];
  const int id = anyObject();
  say("compare with model " + std::to_string(other.number));
  std::string text;
  if (attempt(Expect::Ok, [&] { text = Tarvelon::metamodel::toJson(model.native, 2); })) {
    if (Tarvelon::metamodel::toJson(model.native, 2) != text) throw Fault("two texts of one model");
  }
  std::vector<Tarvelon::metamodel::Difference> found;
  if (attempt(Expect::Ok, [&] { found = Tarvelon::metamodel::differences(model.native, other.native); })) {
    if (&model == &other && !found.empty()) throw Fault("a model differs from itself");
  }
  if (id < 0) return;
  const K7Q::ClassObject object = model.handle(id);
  attempt(Expect::Ok, [&] { Tarvelon::metamodel::toJson(object); });
  if (!Tarvelon::metamodel::differences(object, object).empty()) throw Fault("an object differs from itself");
}

}  // namespace world
