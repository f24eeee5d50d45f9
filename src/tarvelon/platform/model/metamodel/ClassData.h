#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/platform/model/metamodel/Property.h"

namespace Tarvelon::metamodel::native {

class ClassMethods;

/// The description of a class that `K7Q.ImmutableClass` shows.
class ClassDescription final : public K7Q::NSInterface::ClassIntf {
 public:
  explicit ClassDescription(const ClassMethods& methods) noexcept : mMethods(&methods) { share(); }
  std::u16string name() const override;
  const ruvo::InternedName& fullName() const override;
  const K7Q::IntrospectiveMethods& methods() const override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;

 private:
  const ClassMethods* mMethods;
};

/// The property that one argument of a constructor sets.
struct ArgumentPlan {
  /// The most derived declaration of the property.
  const Property* property;
  std::uint8_t slot;
};
using ConstructorPlan = std::vector<ArgumentPlan>;

/// The property and slot that an id of an owner class has in objects of a class.
struct PropertyPlace {
  /// Null if there is no property with this id.
  const Property* property = nullptr;
  std::uint8_t slot = 0;
};

/// What the engine derives from the rows of a class, such as the storage layout. It is created when the class
/// is first used and never freed.
struct ClassData {
  static constexpr std::uint8_t kNoSlot = 0xFF;
  static constexpr std::uint16_t kNotAbove = 0xFFFF;
  /// How many slots an object has (objects/Instance.h).
  static constexpr unsigned kMaxSlots = 47;
  /// Slots for the id that an object has in files, a number or a text. No property uses them.
  static constexpr unsigned kIdSlot = kMaxSlots - 1;
  static constexpr unsigned kForeignIdSlot = kMaxSlots - 2;
  /// The slot for the element of a file from which the object was loaded (files/arxml). No property uses it.
  static constexpr unsigned kSourceSlot = kMaxSlots - 3;
  static constexpr unsigned kMaxPropertySlots = kSourceSlot;

  explicit ClassData(const ClassMethods& methods);
  ClassData(const ClassData&) = delete;
  ClassData& operator=(const ClassData&) = delete;

  /// Whether the class is the class with that ordinal or a subclass of it.
  bool isKindOf(unsigned other) const noexcept { return other <= ordinal && firstPlace[other] != kNotAbove; }
  bool answersTag(std::size_t tag) const noexcept {
    return tag / 64 < tagBits.size() && (tagBits[tag / 64] >> (tag % 64) & 1) != 0;
  }
  /// The property of a base class `owner` as objects of this class have it. Its slot is kNoSlot if the
  /// property is not stored.
  /// REQUIRES: isKindOf(owner.ordinal), and `id` is not greater than the owner's last id.
  const PropertyPlace& placeOf(const ClassData& owner, unsigned id) const noexcept {
    return places[firstPlace[owner.ordinal] + id];
  }
  /// A property that the class itself declares, null if no property has this id.
  const Property* ownProperty(unsigned id) const noexcept {
    return id < properties.size() ? properties[id].get() : nullptr;
  }
  /// Finds a property by its metamodel name: among the class's own properties, then in its bases in order.
  const Property* findProperty(std::string_view metaName) const noexcept;

  const ClassMethods* methods;
  std::array<ruvo::InternedName, 2> names;
  /// Number of the class in the order of first use. A base class always has a smaller ordinal.
  unsigned ordinal = 0;
  K7Q::CooperativeVisitor::TagPair tags;
  ClassDescription description;
  std::vector<std::uint64_t> tagBits;
  /// The class and all its bases; each class comes after its own bases.
  std::vector<const ClassData*> ancestors;

  /// The properties that the class itself declares, by id. Index 0 is unused.
  std::vector<std::unique_ptr<Property>> properties;
  /// For each base class, by its ordinal: the index in `places` where its ids begin. kNotAbove for a class
  /// that is not a base.
  std::vector<std::uint16_t> firstPlace;
  std::vector<PropertyPlace> places;
  /// By slot: the most derived declaration. New values are checked against it.
  std::vector<const Property*> slotProperties;
  /// Bit masks of slots: containment references, cross references, lists, texts (including the slot of a text
  /// id).
  std::uint64_t holdingSlots = 0;
  std::uint64_t referringSlots = 0;
  std::uint64_t listSlots = 0;
  std::uint64_t textSlots = std::uint64_t{1} << kForeignIdSlot;
  /// The bit mask of the slots whose property has an opposite.
  std::uint64_t oppositeSlots = 0;
  /// The slot of the property Name, kNoSlot if the class has none.
  std::uint8_t nameSlot = kNoSlot;

  std::vector<ConstructorPlan> constructors;

 private:
  void inherit();
  void addTags();
  void addProperties();
  void layOut();
  std::uint8_t slotFor(const ClassData& ancestor, const Property& property);
  void addSlot(const Property& property);
  void planConstructors();
  ArgumentPlan planArgument(std::string_view parameter) const;
};

}  // namespace Tarvelon::metamodel::native
