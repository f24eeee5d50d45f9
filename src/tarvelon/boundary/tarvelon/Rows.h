#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/tarvelon/Names.h"

/// The rows of the metamodel's tables.
///
/// A package's Table.h gives each class one row: a function row(Is<X>) in the namespace of X, found through
/// its argument, with the bases, the constructors and the properties, in the order of the metamodel.
/// Everything else that needs to know the metamodel reads the rows.
namespace Tarvelon::metamodel {

/// Names the class a row speaks of.
template <class X>
struct Is {};

enum class Kind : std::uint8_t { ClassObject, DataType, String, Boolean, Integer, Double, Real };

/// The type of a property or constructor argument.
struct TypeRow {
  Kind kind;
  const ClassName* cls = nullptr;                ///< of a ClassObject
  const EnumerationName* enumeration = nullptr;  ///< of a DataType
  std::string_view dottedName() const noexcept {
    return cls           ? std::string_view(cls->name)
           : enumeration ? std::string_view(enumeration->name)
                         : std::string_view();
  }
};

template <class T>
constexpr TypeRow makeType() {
  if constexpr (std::is_same_v<T, K7Q::String>) {
    return {Kind::String};
  } else if constexpr (std::is_same_v<T, K7Q::Boolean>) {
    return {Kind::Boolean};
  } else if constexpr (std::is_same_v<T, K7Q::Integer>) {
    return {Kind::Integer};
  } else if constexpr (std::is_same_v<T, K7Q::Double>) {
    return {Kind::Double};
  } else if constexpr (std::is_same_v<T, K7Q::Real>) {
    return {Kind::Real};
  } else if constexpr (IsEnumeration<T>) {
    return {Kind::DataType, nullptr, &T::kName};
  } else {
    return {Kind::ClassObject, &T::Interface::kName};
  }
}

template <class T>
inline constexpr TypeRow kType = makeType<T>();

template <class T>
inline constexpr bool kIsReference = kType<T>.kind == Kind::ClassObject;

/// Whether the values of a reference belong to the object or are referred to.
enum class Role : std::uint8_t { Value, Holds, Refers };
inline constexpr Role kHolds = Role::Holds;
inline constexpr Role kRefers = Role::Refers;

/// What the model computes a derived property from.
enum class Derivation : std::uint8_t {
  None,           ///< stored
  Nothing,        ///< never a value: this library has none of that kind
  Model,          ///< the model
  Root,           ///< where the way up ends: the object itself when nothing holds it
  Owner,          ///< the owner, if it is of the property's class
  NearestOwner,   ///< the first of the property's class on the way up
  Owned,          ///< all that the object holds of the property's class, in order of storage
  OwnedPackaged,  ///< those of its packaged elements that are of the property's class
};

/// Attribute word of a property record.
inline constexpr std::uint16_t kHidden = 2048;

struct PropertyRow {
  std::uint16_t id = 0;
  std::uint16_t attributes = 0;
  const char* name = nullptr;  ///< as the host shows it; the meta name begins with a capital
  const TypeRow* type = nullptr;
  const char* redefined = nullptr;  ///< the inherited meta name whose storage this one shares
  const char* hidden = nullptr;     ///< the inherited meta name that the class's list leaves out
  const char* opposite = nullptr;   ///< the meta name of the reference back, of the property's class
  K7Q::mi::Multiplicity multiplicity = K7Q::mi::Multiplicity::Optional;
  K7Q::mi::Mutability mutability = K7Q::mi::Mutability::Writable;
  Role role = Role::Value;
  bool isExposed = true;  ///< false: a meta property alone, the base's host property serves
  Derivation derivation = Derivation::None;  ///< other than None: read-only, no storage

  constexpr bool isMany() const noexcept { return multiplicity == K7Q::mi::Multiplicity::Many; }
};

/// A property row that knows its value type at compile time.
template <class T, K7Q::mi::Multiplicity M>
struct TypedRow : PropertyRow {
  using Type = T;
  static constexpr K7Q::mi::Multiplicity kMultiplicity = M;

  /// Shares the storage of an inherited property, which the class's list leaves out.
  constexpr TypedRow redefines(const char* inherited) const {
    TypedRow row = *this;
    row.redefined = inherited;
    row.hidden = inherited;
    return row;
  }
  /// Leaves an inherited entry out of the class's list, without sharing its storage.
  constexpr TypedRow hides(const char* inherited) const {
    TypedRow row = *this;
    row.hidden = inherited;
    return row;
  }
  /// Kept in step with the property of the value's class that refers back.
  constexpr TypedRow withOpposite(const char* back) const {
    TypedRow row = *this;
    row.opposite = back;
    return row;
  }
  /// A redefinition of the inherited property of the same name that has no host property of its own.
  constexpr TypedRow unexposed() const {
    TypedRow row = *this;
    row.isExposed = false;
    row.redefined = row.name;
    row.hidden = row.name;
    return row;
  }
  constexpr TypedRow readOnly() const {
    TypedRow row = *this;
    row.mutability = K7Q::mi::Mutability::ReadOnly;
    return row;
  }
  /// Read-only and computed by the model.
  constexpr TypedRow derived(Derivation from) const {
    TypedRow row = readOnly();
    row.derivation = from;
    return row;
  }
};

template <class T, K7Q::mi::Multiplicity M>
constexpr TypedRow<T, M> makeRow(unsigned id, const char* name, Role role, std::uint16_t attributes) {
  TypedRow<T, M> row;
  row.id = static_cast<std::uint16_t>(id);
  row.attributes = attributes;
  row.name = name;
  row.type = &kType<T>;
  row.multiplicity = M;
  row.role = role;
  return row;
}

/// 0..1, exactly 1 and 0..* values. A reference says whether it holds or refers, a value cannot.
template <class T>
requires(!kIsReference<T>) constexpr auto optional(unsigned id, const char* name,
                                                   std::uint16_t attributes = 0) {
  return makeRow<T, K7Q::mi::Multiplicity::Optional>(id, name, Role::Value, attributes);
}
template <class T>
requires(kIsReference<T>) constexpr auto optional(unsigned id, const char* name, Role role,
                                                  std::uint16_t attributes = 0) {
  return makeRow<T, K7Q::mi::Multiplicity::Optional>(id, name, role, attributes);
}
template <class T>
requires(!kIsReference<T>) constexpr auto one(unsigned id, const char* name, std::uint16_t attributes = 0) {
  return makeRow<T, K7Q::mi::Multiplicity::One>(id, name, Role::Value, attributes);
}
template <class T>
requires(kIsReference<T>) constexpr auto one(unsigned id, const char* name, Role role,
                                             std::uint16_t attributes = 0) {
  return makeRow<T, K7Q::mi::Multiplicity::One>(id, name, role, attributes);
}
template <class T>
requires(!kIsReference<T>) constexpr auto many(unsigned id, const char* name, std::uint16_t attributes = 0) {
  return makeRow<T, K7Q::mi::Multiplicity::Many>(id, name, Role::Value, attributes);
}
template <class T>
requires(kIsReference<T>) constexpr auto many(unsigned id, const char* name, Role role,
                                              std::uint16_t attributes = 0) {
  return makeRow<T, K7Q::mi::Multiplicity::Many>(id, name, role, attributes);
}

inline constexpr std::size_t kMaxArguments = 8;

/// A constructor: the arguments behind the model, and their names as the factory declares them.
/// The names tie each argument to the property that it fills: " aSymbol, aName" fills Symbol and Name. A name
/// may be qualified by its class, with underscores for dots: what stands behind the last one is the property.
struct ConstructorRow {
  const char* parameterNames = "";
  std::array<const TypeRow*, kMaxArguments> arguments{};
  std::uint8_t count = 0;
};

/// The meta name of the property that a parameter fills, empty for what is no parameter's name.
constexpr std::string_view filledBy(std::string_view parameter) {
  constexpr std::string_view kLead = " a";
  if (!parameter.starts_with(kLead)) return {};
  const auto qualified = parameter.rfind('_');
  return parameter.substr(qualified == std::string_view::npos ? kLead.size() : qualified + 1);
}

template <class... Arguments>
struct TypedConstructor : ConstructorRow {};

template <class... Arguments>
constexpr TypedConstructor<Arguments...> create(const char* parameterNames = "") {
  static_assert(sizeof...(Arguments) <= kMaxArguments);
  TypedConstructor<Arguments...> row;
  row.parameterNames = parameterNames;
  row.arguments = {&kType<Arguments>...};
  row.count = sizeof...(Arguments);
  return row;
}

template <class... Xs>
struct Types {
  static constexpr std::size_t kSize = sizeof...(Xs);
};

template <class... Bases>
struct BaseRows {
  std::array<const ClassName*, sizeof...(Bases)> names{};
};

template <class... Bases>
constexpr BaseRows<Bases...> bases() {
  return {{&Bases::Interface::kName...}};
}

template <class... Constructors>
struct ConstructorRows {
  std::array<ConstructorRow, sizeof...(Constructors)> rows{};
};

template <class... Constructors>
constexpr ConstructorRows<Constructors...> constructors(Constructors... rows) {
  return {{static_cast<ConstructorRow>(rows)...}};
}
/// An abstract class.
constexpr ConstructorRows<> noConstructors() { return {}; }

template <class... Properties>
struct PropertyRows {
  std::array<PropertyRow, sizeof...(Properties)> rows{};
};

template <class... Properties>
constexpr PropertyRows<Properties...> properties(Properties... rows) {
  return {{static_cast<PropertyRow>(rows)...}};
}
constexpr PropertyRows<> noProperties() { return {}; }

/// A method that reads those elements of a property of many references whose Kind is one literal, in the
/// order of the property, as a sequence of its own.
struct ReadRow {
  const char* name = nullptr;
  const char* property = nullptr;  ///< the meta name
  const ClassName* element = nullptr;
  std::int32_t kind = 0;
};

template <class Element>
struct TypedRead : ReadRow {
  using ElementType = Element;
};

template <class Element, class Literal>
constexpr TypedRead<Element> read(const char* name, const char* property, Literal kind) {
  TypedRead<Element> row;
  row.name = name;
  row.property = property;
  row.element = &Element::Interface::kName;
  row.kind = static_cast<std::int32_t>(kind);
  return row;
}

template <class... Reads>
struct ReadRows {
  std::array<ReadRow, sizeof...(Reads)> rows{};
};

template <class... Reads>
constexpr ReadRows<Reads...> reads(Reads... rows) {
  return {{static_cast<ReadRow>(rows)...}};
}

template <class Bases, class Constructors, class Properties, class Reads>
struct ClassRow {
  using BaseTypes = Bases;
  using ConstructorTypes = Constructors;
  using PropertyTypes = Properties;
  Bases bases;
  Constructors constructors;
  Properties properties;
  Reads reads;
};

template <class... B, class... C, class... P, class... R>
constexpr ClassRow<BaseRows<B...>, ConstructorRows<C...>, PropertyRows<P...>, ReadRows<R...>> classRow(
    BaseRows<B...> baseRows, ConstructorRows<C...> constructorRows, PropertyRows<P...> propertyRows,
    ReadRows<R...> readRows = {}) {
  return {baseRows, constructorRows, propertyRows, readRows};
}

/// Whether the class has a row that is seen here.
template <class X>
concept HasRow = requires {
  row(Is<X>{});
};

/// The row of a class, once per program.
template <HasRow X>
inline constexpr auto kRow = row(Is<X>{});

/// A row without its types, as the projections walk it.
struct ClassTable {
  const ClassName* name;
  std::span<const ClassName* const> bases;
  std::span<const ConstructorRow> constructors;
  std::span<const PropertyRow> properties;
  std::span<const ReadRow> reads;
};

template <HasRow X>
inline constexpr ClassTable kTable{&X::Interface::kName, kRow<X>.bases.names, kRow<X>.constructors.rows,
                                   kRow<X>.properties.rows, kRow<X>.reads.rows};

}  // namespace Tarvelon::metamodel

#include "tarvelon/boundary/tarvelon/Typed.h"  // IWYU pragma: export
