#pragma once

#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

// One row for each class: its bases, its constructors with the names of the properties that they set, and its
// properties in ascending id (boundary/tarvelon/Rows.h).
// clang-format off
namespace Tarvelon::metamodel::types {

constexpr auto row(Is<CompuMethod>) {
  return classRow(
      bases<foundation::PackageableElement>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category"),
          optional<K7Q::String>( 2, "Unit")));
}

constexpr auto row(Is<SwBaseType>) {
  return classRow(
      bases<foundation::ValueType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::Integer>( 1, "BaseTypeSize"),
          optional<K7Q::String> ( 2, "BaseTypeEncoding"),
          optional<K7Q::String> ( 3, "NativeDeclaration")));
}

constexpr auto row(Is<ImplementationDataType>) {
  return classRow(
      bases<foundation::ValueType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category"),
          optional<SwBaseType> ( 2, "BaseType",    kRefers),
          optional<CompuMethod>( 3, "CompuMethod", kRefers)));
}

constexpr auto row(Is<ApplicationPrimitiveDataType>) {
  return classRow(
      bases<foundation::ValueType>(),
      constructors(create<>(),
                   create<K7Q::String>(" aName")),
      properties(
          optional<K7Q::String>( 1, "Category"),
          optional<CompuMethod>( 2, "CompuMethod", kRefers)));
}

}  // namespace Tarvelon::metamodel::types
// clang-format on
