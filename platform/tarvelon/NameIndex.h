#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "boundary/ut/Memory.h"

namespace Tarvelon::metamodel::native {

class Instance;
class NativeModel;

/// Finds objects by name below the object that names them: the nearest holder that has a name.
///
/// An entry says under which name an object once stood, and is checked against the object when it is met: so
/// nothing need be taken out when an object is renamed, moved or destroyed, and one that comes back to where
/// it stood finds its entry there. Entries that say nothing any more go with the index, of which a new one is
/// built when it is full.
/// Cost:    some 18 bytes a name. Constant time to enter and to find one, however many objects there are.
/// Failure: the constructor and find() allocate.
class NameIndex {
 public:
  /// The index of all objects of the model.
  explicit NameIndex(const NativeModel& model);
  NameIndex(const NameIndex&) = delete;
  NameIndex& operator=(const NameIndex&) = delete;

  /// The object has another name. One that had none, or has none any more, names others than before.
  void noteName(const Instance& object, bool hadName) noexcept;
  /// The object has another owner: it stands elsewhere, or for one without a name the nearest it holds do.
  void noteOwner(const Instance& object) noexcept;
  /// False when there was no room for a name, or too much to note: then an index is to be built anew.
  bool isComplete() const noexcept { return mIsComplete; }

  /// One object, and whether there is no other.
  struct Only {
    Instance* object;
    bool isOnly;
  };
  /// An object of that name below `parent`, as find() means it; null if there is none. Allocates nothing.
  Only findOnly(const Instance* parent, std::u16string_view name) const noexcept;
  /// The objects of that name below `parent`, null for those that nothing named holds, in owner order.
  std::vector<Instance*> find(const Instance* parent, std::u16string_view name) const;

 private:
  struct Entry {
    std::uint32_t hash;
    std::uint32_t number;
    std::uint32_t next;  ///< of those that share a head
  };
  struct Free {
    void operator()(void* storage) const noexcept { utFree(storage); }
  };
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  template <class Visit>
  void forEach(const Instance* parent, std::u16string_view name, Visit visit) const;
  /// REQUIRES: the object is named, and `holder` is its naming holder.
  void enter(const Instance& object, const Instance* holder) noexcept;
  bool enterBelow(const Instance& object, unsigned depth) noexcept;

  const NativeModel& mModel;
  /// Nearly as many heads as entries; the newest entry comes first.
  std::unique_ptr<std::uint32_t[], Free> mHeads;
  std::unique_ptr<Entry[], Free> mEntries;
  std::uint32_t mHeadCount = 0;
  std::uint32_t mCapacity = 0;
  std::uint32_t mUsed = 0;
  bool mIsComplete = true;
};

/// Whether one stands before the other in the order of a walk from the root: by slots, then by places in
/// them.
bool standsBefore(const Instance& left, const Instance& right);

}  // namespace Tarvelon::metamodel::native
