#include "tarvelon/platform/model/values/Refusal.h"

#include <array>
#include <cstdio>

#include "tarvelon/boundary/k7q/Assertion.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::metamodel::native {

namespace {

template <std::size_t Size, class... Arguments>
std::string formatted(const char (&format)[Size], Arguments... arguments) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, arguments...);
  return buffer.data();
}

std::string describeText(std::u16string_view text) {
  constexpr std::size_t kShown = 40;
  std::string shown = K7Q::String::to_string(text.substr(0, kShown));
  return "char vector \"" + shown + (text.size() > kShown ? "...\"" : "\"");
}

std::string describeScalar(const K7Q::NSInterface::ScalarIntf& scalar, const K7Q::Object& value) {
  switch (scalar.type()) {
    case K7Q::NSInterface::ScalarIntf::Type::Boolean:
      return K7Q::Boolean(value) ? "logical scalar true" : "logical scalar false";
    case K7Q::NSInterface::ScalarIntf::Type::Integer:
      return "int32 scalar " + std::to_string(int{K7Q::Integer(value)});
    case K7Q::NSInterface::ScalarIntf::Type::Double:
      return formatted("double scalar %.17g", double{K7Q::Double(value)});
    case K7Q::NSInterface::ScalarIntf::Type::Real:
      return formatted("double scalar %.17g", double{K7Q::Real(value)});
  }
  return {};
}

std::string expected(const ClassData& cls, const Property& property, const std::string& what) {
  return nameOf(cls, property) + ": expected " + what;
}

std::string typeOf(const Property& property) { return std::string(property.typeName().view()); }

std::string whatFits(const Property& property) {
  if (const auto* enumeration = property.enumeration()) return "give one of " + enumeration->literalList();
  switch (property.storage()) {
    case Storage::Boolean:
      return "give a truth value or a number";
    case Storage::Integer:
      return "give a whole number from -2147483648 to 2147483647";
    case Storage::Double:
    case Storage::Real:
      return "give a number";
    case Storage::Text:
    case Storage::Texts:
      return "give a text";
    default:
      return "give an object of that class or of a subclass";
  }
}

}  // namespace

void raiseAssertion(const char* message, const std::string& detail, const char* file, int line) {
  const auto asserter = K7Q::Asserter::MakeAlways(message);
  K7Q::AsserterEx<K7Q::Exception>(asserter).handle(file, line, detail.c_str());
  __builtin_unreachable();
}

void raiseNullReference(const char* file, int line) { raiseAssertion(K7Q::kNullReference, {}, file, line); }

void raiseLost(const Instance& object, const char* file, int line) {
  raiseAssertion(K7Q::kNullReference, lossOf(object), file, line);
}

void raiseLost(const NativeModel& model, const char* file, int line) {
  raiseAssertion(K7Q::kNullReference, lossOf(model), file, line);
}

std::string describe(const Instance& object) { return describe(object, ownName(object)); }

std::string describe(const Instance& object, std::u16string_view name) {
  const std::string shown(shortName(object.cls()));
  return name.empty() ? shown : shown + " " + ruvo::quotedName(K7Q::String::to_string(name));
}

std::string lossOf(const Instance& object) {
  const NativeModel& model = object.model();
  return describe(object) + (model.isClosed() ? ": " + lossOf(model) : " was destroyed");
}

std::string lossOf(const NativeModel& model) {
  const std::string uri = K7Q::String::to_string(model.uri());
  return uri.empty() ? "the model is closed" : "the model '" + uri + "' is closed";
}

std::string nameOf(const ClassData& cls, const Property& property) {
  return std::string(cls.methods->className().shortName()) + "." + property.row().name;
}

std::string describe(const K7Q::Object& value) {
  const auto* object = value.getInterface();
  if (!object) return "nothing";
  if (typeid(*object) == typeid(K7Q::NSInterface::ScalarIntf)) {
    return describeScalar(static_cast<const K7Q::NSInterface::ScalarIntf&>(*object), value);
  }
  if (typeid(*object) == typeid(K7Q::NSInterface::StringIntf)) {
    return describeText(static_cast<const K7Q::NSInterface::StringIntf&>(*object).view());
  }
  std::string name(object->getRuvoName(false).view());
  if (const EnumerationCell* cell = asCell(object)) name += " " + cell->type().text(cell->value());
  return name;
}

void refuseKind(const ClassData& cls, const Property& property, const K7Q::Object& given) {
  throw K7Q::WrongType(expected(cls, property, typeOf(property)) + ", got " + describe(given) + "; " +
                       whatFits(property));
}

void refuseRange(const ClassData& cls, const Property& property, const K7Q::Object& given) {
  throw K7Q::OutOfRange(expected(cls, property, typeOf(property)) + ", got " + describe(given) + "; " +
                        whatFits(property));
}

void refuseEmpty(const ClassData& cls, const Property& property) {
  throw K7Q::WrongValue(expected(cls, property, typeOf(property)) + ", got nothing; " + whatFits(property));
}

void refuseForeign(const ClassData& cls, const Property& property, const K7Q::Object& given) {
  throw K7Q::WrongValue(expected(cls, property, typeOf(property) + " of the same model") + ", got " +
                        describe(given) + " of another model; create the object in the same model");
}

void refuseDead(const ClassData& cls, const Property& property, const K7Q::Object& given) {
  throw K7Q::WrongValue(expected(cls, property, typeOf(property) + " that exists in the model") + ", got " +
                        describe(given) +
                        " that was destroyed or whose model is closed; give a valid object");
}

void refuseCycle(const ClassData& cls, const Property& property, const Instance& given) {
  throw K7Q::WrongValue(expected(cls, property, typeOf(property) + " that does not contain this object") +
                        ", got " + std::string(given.getRuvoName(false).view()) +
                        ", which contains it; remove this object from it first");
}

void refuseText(const ClassData& cls, const Property& property, char16_t unit, std::size_t position) {
  const char* kind = unit == 0 || unit > 0xFFFD ? ""
                     : unit < 0x20              ? "the control character "
                                                : "the lone surrogate ";
  throw K7Q::WrongValue(expected(cls, property, "Unicode text that a file can hold") + ", got " +
                        formatted("%sU+%04X", kind, unsigned{unit}) + " at position " +
                        std::to_string(position + 1) + "; remove it");
}

void refuseMany(const ClassData& cls, const Property& property) {
  throw K7Q::Exception(nameOf(cls, property) + " holds many values and cannot be set; change its sequence");
}

void refuseSingle(const ClassData& cls, const Property& property) {
  throw K7Q::Exception(nameOf(cls, property) + " holds one value and has no sequence; read the value itself");
}

void refuseReadOnly(const ClassData& cls, const Property& property) {
  throw K7Q::Exception(
      nameOf(cls, property) + " is read-only and cannot be changed" +
      (property.storage() == Storage::None ? "; change the values that it is computed from" : ""));
}

void refuseUnset(const ClassData& cls, const Property& property) {
  throw K7Q::WrongValue(nameOf(cls, property) + " is required and cannot be unset; " + whatFits(property));
}

void refuseImmutableView(const ClassData& cls, const Property& property) {
  if (property.isReadOnly()) refuseReadOnly(cls, property);
  throw K7Q::Exception("this sequence of " + nameOf(cls, property) +
                       " is immutable and cannot be changed; use the sequence of the mutable object");
}

void refuseIterator(const ClassData& cls, const Property& property) {
  throw K7Q::WrongValue(
      nameOf(cls, property) +
      ": expected an iterator of this sequence, got one of another sequence; take it from begin() or end()");
}

void refuseStaleIterator(const ClassData& cls, const Property& property) {
  throw K7Q::Exception(
      nameOf(cls, property) +
      ": the sequence has changed since the iterator was taken; take a new one from begin() or "
      "end(), or use the one that the change returned");
}

void refuseLiteral(const EnumerationType& type, std::string_view literal) {
  throw K7Q::Exception("enumeration '" + std::string(type.fullName().view()) + "' has no literal " +
                       ruvo::quotedName(literal) + ruvo::didYouMean(literal, type.literals()) +
                       "; there are " + type.literalList());
}

void refuseAsEnumeration(const K7Q::Object& given) {
  throw K7Q::WrongType("expected the value of an enumeration, got " + describe(given));
}

}  // namespace Tarvelon::metamodel::native
