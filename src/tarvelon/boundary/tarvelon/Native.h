#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"

/// The native handles of metamodel classes. For a class X there are two: ImmutableX reads, X reads and
/// writes.
///
/// Example:
///   auto package = common::Package::create(model, u"Brakes").set<"category">(u"STANDARD");
///   package.get<"ReferenceBase">().add(base);
///   const K7Q::String name = package.get<"Name">();
///
/// set() and add() return the handle, so one expression can create an object with everything that it
/// contains:
///
///   auto set = variant::SystemConstValueSet::create(model, u"TwoAxles")
///                  .add<"SysConstValue">(variant::SystemConstValue::create(model, 2.0, axles));
///
/// The compiler checks names, value types and constructor arguments against the row of the class (Rows.h): a
/// wrong one does not compile. A program includes tarvelon/platform/model/api/Metamodel.h, which has
/// all rows.
///
/// Ownership: the model owns its objects. A handle keeps the object's memory and the model alive, but
///            destroy() and Model::close() make handles invalid.
/// Errors:    every function throws a K7Q::Exception with the text kNullReference for a null handle, a
///            destroyed object and a closed model. Functions that change an object also throw a
///            K7Q::Exception for a frozen or read-only view, and a type derived from it for a wrong value;
///            then nothing has changed.
/// Threads:   one thread at a time uses a model and its handles. Different threads may use different models,
///            and may use a class for the first time at the same moment.
namespace Tarvelon::metamodel {

/// A text as a template argument: the "Name" in get<"Name">().
template <std::size_t N>
struct FixedString {
  char text[N]{};
  constexpr FixedString(const char (&literal)[N]) { std::copy_n(literal, N, text); }  // NOLINT
};

/// Whether class X is class B or derives from B, according to the rows.
template <class X, class B>
struct DerivesFrom;
/// The index of the constructor of X that takes these arguments, -1 if there is none.
template <class X, class... Arguments>
struct ConstructorMatch;
/// Reads and writes property Name of class X.
template <class X, FixedString Name>
struct PropertyAccess;
/// Calls read method Name of class X.
template <class X, FixedString Name>
struct ReadAccess;

/// Base of the handles ImmutableX, which only read.
template <class Intf, class Mutable, class Immutable>
class ImmutableNative : public K7Q::ImmutableClassObject {
 public:
  using Interface = Intf;
  using MutableHandle = Mutable;

  constexpr ImmutableNative() noexcept = default;
  ImmutableNative(K7Q::NSInterface::ClassObjectIntf* interface, K7Q::Deviant deviant) noexcept
      : ImmutableClassObject(interface, deviant) {}
  /// Converts from the handle X of the same object.
  ImmutableNative(const Mutable& object) noexcept  // NOLINT(google-explicit-constructor)
      : ImmutableClassObject(object.getClassObject(), object.getDeviant()) {}

  /// The description of the class.
  static K7Q::ImmutableClass MetaClass() { return Intf::sIntrospectiveMethods.metaClass(); }
  /// The object as an instance of this class; a null handle if the object is null or of another class.
  static Immutable cast(const K7Q::ObjectHandle& object) {
    if (!Intf::sIntrospectiveMethods.isInstance(object.getInterface())) return Immutable();
    return Immutable(static_cast<K7Q::NSInterface::ClassObjectIntf*>(object.getInterface()),
                     object.getDeviant());
  }
  /// Changes the deviant of this handle only, not the object.
  Immutable& setDeviant(K7Q::Deviant deviant) noexcept {
    setDeviantWord(deviant);
    return static_cast<Immutable&>(*this);
  }
  /// Reads a property by its host name. The result is as for X::get(), but objects and elements of sequences
  /// are ImmutableX handles, and sequences cannot be changed.
  template <FixedString Name>
  auto get() const {
    return PropertyAccess<Mutable, Name>::get(static_cast<const Immutable&>(*this));
  }
};

/// Base of the handles X, which read and write.
template <class Intf, class Mutable, class Immutable>
class MutableNative : public K7Q::ClassObject {
 public:
  using Interface = Intf;
  using ImmutableHandle = Immutable;

  constexpr MutableNative() noexcept = default;
  MutableNative(K7Q::NSInterface::ClassObjectIntf* interface, K7Q::Deviant deviant) noexcept
      : ClassObject(interface, deviant) {}
  /// Converts from a handle of a subclass.
  template <class Other>
  requires(!std::is_same_v<Other, Mutable> && DerivesFrom<Other, Mutable>::kValue)
      MutableNative(const Other& object)
  noexcept  // NOLINT(google-explicit-constructor)
      : ClassObject(object.getClassObject(), object.getDeviant()) {}

  /// The description of the class.
  static K7Q::ImmutableClass MetaClass() { return Intf::sIntrospectiveMethods.metaClass(); }
  /// The object as an instance of this class; a null handle if the object is null or of another class. A
  /// handle that only reads does not compile; use ImmutableX::cast().
  ///
  /// Example:
  ///   const auto nested = foundation::Package::cast(element);
  ///   if (!nested.isNull()) visit(nested);
  template <std::derived_from<K7Q::ObjectHandle> Handle>
  static Mutable cast(const Handle& object) {
    static_assert(std::derived_from<Handle, K7Q::Object>,
                  "X::cast() gives a handle that writes, and this one only reads: use ImmutableX::cast()");
    if (!Intf::sIntrospectiveMethods.isInstance(object.getInterface())) return Mutable();
    return Mutable(static_cast<K7Q::NSInterface::ClassObjectIntf*>(object.getInterface()),
                   object.getDeviant());
  }
  /// Changes the deviant of this handle only, not the object.
  Mutable& setDeviant(K7Q::Deviant deviant) noexcept {
    setDeviantWord(deviant);
    return static_cast<Mutable&>(*this);
  }
  /// The same object with the deviant of the model handle. With Model::frozen(), writing through the result
  /// throws.
  Mutable asView(const K7Q::ImmutableModel& model) const {
    return Mutable(getClassObject(), model.deviantFor(*this));
  }
  /// Destroys the object and all objects that it contains. References from other objects to them are removed,
  /// and their handles become invalid.
  void destroy() const {
    requireValid();
    K7Q::DeviantAssertions::assertWritable(getDeviant(), getInterface());
    getClassObject()->destroy(getDeviant());
  }

  /// Creates an object in the model with the constructor that takes these arguments. The new object has no
  /// owner until it is put into a containment property.
  template <class... Arguments>
  requires(ConstructorMatch<Mutable, Arguments...>::kIndex >= 0) static Mutable
      create(const K7Q::Model& model, const Arguments&... arguments) {
    return ConstructorMatch<Mutable, Arguments...>::create(model, arguments...);
  }

  /// Reads a property by its host name. The type of the result depends on the property:
  ///   a text                                   K7Q::String; empty if unset
  ///   a required scalar or enumeration         its type; the default value if never set
  ///   an optional scalar or enumeration        std::optional of its type
  ///   an optional or required object           a handle; null if unset
  ///   a many-valued property                   a NativeSequence, which shows and changes the property
  template <FixedString Name>
  auto get() const {
    return PropertyAccess<Mutable, Name>::get(static_cast<const Mutable&>(*this));
  }
  /// Sets a property. Setting a containment property moves the value: its previous owner loses it. A null
  /// handle or an empty text unsets an optional property. A many-valued or read-only property does not
  /// compile.
  template <FixedString Name, class Value>
  Mutable set(const Value& value) const {
    PropertyAccess<Mutable, Name>::set(static_cast<const Mutable&>(*this), value);
    return static_cast<const Mutable&>(*this);
  }
  /// Removes the value of an optional property. Any other property does not compile.
  template <FixedString Name>
  void unset() const {
    PropertyAccess<Mutable, Name>::unset(static_cast<const Mutable&>(*this));
  }
  /// Appends the elements to a many-valued property, in the given order. If an element is rejected with an
  /// exception, the elements before it stay in the property.
  template <FixedString Name, class... Elements>
  Mutable add(const Elements&... elements) const {
    const auto sequence = get<Name>();
    (sequence.add(elements), ...);
    return static_cast<const Mutable&>(*this);
  }
  /// Calls a read method by its host name. A read method selects the elements of one kind from a many-valued
  /// property, in the order of the property. Changing the returned sequence does not change the property.
  template <FixedString Name>
  auto read() const {
    return ReadAccess<Mutable, Name>::read(static_cast<const Mutable&>(*this));
  }
};

}  // namespace Tarvelon::metamodel
