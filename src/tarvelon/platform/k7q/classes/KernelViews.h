#pragma once

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"

/// The native functions of the methods of K7Q.ClassObject, K7Q.FactoryObject and K7Q.Model. Each raises
/// K7Q::Exception with the text kNullReference for a null or invalid handle, unless its comment says
/// otherwise.
namespace K7Q::mi {

/// False for a null handle. Never raises an exception.
bool isValid(const ImmutableObject& self);
void destroy(const ClassObject& self);
/// The same object under the deviant of the given model; deviant 0 if no model is given.
ImmutableObject asDeviantImmutable(const ImmutableObject& self, const ImmutableModel& deviant);
Object asDeviant(const Object& self, const ImmutableModel& deviant);
ImmutableObject asImmutable(const ImmutableObject& self);
Object asMutable(const ImmutableObject& self);
ImmutableModel getImmutableModel(const ImmutableClassObject& self);
Model getModel(const ClassObject& self);
/// The owner of the object; a null handle if the object has none.
ImmutableClassObject getImmutableContainer(const ImmutableClassObject& self);
ClassObject getContainer(const ClassObject& self);

/// The model in which the factory creates objects.
Model getFactoryModel(const FactoryObject& self);

Model createModel();
/// The open model that is bound to the URI; a null handle if there is none.
Model findModel(const String& uri);
/// The URIs of the open bound models, in the order of binding.
ImmutableSequence<String> boundUris();
ImmutableModel freeze(const Model& self);
String getUri(const ImmutableModel& self);
/// Raises K7Q::WrongValue if this model is bound and another open model has that URI.
void setUri(const Model& self, const String& uri);
/// Idempotent. Raises an exception if the handle is a read-only view.
void close(const Model& self);

}  // namespace K7Q::mi
