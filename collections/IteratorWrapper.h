#pragma once

#include <string>

#include "collections/SequenceWrapper.h"

/// The host classes of iterators over sequences of enumeration values.
namespace K7Q::mi {

/// The description of both classes: each claims a modifiable list.
template <class E>
std::string iteratorDescription() {
  return std::string("A iterator for traversing a modifiable list of ") + E::kName.shortName() + " objects";
}

/// XIterator: what the changeable sequence gives.
template <class E>
class IteratorWrapper final : public ClassMetaData {
 public:
  IteratorWrapper()
      : ClassMetaData(std::string(E::kName.shortName()) + "Iterator", iteratorDescription<E>()) {}

  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) override {
    cls->addSuperClass(companionName<E>("", "ImmutableIterator"), 1, 0, 1);
    ruvo::factory::detail::initStringDataTypes();
    binding::addRows(*cls, binding::kIteratorRows<E, Iterator<E>>,
                     {companionName<E>("", "Iterator"), {}, companionName<E>("")});
  }
};

/// XImmutableIterator: what the sequence that only reads gives.
template <class E>
class ImmutableIteratorWrapper final : public ClassMetaData {
 public:
  ImmutableIteratorWrapper()
      : ClassMetaData(std::string(E::kName.shortName()) + "ImmutableIterator", iteratorDescription<E>()) {}

  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) override {
    ruvo::factory::detail::initStringDataTypes();
    binding::addRows(*cls, binding::kIteratorRows<E, ImmutableIterator<E>>,
                     {companionName<E>("", "ImmutableIterator"), {}, companionName<E>("")});
  }
};

}  // namespace K7Q::mi
