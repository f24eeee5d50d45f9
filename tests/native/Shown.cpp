#include "tests/native/Shown.h"

#include <algorithm>
#include <functional>
#include <map>

#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Support.h"

namespace shown {

namespace {

namespace api = Tarvelon::model;
using api::rowOf;
using K7Q::NSInterface::ObjectIntf;
using K7Q::NSInterface::PropertyIntf;

const K7Q::IntrospectiveMethods& classOf(const K7Q::ClassObject& object) {
  const auto type = object.getInterface()->getMetaType({});
  return dynamic_cast<const K7Q::NSInterface::ClassIntf&>(*type.getInterface()).methods();
}

/// The properties of a class and of its superclasses, without duplicates.
std::vector<const PropertyIntf*> collectProperties(const K7Q::IntrospectiveMethods& cls) {
  std::vector<const PropertyIntf*> all;
  std::set<const K7Q::IntrospectiveMethods*> seen;
  const std::function<void(const K7Q::IntrospectiveMethods&)> collect = [&](const auto& each) {
    if (!seen.insert(&each).second) return;
    for (unsigned id = 1; id <= each.numberOfProperties(); ++id) {
      if (each.descriptor(id)) all.push_back(each.descriptor(id));
    }
    for (const auto* base : each.bases()) collect(*base);
  };
  collect(cls);
  return all;
}

const std::vector<const PropertyIntf*>& propertiesOf(const K7Q::ClassObject& object) {
  static std::map<const K7Q::IntrospectiveMethods*, std::vector<const PropertyIntf*>> known;
  const auto& cls = classOf(object);
  auto& properties = known[&cls];
  if (properties.empty()) properties = collectProperties(cls);
  return properties;
}

bool isMany(const PropertyIntf& property) { return property.multiplicity() == K7Q::mi::Multiplicity::Many; }

K7Q::Object valueOf(const K7Q::ClassObject& object, const PropertyIntf& property) {
  K7Q::Object value;
  property.owner().get(value, object.getClassObject(), {}, property.id());
  return value;
}

std::vector<K7Q::Generic::Ref> elementsOf(const K7Q::ClassObject& object, const PropertyIntf& property) {
  const K7Q::SequenceHandle sequence(
      property.owner().getSequence(object.getClassObject(), {}, property.id(), true), {});
  std::vector<K7Q::Generic::Ref> elements;
  for (int i = 0; i < sequence.get().generic_size({}); ++i)
    elements.push_back(sequence.get().generic_at({}, i));
  return elements;
}

/// The objects in a stored property.
std::vector<ObjectIntf*> objectsAt(const K7Q::ClassObject& object, const PropertyIntf& property) {
  std::vector<ObjectIntf*> objects;
  if (isMany(property)) {
    for (const auto& each : elementsOf(object, property))
      objects.push_back(static_cast<ObjectIntf*>(each.value()));
  } else if (const K7Q::Object value = valueOf(object, property); !value.isNull()) {
    objects.push_back(value.getInterface());
  }
  return objects;
}

bool storesObjects(const PropertyIntf& property) {
  const auto& row = rowOf(property);
  return row.role != Tarvelon::metamodel::Role::Value &&
         row.derivation == Tarvelon::metamodel::Derivation::None;
}

const PropertyIntf* findOpposite(const PropertyIntf& property, const K7Q::ClassObject& other) {
  const char* name = rowOf(property).opposite;
  if (!name) return nullptr;
  for (const PropertyIntf* each : propertiesOf(other)) {
    if (std::string_view(each->name()) == name) return each;
  }
  ADD_FAILURE() << property.name() << " has no opposite " << name;
  return nullptr;
}

std::string textOf(const K7Q::Object& value, const Places& places) {
  using K7Q::NSInterface::ScalarIntf;
  auto* interface = value.getInterface();
  if (!interface) return "-";
  if (const auto found = places.find(interface); found != places.end())
    return "#" + std::to_string(found->second);
  if (!interface->isValid({})) return "GONE";
  if (dynamic_cast<const K7Q::NSInterface::StringIntf*>(interface)) {
    return "'" + K7Q::String::to_string(K7Q::String(value)) + "'";
  }
  if (interface == &ScalarIntf::sInteger) return std::to_string(static_cast<int>(K7Q::Integer(value)));
  if (interface == &ScalarIntf::sDouble) return std::to_string(static_cast<double>(K7Q::Double(value)));
  if (interface == &ScalarIntf::sBoolean) return K7Q::Boolean(value) ? "true" : "false";
  return std::string(interface->getRuvoName(false).view());
}

std::string elementText(const PropertyIntf& property, const K7Q::Generic::Ref& element,
                        const Places& places) {
  if (rowOf(property).role == Tarvelon::metamodel::Role::Value) {
    if (property.typeName().view() != "char vector") return "literal";
    return textOf({static_cast<K7Q::NSInterface::StringIntf*>(element.value()), {}}, places);
  }
  return textOf({static_cast<ObjectIntf*>(element.value()), {}}, places);
}

std::string propertyText(const K7Q::ClassObject& object, const PropertyIntf& property, const Places& places) {
  std::string text;
  if (!property.owner().has(object.getClassObject(), {}, property.id())) return text;
  text += std::string(" ") + property.name() + "=";
  if (!isMany(property)) return text + textOf(valueOf(object, property), places);
  for (const auto& each : elementsOf(object, property)) text += elementText(property, each, places) + ",";
  return text;
}

/// The object's qualified name, computed by walking up its owners.
std::u16string nameByWalk(const K7Q::ClassObject& object) {
  std::u16string name;
  K7Q::Object each = object;
  bool isFirst = true;
  while (!each.isNull()) {
    const auto named = foundation::NamedElement::cast(each);
    const std::u16string own(named.isNull() ? std::u16string_view() : named.get<"Name">().view());
    if (own.empty() && isFirst) return {};
    if (!own.empty()) name.insert(0, u"/" + own);
    isFirst = false;
    each = Access<foundation::Element>(
               K7Q::ClassObject(static_cast<K7Q::NSInterface::ClassObjectIntf*>(each.getInterface()), {}),
               "Owner")
               .get();
  }
  return name;
}

using Mentions = std::multiset<std::pair<const ObjectIntf*, std::string>>;

void checkReferences(const K7Q::ClassObject& object, std::map<const ObjectIntf*, Mentions>& mentions) {
  std::set<std::pair<const ObjectIntf*, std::string>> seen;
  for (const PropertyIntf* property : propertiesOf(object)) {
    if (!storesObjects(*property)) continue;
    for (ObjectIntf* element : objectsAt(object, *property)) {
      ASSERT_TRUE(element->isValid({})) << property->name() << " dangles";
      const K7Q::ClassObject other(static_cast<K7Q::NSInterface::ClassObjectIntf*>(element), {});
      if (property->isContainment()) {
        ASSERT_TRUE(Access<foundation::Element>(other, "Owner").get() == object) << property->name();
        continue;
      }
      // A redefinition has the same values as the redefined property, so only one of them is counted.
      if (!rowOf(*property).redefined) mentions[element].insert({object.getInterface(), ""});
      if (const auto* back = findOpposite(*property, other)) {
        const auto refersBack = objectsAt(other, *back);
        ASSERT_EQ(std::ranges::count(refersBack, object.getInterface()), 1)
            << property->name() << " is not answered by " << back->name();
      }
    }
  }
}

void checkReferrers(const K7Q::ClassObject& object, const Mentions& expected) {
  Mentions found;
  for (const auto& mention : api::referrers(object)) {
    ASSERT_TRUE(mention.object.isValid());
    found.insert({mention.object.getInterface(), ""});
    const auto objects = objectsAt(mention.object, *mention.property);
    ASSERT_EQ(std::ranges::count(objects, object.getInterface()), 1) << mention.property->name();
  }
  ASSERT_EQ(found, expected);
}

}  // namespace

Places placesOf(const K7Q::Model& model) {
  Places places;
  for (const auto& each : api::objects(model)) places.emplace(each.getInterface(), places.size());
  return places;
}

std::string everything(const K7Q::Model& model) {
  const Places places = placesOf(model);
  std::string text;
  for (const auto& each : api::objects(model)) {
    text += "#" + std::to_string(places.at(each.getInterface())) + " " +
            std::string(each.getInterface()->getRuvoName(false).view());
    for (const PropertyIntf* property : propertiesOf(each)) text += propertyText(each, *property, places);
    text += " at " + K7Q::String::to_string(K7Q::String(api::qualifiedName(each)));
    for (const auto& mention : api::referrers(each)) {
      text +=
          " <" + std::to_string(places.at(mention.object.getInterface())) + "." + mention.property->name();
    }
    text += "\n";
  }
  return text;
}

void checkAgreement(const K7Q::Model& model) {
  const auto objects = api::objects(model);
  std::map<const ObjectIntf*, Mentions> mentions;
  std::map<std::u16string, std::set<const ObjectIntf*>> named;
  std::map<const K7Q::IntrospectiveMethods*, std::vector<const ObjectIntf*>> classes;
  for (const auto& each : objects) {
    ASSERT_TRUE(each.isValid());
    ASSERT_NO_FATAL_FAILURE(checkReferences(each, mentions));
    const std::u16string name = nameByWalk(each);
    ASSERT_EQ(api::qualifiedName(each), name);
    // A name that contains a slash cannot be found.
    if (!name.empty() && name.find(u"//") == name.npos && name.back() != u'/')
      named[name].insert(each.getInterface());
    classes[&classOf(each)].push_back(each.getInterface());
  }
  for (const auto& each : objects) {
    ASSERT_NO_FATAL_FAILURE(checkReferrers(each, mentions[each.getInterface()]));
  }
  for (const auto& [name, expected] : named) {
    const auto all = api::findAll(model, name);
    std::set<const ObjectIntf*> found;
    for (const auto& each : all) found.insert(each.getInterface());
    ASSERT_EQ(found, expected);
    ASSERT_EQ(all.size(), expected.size());
    ASSERT_TRUE(api::find(model, name) == all[0]);
  }
  for (auto& [cls, expected] : classes) {
    std::vector<const ObjectIntf*> found;
    for (const auto& each : api::instances(model, *cls)) {
      if (&classOf(each) == cls) found.push_back(each.getInterface());
    }
    std::ranges::sort(found);
    std::ranges::sort(expected);
    ASSERT_EQ(found, expected);
  }
}

}  // namespace shown
