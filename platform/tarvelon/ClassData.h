#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "boundary/k7q/Introspection.h"
#include "platform/tarvelon/Property.h"

namespace Tarvelon::metamodel::native {

class ClassMethods;

/// What `K7Q.ImmutableClass` answers.
class ClassDescription final : public K7Q::NSInterface::ClassIntf {
 public:
  explicit ClassDescription(const ClassMethods& methods) noexcept : mMethods(&methods) {}
  std::u16string name() const override;
  const ruvo::InternedName& fullName() const override;
  const K7Q::IntrospectiveMethods& methods() const override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;

 private:
  const ClassMethods* mMethods;
};

/// What a constructor fills: one property for each argument.
struct ConstructorPlan {
  const ConstructorRow* row;
  std::vector<const Property*> properties;
};

/// What the engine knows of a class beyond its rows; made when the class is first used, and kept.
struct ClassData {
  static constexpr std::uint8_t kNoSlot = 0xFF;

  explicit ClassData(const ClassMethods& methods);
  ClassData(const ClassData&) = delete;
  ClassData& operator=(const ClassData&) = delete;

  /// Whether the class is the one of that ordinal or stands below it.
  bool isKindOf(unsigned other) const noexcept { return testBit(ancestorBits, other); }
  bool answersTag(std::size_t tag) const noexcept { return testBit(tagBits, tag); }
  /// The slot of the owner's property, kNoSlot for one that is not stored.
  /// REQUIRES: isKindOf(ownerOrdinal), an id that the owner has.
  std::uint8_t slotOf(unsigned ownerOrdinal, unsigned id) const noexcept {
    return slots[slotBase[ownerOrdinal] + id];
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
  std::vector<std::uint64_t> ancestorBits;
  std::vector<std::uint64_t> tagBits;
  /// The class and all above, each behind its bases.
  std::vector<const ClassData*> ancestors;

  /// By id; own ones alone.
  std::vector<std::unique_ptr<Property>> properties;
  /// By ordinal of the owner: where its ids start in `slots`.
  std::vector<std::uint16_t> slotBase;
  std::vector<std::uint8_t> slots;
  /// By slot: the narrowest row that shares it. What is written is checked against this one.
  std::vector<const Property*> slotProperties;
  /// A bit for each slot that holds, refers, has a list, has text.
  std::uint64_t holdingSlots = 0;
  std::uint64_t referringSlots = 0;
  std::uint64_t listSlots = 0;
  std::uint64_t textSlots = 0;

  std::vector<ConstructorPlan> constructors;

 private:
  static bool testBit(std::span<const std::uint64_t> bits, std::size_t bit) noexcept {
    return bit / 64 < bits.size() && (bits[bit / 64] >> (bit % 64) & 1) != 0;
  }
  void inherit();
  void addTags();
  void addProperties();
  void layOut();
  std::uint8_t slotFor(const ClassData& ancestor, const Property& property);
  void addSlot(const Property& property);
  void planConstructors();
};

}  // namespace Tarvelon::metamodel::native
