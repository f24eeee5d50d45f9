#pragma once

#include <concepts>

#include "tarvelon/boundary/k7q/Introspection.h"

namespace K7Q {

/// How a value of the element's type travels through the generic interface of sequences: a handle as its
/// object and deviant, a text as a text object. Values of
/// enumerations say it beside their cell.
template <class Element>
struct ElementCarrier {
  static Generic::Ref toRef(const Element& element) {
    return makeObjectRef(element.getInterface(), element.getDeviant());
  }
  static Element fromRef(const Generic::Ref& ref) {
    auto* object = static_cast<NSInterface::ObjectIntf*>(ref.value());
    if constexpr (std::constructible_from<Element, NSInterface::ObjectIntf*, Deviant>) {
      return Element(object, Deviant{ref.second()});
    } else {
      return Element(static_cast<NSInterface::ClassObjectIntf*>(object), Deviant{ref.second()});
    }
  }
};

template <>
struct ElementCarrier<String> {
  static Generic::Ref toRef(const String& element) { return makeStringRef(element); }
  static String fromRef(const Generic::Ref& ref) {
    return String(Object(static_cast<NSInterface::StringIntf*>(ref.value()), Deviant()));
  }
};

}  // namespace K7Q
