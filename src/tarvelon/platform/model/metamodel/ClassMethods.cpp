#include "tarvelon/platform/model/metamodel/ClassMethods.h"

#include <mutex>
#include <string>

#include "tarvelon/platform/model/metamodel/ClassData.h"

namespace Tarvelon::metamodel::native {

const ClassData& ClassMethods::makeData() const {
  // Creating a class creates its bases first, under the same lock.
  static std::recursive_mutex& guard = *new std::recursive_mutex;
  const std::scoped_lock lock(guard);
  const ClassData* data = mData.load(std::memory_order_acquire);
  if (!data) {
    data = new ClassData(*this);
    mData.store(data, std::memory_order_release);
  }
  return *data;
}

unsigned ClassMethods::numberOfProperties() const {
  return !mRows || mRows->properties.empty() ? 0U : mRows->properties.back().id;
}

const K7Q::NSInterface::PropertyIntf* ClassMethods::descriptor(unsigned id) const {
  return data().ownProperty(id);
}

K7Q::ImmutableClass ClassMethods::metaClass() const { return {&data().description, K7Q::Deviant{}}; }

const ruvo::InternedName& ClassMethods::sequenceName(bool isSequenceImmutable,
                                                     bool isElementImmutable) const {
  const std::size_t index = (isSequenceImmutable ? 2U : 0U) + (isElementImmutable ? 1U : 0U);
  return mSequenceNames[index].get([&] {
    std::string text(mClassName->name, mClassName->prefix);
    text.append(isSequenceImmutable ? "ImmutableSequenceOf" : "SequenceOf");
    return text.append(isElementImmutable ? "Immutable" : "").append(mClassName->shortName());
  });
}

}  // namespace Tarvelon::metamodel::native

namespace K7Q {

CooperativeVisitor::TagPair tagsOfClass(const IntrospectiveMethods& methods) {
  return static_cast<const Tarvelon::metamodel::native::ClassMethods&>(methods).data().tags;
}

}  // namespace K7Q
