#pragma once

#include <atomic>
#include <string>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

namespace Tarvelon::metamodel::native {

class ClassMethods;
class EnumerationType;

/// How the values of a property are stored. None means that they are computed.
enum class Storage : std::uint8_t {
  Boolean,
  Integer,
  Double,
  Real,
  Enumeration,
  Text,
  Reference,
  Texts,
  Enumerations,
  References,
  None
};

/// A row of a class's table in the form that the engine needs. It is also the description that
/// `K7Q.ImmutableProperty` shows.
class Property final : public K7Q::NSInterface::PropertyIntf {
 public:
  Property(const ClassMethods& owner, const PropertyRow& row);

  const char* name() const override { return mMetaName.c_str(); }
  unsigned id() const override { return mRow->id; }
  const K7Q::IntrospectiveMethods& owner() const override;
  const ruvo::InternedName& typeName() const override { return mTypeName; }
  K7Q::mi::Multiplicity multiplicity() const override { return mRow->multiplicity; }
  K7Q::mi::Mutability mutability() const override { return mRow->mutability; }
  bool isReference() const override { return mRow->role != Role::Value; }
  bool isContainment() const override { return mRow->role == Role::Holds; }
  const char* hiddenName() const override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override;
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override;

  const PropertyRow& row() const noexcept { return *mRow; }
  const ClassMethods& ownerClass() const noexcept { return *mOwner; }
  std::string_view metaName() const noexcept { return mMetaName; }
  Storage storage() const noexcept { return mStorage; }
  bool isMany() const noexcept { return mRow->isMany(); }
  bool isRequired() const noexcept { return mRow->multiplicity == K7Q::mi::Multiplicity::One; }
  bool isReadOnly() const noexcept { return mRow->mutability == K7Q::mi::Mutability::ReadOnly; }
  bool holds() const noexcept { return mRow->role == Role::Holds; }
  Derivation derivation() const noexcept { return mRow->derivation; }
  /// The class of the referenced objects. Null for properties that are not references.
  const ClassMethods* type() const noexcept { return mType; }
  /// The opposite: the property of the referenced class that refers back. Null if there is none.
  const Property* opposite() const { return mRow->opposite ? findOpposite() : nullptr; }
  /// The enumeration. Null for properties of other types.
  const EnumerationType* enumeration() const noexcept { return mEnumeration; }

 private:
  const Property* findOpposite() const;

  const ClassMethods* mOwner;
  const PropertyRow* mRow;
  std::string mMetaName;
  ruvo::InternedName mTypeName;
  const ClassMethods* mType = nullptr;
  const EnumerationType* mEnumeration = nullptr;
  mutable std::atomic<const Property*> mOpposite = nullptr;
  Storage mStorage;
};

/// The metamodel name of the property: its name with a capital first letter.
std::string metaNameOf(const PropertyRow& row);

}  // namespace Tarvelon::metamodel::native
