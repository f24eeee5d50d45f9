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

/// What the elements of a list are, and how they are told apart.
struct ElementKind {
  /// Raises K7Q::WrongType for a value that is no element of the class, K7Q::WrongValue for an empty one, one
  /// that is no longer valid and one of another model than the given one, if that is not empty.
  void (*require)(const Generic::Ref& ref, const ruvo::InternedName& elementClass,
                  const ImmutableModel& model);
  std::size_t (*hash)(const void* value) noexcept;
  bool (*isSame)(const void* left, const void* right) noexcept;
  /// Whether the element still stands in its model; null where none ever leaves.
  bool (*isAlive)(const Generic::Ref& ref);
};

/// Objects of the element class or a subclass; the same native object is the same element.
TARVELON_API extern const ElementKind kObjectElements;
/// Texts, compared by their characters.
extern const ElementKind kTextElements;
/// Any objects that stay until the process ends: for lists of descriptions, which a host only reads.
extern const ElementKind kAnyElements;

/// A sequence that a host makes: objects or texts, in a vector.
///
/// Unique:   holds an element once, as a property's references do: appending one that is there changes
///           nothing, inserting it at an index moves it directly before the element that stood there, and
///           replacing another by it exchanges the two.
/// Model:    objects of a list that was made for a model are valid objects of that model, and the list ends
///           with it: then every operation raises kNullReference. It keeps the model alive.
/// Elements: an object that is destroyed leaves the list, as it leaves the sequences of its model.
/// Failure:  indices and elements are tested before anything changes, and a failed allocation leaves the list
///           as it was.
/// Threads:  one at a time, with the model.
class TARVELON_API HostList final : public SequenceProxy, public RewritableIntf {
 public:
  /// With an empty model the elements may be of any.
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

  /// Differs from before when elements have come, gone or been replaced. Raises like every other question.
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

  /// The living elements. Raises kNullReference when the model is closed.
  Elements& elements() const;
  /// The sequence as an error names it.
  std::string shown() const;
  /// The tested index; `end` is the first that is too much.
  std::size_t checkedIndex(int index, std::size_t end, int line = __builtin_LINE()) const;
  void requireNotEmpty(int line = __builtin_LINE()) const;
  void requireElement(const Generic::Ref& ref) const { mKind.require(ref, mElementClass, mModel); }
  void dropDead() const;
  bool holds(const Generic::Ref& ref) const;
  std::size_t find(const Generic::Ref& ref) const;
  std::size_t positionOf(const Generic::IteratorIntf* iterator) const;
  std::unique_ptr<HostListIterator> iteratorAt(std::size_t position) const;
  /// Behind or before all others. A unique list that has it stays as it is.
  void addAt(std::size_t position, Generic::Ref ref);
  /// Where an element then stands that is put at `position`.
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
  /// The values of a unique list.
  mutable std::unique_ptr<Index> mIndex;
};

}  // namespace K7Q
