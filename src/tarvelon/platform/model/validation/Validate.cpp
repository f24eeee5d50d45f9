#include <algorithm>
#include <span>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/validation/Rules.h"

namespace Tarvelon::metamodel::native::validation {

namespace {

constexpr std::size_t kNowhere = ~std::size_t{0};

void visit(const Instance& object, Findings& findings) {
  const auto& chosen = findings.planOf(object).rules;
  const std::size_t before = findings.count();
  bool isSound = true;
  for (const Rule* rule : chosen) {
    if (rule == firstRuleNeedingSoundness()) isSound = findings.count() == before;
    if (!isSound) return;
    findings.begin(*rule);
    rule->check(object, findings);
  }
}

template <class Visit>
void visitTree(const Instance& root, Visit visitOne) {
  std::vector<const Instance*> open{&root};
  while (!open.empty()) {
    const Instance& object = *open.back();
    open.pop_back();
    visitOne(object);
    pushHeld(object, open);
  }
}

std::vector<const Instance*> rootsOf(const NativeModel& model, Findings& findings) {
  std::vector<const Instance*> roots;
  model.forEachInstance([&](const Instance& object) {
    if (!object.owner()) roots.push_back(&object);
  });
  if (std::ranges::any_of(roots, [&](const Instance* root) { return hasNoOwner(*root, findings); }))
    findings.noteStrays();
  return roots;
}

/// The positions of the objects with problems, in the order of containment. kNowhere for an object that is
/// not below one of the roots.
std::unordered_map<const Instance*, std::size_t> placesOf(const std::vector<Findings::Found>& found,
                                                          std::span<const Instance* const> roots) {
  std::unordered_map<const Instance*, std::size_t> places;
  if (found.empty()) return places;
  for (const auto& each : found) places.emplace(each.object, kNowhere);
  std::size_t place = 0;
  for (const Instance* root : roots) {
    visitTree(*root, [&](const Instance& object) {
      const auto entry = places.find(&object);
      if (entry != places.end()) entry->second = place++;
    });
  }
  return places;
}

/// The problems in the order of containment, then of the rules. A rule may report another object than the one
/// it checks; problems of objects outside the roots are left out.
std::vector<K7Q::Problem> arranged(Findings& findings, std::span<const Instance* const> roots) {
  auto& found = findings.found();
  const auto places = placesOf(found, roots);
  using Key = std::tuple<std::size_t, const Rule*, std::size_t>;
  std::vector<Key> order;
  order.reserve(found.size());
  for (std::size_t index = 0; index < found.size(); ++index) {
    const std::size_t place = places.find(found[index].object)->second;
    if (place != kNowhere) order.emplace_back(place, found[index].rule, index);
  }
  std::ranges::sort(order);
  std::vector<K7Q::Problem> problems;
  problems.reserve(order.size());
  for (const Key& key : order) problems.push_back(std::move(found[std::get<2>(key)].problem));
  return problems;
}

std::vector<K7Q::Problem> validateModel(const NativeModel& model, K7Q::Deviant deviant) {
  Findings findings(deviant);
  const auto roots = rootsOf(model, findings);
  checkRootNames(roots, findings);
  for (const Instance* root : roots)
    visitTree(*root, [&](const Instance& object) { visit(object, findings); });
  return arranged(findings, roots);
}

const Instance& require(const K7Q::ObjectHandle& handle, const char* function) {
  handle.requireValid();
  const Instance* object = asInstance(handle.getInterface());
  if (object) return *object;
  throw K7Q::WrongType(std::string(function) + ": expected an object of a model, got " +
                       std::string(handle.getInterface()->getRuvoName(false).view()));
}

const ClassData& classCalled(std::string_view name) {
  for (const PackageRow& package : packageRows()) {
    for (const ClassMethods* table : package.classes) {
      if (name == table->className().name) return table->data();
    }
  }
  throw K7Q::UnknownName("validatedObjects: there is no class '" + std::string(name) +
                         "' in the metamodel; give its full name, as in "
                         "'Tarvelon.metamodel.arplatform.behavior.Runnable'");
}

void collect(const Instance& root, const ClassData& cls, K7Q::Deviant deviant,
             std::vector<K7Q::ClassObject>& objects) {
  visitTree(root, [&](const Instance& object) {
    if (object.cls().isKindOf(cls.ordinal)) objects.emplace_back(const_cast<Instance*>(&object), deviant);
  });
}

}  // namespace

}  // namespace Tarvelon::metamodel::native::validation

namespace K7Q {

namespace native = Tarvelon::metamodel::native;
namespace validation = Tarvelon::metamodel::native::validation;

std::vector<Problem> validate(const Model& model) {
  return validation::validateModel(native::NativeModel::require(model), model.getDeviant());
}

std::vector<Problem> validate(const ClassObject& object) {
  const auto& root = validation::require(object, "validate");
  validation::Findings findings(object.getDeviant(), &root);
  // Assumes that the model has strays: to find out, the function would have to visit every object of the
  // model.
  findings.noteStrays();
  validation::visitTree(root, [&](const native::Instance& each) { validation::visit(each, findings); });
  const native::Instance* const roots[] = {&root};
  return validation::arranged(findings, roots);
}

std::vector<ClassObject> validatedObjects(const Model& model, std::string_view className) {
  const auto& cls = validation::classCalled(className);
  std::vector<ClassObject> objects;
  native::NativeModel::require(model).forEachInstance([&](const native::Instance& object) {
    if (!object.owner()) validation::collect(object, cls, model.getDeviant(), objects);
  });
  return objects;
}

std::vector<ClassObject> validatedObjects(const ClassObject& object, std::string_view className) {
  const auto& cls = validation::classCalled(className);
  std::vector<ClassObject> objects;
  validation::collect(validation::require(object, "validatedObjects"), cls, object.getDeviant(), objects);
  return objects;
}

}  // namespace K7Q
