#pragma once

#include "tarvelon/binding/Methods.h"
#include "tarvelon/boundary/tarvelon/Factory.h"

/// The native functions behind the fixed records of the factories.
namespace Tarvelon::metamodel::arplatform::mi {

/// Makes a model with a URI that no bound model has, and binds it. Deviant assertions are off meanwhile, and
/// are what they were on every way out. Raises kNullReference when no model was made.
K7Q::Model createNewModel();

binding::Literal<Factory> createNewFactory(const K7Q::Model& model);
K7Q::Object createFromString(const Factory& self, const K7Q::String& cls);
K7Q::Object createNamedFromString(const Factory& self, const K7Q::String& cls, const K7Q::String& name);
/// What is no factory gives an empty handle.
binding::Literal<Factory> castToFactory(const Factory& other);
K7Q::Object toK7QObject(const Factory& self);
K7Q::FactoryObject toK7QFactoryObject(const Factory& self);

/// Factories are ordered by object, then by deviant.
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
