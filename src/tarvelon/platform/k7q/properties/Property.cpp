#include "tarvelon/binding/Conversion.h"
#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tarvelon/platform/k7q/properties/Records.h"
#include "tarvelon/platform/k7q/sequences/SequenceNames.h"
#include "tarvelon/platform/k7q/values/Texts.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace K7Q::mi {

namespace {

std::uint8_t stateOf(Multiplicity multiplicity, Mutability mutability) noexcept {
  unsigned state = 0;
  if (mutability == Mutability::ReadOnly) state |= K7qmiProperty::kReadOnly;
  if (multiplicity == Multiplicity::Many) state |= K7qmiProperty::kMultiValued;
  if (multiplicity == Multiplicity::One) state |= K7qmiProperty::kRequired;
  return static_cast<std::uint8_t>(state);
}

}  // namespace

K7qmiProperty::K7qmiProperty(const ruvo::InternedName& ownerName, const char* name,
                             const IntrospectiveMethods* methods, unsigned id,
                             const ruvo::InternedName& typeName, Multiplicity multiplicity,
                             Mutability mutability, ruvo::factory::PropertyAttributes attributes)
    : PropertyImplBase(name, "", attributes),
      mOwnerName(ownerName),
      mTypeName(typeName),
      mMethods(methods),
      mId(id),
      mState(stateOf(multiplicity, mutability)) {}

K7qmiProperty::~K7qmiProperty() = default;

int K7qmiProperty::getMemberGetAccess() const { return 0; }
int K7qmiProperty::getMemberSetAccess() const { return 0; }

Multiplicity K7qmiProperty::multiplicity() const noexcept {
  if (isMany()) return Multiplicity::Many;
  return isOptional() ? Multiplicity::Optional : Multiplicity::One;
}

ruvo::RVOValue K7qmiProperty::getValue(ruvo::RVOInterface* object) {
  ClassObject handle = classObject(object);
  return isMany() ? getMultiValuedValue(handle, object) : getSingleValuedValue(handle);
}

// sequenceName() gives the host class of the view. The view shows later changes of the property.
ruvo::RVOValue K7qmiProperty::getMultiValuedValue(ClassObject& object, ruvo::RVOInterface* interface) {
  const bool isElementImmutable = isSeenImmutable(interface);
  const bool isSequenceImmutable = isElementImmutable || isReadOnly();
  const Deviant deviant = object.getDeviant();
  const SequenceHandle sequence(
      mMethods->getSequence(object.getClassObject(), deviant, mId, isSequenceImmutable), deviant);
  const auto name = sequenceName(sequence.get(), isSequenceImmutable, isElementImmutable, mTypeName);
  return ruvo::RVOValue(binding::boxAs(sequence.getInterface(), deviant, false, name));
}

ClassObject K7qmiProperty::classObject(ruvo::RVOInterface* object) const {
  const auto info = DeviantRegistry::getVariantInfo(object ? object->getBoundPointer(mOwnerName) : nullptr);
  auto* native = info.object ? info.object->cast(tagsOf<NSInterface::ClassObjectIntf>()) : nullptr;
  ClassObject handle(static_cast<NSInterface::ClassObjectIntf*>(native), info.deviant);
  if (!handle.isValid()) throwNullReference(*this, object);
  return handle;
}

void K7qmiProperty::requireSettable(ruvo::RVOInterface* object) const {
  LocalAsserter(__FILE__, __LINE__) = Asserter(!isMany()).Make(text::kMultiValued);
  LocalAsserter(__FILE__, __LINE__) = Asserter(!isReadOnly()).Make(text::kReadOnly);
  if (isSeenImmutable(object)) throwSetProhibitedException();
}

void K7qmiProperty::throwSetProhibitedException() { throw Exception(text::kThroughImmutable); }

void K7qmiProperty::throwWrongValue(ruvo::RVOInterface* object, const hx::hxArray* given) const {
  throw WrongType(text::mismatch(memberName(*this, object), expectedType(*this), text::shown(given)));
}

void throwNullReference(const K7qmiProperty& property, const ruvo::RVOInterface* object) {
  const Asserter failed = Asserter::MakeAlways(kNullReference);
  const std::string detail =
      memberName(property, object) + ": the object was destroyed, or its model is closed";
  AsserterEx<Exception>(failed).handle(__FILE__, __LINE__, detail.c_str());
  __builtin_unreachable();
}

std::string memberName(const K7qmiProperty& property, const ruvo::RVOInterface* object) {
  const std::string_view cls =
      object ? ruvo::classOf(*object).shortName() : text::shortName(property.methods().name(false));
  return std::string(cls) + "." + property.getName();
}

void throwEmptyValue(const K7qmiProperty& property, const ruvo::RVOInterface* object) {
  throw WrongValue(text::mismatch(memberName(property, object), expectedType(property), "an empty value") +
                   "; the property is required and cannot be unset");
}

void throwOutOfRange(const K7qmiProperty& property, const ruvo::RVOInterface* object,
                     const hx::hxArray* given) {
  throw OutOfRange(text::mismatch(memberName(property, object), expectedType(property), text::shown(given)));
}

void Record::releaseValue(ruvo::RVOInterface* /*object*/, ruvo::RVOValue value) {
  hx::hxDestroyArray(value.array());
}

}  // namespace K7Q::mi
