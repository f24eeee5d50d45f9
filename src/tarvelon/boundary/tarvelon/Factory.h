#pragma once

#include <array>
#include <span>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

/// The factory of the platform's metamodel: makes the objects of one model.
namespace Tarvelon::metamodel::arplatform {

namespace NSInterface {

/// Ownership: counts its references, and holds its model. Threads: one at a time, with the model.
class TARVELON_API FactoryIntf : public K7Q::NSInterface::FactoryIntf {
 public:
  ~FactoryIntf() override;
  /// A new factory without a reference for the caller; null for an empty model. Raises kNullReference for a
  /// closed one.
  static FactoryIntf* createNewFactory(const K7Q::Model& model);

  /// A new object of the class by its constructor of that index, whatever the deviant says. Raises what
  /// IntrospectiveMethods::create() raises.
  virtual K7Q::ClassObject create(K7Q::Deviant deviant, const K7Q::IntrospectiveMethods& cls,
                                  unsigned constructor, std::span<const K7Q::Object> arguments) = 0;
  /// A new object of the class of that name, dotted or from "Tarvelon.metamodel.arplatform." on. Raises
  /// K7Q::UnknownName for a class that is unknown, K7Q::Exception for one that is abstract.
  virtual K7Q::Object createFromString(K7Q::Deviant deviant, const K7Q::String& cls) = 0;
  /// The same, and sets the object's name. Raises K7Q::WrongValue for a class whose objects have none.
  virtual K7Q::Object createFromString(K7Q::Deviant deviant, const K7Q::String& cls,
                                       const K7Q::String& name) = 0;
};

}  // namespace NSInterface

/// The handle that can only be looked at.
class ImmutableFactory : public K7Q::ImmutableFactoryObject {
 public:
  using Interface = NSInterface::FactoryIntf;
  constexpr ImmutableFactory() noexcept = default;
  ImmutableFactory(NSInterface::FactoryIntf* interface, K7Q::Deviant deviant) noexcept
      : ImmutableFactoryObject(interface, deviant) {}
};

/// The handle that makes objects:
///
///   const auto factory = Factory::createNewFactory(model);
///   const auto package = factory.create<common::Package>(u"Brakes");
///
/// What it makes is seen under the factory's deviant. Under one that refuses writing it makes nothing.
class Factory : public K7Q::FactoryObject {
 public:
  using Interface = NSInterface::FactoryIntf;
  constexpr Factory() noexcept = default;
  Factory(NSInterface::FactoryIntf* interface, K7Q::Deviant deviant) noexcept
      : FactoryObject(interface, deviant) {}

  /// Empty for an empty model.
  static Factory createNewFactory(const K7Q::Model& model) {
    return {Interface::createNewFactory(model), model.getDeviant()};
  }

  NSInterface::FactoryIntf* getFactory() const noexcept {
    return static_cast<NSInterface::FactoryIntf*>(getInterface());
  }

  /// A new object by the constructor that takes these arguments; a wrong list does not compile.
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

  /// A new object of the class by its constructor of that index. Raises kNullReference for an empty factory,
  /// and what the view says when it refuses writing.
  K7Q::ClassObject create(const K7Q::IntrospectiveMethods& cls, unsigned constructor,
                          std::span<const K7Q::Object> arguments) const {
    requireValid();
    K7Q::DeviantAssertions::assertWritable(getDeviant(), getInterface());
    const auto object = getFactory()->create(getDeviant(), cls, constructor, arguments);
    return {object.getClassObject(), getDeviant()};
  }
};

}  // namespace Tarvelon::metamodel::arplatform
