#pragma once

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"

/// The native functions behind the methods of K7Q.ClassObject and K7Q.Model. Each raises kNullReference for
/// an empty or invalid handle unless it says otherwise.
namespace K7Q::mi {

/// False for a null handle; never fails.
bool isValid(const ImmutableObject& self);
void destroy(const ClassObject& self);
/// The same object under the deviant of the model; no model is deviant 0.
ImmutableObject asDeviantImmutable(const ImmutableObject& self, const ImmutableModel& deviant);
Object asDeviant(const Object& self, const ImmutableModel& deviant);
ImmutableObject asImmutable(const ImmutableObject& self);
Object asMutable(const ImmutableObject& self);
ImmutableModel getImmutableModel(const ImmutableClassObject& self);
Model getModel(const ClassObject& self);
/// The object that holds this one, empty for one that nothing holds.
ImmutableClassObject getImmutableContainer(const ImmutableClassObject& self);
ClassObject getContainer(const ClassObject& self);

/// The model that the factory makes objects for.
Model getFactoryModel(const FactoryObject& self);

Model createModel();
/// The model that is bound to the URI, empty if there is none.
Model findModel(const String& uri);
/// The URIs of the bound models that are open, in the order they were bound.
ImmutableSequence<String> boundUris();
ImmutableModel freeze(const Model& self);
String getUri(const ImmutableModel& self);
/// Raises K7Q::WrongValue for the URI of another open model when this one is bound.
void setUri(const Model& self, const String& uri);
/// Closing twice is no error. A view that refuses writing refuses this too.
void close(const Model& self);

}  // namespace K7Q::mi
