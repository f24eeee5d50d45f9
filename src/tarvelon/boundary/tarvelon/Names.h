#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/tarvelon/Native.h"

/// The names of the metamodel's classes and enumerations.
///
/// A package's Names.h lists them once, in the order of their registration, as a list macro:
///
///   #define ARPLATFORM_COMMON_NAMES(CLASS, ENUMERATION)
///     CLASS(Referrable)
///     ENUMERATION(ArxmlFilePackagingKind, Modular, SingleFile)
///
/// and declares them with TARVELON_DECLARE_CLASS and TARVELON_DECLARE_ENUMERATION. Every other list of them
/// is another projection of that macro.
namespace Tarvelon::metamodel {

/// The host names of a metamodel class; all texts are literals.
struct ClassName {
  const char* name;       ///< of the mutable class, dotted
  const char* immutable;  ///< of the immutable class, dotted
  std::uint16_t prefix;   ///< how many characters of the name stand before the short name

  constexpr const char* shortName() const noexcept { return name + prefix; }
  constexpr const char* shortImmutable() const noexcept { return immutable + prefix; }
};

/// The host name of an enumeration and its literals in ascending order of value, from 0, joined with ", ".
struct EnumerationName {
  const char* name;
  std::uint16_t prefix;
  const char* literals;

  constexpr const char* shortName() const noexcept { return name + prefix; }
};

/// A native enumeration type.
template <class T>
concept IsEnumeration = requires {
  typename T::EnumerationTag;
};

/// The native side of an enumeration's conversions.
namespace native {

TARVELON_API K7Q::String enumerationToString(const EnumerationName& enumeration, std::int32_t value);
/// Raises K7Q::Exception for a name that no literal has; the text lists the literals.
TARVELON_API std::int32_t enumerationFromString(const EnumerationName& enumeration, std::string_view literal);
TARVELON_API K7Q::ImmutableDataType enumerationDataType(const EnumerationName& enumeration);
/// A cell of its own for each call.
TARVELON_API K7Q::Object enumerationToObject(const EnumerationName& enumeration, std::int32_t value);
/// The number behind the object form of any enumeration, 0 for an empty object.
TARVELON_API std::int32_t enumerationFromObject(const K7Q::Object& object);

}  // namespace native

/// Base of the native value classes of enumerations: a signed 32-bit value, compared as such.
template <class Derived>
class EnumerationValue {
 public:
  using EnumerationTag = void;

  constexpr EnumerationValue() noexcept = default;
  explicit constexpr EnumerationValue(int value) noexcept : mValue(value) {}
  explicit EnumerationValue(const K7Q::Object& object) : mValue(native::enumerationFromObject(object)) {}

  constexpr std::int32_t value() const noexcept { return mValue; }
  K7Q::String toString() const { return native::enumerationToString(Derived::kName, mValue); }
  static Derived fromString(const std::string& literal) {
    return Derived(native::enumerationFromString(Derived::kName, literal));
  }
  K7Q::ImmutableDataType getMetaDataType() const { return MetaDataType(); }
  static K7Q::ImmutableDataType MetaDataType() { return native::enumerationDataType(Derived::kName); }
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

/// Declares the interface tag and the two handles of a class. PREFIX is the package's dotted name with its
/// last dot.
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

/// Declares the native value class of an enumeration.
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
