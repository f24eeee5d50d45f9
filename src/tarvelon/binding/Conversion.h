#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ruvo/Value.h"
#include "tarvelon/boundary/tarvelon/Names.h"

/// The conversions between slots (ruvo/Value.h) and native values. There is one specialisation of Conversion
/// for each type or family of types, with these functions:
///
///   static T fromSlot(ruvo::RVOValue slot);
///   static ruvo::RVOValue toSlot(const T& value, const ruvo::InternedName& declared);
///
/// fromSlot() does not test the type, because the object system has matched the arguments with the signature.
/// From an object array it reads element 0 only; an empty array gives a null handle. toSlot() returns a raw
/// scalar, or an array that the caller owns. `declared` is the result class of the signature; an empty result
/// is an empty array of that class.
namespace binding {

using ruvo::InternedName;
using ruvo::RVOValue;

template <class T>
struct Conversion;

/// The native object and the deviant of the host object in element 0 of an object array.
K7Q::VariantInfo unbox(const hx::hxArray* array);
/// The native object as the interface with that tag, and the deviant. The interface is null for an empty
/// array and for an object that does not implement it.
struct UnboxedInterface {
  void* interface = nullptr;
  K7Q::Deviant deviant;
};
UnboxedInterface unboxAs(const hx::hxArray* array, K7Q::CooperativeVisitor::TagPair tags);

/// Returns a 1 by 1 array with the host object of a native object, or an empty array of class `className` for
/// a null object. If the host object is new, it has the class `className` and holds a reference on the native
/// object.
hx::hxArray* boxAs(const K7Q::ReferenceCountingIntf* object, K7Q::Deviant deviant, bool immutable,
                   const InternedName& className);
/// The same with the object's own host class; `declared` is the class of the empty array.
hx::hxArray* boxObject(const K7Q::ObjectHandle& handle, bool immutable, const InternedName& declared);
/// The same for the placeholder object of a meta-property class. Takes ownership of the placeholder.
hx::hxArray* boxMetaProperty(void* dummy, const InternedName& className);

template <>
struct Conversion<bool> {
  static bool fromSlot(RVOValue slot) noexcept { return slot.logical(); }
  static RVOValue toSlot(bool value, const InternedName& /*declared*/) noexcept {
    return RVOValue::ofLogical(value);
  }
};

template <>
struct Conversion<K7Q::Boolean> {
  static K7Q::Boolean fromSlot(RVOValue slot) noexcept { return slot.logical(); }
  static RVOValue toSlot(K7Q::Boolean value, const InternedName& /*declared*/) noexcept {
    return RVOValue::ofLogical(value);
  }
};

template <>
struct Conversion<int> {
  static int fromSlot(RVOValue slot) noexcept { return slot.int32(); }
  static RVOValue toSlot(int value, const InternedName& /*declared*/) noexcept {
    return RVOValue::ofInt32(value);
  }
};

template <>
struct Conversion<K7Q::Integer> {
  static K7Q::Integer fromSlot(RVOValue slot) noexcept { return slot.int32(); }
  static RVOValue toSlot(K7Q::Integer value, const InternedName& /*declared*/) noexcept {
    return RVOValue::ofInt32(value);
  }
};

template <>
struct Conversion<K7Q::Double> {
  static K7Q::Double fromSlot(RVOValue slot) noexcept { return slot.number(); }
  static RVOValue toSlot(K7Q::Double value, const InternedName& /*declared*/) noexcept {
    return RVOValue::ofDouble(value);
  }
};

/// A text of type "char vector": UTF-16 in both directions.
template <>
struct Conversion<K7Q::String> {
  static K7Q::String fromSlot(RVOValue slot) { return {hx::hxGetText(slot.array())}; }
  static RVOValue toSlot(const K7Q::String& value, const InternedName& /*declared*/) {
    return RVOValue(hx::hxCreateString_UTF16(value.view()));
  }
};

/// A text of type "char": UTF-8, for arguments only.
template <>
struct Conversion<std::string> {
  static std::string fromSlot(RVOValue slot);
};

/// An argument of any enumeration. For an empty array, both members are 0.
struct AnyEnumeration {
  std::int32_t value;
  std::int32_t wasPassed;
};

template <>
struct Conversion<AnyEnumeration> {
  static AnyEnumeration fromSlot(RVOValue slot);
};

/// A result of any enumeration, in its object form.
struct BoxedEnumeration {
  K7Q::Object cell;
};

template <>
struct Conversion<BoxedEnumeration> {
  static RVOValue toSlot(const BoxedEnumeration& value, const InternedName& declared) {
    return RVOValue(boxAs(value.cell.getInterface(), value.cell.getDeviant(), false, declared));
  }
};

/// The value class of an enumeration.
template <Tarvelon::metamodel::IsEnumeration E>
struct Conversion<E> {
  static E fromSlot(RVOValue slot) { return E(Conversion<AnyEnumeration>::fromSlot(slot).value); }
  static RVOValue toSlot(const E& value, const InternedName& declared) {
    return Conversion<BoxedEnumeration>::toSlot({value}, declared);
  }
};

/// For a handle type: its interface, the tag for cast(), and whether its host objects are immutable.
template <class Handle>
struct HandleTraits;

template <class InterfaceType, class TagType, bool IsImmutable>
struct HandleTraitsBase {
  using Interface = InterfaceType;
  using Tag = TagType;
  static constexpr bool kImmutable = IsImmutable;
};

namespace interfaces = K7Q::NSInterface;
template <>
struct HandleTraits<K7Q::Object> : HandleTraitsBase<interfaces::ObjectIntf, interfaces::ObjectIntf, false> {};
template <>
struct HandleTraits<K7Q::ImmutableObject>
    : HandleTraitsBase<interfaces::ObjectIntf, interfaces::ObjectIntf, true> {};
template <>
struct HandleTraits<K7Q::ClassObject>
    : HandleTraitsBase<interfaces::ClassObjectIntf, interfaces::ClassObjectIntf, false> {};
template <>
struct HandleTraits<K7Q::ImmutableClassObject>
    : HandleTraitsBase<interfaces::ClassObjectIntf, interfaces::ClassObjectIntf, true> {};
template <>
struct HandleTraits<K7Q::Model> : HandleTraitsBase<interfaces::ModelIntf, interfaces::ModelIntf, false> {};
template <>
struct HandleTraits<K7Q::ImmutableModel>
    : HandleTraitsBase<interfaces::ModelIntf, interfaces::ModelIntf, true> {};
template <>
struct HandleTraits<K7Q::FactoryObject>
    : HandleTraitsBase<interfaces::FactoryObjectIntf, interfaces::FactoryObjectIntf, false> {};
template <>
struct HandleTraits<K7Q::ImmutableFactoryObject>
    : HandleTraitsBase<interfaces::FactoryObjectIntf, interfaces::FactoryObjectIntf, true> {};
template <>
struct HandleTraits<K7Q::ImmutableProperty>
    : HandleTraitsBase<interfaces::PropertyIntf, interfaces::PropertyIntf, true> {};
template <>
struct HandleTraits<K7Q::ImmutableType> : HandleTraitsBase<interfaces::TypeIntf, interfaces::TypeIntf, true> {
};
template <>
struct HandleTraits<K7Q::ImmutableClass>
    : HandleTraitsBase<interfaces::ClassIntf, interfaces::ClassIntf, true> {};
template <>
struct HandleTraits<K7Q::ImmutableDataType>
    : HandleTraitsBase<interfaces::DataTypeIntf, interfaces::DataTypeIntf, true> {};
template <>
struct HandleTraits<K7Q::ImmutablePackage>
    : HandleTraitsBase<interfaces::PackageIntf, interfaces::PackageIntf, true> {};
/// The native handles of metamodel classes use the tag of their own class. Their interface is
/// ClassObjectIntf, which every model object implements.
template <class X>
requires requires { typename X::ImmutableHandle; }
struct HandleTraits<X> : HandleTraitsBase<interfaces::ClassObjectIntf, typename X::Interface, false> {};
template <class X>
requires requires { typename X::MutableHandle; }
struct HandleTraits<X> : HandleTraitsBase<interfaces::ClassObjectIntf, typename X::Interface, true> {};

template <class Handle>
concept IsHandle = requires {
  typename HandleTraits<Handle>::Interface;
};

template <IsHandle Handle>
struct Conversion<Handle> {
  using Traits = HandleTraits<Handle>;
  static Handle fromSlot(RVOValue slot) {
    const auto unboxed = unboxAs(slot.array(), K7Q::tagsOf<typename Traits::Tag>());
    return Handle(static_cast<typename Traits::Interface*>(unboxed.interface), unboxed.deviant);
  }
  static RVOValue toSlot(const Handle& value, const InternedName& declared) {
    return RVOValue(boxObject(value, Traits::kImmutable, declared));
  }
};

/// A result whose host object gets the result class of the signature, not the object's own class.
template <class Handle>
struct Literal {
  Handle handle;
};

template <class Handle>
struct Conversion<Literal<Handle>> {
  static RVOValue toSlot(const Literal<Handle>& value, const InternedName& declared) {
    return RVOValue(boxAs(value.handle.getInterface(), value.handle.getDeviant(),
                          HandleTraits<Handle>::kImmutable, declared));
  }
};

/// The placeholder object that `MetaProperty()` returns.
struct MetaPropertyDummy {
  void* instance;
};

template <>
struct Conversion<MetaPropertyDummy> {
  static RVOValue toSlot(const MetaPropertyDummy& value, const InternedName& declared) {
    return RVOValue(boxMetaProperty(value.instance, declared));
  }
};

/// Sequences. The host object of a result gets the result class of the signature. A null result throws a
/// K7Q::Exception.
template <class Handle>
requires std::derived_from<Handle, K7Q::SequenceHandle>
struct Conversion<Handle> {
  static Handle fromSlot(RVOValue slot) {
    const auto unboxed = unboxAs(slot.array(), K7Q::tagsOf<K7Q::Generic::SequenceIntf>());
    return Handle(static_cast<K7Q::Generic::SequenceIntf*>(unboxed.interface), unboxed.deviant);
  }
  static RVOValue toSlot(const Handle& value, const InternedName& declared) {
    return RVOValue(boxAs(&value.get(), value.getDeviant(), false, declared));
  }
};

/// The result of a read method. Its host object gets the class that the sequence itself names.
struct ReadSequence {
  K7Q::SequenceHandle handle;
};

template <>
struct Conversion<ReadSequence> {
  static RVOValue toSlot(const ReadSequence& value, const InternedName& declared) {
    auto& sequence = value.handle.get();
    const InternedName name(
        ruvo::internal::makeInterned(sequence.generic_getRuvoName(false, false, declared.c_str())));
    return RVOValue(boxAs(&sequence, value.handle.getDeviant(), false, name));
  }
};

/// An iterator argument is the iterator of the host itself, not a copy.
template <>
struct Conversion<K7Q::IteratorHandle> {
  static K7Q::IteratorHandle fromSlot(RVOValue slot);
};

/// An iterator result of a sequence that can be changed (ChangingPlace) or only read (ReadingPlace). The host
/// gets a clone. A null iterator throws a K7Q::Exception.
struct ChangingPlace {
  K7Q::IteratorHandle iterator;
};
struct ReadingPlace {
  K7Q::IteratorHandle iterator;
};

hx::hxArray* boxIterator(const K7Q::IteratorHandle& iterator, bool immutable, const InternedName& declared);

template <>
struct Conversion<ChangingPlace> {
  static RVOValue toSlot(const ChangingPlace& value, const InternedName& declared) {
    return RVOValue(boxIterator(value.iterator, false, declared));
  }
};
template <>
struct Conversion<ReadingPlace> {
  static RVOValue toSlot(const ReadingPlace& value, const InternedName& declared) {
    return RVOValue(boxIterator(value.iterator, true, declared));
  }
};

}  // namespace binding
