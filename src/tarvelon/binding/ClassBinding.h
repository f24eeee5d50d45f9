#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "tarvelon/binding/Methods.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

/// The data from which a class wrapper defines the host classes of one metamodel class: the row of the class,
/// and the native functions that depend on its C++ type. All of it is constant data. Nothing is created
/// before the object system needs a class.
namespace binding {

namespace metamodel = Tarvelon::metamodel;
using metamodel::ClassName;
using metamodel::ClassTable;

struct ClassBinding;

/// Functions that add methods to a class with two bases: the methods for validity, lifetime and conversion to
/// other views. A class with one base inherits these methods.
struct OwnViewMethods {
  void (*addImmutableValidity)(MethodTable& table, const ClassBinding& binding);
  void (*addImmutableViews)(MethodTable& table, const ClassBinding& binding);
  void (*addMutableValidity)(MethodTable& table, const ClassBinding& binding);
  void (*addMutableLifetime)(MethodTable& table, const ClassBinding& binding);
  void (*addMutableViews)(MethodTable& table, const ClassBinding& binding);
};

/// The row and the native functions of one metamodel class.
struct ClassBinding {
  ClassTable table;
  const K7Q::IntrospectiveMethods& (*methods)();
  K7Q::ImmutableClass (*metaClass)();
  Literal<K7Q::ImmutableObject> (*castImmutable)(const K7Q::ImmutableObject& other);
  Literal<K7Q::ImmutableObject> (*castMutableToImmutable)(const K7Q::Object& other);
  Literal<K7Q::Object> (*castMutable)(const K7Q::Object& other);
  void (*addConstructors)(MethodTable& table);
  void (*addReads)(MethodTable& table);
  /// Null unless the class has two bases.
  const OwnViewMethods* ownViews;

  const ClassName& name() const noexcept { return *table.name; }
};

/// The type name of a method argument of that type: a class, or a word such as "int32 scalar".
InternedName typeName(const metamodel::TypeRow& type);

/// Adds the record of a read method of class X.
template <class X>
void addRead(MethodTable& table, const metamodel::ReadRow& row, const ClassName& name,
             ReadSequence (*function)(const X&)) {
  const std::string_view element(row.element->name);
  const std::string result =
      std::string(element.substr(0, row.element->prefix)) + "SequenceOf" + row.element->shortName();
  table.add({row.name, ruvo::factory::kOverridesAllSignatures, "", named(result.c_str()), named(name.name)},
            {}, function);
}

/// Throws a K7Q::Exception for a null or invalid handle, and for a view that cannot be written.
inline const K7Q::ObjectHandle& requireWritable(const K7Q::ObjectHandle& handle) {
  handle.requireValid();
  K7Q::DeviantAssertions::assertWritable(handle.getDeviant(), handle.getInterface());
  return handle;
}

/// The native functions behind the records of class X.
template <class X>
struct NativeFunctions {
  using ImmutableX = typename X::ImmutableHandle;
  using Interface = typename X::Interface;

  static const K7Q::IntrospectiveMethods& methods() { return Interface::sIntrospectiveMethods; }
  static K7Q::ImmutableClass metaClass() { return ImmutableX::MetaClass(); }

  static Literal<K7Q::ImmutableObject> castImmutable(const K7Q::ImmutableObject& other) {
    return {ImmutableX::cast(other)};
  }
  static Literal<K7Q::ImmutableObject> castMutableToImmutable(const K7Q::Object& other) {
    return {ImmutableX::cast(other)};
  }
  static Literal<K7Q::Object> castMutable(const K7Q::Object& other) { return {X::cast(other)}; }

  template <int Constructor, class... Arguments>
  static K7Q::ClassObject create(K7Q::Model model, Arguments... arguments) {
    const std::array<K7Q::Object, sizeof...(Arguments)> objects{
        metamodel::typed::toObject<Arguments>(std::move(arguments))...};
    return methods().create(model, Constructor, objects);
  }
  static K7Q::ClassObject createEmpty(const K7Q::Model& model) { return methods().create(model, 0, {}); }

  template <int Index, class... Arguments>
  static void addConstructor(MethodTable& table, metamodel::TypedConstructor<Arguments...> /*row*/) {
    static const ruvo::LiteralName modelName("K7Q.Model");
    const std::array<InternedName, sizeof...(Arguments) + 1> types{modelName.get(),
                                                                   typeName(metamodel::kType<Arguments>)...};
    if constexpr (sizeof...(Arguments) == 0) {
      table.addConstructor(types, &createEmpty);
    } else {
      table.addConstructor(types, &create<Index, Arguments...>);
    }
  }
  template <class... Constructors, std::size_t... Index>
  static void addAll(MethodTable& table, metamodel::ConstructorRows<Constructors...> /*rows*/,
                     std::index_sequence<Index...> /*index*/) {
    (addConstructor<static_cast<int>(Index)>(table, Constructors{}), ...);
  }
  static void addConstructors(MethodTable& table) {
    constexpr auto kCount = metamodel::kTable<X>.constructors.size();
    addAll(table, metamodel::kRow<X>.constructors, std::make_index_sequence<kCount>());
  }

  template <unsigned Index>
  static ReadSequence read(const X& self) {
    requireWritable(self);
    return {{methods().read(self.getClassObject(), self.getDeviant(), Index), self.getDeviant()}};
  }
  template <std::size_t... Index>
  static void addReads(MethodTable& table, std::index_sequence<Index...> /*index*/) {
    (addRead(table, metamodel::kTable<X>.reads[Index], Interface::kName, &read<Index>), ...);
  }
  static void addReads(MethodTable& table) {
    addReads(table, std::make_index_sequence<metamodel::kTable<X>.reads.size()>());
  }

  static bool isValidImmutable(const ImmutableX& self) { return self.isValid(); }
  static bool isValidMutable(const X& self) { return self.isValid(); }
  static void destroy(const X& self) { self.destroy(); }
  static ImmutableX asDeviantImmutable(const ImmutableX& self, const K7Q::ImmutableModel& deviant) {
    self.requireValid();
    return ImmutableX(self.getClassObject(), deviant.deviantFor(self));
  }
  static X asDeviantMutable(const X& self, const K7Q::ImmutableModel& deviant) {
    self.requireValid();
    return X(self.getClassObject(), deviant.deviantFor(self));
  }
  static ImmutableX asImmutable(const ImmutableX& self) {
    self.requireValid();
    return self;
  }
  static ImmutableX asImmutableOfMutable(const X& self) {
    self.requireValid();
    return self;
  }
  static X asMutable(const ImmutableX& self) {
    self.requireValid();
    const auto writable = K7Q::DeviantRegistry::setIsImmutable(self, false);
    return X(self.getClassObject(), writable.getDeviant());
  }

  static void addImmutableValidity(MethodTable& table, const ClassBinding& binding);
  static void addImmutableViews(MethodTable& table, const ClassBinding& binding);
  static void addMutableValidity(MethodTable& table, const ClassBinding& binding);
  static void addMutableLifetime(MethodTable& table, const ClassBinding& binding);
  static void addMutableViews(MethodTable& table, const ClassBinding& binding);

  static constexpr OwnViewMethods kOwnViews{&addImmutableValidity, &addImmutableViews, &addMutableValidity,
                                            &addMutableLifetime, &addMutableViews};
};

template <class X>
void NativeFunctions<X>::addImmutableValidity(MethodTable& table, const ClassBinding& binding) {
  const auto self = named(binding.name().immutable);
  table.add({"isvalid", 0, "", named("logical scalar"), self}, {}, &isValidImmutable);
}

template <class X>
void NativeFunctions<X>::addImmutableViews(MethodTable& table, const ClassBinding& binding) {
  const auto immutable = named(binding.name().immutable);
  const auto mutableName = named(binding.name().name);
  table.add({"asDeviant", 0, "deviant", immutable, immutable}, {named("K7Q.ImmutableModel")},
            &asDeviantImmutable);
  table.add({"asImmutable", ruvo::factory::kSelfAsArgument, "", immutable, {}}, {immutable}, &asImmutable);
  table.add({"asMutable", ruvo::factory::kSelfAsArgument, "", mutableName, {}}, {immutable}, &asMutable);
}

template <class X>
void NativeFunctions<X>::addMutableValidity(MethodTable& table, const ClassBinding& binding) {
  const auto self = named(binding.name().name);
  table.add({"isvalid", 0, "", named("logical scalar"), self}, {}, &isValidMutable);
}

template <class X>
void NativeFunctions<X>::addMutableLifetime(MethodTable& table, const ClassBinding& binding) {
  const auto self = named(binding.name().name);
  table.add({"destroy", 0, "", named("void"), self}, {}, &destroy);
  table.add({"asDeviant", ruvo::factory::kOverridesAllSignatures, "deviant", self, self},
            {named("K7Q.ImmutableModel")}, &asDeviantMutable);
}

template <class X>
void NativeFunctions<X>::addMutableViews(MethodTable& table, const ClassBinding& binding) {
  table.add({"asImmutable", ruvo::factory::kSelfAsArgument, "", named(binding.name().immutable), {}},
            {named(binding.name().name)}, &asImmutableOfMutable);
}

template <metamodel::HasRow X>
inline constexpr ClassBinding kBinding{
    metamodel::kTable<X>,
    &NativeFunctions<X>::methods,
    &NativeFunctions<X>::metaClass,
    &NativeFunctions<X>::castImmutable,
    &NativeFunctions<X>::castMutableToImmutable,
    &NativeFunctions<X>::castMutable,
    &NativeFunctions<X>::addConstructors,
    &NativeFunctions<X>::addReads,
    metamodel::kTable<X>.bases.size() > 1 ? &NativeFunctions<X>::kOwnViews : nullptr,
};

}  // namespace binding
