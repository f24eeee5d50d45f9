#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/tarvelon/Names.h"

namespace Tarvelon::metamodel::native {

/// The description of an enumeration that `K7Q.ImmutableDataType` shows.
///
/// There is one for each dotted name. It is created when it is first asked for and never freed. Enumerations
/// with the same name in several libraries share it.
class EnumerationType final : public K7Q::NSInterface::DataTypeIntf {
 public:
  /// Cost: One lookup by the dotted name.
  static const EnumerationType& of(const EnumerationName& enumeration);
  explicit EnumerationType(const EnumerationName& enumeration);

  std::u16string name() const override;
  const ruvo::InternedName& fullName() const override { return mFullName; }
  std::span<const std::string_view> literals() const override { return mLiterals; }
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;

  bool hasLiteral(std::int32_t value) const noexcept {
    return value >= 0 && static_cast<std::size_t>(value) < mLiterals.size();
  }
  /// The name of the literal. The number itself if there is no such literal.
  std::string text(std::int32_t value) const;
  /// The names of all literals: "'A', 'B', 'C'".
  std::string literalList() const;
  K7Q::Object box(std::int32_t value) const;
  /// The name of the host's class for sequences of these values.
  const ruvo::InternedName& sequenceName(bool isImmutable) const;

 private:
  ruvo::InternedName mFullName;
  std::size_t mPrefix;
  std::string mLiteralText;
  std::vector<std::string_view> mLiterals;
  std::array<ruvo::LazyName, 2> mSequenceNames;
};

/// One value of an enumeration as a reference-counted object.
class EnumerationCell final : public K7Q::NSInterface::ObjectIntf {
 public:
  EnumerationCell(const EnumerationType& type, std::int32_t value) noexcept : mValue(value), mType(&type) {}
  void addRef() const override { ++mReferences; }
  void release() const override {
    if (--mReferences == 0) delete this;
  }
  int numRef() const override { return mReferences; }
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;
  const ruvo::InternedName& getRuvoName(bool /*immutable*/) const override { return mType->fullName(); }
  bool isValid(K7Q::Deviant) const override { return true; }
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override { return {mType, deviant}; }

  const EnumerationType& type() const noexcept { return *mType; }
  std::int32_t value() const noexcept { return mValue; }

  static void* operator new(std::size_t size);
  static void operator delete(void* storage) noexcept;

 private:
  ~EnumerationCell() override;
  mutable std::int32_t mReferences = 0;
  std::int32_t mValue;
  const EnumerationType* mType;
};

/// The cell behind an interface, null if the interface is not one of a cell.
inline const EnumerationCell* asCell(const K7Q::NSInterface::ObjectIntf* object) noexcept {
  return object && &typeid(*object) == &typeid(EnumerationCell) ? static_cast<const EnumerationCell*>(object)
                                                                : nullptr;
}

}  // namespace Tarvelon::metamodel::native
