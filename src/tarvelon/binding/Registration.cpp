#include "tarvelon/binding/Registration.h"

#include <string>
#include <vector>

#include "tarvelon/binding/ClassWrappers.h"

namespace binding {

namespace {

/// Composes the short and dotted names of the sequence and iterator classes of one metamodel class.
class CompanionNames {
 public:
  explicit CompanionNames(const ClassName& name)
      : mPrefix(name.name, name.prefix), mShort(name.shortName()) {}
  std::string shortName(const char* before, const char* after = "") const { return before + mShort + after; }
  std::string fullName(const char* before, const char* after = "") const {
    return mPrefix + shortName(before, after);
  }

 private:
  std::string mPrefix;
  std::string mShort;
};

using SequenceFactory = decltype(&K7Q::mi::createSequenceOfRefClassInfo);
using IteratorFactory = decltype(&K7Q::mi::createIteratorOfRefClassInfo);

struct SequenceKind {
  SequenceFactory create;
  const char* before;
  const char* element;
  const char* iteratorBefore;
  const char* iteratorAfter;
  const char* description;
};

struct IteratorKind {
  IteratorFactory create;
  const char* before;
  const char* after;
  const char* element;
  const char* description;
};

constexpr const char* kChangeable = "A sequence whose values can be changed";
constexpr const char* kUnchangeable = "A sequence whose values cannot be changed";
constexpr const char* kModifiable = "An iterator for traversing a modifiable list";
constexpr const char* kNonModifiable = "An iterator for traversing a non-modifiable list";

namespace sequences = K7Q::mi;

// clang-format off
constexpr SequenceKind kSequences[] = {
    {&sequences::createSequenceOfRefClassInfo,
     "SequenceOf",                   "",          "",          "Iterator",          kChangeable},
    {&sequences::createSequenceOfImmutableRefClassInfo,
     "SequenceOfImmutable",          "Immutable", "Immutable", "Iterator",          kChangeable},
    {&sequences::createImmutableSequenceOfRefClassInfo,
     "ImmutableSequenceOf",          "",          "",          "ImmutableIterator", kUnchangeable},
    {&sequences::createImmutableSequenceOfImmutableRefClassInfo,
     "ImmutableSequenceOfImmutable", "Immutable", "Immutable", "ImmutableIterator", kUnchangeable},
};

// The description depends on the mutability of the element, not of the iterator.
constexpr IteratorKind kIterators[] = {
    {&sequences::createIteratorOfRefClassInfo,
     "",          "Iterator",          "",          kModifiable},
    {&sequences::createIteratorOfImmutableRefClassInfo,
     "Immutable", "Iterator",          "Immutable", kNonModifiable},
    {&sequences::createImmutableIteratorOfRefClassInfo,
     "",          "ImmutableIterator", "",          kModifiable},
    {&sequences::createImmutableIteratorOfImmutableRefClassInfo,
     "Immutable", "ImmutableIterator", "Immutable", kNonModifiable},
};
// clang-format on

}  // namespace

void addClassInfo(ruvo::RVOPackage* package, ruvo::RVOClassInfo* info) {
  if (package) {
    package->addClass(info, kClassAccess);
  } else {
    ruvo::RVOClass::addGlobalClass(info);
  }
}

void registerClassInfos(ruvo::RVOPackage* package, const ClassBinding& binding) {
  if (!package) return;
  package->addClass(new ImmutableClassWrapper(binding), kClassAccess);
  package->addClass(new ClassWrapper(binding), kClassAccess);
  package->addClass(new MetaPropertyWrapper(binding), kClassAccess);

  std::vector<std::string> bases;
  for (const ClassName* base : binding.table.bases) bases.emplace_back(base->name);
  const CompanionNames names(binding.name());
  for (const SequenceKind& kind : kSequences) {
    package->addClass(kind.create(names.shortName(kind.before), kind.description, names.fullName(kind.before),
                                  names.fullName(kind.element),
                                  names.fullName(kind.iteratorBefore, kind.iteratorAfter), bases),
                      kClassAccess);
  }
  for (const IteratorKind& kind : kIterators) {
    package->addClass(kind.create(names.shortName(kind.before, kind.after), kind.description,
                                  names.fullName(kind.before, kind.after), names.fullName(kind.element)),
                      kClassAccess);
  }
}

EnumerationWrapper::EnumerationWrapper(const EnumerationBinding& binding)
    : ClassMetaData(binding.name->shortName(), kEnumerationDescription), mBinding(binding) {}

void EnumerationWrapper::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) {
  defineEnumeration(*cls, mBinding);
}

}  // namespace binding
