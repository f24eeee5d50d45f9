#include "tarvelon/platform/model/metamodel/Property.h"

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Described.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/metamodel/Registry.h"

namespace Tarvelon::metamodel::native {

namespace {

Storage storageOf(const PropertyRow& row) {
  if (row.derivation != Derivation::None) return Storage::None;
  if (row.isMany()) {
    if (row.type->kind == Kind::ClassObject) return Storage::References;
    return row.type->kind == Kind::DataType ? Storage::Enumerations : Storage::Texts;
  }
  switch (row.type->kind) {
    case Kind::ClassObject:
      return Storage::Reference;
    case Kind::DataType:
      return Storage::Enumeration;
    case Kind::String:
      return Storage::Text;
    case Kind::Boolean:
      return Storage::Boolean;
    case Kind::Integer:
      return Storage::Integer;
    case Kind::Double:
      return Storage::Double;
    case Kind::Real:
      return Storage::Real;
  }
  return Storage::None;
}

const char* typeNameOf(const TypeRow& type) {
  switch (type.kind) {
    case Kind::ClassObject:
      return type.cls->name;
    case Kind::DataType:
      return type.enumeration->name;
    case Kind::String:
      return "char vector";
    case Kind::Boolean:
      return "logical scalar";
    case Kind::Integer:
      return "int32 scalar";
    case Kind::Double:
    case Kind::Real:
      return "double scalar";
  }
  return "";
}

}  // namespace

std::string metaNameOf(const PropertyRow& row) {
  std::string name = row.name;
  if (name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<char>(name[0] - 'a' + 'A');
  return name;
}

Property::Property(const ClassMethods& owner, const PropertyRow& row)
    : mOwner(&owner),
      mRow(&row),
      mMetaName(metaNameOf(row)),
      mTypeName(typeNameOf(*row.type)),
      mStorage(storageOf(row)) {
  share();
  if (row.type->cls) {
    mType = &tableOf(*row.type->cls);
  } else if (row.type->enumeration) {
    mEnumeration = &EnumerationType::of(*row.type->enumeration);
  }
}

const K7Q::IntrospectiveMethods& Property::owner() const { return *mOwner; }

const Property* Property::findOpposite() const {
  const Property* found = mOpposite.load(std::memory_order_acquire);
  if (!found) {
    found = mType->data().findProperty(mRow->opposite);
    mOpposite.store(found, std::memory_order_release);
  }
  return found;
}

// Null if the hidden entry has the same name as this property: a property always hides an inherited one of
// its own name.
const char* Property::hiddenName() const {
  return mRow->hidden && mMetaName != mRow->hidden ? mRow->hidden : nullptr;
}

const ruvo::InternedName& Property::getRuvoName(bool immutable) const {
  return ruvoNameOf(Described::Property, immutable);
}

K7Q::ImmutableType Property::getMetaType(K7Q::Deviant deviant) const {
  return metaTypeOf(Described::Property, deviant);
}

void* Property::cast(K7Q::CooperativeVisitor::TagPair tag) {
  using namespace K7Q::NSInterface;
  return castAmong<PropertyIntf, ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
}

}  // namespace Tarvelon::metamodel::native
