#include "tarvelon/platform/model/api/Search.h"

#include <algorithm>
#include <unordered_map>

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/names/NameIndex.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::model {

namespace native = metamodel::native;
using native::Instance;

namespace {

const Instance& require(const K7Q::ClassObject& object) {
  const Instance* instance = native::asInstance(object.getInterface());
  if (!instance) native::raiseNullReference();
  if (!instance->isAlive()) native::raiseLost(*instance);
  return *instance;
}

K7Q::ClassObject handleOf(const Instance& instance, K7Q::Deviant deviant) {
  return {const_cast<Instance*>(&instance), deviant};
}

/// The position of each class in the order of registration, and the classes by name.
struct Registration {
  std::unordered_map<const native::ClassMethods*, std::size_t> places;
  std::unordered_map<std::string_view, const native::ClassMethods*> byName;

  Registration() {
    for (const native::PackageRow& package : native::packageRows()) {
      for (const native::ClassMethods* cls : package.classes) {
        places.emplace(cls, places.size());
        byName.emplace(cls->className().name, cls);
        byName.emplace(cls->className().immutable, cls);
      }
    }
  }
};

const Registration& registration() {
  static const Registration& all = *new Registration;
  return all;
}

/// The path without its optional leading slash.
std::u16string_view fromTop(std::u16string_view path) noexcept {
  return path.substr(path.starts_with(u'/') ? 1 : 0);
}

/// Walks down a path of names, level by level.
class Walk {
 public:
  Walk(const native::NameIndex& names, std::u16string_view path) : mNames(names) {
    path = fromTop(path);
    while (true) {
      const std::size_t end = path.find(u'/');
      mSegments.push_back(path.substr(0, end));
      if (end == std::u16string_view::npos) break;
      path.remove_prefix(end + 1);
    }
  }

  std::vector<Instance*> all() const {
    std::vector<Instance*> found;
    for (const Instance* parent : parents()) append(found, parent, mSegments.back());
    return found;
  }

  Instance* first() const {
    for (const Instance* parent : parents()) {
      if (Instance* found = mNames.findFirst(parent, mSegments.back())) return found;
    }
    return nullptr;
  }

 private:
  // The objects that the path without its last name leads to. In a correct model names are unique, and there
  // is one.
  std::vector<Instance*> parents() const {
    std::vector<Instance*> level{nullptr};
    for (std::size_t depth = 0; depth + 1 < mSegments.size() && !level.empty(); ++depth) {
      std::vector<Instance*> below;
      for (const Instance* parent : level) append(below, parent, mSegments[depth]);
      level = std::move(below);
    }
    return level;
  }

  void append(std::vector<Instance*>& objects, const Instance* parent, std::u16string_view name) const {
    const auto found = mNames.find(parent, name);
    objects.insert(objects.end(), found.begin(), found.end());
  }

  const native::NameIndex& mNames;
  std::vector<std::u16string_view> mSegments;
};

Walk walk(const K7Q::Model& model, std::u16string_view path) {
  return {native::NativeModel::require(model).names(), path};
}

}  // namespace

K7Q::ClassObject find(const K7Q::Model& model, std::u16string_view qualifiedName) {
  const auto& names = native::NativeModel::require(model).names();
  if (const Instance* only = names.findPath(fromTop(qualifiedName)))
    return handleOf(*only, model.getDeviant());
  const Instance* object = walk(model, qualifiedName).first();
  return object ? handleOf(*object, model.getDeviant()) : K7Q::ClassObject();
}

std::vector<K7Q::ClassObject> findAll(const K7Q::Model& model, std::u16string_view qualifiedName) {
  std::vector<K7Q::ClassObject> result;
  for (const Instance* each : walk(model, qualifiedName).all()) {
    result.push_back(handleOf(*each, model.getDeviant()));
  }
  return result;
}

std::u16string qualifiedName(const K7Q::ClassObject& object) {
  return native::qualifiedText(require(object));
}

std::vector<K7Q::ClassObject> instances(const K7Q::Model& model, const K7Q::IntrospectiveMethods& cls) {
  const auto& table = static_cast<const native::ClassMethods&>(cls);
  const auto& index = native::NativeModel::require(model).instances();
  std::vector<const native::InstanceIndex::ClassList*> lists;
  for (const auto& list : index.classes()) {
    if (list.cls->isKindOf(table.data().ordinal)) lists.push_back(&list);
  }
  const auto& places = registration().places;
  std::ranges::sort(lists, {}, [&places](const auto* list) { return places.at(list->cls->methods); });
  std::vector<K7Q::ClassObject> result;
  for (const auto* list : lists) {
    for (const std::uint32_t number : list->numbers) {
      if (number == native::InstanceIndex::kNone) continue;
      const Instance& instance = *index.at(number);
      if (instance.isAlive()) result.push_back(handleOf(instance, model.getDeviant()));
    }
  }
  return result;
}

std::vector<K7Q::ClassObject> objects(const K7Q::Model& model) {
  std::vector<K7Q::ClassObject> result;
  native::NativeModel::require(model).instances().forEach([&](const Instance& instance) {
    if (instance.isAlive()) result.push_back(handleOf(instance, model.getDeviant()));
  });
  return result;
}

std::vector<Mention> referrers(const K7Q::ClassObject& object) {
  const Instance& instance = require(object);
  const native::Word* word = instance.find(Instance::kReferrerSlot);
  if (!word) return {};
  std::vector<native::Referrer> found;
  std::uint64_t bits = word->bits;
  native::Referrers(bits).forEach([&found](native::Referrer referrer) { found.push_back(referrer); });
  std::ranges::sort(found, {}, [](native::Referrer each) { return std::pair(each.instance, each.slot); });
  std::vector<Mention> result;
  for (const native::Referrer& each : found) {
    const Instance& referring = instance.model().instance(each.instance);
    if (!referring.isAlive()) continue;
    result.push_back({handleOf(referring, object.getDeviant()), referring.cls().slotProperties[each.slot]});
  }
  return result;
}

std::string lossOf(const K7Q::ObjectHandle& handle) {
  if (handle.isValid()) return {};
  if (const Instance* instance = native::asInstance(handle.getInterface())) return native::lossOf(*instance);
  const auto* factory = dynamic_cast<const K7Q::NSInterface::FactoryObjectIntf*>(handle.getInterface());
  const K7Q::Model of = factory ? factory->getModel(handle.getDeviant()) : K7Q::Model();
  const auto* interface = factory ? of.getInterface() : handle.getInterface();
  const auto* model = dynamic_cast<const native::NativeModel*>(interface);
  return model ? native::lossOf(*model) : std::string();
}

const char* hostName(const K7Q::NSInterface::PropertyIntf& property) { return rowOf(property).name; }

const metamodel::PropertyRow& rowOf(const K7Q::NSInterface::PropertyIntf& property) {
  return static_cast<const native::Property&>(property).row();
}

const K7Q::IntrospectiveMethods* findClass(std::string_view dottedName) {
  const auto found = registration().byName.find(dottedName);
  return found == registration().byName.end() ? nullptr : found->second;
}

}  // namespace Tarvelon::model
