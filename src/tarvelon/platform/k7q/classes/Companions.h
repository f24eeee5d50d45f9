#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "tarvelon/binding/MethodRows.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/platform/k7q/sequences/HostList.h"

/// The classes that accompany an element class X: its sequences and their iterators.
namespace K7Q::mi {

using binding::MethodRow;

/// One of the kinds of companions: SequenceOfX, ImmutableXIterator and so on.
struct CompanionKind {
  /// The class is called `before` X `after`.
  std::string_view before;
  std::string_view after;
  /// The kind of X's companion that is its superclass, null if there is none.
  const CompanionKind* super;
  /// Whether the companions of that kind of X's bases are superclasses too.
  bool followsBases;
  std::span<const MethodRow> rows;
  /// What make() makes lists of; null: there is no make().
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

/// Where a companion stands: dotted names, and those of the mutable bases of X.
struct CompanionNames {
  const std::string& fullName;
  const std::string& element;
  /// The iterator of a sequence; empty for an iterator.
  const std::string& iterator;
  std::span<const std::string> bases;
};

/// Keeps names alone; what the class has is derived from them when it is first needed.
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
