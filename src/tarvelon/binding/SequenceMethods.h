#pragma once

#include <limits>
#include <type_traits>
#include <utility>

#include "tarvelon/binding/MethodRows.h"
#include "tarvelon/boundary/k7q/ElementCarrier.h"
#include "tarvelon/boundary/tarvelon/PrimitiveCell.h"

/// The methods of sequence and iterator classes. They are the same for every element type.
namespace binding {

namespace Generic = K7Q::Generic;
using K7Q::IteratorHandle;

/// Converts an index of the host, which counts from 1, to an index that counts from 0. The smallest int stays
/// as it is: subtracting 1 would overflow, and the sequence rejects any negative index.
constexpr int fromHostIndex(int index) noexcept {
  return index == std::numeric_limits<int>::min() ? index : index - 1;
}

/// The C++ type of an element argument. For enumerations this is AnyEnumeration, so that the methods of all
/// enumerations share their functions and invokers.
template <class Element>
struct ElementArguments {
  using Type = const Element&;
  static Generic::Ref toRef(Type element) { return K7Q::ElementCarrier<Element>::toRef(element); }
};
struct EnumerationArguments {
  using Type = AnyEnumeration;
  static Generic::Ref toRef(Type element) { return K7Q::makeNumberRef(element.value); }
};
template <class Element>
using ArgumentsOf = std::conditional_t<Tarvelon::metamodel::IsEnumeration<Element>, EnumerationArguments,
                                       ElementArguments<Element>>;

/// The C++ type of an element result.
template <class Element>
using ResultOf = std::conditional_t<Tarvelon::metamodel::IsEnumeration<Element>, BoxedEnumeration, Element>;

/// The operations without an element argument or result. Iterators are passed by value, which clones them, so
/// the host's iterator does not change.
struct SequencePlaces {
  using Self = K7Q::SequenceHandle;

  static void clear(const Self& self) { self.get().generic_clear(self.getDeviant()); }
  static void popBack(const Self& self) { self.get().generic_pop_back(self.getDeviant()); }
  static void popFront(const Self& self) { self.get().generic_pop_front(self.getDeviant()); }
  static void eraseAt(const Self& self, int index) {
    self.get().generic_erase(self.getDeviant(), fromHostIndex(index));
  }
  static bool isEmpty(const Self& self) { return self.get().generic_empty(self.getDeviant()); }
  static int size(const Self& self) { return self.get().generic_size(self.getDeviant()); }
  static ChangingPlace eraseOne(const Self& self, IteratorHandle iterator) {
    return {{self.get().generic_erase(self.getDeviant(), iterator.getInterface()), self.getDeviant()}};
  }
  static ChangingPlace eraseRange(const Self& self, IteratorHandle first, IteratorHandle last) {
    return {{self.get().generic_erase(self.getDeviant(), first.getInterface(), last.getInterface()),
             self.getDeviant()}};
  }
};

/// begin() and end(). Place is ChangingPlace or ReadingPlace.
template <class Place>
struct SequenceEnds {
  using Self = K7Q::SequenceHandle;

  static Place begin(const Self& self) {
    return {{self.get().generic_begin(self.getDeviant()), self.getDeviant()}};
  }
  static Place end(const Self& self) {
    return {{self.get().generic_end(self.getDeviant()), self.getDeviant()}};
  }
};

/// The operations with an element argument.
template <class Arguments>
struct SequenceWrites {
  using Self = K7Q::SequenceHandle;
  using Argument = typename Arguments::Type;

  static void pushBack(const Self& self, Argument element) {
    self.get().generic_push_back(self.getDeviant(), Arguments::toRef(element));
  }
  static void pushFront(const Self& self, Argument element) {
    self.get().generic_push_front(self.getDeviant(), Arguments::toRef(element));
  }
  static int removeAll(const Self& self, Argument element) {
    return self.get().generic_removeAll(self.getDeviant(), Arguments::toRef(element));
  }
  static ChangingPlace insert(const Self& self, IteratorHandle iterator, Argument element) {
    return {{self.get().generic_insert(self.getDeviant(), iterator.getInterface(), Arguments::toRef(element)),
             self.getDeviant()}};
  }
  static void insertAt(const Self& self, int index, Argument element) {
    self.get().generic_insert(self.getDeviant(), fromHostIndex(index), Arguments::toRef(element));
  }
  static void replace(const Self& self, int index, Argument element) {
    self.get().generic_replace(self.getDeviant(), fromHostIndex(index), Arguments::toRef(element));
  }
};

/// The operations with an element result.
template <class Element>
struct SequenceReads {
  using Self = K7Q::SequenceHandle;
  using Result = ResultOf<Element>;

  static Result give(const Generic::Ref& ref) { return {K7Q::ElementCarrier<Element>::fromRef(ref)}; }
  static Result back(const Self& self) { return give(self.get().generic_back(self.getDeviant())); }
  static Result front(const Self& self) { return give(self.get().generic_front(self.getDeviant())); }
  static Result at(const Self& self, int index) {
    return give(self.get().generic_at(self.getDeviant(), fromHostIndex(index)));
  }
};

/// The operations of iterator classes. The argument is the iterator of the host itself, so getNext() moves
/// it.
struct IteratorPlaces {
  using Self = IteratorHandle;

  static K7Q::Generic::IteratorIntf& get(const Self& iterator, int line = __builtin_LINE()) {
    if (!iterator.getInterface()) {
      K7Q::LocalAsserter(__FILE__, line) = K7Q::Asserter::MakeAlways(K7Q::kNullReference);
    }
    return *iterator.getInterface();
  }

  static bool eq(const Self& left, const Self& right) { return get(left).equal(right.getInterface()); }
  static bool ne(const Self& left, const Self& right) { return !get(left).equal(right.getInterface()); }
  static void getNext(const Self& iterator) { get(iterator).next(iterator.getDeviant()); }
  static void getPrev(const Self& iterator) { get(iterator).previous(iterator.getDeviant()); }
};

template <class Place>
struct IteratorCopies {
  static Place clone(const IteratorHandle& iterator) { return {iterator}; }
};

template <class Element>
struct IteratorReads {
  static ResultOf<Element> item(const IteratorHandle& iterator) {
    return SequenceReads<Element>::give(IteratorPlaces::get(iterator).current(iterator.getDeviant()));
  }
};

inline constexpr const char* kVoid = "void";
inline constexpr const char* kInteger = "int32 scalar";
inline constexpr const char* kLogical = "logical scalar";

/// The flag word of the method insert(iterator, element). MethodTable clears the bit, since the method has a
/// self.
inline constexpr std::uint32_t kGiven = ruvo::factory::kSelfAsArgument;

// clang-format off
/// The methods of a sequence class whose values can be changed. The class also has static methods that create
/// a sequence; other rows describe those.
template <class Element, class Place = ChangingPlace>
inline constexpr std::array kSequenceRows = [] {
  using P = SequencePlaces;
  using B = SequenceEnds<Place>;
  using W = SequenceWrites<ArgumentsOf<Element>>;
  using R = SequenceReads<Element>;
  return std::to_array<MethodRow>({
      member    <&W::pushBack>  ("append",     kVoid,     {kElement}),
      member    <&P::clear>     ("clear",      kVoid),
      member    <&P::popBack>   ("pop_back",   kVoid),
      member    <&P::popFront>  ("pop_front",  kVoid),
      member    <&W::pushBack>  ("push_back",  kVoid,     {kElement}),
      member    <&W::pushFront> ("push_front", kVoid,     {kElement}),
      member    <&W::removeAll> ("removeAll",  kInteger,  {kElement}),
      member    <&B::begin>     ("begin",      kIterator),
      member    <&B::end>       ("end",        kIterator),
      member    <&P::eraseOne>  ("erase",      kIterator, {kIterator}),
      member    <&P::eraseRange>("erase",      kIterator, {kIterator, kIterator}),
      asArgument<&P::eraseAt>   ("erase",      kVoid,     {kSelf, kInteger}),
      member    <&W::insert>    ("insert",     kIterator, {kIterator, kElement}).with(kGiven),
      asArgument<&W::insertAt>  ("insert",     kVoid,     {kSelf, kInteger, kElement}),
      asArgument<&W::replace>   ("replace",    kVoid,     {kSelf, kInteger, kElement}),
      member    <&R::back>      ("back",       kElement),
      member    <&P::isEmpty>   ("isEmpty",    kLogical),
      member    <&R::front>     ("front",      kElement),
      member    <&P::size>      ("size",       kInteger),
      asArgument<&R::at>        ("at",         kElement,  {kSelf, kInteger}),
  });
}();

/// The methods of a sequence class whose values cannot be changed.
template <class Element, class Place = ReadingPlace>
inline constexpr std::array kImmutableSequenceRows = [] {
  using P = SequencePlaces;
  using B = SequenceEnds<Place>;
  using R = SequenceReads<Element>;
  return std::to_array<MethodRow>({
      member    <&B::begin>     ("begin",      kIterator),
      member    <&B::end>       ("end",        kIterator),
      member    <&R::back>      ("back",       kElement),
      member    <&P::isEmpty>   ("isEmpty",    kLogical),
      member    <&R::front>     ("front",      kElement),
      member    <&P::size>      ("size",       kInteger),
      asArgument<&R::at>        ("at",         kElement,  {kSelf, kInteger}),
  });
}();

/// The methods of an iterator class.
template <class Element, class Place>
inline constexpr std::array kIteratorRows = [] {
  using I = IteratorPlaces;
  using C = IteratorCopies<Place>;
  using R = IteratorReads<Element>;
  return std::to_array<MethodRow>({
      asArgument<&C::clone>     ("clone",      kSelf,     {kSelf}),
      member    <&I::eq>        ("eq",         kLogical,  {kSelf}).naming("other"),
      member    <&I::ne>        ("ne",         kLogical,  {kSelf}).naming("other"),
      asArgument<&I::getNext>   ("getNext",    kVoid,     {kSelf}),
      asArgument<&I::getPrev>   ("getPrev",    kVoid,     {kSelf}),
      member    <&R::item>      ("item",       kElement),
  });
}();
// clang-format on

}  // namespace binding
