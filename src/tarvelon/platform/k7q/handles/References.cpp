#include "tarvelon/boundary/k7q/Introspection.h"

namespace K7Q {

namespace {

template <class Interface>
void manage(void* value, bool take) {
  const auto* object = static_cast<const Interface*>(value);
  if (!object) return;
  if (take) {
    object->addRef();
  } else {
    object->release();
  }
}

bool isSameObject(const void* left, const void* right) { return left == right; }

bool isSameText(const void* left, const void* right) {
  return static_cast<const NSInterface::StringIntf*>(left)->view() ==
         static_cast<const NSInterface::StringIntf*>(right)->view();
}

}  // namespace

Generic::Ref makeObjectRef(NSInterface::ObjectIntf* object, Deviant deviant) {
  return {object, deviant.word, &manage<NSInterface::ObjectIntf>, &isSameObject};
}

Generic::Ref makeStringRef(const String& text) {
  const Object object = text;
  return {static_cast<NSInterface::StringIntf*>(object.getInterface()), 0, &manage<NSInterface::StringIntf>,
          &isSameText};
}

}  // namespace K7Q
