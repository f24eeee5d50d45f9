#pragma once

#include <cstdint>
#include <memory>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/platform/k7q/sequences/Rewritable.h"
#include "tarvelon/platform/model/values/Values.h"

namespace Tarvelon::metamodel::native {

class Instance;
class ListIterator;

/// The live view of a many-valued property: what the sequence shows is what the object has at that moment.
///
/// Lifetime:  keeps the object's model alive. When the object is destroyed or the model closed, everything
///            raises the text for an empty handle.
/// Adding:    is checked like the value of a set. In a list of references an object stands once: appending
///            one that is there changes nothing, inserting it at an index moves it directly before the
///            element that stood there, and replacing another by it exchanges the two. A list of texts takes
///            duplicates.
/// Positions: an iterator is an index into the list as it was. Once elements have come, gone or moved it is
///            stale and raises; what a change by iterator gives is not. Behind the end an iterator raises
///            "sequence index out of bounds".
/// REQUIRES:  a Ref that is given carries what the sequence holds, an object or a text.
/// Refusals:  of an immutable view first, then of a deviant that may not be written, then of the place, then
///            of the element. Nothing changes.
class ListView : public K7Q::SequenceProxy, public K7Q::RewritableIntf {
 public:
  using Ref = K7Q::Generic::Ref;
  using Iterator = std::unique_ptr<K7Q::Generic::IteratorIntf>;

  ~ListView() override;
  Ref generic_at(const K7Q::Deviant& aDeviant, int index) const final;
  Ref generic_front(const K7Q::Deviant& aDeviant) const final;
  Ref generic_back(const K7Q::Deviant& aDeviant) const final;
  Iterator generic_begin(const K7Q::Deviant& aDeviant) const final;
  Iterator generic_end(const K7Q::Deviant& aDeviant) const final;
  void generic_clear(const K7Q::Deviant& aDeviant) final;
  int generic_size(const K7Q::Deviant& aDeviant) const final;
  bool generic_empty(const K7Q::Deviant& aDeviant) const final;
  void generic_insert(const K7Q::Deviant& aDeviant, int index, Ref ref) final;
  Iterator generic_insert(const K7Q::Deviant& aDeviant, const K7Q::Generic::IteratorIntf* iterator,
                          Ref ref) final;
  Iterator generic_erase(const K7Q::Deviant& aDeviant, const K7Q::Generic::IteratorIntf* iterator) final;
  Iterator generic_erase(const K7Q::Deviant& aDeviant, const K7Q::Generic::IteratorIntf* first,
                         const K7Q::Generic::IteratorIntf* last) final;
  void generic_erase(const K7Q::Deviant& aDeviant, int index) final;
  void generic_pop_back(const K7Q::Deviant& aDeviant) final;
  void generic_pop_front(const K7Q::Deviant& aDeviant) final;
  void generic_push_back(const K7Q::Deviant& aDeviant, Ref ref) final;
  void generic_push_front(const K7Q::Deviant& aDeviant, Ref ref) final;
  void generic_replace(const K7Q::Deviant& aDeviant, int index, Ref ref) final;
  bool generic_contains(const K7Q::Deviant& aDeviant, Ref ref) const final;
  int generic_removeAll(const K7Q::Deviant& aDeviant, Ref ref) final;
  void rewrite(const K7Q::Deviant& aDeviant, std::span<const Ref> elements) final;
  /// Whether both hold equal elements in the same order.
  bool specialized_equal(const SequenceIntf* other) const final;
  /// Takes over the elements of another view, as rewrite() does. False, and nothing done, for a sequence of
  /// another kind.
  bool specialized_assign(const SequenceIntf* other) final;

  /// Differs from before when elements have come, gone or moved.
  virtual std::uint32_t changes() const = 0;
  /// Raises for an iterator that was taken before a change.
  void requireFresh(const ListIterator& iterator) const;

  /// Whether the object is valid.
  bool isThere() const noexcept;
  /// Whether both show the same property of the same object.
  bool showsSameAs(const ListView& other) const noexcept {
    return mObject == other.mObject && mProperty == other.mProperty;
  }

 protected:
  ListView(Instance& object, const Property& property, bool immutable);

  /// The object. Raises kNullReference when it is not valid any more.
  Instance& object() const;
  const Property& property() const noexcept { return *mProperty; }

  virtual std::uint32_t count() const = 0;
  virtual Ref refAt(std::uint32_t index, K7Q::Deviant deviant) const = 0;
  virtual bool isAt(std::uint32_t index, const Ref& ref) const = 0;
  virtual bool contains(const Ref& ref) const = 0;
  /// Raises if the element may not stand in the list.
  virtual void check(const Ref& ref) const = 0;
  /// Adds behind the others. REQUIRES: check(ref).
  virtual void append(const Ref& ref) = 0;
  virtual void prepend(const Ref& ref) = 0;
  /// Puts the element at a place and returns where it then stands.
  virtual std::uint32_t insertAt(std::uint32_t index, const Ref& ref) = 0;
  virtual void replaceAt(std::uint32_t index, const Ref& ref) = 0;
  virtual void eraseAt(std::uint32_t first, std::uint32_t last) = 0;
  /// REQUIRES: check() of each; a batch that takes a part of it back.
  virtual void rewriteAs(std::span<const Ref> elements) = 0;

 private:
  void requireWritable(const K7Q::Deviant& deviant) const;
  void requireElement() const;
  std::uint32_t requireIndex(std::int64_t index, std::uint32_t limit) const;
  std::uint32_t positionOf(const K7Q::Generic::IteratorIntf* iterator) const;
  std::unique_ptr<ListIterator> iteratorAt(std::uint32_t index) const;

  Instance* mObject;
  const Property* mProperty;
  bool mIsImmutable;
};

/// The view of a property; a read-only one has immutable views alone. No reference for the caller.
K7Q::Generic::SequenceIntf* makeView(Instance& object, const Property& property, unsigned slot,
                                     bool immutable);

}  // namespace Tarvelon::metamodel::native
