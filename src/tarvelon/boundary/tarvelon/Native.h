#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"

/// The native handles of metamodel classes: ImmutableX reads, X reads and writes.
///
///   auto package = common::Package::create(model, u"Brakes").set<"category">(u"STANDARD");
///   package.get<"ReferenceBase">().add(base);
///
/// What changes an object gives its handle back, so that one expression makes an object and all that it
/// holds:
///
///   auto set = variant::SystemConstValueSet::create(model, u"TwoAxles")
///                  .add<"SysConstValue">(variant::SystemConstValue::create(model, 2.0, axles));
///
/// Constructors and properties are those of the class's row; a wrong name, value type or argument list does
/// not compile.
///
/// Threads: handles belong to one thread at a time, the one that uses their model; each model may be used by
///          another. First uses of classes may meet.
namespace Tarvelon::metamodel {

/// A text as a template argument.
template <std::size_t N>
struct FixedString {
  char text[N]{};
  constexpr FixedString(const char (&literal)[N]) { std::copy_n(literal, N, text); }  // NOLINT
};

/// Whether class X is class B or derives from it, by the rows.
template <class X, class B>
struct DerivesFrom;
/// The index of X's constructor that takes these arguments, -1 if there is none.
template <class X, class... Arguments>
struct ConstructorMatch;
template <class X, FixedString Name>
struct PropertyAccess;
template <class X, FixedString Name>
struct ReadAccess;

/// The handle that can only read.
template <class Intf, class Mutable, class Immutable>
class ImmutableNative : public K7Q::ImmutableClassObject {
 public:
  using Interface = Intf;
  using MutableHandle = Mutable;

  constexpr ImmutableNative() noexcept = default;
  ImmutableNative(K7Q::NSInterface::ClassObjectIntf* interface, K7Q::Deviant deviant) noexcept
      : ImmutableClassObject(interface, deviant) {}
  /// From the mutable handle of the same object.
  ImmutableNative(const Mutable& object) noexcept  // NOLINT(google-explicit-constructor)
      : ImmutableClassObject(object.getClassObject(), object.getDeviant()) {}

  static K7Q::ImmutableClass MetaClass() { return Intf::sIntrospectiveMethods.metaClass(); }
  /// The object as this class, empty if it is none.
  static Immutable cast(const K7Q::ObjectHandle& object) {
    if (!Intf::sIntrospectiveMethods.isInstance(object.getInterface())) return Immutable();
    return Immutable(static_cast<K7Q::NSInterface::ClassObjectIntf*>(object.getInterface()),
                     object.getDeviant());
  }
  Immutable& setDeviant(K7Q::Deviant deviant) noexcept {
    setDeviantWord(deviant);
    return static_cast<Immutable&>(*this);
  }
  /// The value of a property by the host's name for it. A reference comes as an immutable handle, and so do
  /// the elements of a sequence.
  template <FixedString Name>
  auto get() const {
    return PropertyAccess<Mutable, Name>::get(static_cast<const Immutable&>(*this));
  }
};

/// The handle that can write.
template <class Intf, class Mutable, class Immutable>
class MutableNative : public K7Q::ClassObject {
 public:
  using Interface = Intf;
  using ImmutableHandle = Immutable;

  constexpr MutableNative() noexcept = default;
  MutableNative(K7Q::NSInterface::ClassObjectIntf* interface, K7Q::Deviant deviant) noexcept
      : ClassObject(interface, deviant) {}
  /// From a handle of a subclass.
  template <class Other>
  requires(!std::is_same_v<Other, Mutable> && DerivesFrom<Other, Mutable>::kValue)
      MutableNative(const Other& object)
  noexcept  // NOLINT(google-explicit-constructor)
      : ClassObject(object.getClassObject(), object.getDeviant()) {}

  static K7Q::ImmutableClass MetaClass() { return Intf::sIntrospectiveMethods.metaClass(); }
  /// The object as this class, empty if it is none. A handle that only reads does not compile.
  template <std::derived_from<K7Q::ObjectHandle> Handle>
  static Mutable cast(const Handle& object) {
    static_assert(std::derived_from<Handle, K7Q::Object>,
                  "X::cast() gives a handle that writes, and this one only reads: use ImmutableX::cast()");
    if (!Intf::sIntrospectiveMethods.isInstance(object.getInterface())) return Mutable();
    return Mutable(static_cast<K7Q::NSInterface::ClassObjectIntf*>(object.getInterface()),
                   object.getDeviant());
  }
  Mutable& setDeviant(K7Q::Deviant deviant) noexcept {
    setDeviantWord(deviant);
    return static_cast<Mutable&>(*this);
  }
  /// The same object seen under the model handle's deviant: under Model::frozen() it refuses writing.
  Mutable asView(const K7Q::ImmutableModel& model) const {
    return Mutable(getClassObject(), model.deviantFor(*this));
  }
  /// Takes the object out of its model. Raises kNullReference when it is not valid, and when the view refuses
  /// writing.
  void destroy() const {
    requireValid();
    K7Q::DeviantAssertions::assertWritable(getDeviant(), getInterface());
    getClassObject()->destroy(getDeviant());
  }

  /// A new object of the class in the model, owned by the model. Raises kNullReference for a null or closed
  /// model.
  template <class... Arguments>
  requires(ConstructorMatch<Mutable, Arguments...>::kIndex >= 0) static Mutable
      create(const K7Q::Model& model, const Arguments&... arguments) {
    return ConstructorMatch<Mutable, Arguments...>::create(model, arguments...);
  }

  /// The value of a property by the host's name for it: a K7Q scalar or text, std::optional of an optional
  /// scalar or enumeration, a handle (empty when unset), or a NativeSequence that views the list and can
  /// change it.
  template <FixedString Name>
  auto get() const {
    return PropertyAccess<Mutable, Name>::get(static_cast<const Mutable&>(*this));
  }
  /// Writes a property. Many-valued and read-only ones do not compile.
  template <FixedString Name, class Value>
  Mutable set(const Value& value) const {
    PropertyAccess<Mutable, Name>::set(static_cast<const Mutable&>(*this), value);
    return static_cast<const Mutable&>(*this);
  }
  /// Unsets an optional property; a required one does not compile.
  template <FixedString Name>
  void unset() const {
    PropertyAccess<Mutable, Name>::unset(static_cast<const Mutable&>(*this));
  }
  /// Appends to a many-valued property, in the order given. One that is refused ends it: those before it
  /// stay.
  template <FixedString Name, class... Elements>
  Mutable add(const Elements&... elements) const {
    const auto sequence = get<Name>();
    (sequence.add(elements), ...);
    return static_cast<const Mutable&>(*this);
  }
  /// What a derived read gives, by the host's name for it: the elements of one kind, in the order of the
  /// property they are taken from, as a NativeSequence of its own. The property does not change with it.
  template <FixedString Name>
  auto read() const {
    return ReadAccess<Mutable, Name>::read(static_cast<const Mutable&>(*this));
  }
};

}  // namespace Tarvelon::metamodel
