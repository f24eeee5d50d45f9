#pragma once

#include <array>
#include <span>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

/// The factory creates the objects of one model, by class and constructor arguments or by the name of a
/// class.
///
/// X::create(model, ...) of the native handles creates the same objects. A program needs a factory only if it
/// knows the name of a class and not its C++ type.
namespace Tarvelon::metamodel::arplatform {

namespace NSInterface {

/// The interface of the factory.
///
/// Ownership: reference counted; a factory keeps its model alive.
/// Threads:   the thread that uses the model uses the factory.
class TARVELON_API FactoryIntf : public K7Q::NSInterface::FactoryIntf {
 public:
  ~FactoryIntf() override;
  /// Creates a factory with a reference count of 0: put it into a handle, which frees it. Returns null for a
  /// null model. Throws a K7Q::Exception with the text kNullReference for a closed model.
  static FactoryIntf* createNewFactory(const K7Q::Model& model);

  /// Creates an object of the class with the constructor of that index. `deviant` becomes the deviant of the
  /// returned handle; the function does not test whether it allows writing. Throws what
  /// IntrospectiveMethods::create() throws.
  virtual K7Q::ClassObject create(K7Q::Deviant deviant, const K7Q::IntrospectiveMethods& cls,
                                  unsigned constructor, std::span<const K7Q::Object> arguments) = 0;
  /// Creates an object of the class with that name, with the constructor without arguments. The name is
  /// dotted; the prefix "Tarvelon.metamodel.arplatform." may be left out. Throws K7Q::UnknownName for an
  /// unknown class, and K7Q::WrongType for an abstract class.
  virtual K7Q::Object createFromString(K7Q::Deviant deviant, const K7Q::String& cls) = 0;
  /// The same; also sets the object's `Name`. Throws K7Q::WrongValue if the class has no such property.
  virtual K7Q::Object createFromString(K7Q::Deviant deviant, const K7Q::String& cls,
                                       const K7Q::String& name) = 0;
};

}  // namespace NSInterface

/// A read-only handle on a factory; it cannot create objects.
class ImmutableFactory : public K7Q::ImmutableFactoryObject {
 public:
  using Interface = NSInterface::FactoryIntf;
  constexpr ImmutableFactory() noexcept = default;
  ImmutableFactory(NSInterface::FactoryIntf* interface, K7Q::Deviant deviant) noexcept
      : ImmutableFactoryObject(interface, deviant) {}
};

/// A handle on a factory that creates objects. The new objects have the deviant of the factory handle. If
/// that deviant forbids writing, the create functions throw a K7Q::Exception.
///
/// Example:
///   const auto factory = Factory::createNewFactory(model);
///   const auto package = factory.create<common::Package>(u"Brakes");
///   const auto same = factory.getFactory()->createFromString({}, u"common.Package", u"Wheels");
class Factory : public K7Q::FactoryObject {
 public:
  using Interface = NSInterface::FactoryIntf;
  constexpr Factory() noexcept = default;
  Factory(NSInterface::FactoryIntf* interface, K7Q::Deviant deviant) noexcept
      : FactoryObject(interface, deviant) {}

  /// Returns a null handle for a null model. Throws a K7Q::Exception for a closed model.
  static Factory createNewFactory(const K7Q::Model& model) {
    return {Interface::createNewFactory(model), model.getDeviant()};
  }

  NSInterface::FactoryIntf* getFactory() const noexcept {
    return static_cast<NSInterface::FactoryIntf*>(getInterface());
  }

  /// Creates an object with the constructor of X that takes these arguments. A call that fits no constructor
  /// does not compile.
  template <class X, class... Arguments>
  requires(ConstructorMatch<X, Arguments...>::kIndex >= 0) X create(const Arguments&... arguments)
  const {
    const auto object = ConstructorMatch<X, Arguments...>::apply(
        [this](const auto& methods, unsigned constructor, std::span<const K7Q::Object> objects) {
          return this->create(methods, constructor, objects);
        },
        arguments...);
    return X(object.getClassObject(), object.getDeviant());
  }

  /// Creates an object of the class with the constructor of that index. Throws a K7Q::Exception for a null
  /// factory and for a deviant that forbids writing, and what IntrospectiveMethods::create() throws.
  K7Q::ClassObject create(const K7Q::IntrospectiveMethods& cls, unsigned constructor,
                          std::span<const K7Q::Object> arguments) const {
    requireValid();
    K7Q::DeviantAssertions::assertWritable(getDeviant(), getInterface());
    const auto object = getFactory()->create(getDeviant(), cls, constructor, arguments);
    return {object.getClassObject(), getDeviant()};
  }
};

}  // namespace Tarvelon::metamodel::arplatform
