#pragma once

#include <string>

#include "binding/SequenceMethods.h"
#include "boundary/k7q/ClassMetaData.h"
#include "collections/MakeSequence.h"

/// The host classes of sequences of enumeration values.
namespace K7Q::mi {

/// The dotted names that the records of an enumeration's companions are made of.
template <class E>
binding::InternedName companionName(const char* before, const char* after = "") {
  std::string name(E::kName.name, E::kName.prefix);
  return binding::InternedName(name.append(before).append(E::kName.shortName()).append(after));
}

/// The native functions behind the records that make a sequence.
template <class E>
struct SequenceMakers {
  static Sequence<E> make(const ImmutableModel& model, bool isUnique) {
    return makeSequence<E>({model.getDeviant(), MULTI_INDEX, isUnique, true});
  }
  static Sequence<E> makeWithImmutableModel(const ImmutableModel& model) { return make(model, false); }
  static Sequence<E> makeWithModel(const Model& model) { return make(model, false); }
  static Sequence<E> makeUniqueWithImmutableModel(const ImmutableModel& model) { return make(model, true); }
  static Sequence<E> makeUniqueWithModel(const Model& model) { return make(model, true); }
};

// clang-format off
template <class E>
inline constexpr binding::MethodRow kMakerRows[] = {
    binding::classLevel<&SequenceMakers<E>::makeWithImmutableModel>
        ("make",       binding::kSelf, {"K7Q.ImmutableModel"}),
    binding::classLevel<&SequenceMakers<E>::makeWithModel>
        ("make",       binding::kSelf, {"K7Q.Model"}),
    binding::classLevel<&SequenceMakers<E>::makeUniqueWithImmutableModel>
        ("makeUnique", binding::kSelf, {"K7Q.ImmutableModel"}),
    binding::classLevel<&SequenceMakers<E>::makeUniqueWithModel>
        ("makeUnique", binding::kSelf, {"K7Q.Model"}),
};
// clang-format on

/// SequenceOfX: values can be added and taken out, and `make` gives a new one.
template <class E>
class SequenceWrapper final : public ClassMetaData {
 public:
  SequenceWrapper()
      : ClassMetaData(std::string("SequenceOf") + E::kName.shortName(),
                      std::string("A sequence of ") + E::kName.shortName() + " whose values can be changed") {
  }

  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) override {
    cls->addSuperClass(companionName<E>("ImmutableSequenceOf"), 1, 0, 1);
    ruvo::factory::detail::initStringDataTypes();
    const binding::RowNames names{companionName<E>("SequenceOf"), companionName<E>("", "Iterator"),
                                  companionName<E>("")};
    binding::addRows(*cls, binding::kSequenceRows<E, Iterator<E>>, names);
    binding::addRows(*cls, kMakerRows<E>, names);
  }
};

/// ImmutableSequenceOfX: reads alone.
template <class E>
class ImmutableSequenceWrapper final : public ClassMetaData {
 public:
  // The words are those of the changeable sequence; hosts know the class by them.
  ImmutableSequenceWrapper()
      : ClassMetaData(std::string("ImmutableSequenceOf") + E::kName.shortName(),
                      std::string("A non-modifiable sequence of ") + E::kName.shortName() +
                          " whose values can be changed") {}

  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) override {
    ruvo::factory::detail::initStringDataTypes();
    binding::addRows(*cls, binding::kImmutableSequenceRows<E, ImmutableIterator<E>>,
                     {companionName<E>("ImmutableSequenceOf"), companionName<E>("", "ImmutableIterator"),
                      companionName<E>("")});
  }
};

}  // namespace K7Q::mi
