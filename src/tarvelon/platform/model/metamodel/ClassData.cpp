#include "tarvelon/platform/model/metamodel/ClassData.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <string>

#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Described.h"

namespace Tarvelon::metamodel::native {

namespace {

unsigned nextOrdinal() {
  static std::atomic<unsigned> next = 0;
  return next++;
}

const ClassData& dataOf(const K7Q::IntrospectiveMethods* table) {
  return static_cast<const ClassMethods*>(table)->data();
}

void setBit(std::vector<std::uint64_t>& bits, std::size_t bit) {
  if (bit / 64 >= bits.size()) bits.resize(bit / 64 + 1);
  bits[bit / 64] |= std::uint64_t{1} << (bit % 64);
}

/// An error in the rows themselves. Only their author can see it.
[[noreturn]] void refuseRows(const ClassMethods& cls, const std::string& problem) {
  throw std::logic_error(std::string("rows of class '") + cls.className().name + "': " + problem);
}

}  // namespace

ClassData::ClassData(const ClassMethods& table)
    : methods(&table),
      names{table.name(false), table.name(true)},
      tags{K7Q::tagsOf<K7Q::NSInterface::ObjectIntf>().domain,
           K7Q::CooperativeVisitor::internal::GetTag(table.interface(), typeid(K7Q::VisitationDomain))},
      description(table) {
  inherit();
  // Must come after inherit(), which creates the bases: so the ordinal of a base is always smaller.
  ordinal = nextOrdinal();
  addTags();
  addProperties();
  layOut();
  planConstructors();
}

void ClassData::inherit() {
  for (const K7Q::IntrospectiveMethods* base : methods->bases()) {
    for (const ClassData* ancestor : dataOf(base).ancestors) {
      if (std::ranges::find(ancestors, ancestor) == ancestors.end()) ancestors.push_back(ancestor);
    }
  }
  ancestors.push_back(this);
}

void ClassData::addTags() {
  using namespace K7Q::NSInterface;
  for (const ClassData* ancestor : ancestors) setBit(tagBits, ancestor->tags.interface);
  for (const auto& tag : {K7Q::tagsOf<ClassObjectIntf>(), K7Q::tagsOf<ObjectIntf>(),
                          K7Q::tagsOf<K7Q::ReferenceCountingIntf>()}) {
    setBit(tagBits, tag.interface);
  }
}

void ClassData::addProperties() {
  properties.resize(methods->numberOfProperties() + 1);
  if (!methods->rows()) return;
  for (const PropertyRow& row : methods->rows()->properties) {
    properties[row.id] = std::make_unique<Property>(*methods, row);
  }
}

void ClassData::layOut() {
  firstPlace.resize(ordinal + 1, kNotAbove);
  for (const ClassData* ancestor : ancestors) {
    const std::size_t first = places.size();
    firstPlace[ancestor->ordinal] = static_cast<std::uint16_t>(first);
    places.resize(first + ancestor->properties.size());
    for (const auto& property : ancestor->properties) {
      if (!property) continue;
      const bool isStored = property->storage() != Storage::None;
      places[first + property->id()] = {property.get(), isStored ? slotFor(*ancestor, *property) : kNoSlot};
    }
  }
}

std::uint8_t ClassData::slotFor(const ClassData& ancestor, const Property& property) {
  const char* redefined = property.row().redefined;
  if (!redefined) {
    addSlot(property);
    return static_cast<std::uint8_t>(slotProperties.size() - 1);
  }
  for (const K7Q::IntrospectiveMethods* base : ancestor.methods->bases()) {
    const Property* wider = dataOf(base).findProperty(redefined);
    if (!wider || wider->storage() != property.storage()) continue;
    const std::uint8_t slot = placeOf(wider->ownerClass().data(), wider->id()).slot;
    slotProperties[slot] = &property;
    return slot;
  }
  refuseRows(*ancestor.methods, std::string("'") + property.name() + "' redefines '" + redefined +
                                    "', but no base class has that property with the same storage");
}

void ClassData::addSlot(const Property& property) {
  if (slotProperties.size() == kMaxPropertySlots) {
    refuseRows(*methods,
               "more than " + std::to_string(kMaxPropertySlots) + " stored properties; widen Instance");
  }
  const std::uint64_t bit = std::uint64_t{1} << slotProperties.size();
  const Storage storage = property.storage();
  const bool isReference = storage == Storage::Reference || storage == Storage::References;
  if (isReference) (property.holds() ? holdingSlots : referringSlots) |= bit;
  if (property.isMany()) listSlots |= bit;
  if (property.row().opposite) oppositeSlots |= bit;
  if (property.metaName() == "Name" && storage == Storage::Text)
    nameSlot = static_cast<std::uint8_t>(slotProperties.size());
  if (storage == Storage::Text || storage == Storage::Texts) textSlots |= bit;
  slotProperties.push_back(&property);
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
const Property* ClassData::findProperty(std::string_view metaName) const noexcept {
  for (const auto& property : properties) {
    if (property && property->metaName() == metaName) return property.get();
  }
  for (const K7Q::IntrospectiveMethods* base : methods->bases()) {
    if (const Property* found = dataOf(base).findProperty(metaName)) return found;
  }
  return nullptr;
}

void ClassData::planConstructors() {
  if (!methods->rows()) return;
  for (const ConstructorRow& row : methods->rows()->constructors) {
    ConstructorPlan plan;
    std::string_view rest = row.parameterNames;
    for (unsigned argument = 0; argument < row.count; ++argument) {
      const std::string_view parameter = rest.substr(0, rest.find(','));
      plan.push_back(planArgument(parameter));
      rest.remove_prefix(std::min(parameter.size() + 1, rest.size()));
    }
    constructors.push_back(std::move(plan));
  }
}

ArgumentPlan ClassData::planArgument(std::string_view parameter) const {
  const std::string_view metaName = filledBy(parameter);
  const Property* property = findProperty(metaName);
  if (!property)
    refuseRows(*methods, "no property '" + std::string(metaName) + "' for a constructor's argument");
  // data() cannot return the ClassData of this class yet, because it is being constructed.
  const ClassData& owner = &property->ownerClass() == methods ? *this : property->ownerClass().data();
  const std::uint8_t slot = placeOf(owner, property->id()).slot;
  return {slotProperties[slot], slot};
}

std::u16string ClassDescription::name() const {
  const std::string_view text = mMethods->className().shortName();
  return {text.begin(), text.end()};
}

const ruvo::InternedName& ClassDescription::fullName() const { return mMethods->name(false); }
const K7Q::IntrospectiveMethods& ClassDescription::methods() const { return *mMethods; }

const ruvo::InternedName& ClassDescription::getRuvoName(bool immutable) const {
  return ruvoNameOf(Described::Class, immutable);
}

K7Q::ImmutableType ClassDescription::getMetaType(K7Q::Deviant deviant) const {
  return metaTypeOf(Described::Class, deviant);
}

void* ClassDescription::cast(K7Q::CooperativeVisitor::TagPair tag) {
  using namespace K7Q::NSInterface;
  return castAmong<ClassIntf, TypeIntf, ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
}

}  // namespace Tarvelon::metamodel::native
