#include "tarvelon/binding/Properties.h"

#include <string>

namespace binding {

using K7Q::mi::K7qmiPropertyFactory;
using metamodel::Kind;
using metamodel::PropertyRow;
using metamodel::TypeRow;

namespace {

void addPrimitive(K7qmiPropertyFactory& factory, const PropertyRow& row,
                  ruvo::factory::PropertyAttributes attributes) {
  switch (row.type->kind) {
    case Kind::Boolean:
      return factory.Primitive<K7Q::Boolean>(row.name, row.id, row.multiplicity, row.mutability, attributes);
    case Kind::Integer:
      return factory.Primitive<K7Q::Integer>(row.name, row.id, row.multiplicity, row.mutability, attributes);
    case Kind::Double:
      return factory.Primitive<K7Q::Double>(row.name, row.id, row.multiplicity, row.mutability, attributes);
    default:
      return factory.Primitive<K7Q::Real>(row.name, row.id, row.multiplicity, row.mutability, attributes);
  }
}

void addProperty(K7qmiPropertyFactory& factory, const PropertyRow& row) {
  const ruvo::factory::PropertyAttributes attributes(row.attributes);
  if (row.type->kind == Kind::ClassObject) {
    return factory.ClassObject(row.name, row.id, recordTypeName(row), row.multiplicity, row.mutability,
                               attributes);
  }
  if (row.isMany()) {
    return factory.PrimitiveSequence(row.name, row.id, recordTypeName(row), row.mutability, attributes);
  }
  if (row.type->kind == Kind::DataType) {
    // The name is made before the helper: making the name may throw, and nothing would free the helper.
    const InternedName typeName = recordTypeName(row);
    return factory.DataType(row.name, row.id, typeName, new PropHelper(*row.type->enumeration),
                            row.multiplicity, row.mutability, attributes);
  }
  if (row.type->kind == Kind::String) {
    return factory.String<K7Q::String>(row.name, row.id, "char vector", row.multiplicity, row.mutability,
                                       attributes);
  }
  addPrimitive(factory, row, attributes);
}

/// The dotted name with `word` inserted before the short name.
std::string prefixed(const char* name, std::size_t prefix, const char* word) {
  return std::string(name, prefix) + word + (name + prefix);
}

}  // namespace

InternedName typeName(const TypeRow& type) {
  switch (type.kind) {
    case Kind::ClassObject:
      return named(type.cls->name);
    case Kind::DataType:
      return named(type.enumeration->name);
    case Kind::String:
      return named("char vector");
    case Kind::Boolean:
      return named("logical scalar");
    case Kind::Integer:
      return named("int32 scalar");
    case Kind::Double:
    case Kind::Real:
      break;
  }
  return named("double scalar");
}

InternedName recordTypeName(const PropertyRow& row) {
  const TypeRow& type = *row.type;
  if (type.kind == Kind::String) return named("K7Q.ImmutableSequenceOfString");
  if (type.kind == Kind::DataType) {
    const auto& name = *type.enumeration;
    return row.isMany() ? named(prefixed(name.name, name.prefix, "ImmutableSequenceOf").c_str())
                        : named(name.name);
  }
  const auto& name = *type.cls;
  return row.isMany() ? named(prefixed(name.name, name.prefix, "ImmutableSequenceOfImmutable").c_str())
                      : named(name.immutable);
}

void addProperties(ruvo::RVOClass& cls, const ClassBinding& binding) {
  if (binding.table.properties.empty()) return;
  K7qmiPropertyFactory factory(&cls, named(binding.name().immutable), &binding.methods());
  for (const PropertyRow& row : binding.table.properties) {
    if (row.isExposed) addProperty(factory, row);
  }
}

RVOValue PropHelper::unboxAndReturn(K7Q::Object value, const InternedName& typeName) {
  const auto number = metamodel::native::enumerationFromObject(value);
  const auto cell = metamodel::native::enumerationToObject(mEnumeration, number);
  return RVOValue(boxAs(cell.getInterface(), cell.getDeviant(), false, typeName));
}

bool PropHelper::boxAndSet(K7Q::ClassObject* object, RVOValue& value,
                           const K7Q::IntrospectiveMethods* methods, unsigned id) {
  const auto unboxed = unboxAs(value.array(), K7Q::tagsOf<K7Q::NSInterface::ObjectIntf>());
  if (!unboxed.interface) return false;
  const K7Q::Object given(static_cast<K7Q::NSInterface::ObjectIntf*>(unboxed.interface), unboxed.deviant);
  methods->set(object->getClassObject(), object->getDeviant(), id, given);
  return true;
}

}  // namespace binding
