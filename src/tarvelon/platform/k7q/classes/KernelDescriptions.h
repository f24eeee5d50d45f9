#pragma once

#include "tarvelon/boundary/k7q/Introspection.h"

/// The native functions of the classes that describe the metamodel. Each raises K7Q::Exception with the text
/// kNullReference for a null handle.
namespace K7Q::mi {

/// The results of functions that return a list. Hosts cannot change these lists.
using DescriptionList = ImmutableSequence<ImmutableObject>;
using TextList = ImmutableSequence<String>;

String typeName(const ImmutableType& self);
String typeFullName(const ImmutableType& self);

/// The direct base classes.
DescriptionList classSuperclasses(const ImmutableClass& self);
/// The properties that the class itself declares, in ascending id.
DescriptionList classProperties(const ImmutableClass& self);
/// The dotted name of the class's package.
String classPackage(const ImmutableClass& self);
bool classIsAbstract(const ImmutableClass& self);

TextList dataTypeLiterals(const ImmutableDataType& self);

String propertyName(const ImmutableProperty& self);
int propertyId(const ImmutableProperty& self);
ImmutableClass propertyOwner(const ImmutableProperty& self);
/// The dotted name of the class or enumeration of the values, or a word such as "int32 scalar".
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
