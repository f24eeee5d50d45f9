#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/ElementCarrier.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

/// The compile-time part of the native handles (Native.h): finds bases, constructors and properties in the
/// rows, and checks their types. Of this file, programs use NativeSequence.
namespace Tarvelon::metamodel {

namespace typed {

template <class X, class B, class... Bases>
constexpr bool anyBase(BaseRows<Bases...> /*bases*/) {
  static_assert((HasRow<Bases> && ...), "a base has no row here: include platform/model/api/Metamodel.h");
  return (DerivesFrom<Bases, B>::kValue || ...);
}

template <class A>
inline constexpr bool kIsCharacter =
    std::is_same_v<A, char> || std::is_same_v<A, wchar_t> || std::is_same_v<A, char8_t> ||
    std::is_same_v<A, char16_t> || std::is_same_v<A, char32_t>;
/// Whether every value of the C++ type A fits a K7Q::Integer. Other types do not compile, because a value
/// could be truncated.
template <class A>
inline constexpr bool kFitsInteger =
    std::integral<A> && !std::is_same_v<A, bool> && !kIsCharacter<A> &&
    (sizeof(A) < sizeof(std::int32_t) || (sizeof(A) == sizeof(std::int32_t) && std::is_signed_v<A>));

/// Whether a value of the C++ type A can be used for a property or constructor argument of type P.
template <class P, class A>
constexpr bool fits() {
  if constexpr (kIsReference<P>) {
    return DerivesFrom<A, P>::kValue;
  } else if constexpr (std::is_same_v<P, K7Q::Boolean>) {
    return std::is_same_v<A, bool> || std::is_same_v<A, K7Q::Boolean>;
  } else if constexpr (std::is_same_v<P, K7Q::Integer>) {
    return std::is_same_v<A, K7Q::Integer> || kFitsInteger<A>;
  } else if constexpr (std::is_same_v<P, K7Q::Double> || std::is_same_v<P, K7Q::Real>) {
    return std::is_same_v<A, P> || std::is_same_v<A, float> || std::is_same_v<A, double> || kFitsInteger<A>;
  } else {
    return std::is_convertible_v<A, P>;
  }
}

template <class Handle>
inline constexpr bool kOnlyReads = requires {
  typename Handle::MutableHandle;
};

/// Whether a value of type A can be added to a NativeSequence<P>. Sequences of immutable handles cannot be
/// changed.
template <class P, class A>
constexpr bool isTaken() {
  if constexpr (kOnlyReads<P>) {
    return false;
  } else {
    return fits<P, A>();
  }
}

/// Whether a value of type A can be searched in a NativeSequence<P>. Any object can be searched.
template <class P, class A>
constexpr bool isElement() {
  if constexpr (kOnlyReads<P> || kIsReference<P>) {
    return std::derived_from<A, K7Q::ObjectHandle>;
  } else {
    return fits<P, A>();
  }
}

template <class P, class A>
K7Q::Object toObject(A argument) {
  if constexpr (kIsReference<P>) {
    return K7Q::Object(argument.getInterface(), argument.getDeviant());
  } else if constexpr (std::is_arithmetic_v<A>) {
    return P(
        static_cast<std::conditional_t<std::is_same_v<P, K7Q::Boolean>, bool,
                                       std::conditional_t<std::is_same_v<P, K7Q::Integer>, int, double>>>(
            argument));
  } else {
    return P(std::move(argument));
  }
}

template <class X, class... A, class... P>
constexpr bool matches(TypedConstructor<P...> /*constructor*/, Types<A...> /*arguments*/) {
  if constexpr (sizeof...(P) != sizeof...(A)) {
    return false;
  } else {
    return (fits<P, std::decay_t<A>>() && ...);
  }
}

template <class X, class... A, class... C>
constexpr int indexOf(ConstructorRows<C...> /*rows*/, [[maybe_unused]] Types<A...> arguments) {
  const std::array<bool, sizeof...(C) + 1> found{matches<X>(C{}, arguments)..., false};
  for (std::size_t i = 0; i < sizeof...(C); ++i) {
    if (found[i]) return static_cast<int>(i);
  }
  return -1;
}

template <int Index, class First, class... Rest>
struct Nth : Nth<Index - 1, Rest...> {};
template <class First, class... Rest>
struct Nth<0, First, Rest...> {
  using Type = First;
};

template <int Index, class... C>
typename Nth<Index, C...>::Type nthConstructor(ConstructorRows<C...>);

}  // namespace typed

template <class X, class B>
struct DerivesFrom {
  static constexpr bool test() {
    if constexpr (std::is_same_v<X, B>) {
      return true;
    } else if constexpr (requires { typename X::ImmutableHandle; }) {
      if constexpr (HasRow<X>) return typed::anyBase<X, B>(kRow<X>.bases);
      return false;
    } else {
      return false;
    }
  }
  static constexpr bool kValue = test();
};

template <class X, class... Arguments>
struct ConstructorMatch {
  static constexpr int findIndex() {
    if constexpr (HasRow<X>) return typed::indexOf<X>(kRow<X>.constructors, Types<Arguments...>{});
    return -1;
  }
  static constexpr int kIndex = findIndex();

  static X create(const K7Q::Model& model, const Arguments&... arguments) {
    const auto object = apply(
        [&model](const auto& methods, unsigned constructor, std::span<const K7Q::Object> objects) {
          return methods.create(model, constructor, objects);
        },
        arguments...);
    return X(object.getClassObject(), object.getDeviant());
  }
  /// Calls make(methods, constructor, objects) with the table of the class and the converted arguments.
  template <class Make>
  static auto apply(const Make& make, const Arguments&... arguments) {
    using Constructor = decltype(typed::nthConstructor<kIndex>(kRow<X>.constructors));
    return apply(Constructor{}, make, arguments...);
  }

 private:
  template <class... P, class Make>
  static auto apply(TypedConstructor<P...> /*constructor*/, const Make& make, const Arguments&... arguments) {
    const std::array<K7Q::Object, sizeof...(P)> objects{
        typed::toObject<P>(std::decay_t<Arguments>(arguments))...};
    return make(X::Interface::sIntrospectiveMethods, static_cast<unsigned>(kIndex), objects);
  }
};

/// A many-valued property as a C++ range of handles, texts or enumeration values. Indices count from 0. The
/// sequence shows the current state of the property, and changing the sequence changes the property. If an
/// immutable handle returned it, its elements are immutable handles, and functions that change it do not
/// compile.
/// Lifetime: keeps the model alive. Adding or removing an element during a loop shifts the following
///           elements.
/// Errors:   K7Q::Exception or a derived type: index out of range, wrong element, view that cannot be
///           changed.
/// Example:
///   for (const auto& element : package.get<"PackagedElement">()) visit(element);
template <class Element>
class NativeSequence : public K7Q::SequenceHandle {
 public:
  using SequenceHandle::SequenceHandle;
  int size() const { return get().generic_size(getDeviant()); }
  bool empty() const { return get().generic_empty(getDeviant()); }
  Element at(int index) const { return Carrier::fromRef(get().generic_at(getDeviant(), index)); }
  Element operator[](int index) const { return at(index); }
  /// Whether the value or object is an element.
  template <class Given>
  requires(typed::isElement<Element, Given>()) bool contains(const Given& element) const {
    return get().generic_contains(getDeviant(), refOf(element));
  }
  /// Appends an element. A property of references contains an object at most once: appending an object that
  /// is already an element changes nothing.
  template <class Given>
  requires(typed::isTaken<Element, Given>()) void add(const Given& element) const {
    get().generic_push_back(getDeviant(), refOf(element));
  }
  /// Inserts before the element at `index`, which may be size(). An object that is already an element moves
  /// there.
  template <class Given>
  requires(typed::isTaken<Element, Given>()) void insert(int index, const Given& element) const {
    get().generic_insert(getDeviant(), index, refOf(element));
  }
  /// Replaces the element at `index`. An object that is already an element changes places with that element.
  template <class Given>
  requires(typed::isTaken<Element, Given>()) void replace(int index, const Given& element) const {
    get().generic_replace(getDeviant(), index, refOf(element));
  }
  /// Removes all elements equal to `element`. Returns false if there is none.
  template <class Given>
  requires(typed::isElement<Element, Given>() &&
           !typed::kOnlyReads<Element>) bool remove(const Given& element) const {
    return get().generic_removeAll(getDeviant(), refOf(element)) > 0;
  }
  void erase(int index) const requires(!typed::kOnlyReads<Element>) {
    get().generic_erase(getDeviant(), index);
  }
  void clear() const requires(!typed::kOnlyReads<Element>) { get().generic_clear(getDeviant()); }

  class Position {
   public:
    Position(const NativeSequence* sequence, int index) noexcept : mSequence(sequence), mIndex(index) {}
    Element operator*() const { return mSequence->at(mIndex); }
    Position& operator++() noexcept {
      ++mIndex;
      return *this;
    }
    bool operator!=(const Position& other) const noexcept { return mIndex != other.mIndex; }

   private:
    const NativeSequence* mSequence;
    int mIndex;
  };
  Position begin() const { return {this, 0}; }
  Position end() const { return {this, size()}; }

 private:
  using Carrier = K7Q::ElementCarrier<Element>;

  template <class Given>
  static K7Q::Generic::Ref refOf(const Given& element) {
    if constexpr (std::derived_from<Given, K7Q::ObjectHandle> && !std::is_same_v<Element, K7Q::String>) {
      return K7Q::ElementCarrier<Given>::toRef(element);
    } else {
      return Carrier::toRef(Element(element));
    }
  }
};

template <class X, FixedString Name>
struct PropertyAccess {
  /// The result of find(): the class that declares the property, and the type of the property's row.
  template <class Owner, class Row>
  struct Found {
    using OwnerType = Owner;
    using RowType = Row;
    static constexpr bool kFound = true;
  };
  struct NotFound {
    static constexpr bool kFound = false;
  };

  template <class C>
  static constexpr int ownIndex() {
    int index = 0;
    for (const PropertyRow& property : kRow<C>.properties.rows) {
      if (property.isExposed && std::string_view(property.name) == Name.text) return index;
      ++index;
    }
    return -1;
  }
  template <class C, class... P>
  static auto own(PropertyRows<P...>) -> Found<C, typename typed::Nth<ownIndex<C>(), P...>::Type>;

  template <class... Bases>
  static auto inBases(BaseRows<Bases...>) {
    return firstOf(find<Bases>()...);
  }
  static NotFound firstOf() { return {}; }
  template <class First, class... Rest>
  static auto firstOf(First first, Rest... rest) {
    if constexpr (First::kFound) {
      return first;
    } else {
      return firstOf(rest...);
    }
  }
  template <class C>
  static auto find() {
    if constexpr (!HasRow<C>) {
      return NotFound{};
    } else if constexpr (ownIndex<C>() >= 0) {
      return decltype(own<C>(kRow<C>.properties)){};
    } else {
      return inBases(kRow<C>.bases);
    }
  }

  using Location = decltype(find<X>());
  static_assert(Location::kFound, "the class has no property of that name");
  using Owner = typename Location::OwnerType;
  using Row = typename Location::RowType;
  using Type = typename Row::Type;
  static constexpr PropertyRow kProperty =
      kRow<Owner>.properties.rows[static_cast<std::size_t>(ownIndex<Owner>())];

  static const K7Q::IntrospectiveMethods& methods() { return Owner::Interface::sIntrospectiveMethods; }

  template <class Handle>
  static auto get(const Handle& handle) {
    constexpr bool kImmutable = requires { typename Handle::MutableHandle; };
    handle.requireValid();
    auto* object = handle.getClassObject();
    const auto deviant = handle.getDeviant();
    if constexpr (Row::kMultiplicity == K7Q::mi::Multiplicity::Many) {
      constexpr bool kFixed = kImmutable || kProperty.mutability == K7Q::mi::Mutability::ReadOnly;
      return NativeSequence<typename ElementOf<Type, kImmutable && kIsReference<Type>>::type>(
          methods().getSequence(object, deviant, kProperty.id, kFixed), deviant);
    } else {
      K7Q::Object value;
      methods().get(value, object, deviant, kProperty.id);
      if constexpr (kIsReference<Type>) {
        return typename ElementOf<Type, kImmutable>::type(
            static_cast<K7Q::NSInterface::ClassObjectIntf*>(value.getInterface()), value.getDeviant());
      } else if constexpr (Row::kMultiplicity == K7Q::mi::Multiplicity::One ||
                           std::is_same_v<Type, K7Q::String>) {
        return Type(value);
      } else {
        return value.isNull() ? std::optional<Type>() : std::optional<Type>(Type(value));
      }
    }
  }
  template <class Handle, class Value>
  static void set(const Handle& handle, const Value& value) {
    static_assert(!kProperty.isMany(), "a many-valued property is changed through its sequence");
    static_assert(kProperty.mutability == K7Q::mi::Mutability::Writable, "the property is read-only");
    static_assert(typed::fits<Type, std::decay_t<Value>>(), "the value is not of the property's type");
    const K7Q::Object object = typed::toObject<Type>(std::decay_t<Value>(value));
    checkWritable(handle);
    if (object.isNull() && kProperty.multiplicity == K7Q::mi::Multiplicity::Optional) {
      methods().unset(handle.getClassObject(), handle.getDeviant(), kProperty.id);
    } else {
      methods().set(handle.getClassObject(), handle.getDeviant(), kProperty.id, object);
    }
  }
  template <class Handle>
  static void unset(const Handle& handle) {
    static_assert(kProperty.multiplicity == K7Q::mi::Multiplicity::Optional,
                  "only an optional property can be unset");
    checkWritable(handle);
    methods().unset(handle.getClassObject(), handle.getDeviant(), kProperty.id);
  }

 private:
  /// The handle type of a value: an immutable handle returns immutable handles.
  template <class T, bool OnlyReads>
  struct ElementOf {
    using type = T;
  };
  template <class T>
  struct ElementOf<T, true> {
    using type = typename T::ImmutableHandle;
  };
  template <class Handle>
  static void checkWritable(const Handle& handle) {
    handle.requireValid();
    K7Q::DeviantAssertions::assertWritable(handle.getDeviant(), handle.getInterface());
  }
};

template <class X, FixedString Name>
struct ReadAccess {
  static constexpr int findIndex() {
    int index = 0;
    for (const ReadRow& read : kRow<X>.reads.rows) {
      if (std::string_view(read.name) == Name.text) return index;
      ++index;
    }
    return -1;
  }
  static constexpr int kIndex = findIndex();
  static_assert(kIndex >= 0, "the class has no derived read of that name");

  template <class... R>
  static auto element(ReadRows<R...>) -> typename typed::Nth<kIndex, R...>::Type::ElementType;
  using Element = decltype(element(kRow<X>.reads));

  static NativeSequence<Element> read(const X& handle) {
    handle.requireValid();
    const auto deviant = handle.getDeviant();
    return {X::Interface::sIntrospectiveMethods.read(handle.getClassObject(), deviant, kIndex), deviant};
  }
};

}  // namespace Tarvelon::metamodel
