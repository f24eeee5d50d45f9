#pragma once

#include "tarvelon/boundary/k7q/Introspection.h"

/// The native functions of the classes that describe the metamodel. Each raises kNullReference for an empty
/// handle.
namespace K7Q::mi {

/// Read-only lists.
using DescriptionList = ImmutableSequence<ImmutableObject>;
using TextList = ImmutableSequence<String>;

String typeName(const ImmutableType& self);
String typeFullName(const ImmutableType& self);

/// The direct base classes; the properties declared by the class itself, in ascending id.
DescriptionList classSuperclasses(const ImmutableClass& self);
DescriptionList classProperties(const ImmutableClass& self);
/// The dotted name of the class's package.
String classPackage(const ImmutableClass& self);
bool classIsAbstract(const ImmutableClass& self);

TextList dataTypeLiterals(const ImmutableDataType& self);

String propertyName(const ImmutableProperty& self);
int propertyId(const ImmutableProperty& self);
ImmutableClass propertyOwner(const ImmutableProperty& self);
/// The dotted name of the value class, or the name of a scalar type ("int32 scalar" for example).
String propertyType(const ImmutableProperty& self);
int propertyLowerBound(const ImmutableProperty& self);
/// 1, or -1 for an unlimited number of values.
int propertyUpperBound(const ImmutableProperty& self);
bool propertyIsReadOnly(const ImmutableProperty& self);
bool propertyIsContainment(const ImmutableProperty& self);

String packageName(const ImmutablePackage& self);
String packageFullName(const ImmutablePackage& self);
DescriptionList packageClasses(const ImmutablePackage& self);
DescriptionList packageDataTypes(const ImmutablePackage& self);
DescriptionList packageSubPackages(const ImmutablePackage& self);

}  // namespace K7Q::mi
