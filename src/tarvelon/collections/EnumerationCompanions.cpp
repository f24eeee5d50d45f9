#include "tarvelon/collections/EnumerationCompanions.h"

#include <string>

#include "tarvelon/binding/Registration.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"

namespace K7Q::mi {

namespace {

using Rows = EnumerationCompanions::Rows;
using Tarvelon::metamodel::EnumerationName;

/// The text before and after the short name of an enumeration, in the name or the description of a class.
struct Around {
  const char* before;
  const char* after;

  std::string put(const char* shortName) const { return std::string(before).append(shortName).append(after); }
  /// The dotted name of the class; it is in the package of the enumeration.
  binding::InternedName dotted(const EnumerationName& name) const {
    return binding::InternedName(std::string(name.name, name.prefix).append(put(name.shortName())));
  }
};

/// One of the four classes. `superClass` is null for a class without a superclass of its own.
struct CompanionKind {
  Around name;
  Around description;
  const Around* superClass;
  Around iterator;
  Rows EnumerationCompanions::*rows;
  Rows EnumerationCompanions::*further;
};

constexpr Around kSequence{"SequenceOf", ""};
constexpr Around kImmutableSequence{"ImmutableSequenceOf", ""};
constexpr Around kIterator{"", "Iterator"};
constexpr Around kImmutableIterator{"", "ImmutableIterator"};
// Both iterator classes and both sequence classes have the same description, although one of each cannot
// change the sequence. The texts are kept, because hosts rely on them.
constexpr Around kWalks{"A iterator for traversing a modifiable list of ", " objects"};

using C = EnumerationCompanions;
constexpr CompanionKind kKinds[] = {
    {kSequence,
     {"A sequence of ", " whose values can be changed"},
     &kImmutableSequence,
     kIterator,
     &C::changing,
     &C::makers},
    {kImmutableSequence,
     {"A non-modifiable sequence of ", " whose values can be changed"},
     nullptr,
     kImmutableIterator,
     &C::reading,
     nullptr},
    {kIterator, kWalks, &kImmutableIterator, kIterator, &C::changingIterator, nullptr},
    {kImmutableIterator, kWalks, nullptr, kImmutableIterator, &C::readingIterator, nullptr},
};

class CompanionWrapper final : public ClassMetaData {
 public:
  CompanionWrapper(const CompanionKind& kind, const EnumerationCompanions& companions)
      : ClassMetaData(kind.name.dotted(*companions.name).c_str() + companions.name->prefix,
                      binding::InternedName(kind.description.put(companions.name->shortName())).c_str()),
        mKind(kind),
        mCompanions(companions) {}

  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) override {
    const EnumerationName& name = *mCompanions.name;
    if (mKind.superClass) cls->addSuperClass(mKind.superClass->dotted(name), 1, 0, 1);
    ruvo::factory::detail::initStringDataTypes();
    const binding::RowNames names{mKind.name.dotted(name), mKind.iterator.dotted(name),
                                  binding::named(name.name)};
    binding::addRows(*cls, mCompanions.*mKind.rows, names);
    if (mKind.further) binding::addRows(*cls, mCompanions.*mKind.further, names);
  }

 private:
  const CompanionKind& mKind;
  const EnumerationCompanions& mCompanions;
};

}  // namespace

void addCompanionInfos(ruvo::RVOPackage* package, const EnumerationCompanions& companions) {
  for (const CompanionKind& kind : kKinds) {
    binding::addClassInfo(package, new CompanionWrapper(kind, companions));
  }
}

}  // namespace K7Q::mi
