#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/tarvelon/Native.h"

/// The declarations of the metamodel's classes and enumerations by name.
///
/// The Names.h of a package lists its classes and enumerations once, in the order of their registration, in a
/// list macro:
///
///   #define ARPLATFORM_COMMON_NAMES(CLASS, ENUMERATION)
///     CLASS(Referrable)
///     ENUMERATION(ArxmlFilePackagingKind, Modular, SingleFile)
///
/// Names.h passes TARVELON_DECLARE_CLASS and TARVELON_DECLARE_ENUMERATION to that macro, which declares the
/// native handles `Referrable` and `ImmutableReferrable` and the value class `ArxmlFilePackagingKind`. Other
/// code that needs the list, such as the registration, passes other macros.
namespace Tarvelon::metamodel {

/// The host names of a metamodel class. All texts are literals.
struct ClassName {
  const char* name;       ///< of the mutable class, dotted
  const char* immutable;  ///< of the immutable class, dotted
  std::uint16_t prefix;   ///< how many characters of the name stand before the short name

  /// The names without the package.
  constexpr const char* shortName() const noexcept { return name + prefix; }
  constexpr const char* shortImmutable() const noexcept { return immutable + prefix; }
};

/// The host name and the literals of an enumeration. All texts are literals.
struct EnumerationName {
  const char* name;      ///< dotted
  std::uint16_t prefix;  ///< how many characters of the name stand before the short name
  const char* literals;  ///< joined with ", "; the values of the literals are 0, 1, 2, ... in this order

  constexpr const char* shortName() const noexcept { return name + prefix; }
};

/// The value classes that TARVELON_DECLARE_ENUMERATION declares.
template <class T>
concept IsEnumeration = requires {
  typename T::EnumerationTag;
};

/// The functions behind EnumerationValue that do not depend on the enumeration's type. Any thread may call
/// them.
namespace native {

/// The literal of a value; for a value without a literal, the number.
TARVELON_API K7Q::String enumerationToString(const EnumerationName& enumeration, std::int32_t value);
/// The value of a literal. Throws a K7Q::Exception for an unknown literal; the text lists the literals.
TARVELON_API std::int32_t enumerationFromString(const EnumerationName& enumeration, std::string_view literal);
/// The description of the enumeration.
TARVELON_API K7Q::ImmutableDataType enumerationDataType(const EnumerationName& enumeration);
/// The object form of a value. Each call allocates a new object.
TARVELON_API K7Q::Object enumerationToObject(const EnumerationName& enumeration, std::int32_t value);
/// The value in the object form of any enumeration, 0 for a null object. Throws K7Q::WrongType for any other
/// object.
TARVELON_API std::int32_t enumerationFromObject(const K7Q::Object& object);

}  // namespace native

/// Base of the value classes of enumerations. A value is a signed 32-bit number. Numbers without a literal
/// are allowed; isValid() of the derived class is false for them. Values compare as numbers.
///
/// Example:
///   const auto kind = IrvKind::fromString("Explicit");
///   kind == IrvKind::Explicit;
///   kind.toString();             // u"Explicit"
template <class Derived>
class EnumerationValue {
 public:
  using EnumerationTag = void;

  /// The value 0, which is the first literal.
  constexpr EnumerationValue() noexcept = default;
  explicit constexpr EnumerationValue(int value) noexcept : mValue(value) {}
  /// Converts from the object form. Throws K7Q::WrongType for an object of another kind.
  explicit EnumerationValue(const K7Q::Object& object) : mValue(native::enumerationFromObject(object)) {}

  constexpr std::int32_t value() const noexcept { return mValue; }
  /// The literal, or the number if there is none.
  K7Q::String toString() const { return native::enumerationToString(Derived::kName, mValue); }
  /// Throws a K7Q::Exception for an unknown literal; the text lists the literals.
  static Derived fromString(const std::string& literal) {
    return Derived(native::enumerationFromString(Derived::kName, literal));
  }
  /// The description of the enumeration.
  K7Q::ImmutableDataType getMetaDataType() const { return MetaDataType(); }
  static K7Q::ImmutableDataType MetaDataType() { return native::enumerationDataType(Derived::kName); }
  /// The object form. Allocates a new object.
  operator K7Q::Object() const {  // NOLINT(google-explicit-constructor)
    return native::enumerationToObject(Derived::kName, mValue);
  }
  friend constexpr bool operator==(const Derived& left, const Derived& right) noexcept {
    return left.value() == right.value();
  }
  friend constexpr auto operator<=>(const Derived& left, const Derived& right) noexcept {
    return left.value() <=> right.value();
  }

 private:
  std::int32_t mValue = 0;
};

}  // namespace Tarvelon::metamodel

/// Declares class X of a package: the interface tag NSInterface::XIntf with the host names, and the handles X
/// and ImmutableX. PREFIX is the dotted name of the package, with a dot at the end.
#define TARVELON_DECLARE_CLASS(PREFIX, X)                                                        \
  namespace NSInterface {                                                                        \
  struct X##Intf {                                                                               \
    static constexpr ::Tarvelon::metamodel::ClassName kName{PREFIX #X, PREFIX "Immutable" #X,    \
                                                            sizeof(PREFIX) - 1};                 \
    TARVELON_API static const ::K7Q::IntrospectiveMethods& sIntrospectiveMethods;                \
  };                                                                                             \
  }                                                                                              \
  class X;                                                                                       \
  class Immutable##X;                                                                            \
  class Immutable##X                                                                             \
      : public ::Tarvelon::metamodel::ImmutableNative<NSInterface::X##Intf, X, Immutable##X> {   \
   public:                                                                                       \
    using ImmutableNative::ImmutableNative;                                                      \
  };                                                                                             \
  class X : public ::Tarvelon::metamodel::MutableNative<NSInterface::X##Intf, X, Immutable##X> { \
   public:                                                                                       \
    using MutableNative::MutableNative;                                                          \
  };

/// Declares the value class of enumeration E with its literals. PREFIX is as above.
#define TARVELON_DECLARE_ENUMERATION(PREFIX, E, ...)                                                  \
  class E : public ::Tarvelon::metamodel::EnumerationValue<E> {                                       \
   public:                                                                                            \
    enum Value : std::int32_t { __VA_ARGS__ };                                                        \
    static constexpr ::Tarvelon::metamodel::EnumerationName kName{PREFIX #E, sizeof(PREFIX) - 1,      \
                                                                  #__VA_ARGS__};                      \
    using EnumerationValue::EnumerationValue;                                                         \
    constexpr E(Value literal) noexcept : EnumerationValue(static_cast<int>(literal)) {} /* NOLINT */ \
    constexpr E() noexcept = default;                                                                 \
    TARVELON_API bool isValid() const;                                                                \
  };
