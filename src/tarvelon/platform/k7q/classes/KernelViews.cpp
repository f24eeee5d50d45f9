#include "tarvelon/platform/k7q/classes/KernelViews.h"

#include <string_view>

#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/platform/k7q/sequences/HostList.h"

namespace K7Q::mi {

namespace {

constexpr std::string_view kClassObject = "K7Q.ClassObject";
constexpr std::string_view kContainer = "ContainerK7Q";

/// Finds the methods table of K7Q.ClassObject among the base classes; null if the class does not derive from
/// it.
// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
const IntrospectiveMethods* kernelMethods(const IntrospectiveMethods& methods) {
  if (methods.name(false).view() == kClassObject) return &methods;
  for (const auto* base : methods.bases()) {
    if (const auto* found = kernelMethods(*base)) return found;
  }
  return nullptr;
}

/// Reads the container through the meta-property kContainer of K7Q.ClassObject.
Object containerOf(const ImmutableObject& self) {
  self.requireValid();
  auto* object = static_cast<NSInterface::ClassObjectIntf*>(self.getInterface());
  const ImmutableType type = object->getMetaType(self.getDeviant());
  const auto* cls = dynamic_cast<const NSInterface::ClassIntf*>(type.getInterface());
  const auto* kernel = cls ? kernelMethods(cls->methods()) : nullptr;
  Object container;
  for (unsigned id = 1; kernel && id <= kernel->numberOfProperties(); ++id) {
    const auto* property = kernel->descriptor(id);
    if (property && property->name() == kContainer) kernel->get(container, object, self.getDeviant(), id);
  }
  return container;
}

NSInterface::ClassObjectIntf* classObjectOf(const Object& object) {
  return static_cast<NSInterface::ClassObjectIntf*>(object.getInterface());
}

}  // namespace

bool isValid(const ImmutableObject& self) { return self.isValid(); }

void destroy(const ClassObject& self) {
  self.requireValid();
  DeviantAssertions::assertWritable(self.getDeviant(), self.getInterface());
  self.getClassObject()->destroy(self.getDeviant());
}

ImmutableObject asDeviantImmutable(const ImmutableObject& self, const ImmutableModel& deviant) {
  self.requireValid();
  return {self.getInterface(), deviant.deviantFor(self)};
}

Object asDeviant(const Object& self, const ImmutableModel& deviant) {
  self.requireValid();
  return {self.getInterface(), deviant.deviantFor(self)};
}

ImmutableObject asImmutable(const ImmutableObject& self) {
  self.requireValid();
  return self;
}

Object asMutable(const ImmutableObject& self) {
  self.requireValid();
  const auto writable = DeviantRegistry::setIsImmutable(self, false);
  return {writable.getInterface(), writable.getDeviant()};
}

ImmutableModel getImmutableModel(const ImmutableClassObject& self) {
  self.requireValid();
  return self.getClassObject()->getModel(self.getDeviant());
}

Model getModel(const ClassObject& self) {
  self.requireValid();
  return self.getClassObject()->getModel(self.getDeviant());
}

ImmutableClassObject getImmutableContainer(const ImmutableClassObject& self) {
  const Object container = containerOf(self);
  return {classObjectOf(container), container.getDeviant()};
}

ClassObject getContainer(const ClassObject& self) {
  const Object container = containerOf(self);
  return {classObjectOf(container), container.getDeviant()};
}

Model getFactoryModel(const FactoryObject& self) {
  self.requireValid();
  return self.getFactoryObject()->getModel(self.getDeviant());
}

Model createModel() { return Model::create(); }

Model findModel(const String& uri) { return ModelCache::instance().find(std::u16string(uri.view())); }

ImmutableSequence<String> boundUris() {
  ImmutableSequence<String> uris{new HostList(kTextElements, ruvo::InternedName(), false), Deviant{}};
  for (const std::u16string& uri : ModelCache::instance().uris()) {
    uris.get().generic_push_back(uris.getDeviant(), makeStringRef(uri));
  }
  return uris;
}

ImmutableModel freeze(const Model& self) {
  self.requireValid();
  return self.frozen();
}

String getUri(const ImmutableModel& self) {
  self.requireValid();
  return self.getModelInterface()->getUri(self.getDeviant());
}

void setUri(const Model& self, const String& uri) {
  self.requireValid();
  DeviantAssertions::assertWritable(self.getDeviant(), self.getInterface());
  auto& cache = ModelCache::instance();
  const std::u16string bound = self.getModelInterface()->getUri(self.getDeviant());
  const bool isBound = cache.isBound(bound, self);
  if (isBound) cache.bindModel(uri, self);
  try {
    self.getModelInterface()->setUri(self.getDeviant(), uri.view());
  } catch (...) {
    if (isBound) cache.bindModel(bound, self);
    throw;
  }
}

void close(const Model& self) { self.close(); }

}  // namespace K7Q::mi
