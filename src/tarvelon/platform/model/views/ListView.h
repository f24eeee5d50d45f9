#pragma once

#include <cstdint>
#include <memory>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/platform/k7q/sequences/Rewritable.h"
#include "tarvelon/platform/model/values/Values.h"

namespace Tarvelon::metamodel::native {

class Instance;
class ListIterator;

/// A live view of a many-valued property: it always shows the current elements.
///
/// Lifetime:  A view keeps the model of its object alive. If the object was destroyed or the model closed,
///            every function raises K7Q::Exception with the text kNullReference.
/// Adding:    An element is checked like the value of a single-valued property. A list of references contains
///            an object at most once: appending an object that is present changes nothing, inserting it at an
///            index moves it directly before the element at this index, and replacing another element with it
///            swaps the two. A list of texts or enumeration values may contain duplicates.
/// Iterators: An iterator is an index. Inserting, removing, moving or replacing elements invalidates it, and
///            using it raises; the iterator that such a function returns is valid. An iterator past the end
///            raises "sequence index out of bounds".
/// Errors:    Checked in this order: an immutable view, a handle that may not be written, the position, the
///            element. If a function raises, nothing has changed.
/// REQUIRES:  A Ref argument carries what the sequence holds: an object, a text or an enumeration value.
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
  /// Whether both have equal elements in the same order.
  bool specialized_equal(const SequenceIntf* other) const final;
  /// Takes over the elements of another view, as rewrite() does. Returns false and changes nothing if the
  /// other sequence has another kind of elements.
  bool specialized_assign(const SequenceIntf* other) final;

  /// A counter of changes. It differs from an earlier result if elements were inserted, removed, moved or
  /// replaced since.
  virtual std::uint32_t changes() const = 0;
  /// Raises if the iterator was invalidated by a change.
  void requireFresh(const ListIterator& iterator) const;

  /// Whether the object that has the list is valid.
  bool isThere() const noexcept;
  /// Whether both show the same property of the same object.
  bool showsSameAs(const ListView& other) const noexcept {
    return mObject == other.mObject && mProperty == other.mProperty;
  }

 protected:
  ListView(Instance& object, const Property& property, bool immutable);

  /// The object that has the list. Raises K7Q::Exception with the text kNullReference if the object is no
  /// longer valid.
  Instance& object() const;
  const Property& property() const noexcept { return *mProperty; }

  virtual std::uint32_t count() const = 0;
  virtual Ref refAt(std::uint32_t index, K7Q::Deviant deviant) const = 0;
  virtual bool isAt(std::uint32_t index, const Ref& ref) const = 0;
  virtual bool contains(const Ref& ref) const = 0;
  /// Raises if the list may not contain the element.
  virtual void check(const Ref& ref) const = 0;
  /// Adds the element at the end. REQUIRES: check(ref).
  virtual void append(const Ref& ref) = 0;
  virtual void prepend(const Ref& ref) = 0;
  /// Inserts the element at an index and returns its final index.
  virtual std::uint32_t insertAt(std::uint32_t index, const Ref& ref) = 0;
  virtual void replaceAt(std::uint32_t index, const Ref& ref) = 0;
  virtual void eraseAt(std::uint32_t first, std::uint32_t last) = 0;
  /// Replaces all elements. REQUIRES: check() of each element; a Batch with a journal, which undoes the
  /// changes if one of them fails.
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

/// Creates the view of a property. The view of a read-only property is always immutable. Its reference count
/// is 0: the first handle on it takes it over.
K7Q::Generic::SequenceIntf* makeView(Instance& object, const Property& property, unsigned slot,
                                     bool immutable);

}  // namespace Tarvelon::metamodel::native
