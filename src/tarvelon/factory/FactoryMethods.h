#pragma once

#include "tarvelon/binding/Methods.h"
#include "tarvelon/boundary/tarvelon/Factory.h"

/// The native functions behind the methods of the factory classes, except for the create methods of each
/// class.
namespace Tarvelon::metamodel::arplatform::mi {

/// Creates a model with a URI that is not in use, and binds it in the ModelCache. Turns deviant assertions
/// off during the call. Throws a K7Q::Exception with the text kNullReference if no model was created.
K7Q::Model createNewModel();

binding::Literal<Factory> createNewFactory(const K7Q::Model& model);
K7Q::Object createFromString(const Factory& self, const K7Q::String& cls);
K7Q::Object createNamedFromString(const Factory& self, const K7Q::String& cls, const K7Q::String& name);
/// Returns its argument. An argument that is not a factory has already been converted to a null handle.
binding::Literal<Factory> castToFactory(const Factory& other);
K7Q::Object toK7QObject(const Factory& self);
K7Q::FactoryObject toK7QFactoryObject(const Factory& self);

/// Factories are ordered by the address of the object, then by the deviant.
bool eq(const ImmutableFactory& left, const ImmutableFactory& right);
bool ne(const ImmutableFactory& left, const ImmutableFactory& right);
bool gt(const ImmutableFactory& left, const ImmutableFactory& right);
bool ge(const ImmutableFactory& left, const ImmutableFactory& right);
bool lt(const ImmutableFactory& left, const ImmutableFactory& right);
bool le(const ImmutableFactory& left, const ImmutableFactory& right);
binding::Literal<ImmutableFactory> castToImmutableFactory(const ImmutableFactory& other);
K7Q::ImmutableObject toK7QImmutableObject(const ImmutableFactory& self);
K7Q::ImmutableFactoryObject toK7QImmutableFactoryObject(const ImmutableFactory& self);

}  // namespace Tarvelon::metamodel::arplatform::mi

namespace binding {

template <>
struct HandleTraits<Tarvelon::metamodel::arplatform::Factory>
    : HandleTraitsBase<Tarvelon::metamodel::arplatform::NSInterface::FactoryIntf,
                       Tarvelon::metamodel::arplatform::NSInterface::FactoryIntf, false> {};
template <>
struct HandleTraits<Tarvelon::metamodel::arplatform::ImmutableFactory>
    : HandleTraitsBase<Tarvelon::metamodel::arplatform::NSInterface::FactoryIntf,
                       Tarvelon::metamodel::arplatform::NSInterface::FactoryIntf, true> {};

template <>
inline constexpr bool kSelfMustBeThere<Tarvelon::metamodel::arplatform::Factory> = true;
template <>
inline constexpr bool kSelfMustBeThere<Tarvelon::metamodel::arplatform::ImmutableFactory> = true;

}  // namespace binding
