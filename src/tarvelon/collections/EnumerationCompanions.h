#pragma once

#include <array>
#include <span>

#include "tarvelon/binding/SequenceMethods.h"
#include "tarvelon/boundary/ruvo/Package.h"
#include "tarvelon/collections/MakeSequence.h"

/// The host classes of the sequences of enumeration values, and of their iterators.
namespace K7Q::mi {

/// The method rows of the four sequence and iterator classes of one enumeration X. SequenceOfX has the
/// methods `changing` and then `makers`; ImmutableSequenceOfX has `reading`; the iterator classes have
/// `changingIterator` and `readingIterator`.
struct EnumerationCompanions {
  using Rows = std::span<const binding::MethodRow>;

  const Tarvelon::metamodel::EnumerationName* name;
  Rows changing;
  Rows makers;
  Rows reading;
  Rows changingIterator;
  Rows readingIterator;
};

/// Adds the class infos of SequenceOfX, ImmutableSequenceOfX, XIterator and XImmutableIterator to the
/// package, or as global classes if the package is null.
void addCompanionInfos(ruvo::RVOPackage* package, const EnumerationCompanions& companions);

/// The native functions behind the static methods that create a sequence.
template <class E>
struct SequenceMakers {
  static SequenceHandle make(const ImmutableModel& model, bool isUnique) {
    return makeSequence<E>({model.getDeviant(), MULTI_INDEX, isUnique, true});
  }
  static SequenceHandle makeWithImmutableModel(const ImmutableModel& model) { return make(model, false); }
  static SequenceHandle makeWithModel(const Model& model) { return make(model, false); }
  static SequenceHandle makeUniqueWithImmutableModel(const ImmutableModel& model) {
    return make(model, true);
  }
  static SequenceHandle makeUniqueWithModel(const Model& model) { return make(model, true); }
};

// clang-format off
template <class E>
inline constexpr std::array kMakerRows = [] {
  using M = SequenceMakers<E>;
  using binding::classLevel;
  using binding::kSelf;
  return std::to_array<binding::MethodRow>({
      classLevel<&M::makeWithImmutableModel>      ("make",       kSelf, {"K7Q.ImmutableModel"}),
      classLevel<&M::makeWithModel>               ("make",       kSelf, {"K7Q.Model"}),
      classLevel<&M::makeUniqueWithImmutableModel>("makeUnique", kSelf, {"K7Q.ImmutableModel"}),
      classLevel<&M::makeUniqueWithModel>         ("makeUnique", kSelf, {"K7Q.Model"}),
  });
}();
// clang-format on

template <class E>
inline constexpr EnumerationCompanions kCompanions{&E::kName,
                                                   binding::kSequenceRows<E>,
                                                   kMakerRows<E>,
                                                   binding::kImmutableSequenceRows<E>,
                                                   binding::kIteratorRows<E, binding::ChangingPlace>,
                                                   binding::kIteratorRows<E, binding::ReadingPlace>};

}  // namespace K7Q::mi
