#pragma once

#include <limits>
#include <utility>

#include "binding/MethodRows.h"
#include "boundary/k7q/ElementCarrier.h"

/// The methods of sequence classes and their iterators, the same for every type of element.
namespace binding {

/// The host counts from 1. The least number stays negative, as which it is refused.
constexpr int fromHostIndex(int index) noexcept {
  return index == std::numeric_limits<int>::min() ? index : index - 1;
}

/// The operations that each record of a sequence class names. An iterator comes by value, which clones it:
/// the host's own does not move.
template <class Element, class Iterator>
struct SequenceOperations {
  using Self = K7Q::SequenceHandle;
  using Carrier = K7Q::ElementCarrier<Element>;

  static void pushBack(const Self& self, const Element& element) {
    self.get().generic_push_back(self.getDeviant(), Carrier::toRef(element));
  }
  static void pushFront(const Self& self, const Element& element) {
    self.get().generic_push_front(self.getDeviant(), Carrier::toRef(element));
  }
  static void clear(const Self& self) { self.get().generic_clear(self.getDeviant()); }
  static void popBack(const Self& self) { self.get().generic_pop_back(self.getDeviant()); }
  static void popFront(const Self& self) { self.get().generic_pop_front(self.getDeviant()); }
  static int removeAll(const Self& self, const Element& element) {
    return self.get().generic_removeAll(self.getDeviant(), Carrier::toRef(element));
  }
  static Iterator begin(const Self& self) {
    return {self.get().generic_begin(self.getDeviant()), self.getDeviant()};
  }
  static Iterator end(const Self& self) {
    return {self.get().generic_end(self.getDeviant()), self.getDeviant()};
  }
  static Iterator eraseOne(const Self& self, Iterator iterator) {
    return {self.get().generic_erase(self.getDeviant(), iterator.getInterface()), self.getDeviant()};
  }
  static Iterator eraseRange(const Self& self, Iterator first, Iterator last) {
    return {self.get().generic_erase(self.getDeviant(), first.getInterface(), last.getInterface()),
            self.getDeviant()};
  }
  static void eraseAt(const Self& self, int index) {
    self.get().generic_erase(self.getDeviant(), fromHostIndex(index));
  }
  static Iterator insert(const Self& self, Iterator iterator, const Element& element) {
    return {self.get().generic_insert(self.getDeviant(), iterator.getInterface(), Carrier::toRef(element)),
            self.getDeviant()};
  }
  static void insertAt(const Self& self, int index, const Element& element) {
    self.get().generic_insert(self.getDeviant(), fromHostIndex(index), Carrier::toRef(element));
  }
  static void replace(const Self& self, int index, const Element& element) {
    self.get().generic_replace(self.getDeviant(), fromHostIndex(index), Carrier::toRef(element));
  }
  static Element back(const Self& self) {
    return Carrier::fromRef(self.get().generic_back(self.getDeviant()));
  }
  static Element front(const Self& self) {
    return Carrier::fromRef(self.get().generic_front(self.getDeviant()));
  }
  static bool isEmpty(const Self& self) { return self.get().generic_empty(self.getDeviant()); }
  static int size(const Self& self) { return self.get().generic_size(self.getDeviant()); }
  static Element at(const Self& self, int index) {
    return Carrier::fromRef(self.get().generic_at(self.getDeviant(), fromHostIndex(index)));
  }
};

/// The operations that each record of an iterator class names. The argument is the host's own iterator.
template <class Element, class Iterator>
struct IteratorOperations {
  using Carrier = K7Q::ElementCarrier<Element>;

  static K7Q::Generic::IteratorIntf& get(const Iterator& iterator, int line = __builtin_LINE()) {
    if (!iterator.getInterface()) {
      K7Q::LocalAsserter(__FILE__, line) = K7Q::Asserter::MakeAlways(K7Q::kNullReference);
    }
    return *iterator.getInterface();
  }

  // The result is cloned where it is boxed.
  static const Iterator& clone(const Iterator& iterator) { return iterator; }
  static bool eq(const Iterator& left, const Iterator& right) {
    return get(left).equal(right.getInterface());
  }
  static bool ne(const Iterator& left, const Iterator& right) {
    return !get(left).equal(right.getInterface());
  }
  static void getNext(const Iterator& iterator) { get(iterator).next(iterator.getDeviant()); }
  static void getPrev(const Iterator& iterator) { get(iterator).previous(iterator.getDeviant()); }
  static Element item(const Iterator& iterator) {
    return Carrier::fromRef(get(iterator).current(iterator.getDeviant()));
  }
};

inline constexpr const char* kVoid = "void";
inline constexpr const char* kInteger = "int32 scalar";
inline constexpr const char* kLogical = "logical scalar";

/// Given for the one method with self as well, which clears it again.
inline constexpr std::uint32_t kGiven = ruvo::factory::kSelfAsArgument;

// clang-format off
/// A sequence whose values can be changed; the records that make one follow.
template <class Element, class Iterator>
inline constexpr std::array kSequenceRows = [] {
  using S = SequenceOperations<Element, Iterator>;
  return std::to_array<MethodRow>({
      member    <&S::pushBack>  ("append",     kVoid,     {kElement}),
      member    <&S::clear>     ("clear",      kVoid),
      member    <&S::popBack>   ("pop_back",   kVoid),
      member    <&S::popFront>  ("pop_front",  kVoid),
      member    <&S::pushBack>  ("push_back",  kVoid,     {kElement}),
      member    <&S::pushFront> ("push_front", kVoid,     {kElement}),
      member    <&S::removeAll> ("removeAll",  kInteger,  {kElement}),
      member    <&S::begin>     ("begin",      kIterator),
      member    <&S::end>       ("end",        kIterator),
      member    <&S::eraseOne>  ("erase",      kIterator, {kIterator}),
      member    <&S::eraseRange>("erase",      kIterator, {kIterator, kIterator}),
      asArgument<&S::eraseAt>   ("erase",      kVoid,     {kSelf, kInteger}),
      member    <&S::insert>    ("insert",     kIterator, {kIterator, kElement}).with(kGiven),
      asArgument<&S::insertAt>  ("insert",     kVoid,     {kSelf, kInteger, kElement}),
      asArgument<&S::replace>   ("replace",    kVoid,     {kSelf, kInteger, kElement}),
      member    <&S::back>      ("back",       kElement),
      member    <&S::isEmpty>   ("isEmpty",    kLogical),
      member    <&S::front>     ("front",      kElement),
      member    <&S::size>      ("size",       kInteger),
      asArgument<&S::at>        ("at",         kElement,  {kSelf, kInteger}),
  });
}();

/// A sequence whose values cannot be changed.
template <class Element, class Iterator>
inline constexpr std::array kImmutableSequenceRows = [] {
  using S = SequenceOperations<Element, Iterator>;
  return std::to_array<MethodRow>({
      member    <&S::begin>     ("begin",      kIterator),
      member    <&S::end>       ("end",        kIterator),
      member    <&S::back>      ("back",       kElement),
      member    <&S::isEmpty>   ("isEmpty",    kLogical),
      member    <&S::front>     ("front",      kElement),
      member    <&S::size>      ("size",       kInteger),
      asArgument<&S::at>        ("at",         kElement,  {kSelf, kInteger}),
  });
}();

template <class Element, class Iterator>
inline constexpr std::array kIteratorRows = [] {
  using I = IteratorOperations<Element, Iterator>;
  return std::to_array<MethodRow>({
      asArgument<&I::clone>     ("clone",      kSelf,     {kSelf}),
      member    <&I::eq>        ("eq",         kLogical,  {kSelf}).naming("other"),
      member    <&I::ne>        ("ne",         kLogical,  {kSelf}).naming("other"),
      asArgument<&I::getNext>   ("getNext",    kVoid,     {kSelf}),
      asArgument<&I::getPrev>   ("getPrev",    kVoid,     {kSelf}),
      member    <&I::item>      ("item",       kElement),
  });
}();
// clang-format on

}  // namespace binding
