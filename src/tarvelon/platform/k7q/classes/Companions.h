#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "tarvelon/binding/MethodRows.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/platform/k7q/sequences/HostList.h"

/// Companion classes: for each element class X there are classes for its sequences and for their iterators.
namespace K7Q::mi {

using binding::MethodRow;

/// A kind of companion class, for example SequenceOfX or ImmutableXIterator.
struct CompanionKind {
  /// The class name is `before`, X and `after`, joined.
  std::string_view before;
  std::string_view after;
  /// The companion kind of the same X that is the superclass; null if there is none.
  const CompanionKind* super;
  /// Whether the companions of X's base classes (of the same kind) are superclasses too.
  bool followsBases;
  std::span<const MethodRow> rows;
  /// The kind of elements of the lists that make() creates; null if the class has no make().
  const ElementKind* makes;
};

extern const CompanionKind kSequenceOf;
extern const CompanionKind kSequenceOfImmutable;
extern const CompanionKind kImmutableSequenceOf;
extern const CompanionKind kImmutableSequenceOfImmutable;
extern const CompanionKind kIteratorOf;
extern const CompanionKind kIteratorOfImmutable;
extern const CompanionKind kImmutableIteratorOf;
extern const CompanionKind kImmutableIteratorOfImmutable;
extern const CompanionKind kSequenceOfString;
extern const CompanionKind kImmutableSequenceOfString;
extern const CompanionKind kStringIterator;
extern const CompanionKind kStringImmutableIterator;

/// The dotted names of a companion class, of its element class and of the mutable base classes of X.
struct CompanionNames {
  const std::string& fullName;
  const std::string& element;
  /// The iterator class of a sequence; empty for an iterator.
  const std::string& iterator;
  std::span<const std::string> bases;
};

/// Stores only names. The members are derived from the names when the class is first defined.
class CompanionClassInfo final : public ClassMetaData {
 public:
  CompanionClassInfo(const CompanionKind& kind, const std::string& name, const std::string& description,
                     const CompanionNames& names);
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) override;

 private:
  CompanionClassInfo(const CompanionKind& kind, const std::string& name, const std::string& description,
                     const CompanionNames& names, const ruvo::InternedName& fullName);
  void addSuperClasses(ruvo::RVOClass& cls) const;

  const CompanionKind& mKind;
  ruvo::InternedName mFullName;
  ruvo::InternedName mElement;
  ruvo::InternedName mIterator;
  std::unique_ptr<ruvo::InternedName[]> mBases;
  std::uint32_t mBaseCount = 0;
};

}  // namespace K7Q::mi
