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

/// The rows of the metamodel's tables. A row describes one class: its bases, constructors, properties and
/// read methods, in the order of the metamodel. All other code that depends on the metamodel reads the rows.
///
/// The Table.h of a package has one function row(Is<X>) for each class X, in the namespace of X, where
/// argument-dependent lookup finds it.
///
/// Example:
///   constexpr auto row(Is<Runnable>) {
///     return classRow(bases<foundation::NamedElement>(),
///                     constructors(create<>(), create<K7Q::String>(" aSymbol")),
///                     properties(optional<K7Q::String>(1, "symbol"),
///                                many<Event>(2, "Events", kRefers).withOpposite("StartOnEvent")));
///   }
///
/// Rows are constants; reading them needs no lock. A wrong row does not compile.
namespace Tarvelon::metamodel {

/// Tells the function row() which class is meant.
template <class X>
struct Is {};

/// The kind of a value. ClassObject is a model object, DataType an enumeration value.
enum class Kind : std::uint8_t { ClassObject, DataType, String, Boolean, Integer, Double, Real };

/// The type of a property or of a constructor argument.
struct TypeRow {
  Kind kind;
  const ClassName* cls = nullptr;                ///< the class of a ClassObject, otherwise null
  const EnumerationName* enumeration = nullptr;  ///< the enumeration of a DataType, otherwise null
  /// The dotted name of the class or enumeration; empty for any other kind.
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

/// The one TypeRow of each C++ type, so that rows can point to it.
template <class T>
inline constexpr TypeRow kType = makeType<T>();

/// Whether values of type T are model objects.
template <class T>
inline constexpr bool kIsReference = kType<T>.kind == Kind::ClassObject;

/// Whether a property is a containment (Holds: the object owns the values), a cross reference (Refers), or
/// has values that are no objects (Value).
enum class Role : std::uint8_t { Value, Holds, Refers };
inline constexpr Role kHolds = Role::Holds;
inline constexpr Role kRefers = Role::Refers;

/// How the model computes the value of a derived property.
enum class Derivation : std::uint8_t {
  None,           ///< not derived: the value is stored
  Nothing,        ///< the property never has a value
  Model,          ///< the model of the object
  Root,           ///< the outermost owner; the object itself if it has no owner
  Owner,          ///< the direct owner, if it is an instance of the property's type
  NearestOwner,   ///< the nearest direct or indirect owner that is an instance of the property's type
  Owned,          ///< the contained objects of the property's type, only the first for a single-valued one
  OwnedPackaged,  ///< the elements of PackagedElement that are of the property's type
};

/// The attribute word of the records of hidden properties (ruvo::factory::PropertyAttributes).
inline constexpr std::uint16_t kHidden = 2048;

/// A property of a class. All texts are literals.
struct PropertyRow {
  std::uint16_t id = 0;          ///< unique within the class, from 1; ids ascend and may have gaps
  std::uint16_t attributes = 0;  ///< 0 or kHidden
  const char* name = nullptr;    ///< the host name; the meta name is the same with a capital first letter
  const TypeRow* type = nullptr;
  const char* redefined = nullptr;  ///< the meta name of the inherited property whose storage this one uses
  const char* hidden = nullptr;     ///< the meta name of an inherited property that the class does not list
  const char* opposite = nullptr;   ///< the meta name of the opposite, which the class of the values has
  K7Q::mi::Multiplicity multiplicity = K7Q::mi::Multiplicity::Optional;
  K7Q::mi::Mutability mutability = K7Q::mi::Mutability::Writable;
  Role role = Role::Value;
  bool isExposed = true;  ///< false: the class adds no host property, because the inherited one is used
  Derivation derivation = Derivation::None;  ///< any other value: read-only, without storage

  constexpr bool isMany() const noexcept { return multiplicity == K7Q::mi::Multiplicity::Many; }
};

/// A property row with its value type and multiplicity as C++ types. Each of its functions returns a changed
/// copy of the row.
template <class T, K7Q::mi::Multiplicity M>
struct TypedRow : PropertyRow {
  using Type = T;
  static constexpr K7Q::mi::Multiplicity kMultiplicity = M;

  /// The property shares its storage with an inherited property and replaces it in the property list of the
  /// class.
  constexpr TypedRow redefines(const char* inherited) const {
    TypedRow row = *this;
    row.redefined = inherited;
    row.hidden = inherited;
    return row;
  }
  /// The property replaces an inherited property in the property list of the class, but has storage of its
  /// own.
  constexpr TypedRow hides(const char* inherited) const {
    TypedRow row = *this;
    row.hidden = inherited;
    return row;
  }
  /// The property has an opposite: setting one of the two sets the other. `back` is the meta name of the
  /// opposite.
  constexpr TypedRow withOpposite(const char* back) const {
    TypedRow row = *this;
    row.opposite = back;
    return row;
  }
  /// The property redefines the inherited property of the same name, and the class adds no host property for
  /// it.
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
  /// The property is read-only, and the model computes its value.
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

/// The next functions create the rows of properties with 0..1 values (optional), exactly 1 value (one) and
/// 0..* values (many). If T is a class, the role kHolds or kRefers is required; otherwise a role does not
/// compile.
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

/// The greatest number of arguments of a constructor.
inline constexpr std::size_t kMaxArguments = 8;

/// A constructor: the types of its arguments, without the model, and their names as the factory declares
/// them.
///
/// Each argument sets the property that its name contains: " aSymbol, aName" sets the properties Symbol and
/// Name. The name may be qualified with a class, with underscores instead of dots; then the property is the
/// part after the last underscore.
struct ConstructorRow {
  const char* parameterNames = "";
  std::array<const TypeRow*, kMaxArguments> arguments{};
  std::uint8_t count = 0;
};

/// The meta name of the property that an argument sets. `parameter` is one name, with its leading blank, such
/// as " aSymbol". Empty for a text of any other form.
constexpr std::string_view filledBy(std::string_view parameter) {
  constexpr std::string_view kLead = " a";
  if (!parameter.starts_with(kLead)) return {};
  const auto qualified = parameter.rfind('_');
  return parameter.substr(qualified == std::string_view::npos ? kLead.size() : qualified + 1);
}

/// A constructor row with its arguments as C++ types.
template <class... Arguments>
struct TypedConstructor : ConstructorRow {};

/// Creates the row of a constructor with these argument types.
template <class... Arguments>
constexpr TypedConstructor<Arguments...> create(const char* parameterNames = "") {
  static_assert(sizeof...(Arguments) <= kMaxArguments);
  TypedConstructor<Arguments...> row;
  row.parameterNames = parameterNames;
  row.arguments = {&kType<Arguments>...};
  row.count = sizeof...(Arguments);
  return row;
}

/// A list of types.
template <class... Xs>
struct Types {
  static constexpr std::size_t kSize = sizeof...(Xs);
};

/// The direct bases of a class; bases<A, B>() creates it.
template <class... Bases>
struct BaseRows {
  std::array<const ClassName*, sizeof...(Bases)> names{};
};

template <class... Bases>
constexpr BaseRows<Bases...> bases() {
  return {{&Bases::Interface::kName...}};
}

/// The constructors of a class; constructors(...) creates it.
template <class... Constructors>
struct ConstructorRows {
  std::array<ConstructorRow, sizeof...(Constructors)> rows{};
};

template <class... Constructors>
constexpr ConstructorRows<Constructors...> constructors(Constructors... rows) {
  return {{static_cast<ConstructorRow>(rows)...}};
}
/// For an abstract class.
constexpr ConstructorRows<> noConstructors() { return {}; }

/// The properties that a class declares; properties(...) creates it.
template <class... Properties>
struct PropertyRows {
  std::array<PropertyRow, sizeof...(Properties)> rows{};
};

template <class... Properties>
constexpr PropertyRows<Properties...> properties(Properties... rows) {
  return {{static_cast<PropertyRow>(rows)...}};
}
constexpr PropertyRows<> noProperties() { return {}; }

/// A read method. It selects the elements of a many-valued property whose property Kind has a certain value,
/// in the order of the property, and returns them as a new sequence.
struct ReadRow {
  const char* name = nullptr;
  const char* property = nullptr;      ///< the meta name of the many-valued property
  const ClassName* element = nullptr;  ///< the class of the elements
  std::int32_t kind = 0;               ///< the value of Kind
};

/// A read method with its element class as a C++ type.
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

/// The read methods of a class; reads(...) creates it.
template <class... Reads>
struct ReadRows {
  std::array<ReadRow, sizeof...(Reads)> rows{};
};

template <class... Reads>
constexpr ReadRows<Reads...> reads(Reads... rows) {
  return {{static_cast<ReadRow>(rows)...}};
}

/// The row of a class, with all its parts as C++ types; classRow(...) creates it.
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

/// Whether a row of class X is declared at this point of the translation unit.
template <class X>
concept HasRow = requires {
  row(Is<X>{});
};

/// The row of class X.
template <HasRow X>
inline constexpr auto kRow = row(Is<X>{});

/// The row of a class without C++ types, for code that loops over all classes.
struct ClassTable {
  const ClassName* name;
  std::span<const ClassName* const> bases;
  std::span<const ConstructorRow> constructors;
  std::span<const PropertyRow> properties;
  std::span<const ReadRow> reads;
};

/// The ClassTable of class X.
template <HasRow X>
inline constexpr ClassTable kTable{&X::Interface::kName, kRow<X>.bases.names, kRow<X>.constructors.rows,
                                   kRow<X>.properties.rows, kRow<X>.reads.rows};

}  // namespace Tarvelon::metamodel

#include "tarvelon/boundary/tarvelon/Typed.h"  // IWYU pragma: export
