#pragma once

#include <concepts>

#include "tarvelon/boundary/k7q/Introspection.h"

namespace K7Q {

/// Converts between an element of a typed sequence and the type-erased Generic::Ref that SequenceIntf takes
/// and returns. The typed sequences of the native API use this trait.
///
/// The primary template is for handles: the Ref carries the object and its deviant. A specialisation below is
/// for texts; the one for enumeration values is in tarvelon/PrimitiveCell.h.
///
/// Example:
///   sequence.generic_push_back(deviant, ElementCarrier<String>::toRef(u"Brakes"));
///   const String first = ElementCarrier<String>::fromRef(sequence.generic_front(deviant));
template <class Element>
struct ElementCarrier {
  /// The Ref holds a reference on the object.
  static Generic::Ref toRef(const Element& element) {
    return makeObjectRef(element.getInterface(), element.getDeviant());
  }
  /// REQUIRES: the Ref carries an object of the handle's class, or is empty. The class is not tested.
  static Element fromRef(const Generic::Ref& ref) {
    auto* object = static_cast<NSInterface::ObjectIntf*>(ref.value());
    if constexpr (std::constructible_from<Element, NSInterface::ObjectIntf*, Deviant>) {
      return Element(object, Deviant{ref.second()});
    } else {
      return Element(static_cast<NSInterface::ClassObjectIntf*>(object), Deviant{ref.second()});
    }
  }
};

/// A text travels as a text object, which the Ref and the String share.
template <>
struct ElementCarrier<String> {
  static Generic::Ref toRef(const String& element) { return makeStringRef(element); }
  static String fromRef(const Generic::Ref& ref) {
    return String(Object(static_cast<NSInterface::StringIntf*>(ref.value()), Deviant()));
  }
};

}  // namespace K7Q
