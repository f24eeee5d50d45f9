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

/// What `K7Q.ImmutableClass` answers.
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

/// What an argument of a constructor fills.
struct ArgumentPlan {
  /// The narrowest row of the slot.
  const Property* property;
  std::uint8_t slot;
};
using ConstructorPlan = std::vector<ArgumentPlan>;

/// A property of an owner, as an object of a class has it.
struct PropertyPlace {
  /// Null for an id without a property.
  const Property* property = nullptr;
  std::uint8_t slot = 0;
};

/// What the engine knows of a class beyond its rows; made when the class is first used, and kept.
struct ClassData {
  static constexpr std::uint8_t kNoSlot = 0xFF;
  static constexpr std::uint16_t kNotAbove = 0xFFFF;
  /// How many slots an object has (objects/Instance.h).
  static constexpr unsigned kMaxSlots = 47;
  /// The slots in which an object keeps its id in files, a number or a text. No property gets them.
  static constexpr unsigned kIdSlot = kMaxSlots - 1;
  static constexpr unsigned kForeignIdSlot = kMaxSlots - 2;
  static constexpr unsigned kMaxPropertySlots = kForeignIdSlot;

  explicit ClassData(const ClassMethods& methods);
  ClassData(const ClassData&) = delete;
  ClassData& operator=(const ClassData&) = delete;

  /// Whether the class is the one of that ordinal or stands below it.
  bool isKindOf(unsigned other) const noexcept { return other <= ordinal && firstPlace[other] != kNotAbove; }
  bool answersTag(std::size_t tag) const noexcept {
    return tag / 64 < tagBits.size() && (tagBits[tag / 64] >> (tag % 64) & 1) != 0;
  }
  /// The owner's property and its slot, kNoSlot for one that is not stored.
  /// REQUIRES: isKindOf(owner.ordinal), an id up to the owner's last.
  const PropertyPlace& placeOf(const ClassData& owner, unsigned id) const noexcept {
    return places[firstPlace[owner.ordinal] + id];
  }
  /// An own property, null for an id without one.
  const Property* ownProperty(unsigned id) const noexcept {
    return id < properties.size() ? properties[id].get() : nullptr;
  }
  /// The property of that meta name that comes first in the class's list: its own, then those of its bases in
  /// order.
  const Property* findProperty(std::string_view metaName) const noexcept;

  const ClassMethods* methods;
  std::array<ruvo::InternedName, 2> names;
  /// Classes are numbered as they are first used, each behind its bases.
  unsigned ordinal = 0;
  K7Q::CooperativeVisitor::TagPair tags;
  ClassDescription description;
  std::vector<std::uint64_t> tagBits;
  /// The class and all above, each behind its bases.
  std::vector<const ClassData*> ancestors;

  /// By id, from 0; own ones alone.
  std::vector<std::unique_ptr<Property>> properties;
  /// By ordinal of the owner: where its ids start in `places`. A class above always has the smaller ordinal.
  std::vector<std::uint16_t> firstPlace;
  std::vector<PropertyPlace> places;
  /// By slot: the narrowest row that shares it. What is written is checked against this one.
  std::vector<const Property*> slotProperties;
  /// A bit for each slot that holds, refers, has a list, has text (the text of an id as well).
  std::uint64_t holdingSlots = 0;
  std::uint64_t referringSlots = 0;
  std::uint64_t listSlots = 0;
  std::uint64_t textSlots = std::uint64_t{1} << kForeignIdSlot;
  /// Those whose references are kept in step with references back.
  std::uint64_t oppositeSlots = 0;
  /// Of the object's Name, kNoSlot if it has none.
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
