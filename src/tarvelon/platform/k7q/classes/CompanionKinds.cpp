#include "tarvelon/binding/SequenceMethods.h"
#include "tarvelon/platform/k7q/classes/Companions.h"

namespace K7Q::mi {

namespace {

template <class Element>
constexpr std::span<const MethodRow> kChangeable = binding::kSequenceRows<Element>;
template <class Element>
constexpr std::span<const MethodRow> kFixed = binding::kImmutableSequenceRows<Element>;
template <class Element>
constexpr std::span<const MethodRow> kWalking = binding::kIteratorRows<Element, binding::ChangingPlace>;
template <class Element>
constexpr std::span<const MethodRow> kFixedWalking = binding::kIteratorRows<Element, binding::ReadingPlace>;

constexpr const ElementKind* kNothing = nullptr;

}  // namespace

// The companion classes of an element class, then those of texts. Columns: class name before and behind the
// element's name, superclass, whether the companions of the element's base classes are superclasses too,
// methods, and the kind of elements that make() accepts.
// clang-format off
constinit const CompanionKind kImmutableSequenceOfImmutable{
    "ImmutableSequenceOfImmutable", "",                  nullptr,
    true,  kFixed<ImmutableObject>,        kNothing};
constinit const CompanionKind kImmutableSequenceOf{
    "ImmutableSequenceOf",          "",                  &kImmutableSequenceOfImmutable,
    true,  kFixed<Object>,                 kNothing};
constinit const CompanionKind kSequenceOfImmutable{
    "SequenceOfImmutable",          "",                  &kImmutableSequenceOfImmutable,
    false, kChangeable<ImmutableObject>,   &kObjectElements};
constinit const CompanionKind kSequenceOf{
    "SequenceOf",                   "",                  &kImmutableSequenceOf,
    false, kChangeable<Object>,            &kObjectElements};

constinit const CompanionKind kImmutableIteratorOfImmutable{
    "Immutable",                    "ImmutableIterator", nullptr,
    false, kFixedWalking<ImmutableObject>, kNothing};
constinit const CompanionKind kImmutableIteratorOf{
    "",                             "ImmutableIterator", &kImmutableIteratorOfImmutable,
    false, kFixedWalking<Object>,          kNothing};
constinit const CompanionKind kIteratorOfImmutable{
    "Immutable",                    "Iterator",          &kImmutableIteratorOfImmutable,
    false, kWalking<ImmutableObject>,      kNothing};
constinit const CompanionKind kIteratorOf{
    "",                             "Iterator",          &kImmutableIteratorOf,
    false, kWalking<Object>,               kNothing};

constinit const CompanionKind kImmutableSequenceOfString{
    "ImmutableSequenceOf",          "",                  nullptr,
    false, kFixed<String>,                 kNothing};
constinit const CompanionKind kSequenceOfString{
    "SequenceOf",                   "",                  &kImmutableSequenceOfString,
    false, kChangeable<String>,            &kTextElements};
constinit const CompanionKind kStringImmutableIterator{
    "",                             "ImmutableIterator", nullptr,
    false, kFixedWalking<String>,          kNothing};
constinit const CompanionKind kStringIterator{
    "",                             "Iterator",          &kStringImmutableIterator,
    false, kWalking<String>,               kNothing};
// clang-format on

namespace {

ruvo::RVOClassInfo* makeSequence(const CompanionKind& kind, const std::string& name,
                                 const std::string& description, const std::string& fullName,
                                 const std::string& element, const std::string& iterator,
                                 const std::vector<std::string>& superClasses) {
  return new CompanionClassInfo(kind, name, description, {fullName, element, iterator, superClasses});
}

ruvo::RVOClassInfo* makeIterator(const CompanionKind& kind, const std::string& name,
                                 const std::string& description, const std::string& fullName,
                                 const std::string& element) {
  return new CompanionClassInfo(kind, name, description, {fullName, element, {}, {}});
}

}  // namespace

ruvo::RVOClassInfo* createSequenceOfRefClassInfo(const std::string& name, const std::string& description,
                                                 const std::string& fullName, const std::string& element,
                                                 const std::string& iterator,
                                                 const std::vector<std::string>& superClasses) {
  return makeSequence(kSequenceOf, name, description, fullName, element, iterator, superClasses);
}

ruvo::RVOClassInfo* createSequenceOfImmutableRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element, const std::string& iterator, const std::vector<std::string>& superClasses) {
  return makeSequence(kSequenceOfImmutable, name, description, fullName, element, iterator, superClasses);
}

ruvo::RVOClassInfo* createImmutableSequenceOfRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element, const std::string& iterator, const std::vector<std::string>& superClasses) {
  return makeSequence(kImmutableSequenceOf, name, description, fullName, element, iterator, superClasses);
}

ruvo::RVOClassInfo* createImmutableSequenceOfImmutableRefClassInfo(
    const std::string& name, const std::string& description, const std::string& fullName,
    const std::string& element, const std::string& iterator, const std::vector<std::string>& superClasses) {
  return makeSequence(kImmutableSequenceOfImmutable, name, description, fullName, element, iterator,
                      superClasses);
}

ruvo::RVOClassInfo* createIteratorOfRefClassInfo(const std::string& name, const std::string& description,
                                                 const std::string& fullName, const std::string& element) {
  return makeIterator(kIteratorOf, name, description, fullName, element);
}

ruvo::RVOClassInfo* createIteratorOfImmutableRefClassInfo(const std::string& name,
                                                          const std::string& description,
                                                          const std::string& fullName,
                                                          const std::string& element) {
  return makeIterator(kIteratorOfImmutable, name, description, fullName, element);
}

ruvo::RVOClassInfo* createImmutableIteratorOfRefClassInfo(const std::string& name,
                                                          const std::string& description,
                                                          const std::string& fullName,
                                                          const std::string& element) {
  return makeIterator(kImmutableIteratorOf, name, description, fullName, element);
}

ruvo::RVOClassInfo* createImmutableIteratorOfImmutableRefClassInfo(const std::string& name,
                                                                   const std::string& description,
                                                                   const std::string& fullName,
                                                                   const std::string& element) {
  return makeIterator(kImmutableIteratorOfImmutable, name, description, fullName, element);
}

}  // namespace K7Q::mi
