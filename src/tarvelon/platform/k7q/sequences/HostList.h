#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/platform/k7q/sequences/Rewritable.h"

namespace K7Q {

class HostListIterator;

/// The operations on the elements of a list: check, hash, compare.
struct ElementKind {
  /// Raises K7Q::WrongType if the value is not an instance of the element class. Raises K7Q::WrongValue if
  /// the value is null, is no longer valid, or belongs to another model than `model`. A null `model` allows
  /// objects of any model.
  void (*require)(const Generic::Ref& ref, const ruvo::InternedName& elementClass,
                  const ImmutableModel& model);
  std::size_t (*hash)(const void* value) noexcept;
  bool (*isSame)(const void* left, const void* right) noexcept;
  /// Whether the element is still valid; null for elements that can never become invalid.
  bool (*isAlive)(const Generic::Ref& ref);
};

/// Objects of the element class or of a subclass. Two elements are the same if they are the same native
/// object.
TARVELON_API extern const ElementKind kObjectElements;
/// Texts. Two elements are the same if they have the same characters.
extern const ElementKind kTextElements;
/// Objects of any class that live until the process ends. For read-only lists of descriptions.
extern const ElementKind kAnyElements;

/// A sequence that a host creates: a vector of objects or texts.
///
/// Unique:   a unique list holds each element at most once, like the references of a property. Appending an
///           element that is in the list changes nothing. Inserting it at an index moves it before the
///           element at that index. Replacing another element with it swaps the two.
/// Model:    a list created for a model accepts only valid objects of that model, and keeps the model alive.
///           After the model is closed, every operation of the list raises K7Q::Exception with the text
///           kNullReference.
/// Elements: destroying an object removes it from the list, as it removes it from the sequences of its model.
/// Failure:  all checks come before the first change. A failed allocation leaves the list unchanged.
/// Threads:  one at a time, together with the model.
class TARVELON_API HostList final : public SequenceProxy, public RewritableIntf {
 public:
  /// If `model` is a null handle, the list accepts objects of any model.
  HostList(const ElementKind& kind, const ruvo::InternedName& elementClass, bool isUnique,
           const ImmutableModel& model = {});
  ~HostList() override;

  Generic::Ref generic_at(const Deviant& aDeviant, int index) const override;
  Generic::Ref generic_front(const Deviant& aDeviant) const override;
  Generic::Ref generic_back(const Deviant& aDeviant) const override;
  std::unique_ptr<Generic::IteratorIntf> generic_begin(const Deviant& aDeviant) const override;
  std::unique_ptr<Generic::IteratorIntf> generic_end(const Deviant& aDeviant) const override;
  void generic_clear(const Deviant& aDeviant) override;
  int generic_size(const Deviant& aDeviant) const override;
  bool generic_empty(const Deviant& aDeviant) const override;
  void generic_insert(const Deviant& aDeviant, int index, Generic::Ref ref) override;
  std::unique_ptr<Generic::IteratorIntf> generic_insert(const Deviant& aDeviant,
                                                        const Generic::IteratorIntf* iterator,
                                                        Generic::Ref ref) override;
  std::unique_ptr<Generic::IteratorIntf> generic_erase(const Deviant& aDeviant,
                                                       const Generic::IteratorIntf* iterator) override;
  std::unique_ptr<Generic::IteratorIntf> generic_erase(const Deviant& aDeviant,
                                                       const Generic::IteratorIntf* first,
                                                       const Generic::IteratorIntf* last) override;
  void generic_erase(const Deviant& aDeviant, int index) override;
  void generic_pop_back(const Deviant& aDeviant) override;
  void generic_pop_front(const Deviant& aDeviant) override;
  void generic_push_back(const Deviant& aDeviant, Generic::Ref ref) override;
  void generic_push_front(const Deviant& aDeviant, Generic::Ref ref) override;
  void generic_replace(const Deviant& aDeviant, int index, Generic::Ref ref) override;
  bool generic_contains(const Deviant& aDeviant, Generic::Ref ref) const override;
  const char* generic_getRuvoName(bool isSequenceImmutable, bool isElementImmutable,
                                  const char* name) const override;
  int generic_removeAll(const Deviant& aDeviant, Generic::Ref ref) override;
  bool isUnique() const noexcept override { return mIndex != nullptr; }
  void rewrite(const Deviant& aDeviant, std::span<const Generic::Ref> elements) override;

  /// A counter that changes whenever elements are added, removed, moved or replaced. Raises K7Q::Exception
  /// with the text kNullReference after the model is closed.
  std::uint64_t changes() const {
    elements();
    return mChanges;
  }

 private:
  struct Hash {
    const ElementKind* kind;
    std::size_t operator()(const void* value) const noexcept { return kind->hash(value); }
  };
  struct Same {
    const ElementKind* kind;
    bool operator()(const void* left, const void* right) const noexcept { return kind->isSame(left, right); }
  };
  using Elements = std::vector<Generic::Ref>;
  using Index = std::unordered_set<const void*, Hash, Same>;

  /// Removes destroyed elements and returns the others. Raises K7Q::Exception with the text kNullReference
  /// after the model is closed.
  Elements& elements() const;
  /// The sequence as error texts name it.
  std::string shown() const;
  /// Checks and returns the index, which must be in [0, end).
  std::size_t checkedIndex(int index, std::size_t end, int line = __builtin_LINE()) const;
  void requireNotEmpty(int line = __builtin_LINE()) const;
  void requireElement(const Generic::Ref& ref) const { mKind.require(ref, mElementClass, mModel); }
  void dropDead() const;
  bool holds(const Generic::Ref& ref) const;
  std::size_t find(const Generic::Ref& ref) const;
  std::size_t positionOf(const Generic::IteratorIntf* iterator) const;
  std::unique_ptr<HostListIterator> iteratorAt(std::size_t position) const;
  /// Inserts an element at the front or at the back. A unique list that contains the element is unchanged.
  void addAt(std::size_t position, Generic::Ref ref);
  /// The final position of an element that is inserted at `position`.
  std::size_t placeOf(std::size_t position, const Generic::Ref& ref) const;
  void insertAt(std::size_t position, Generic::Ref ref);
  void moveTo(std::size_t from, std::size_t to) noexcept;
  void eraseRange(std::size_t first, std::size_t last);

  const ElementKind& mKind;
  ruvo::InternedName mElementClass;
  ImmutableModel mModel;
  mutable std::uint64_t mDestructionsSeen = 0;
  mutable std::uint64_t mChanges = 0;
  mutable Elements mElements;
  /// The values of a unique list, to find duplicates; null for other lists.
  mutable std::unique_ptr<Index> mIndex;
};

}  // namespace K7Q
