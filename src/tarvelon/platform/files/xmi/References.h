#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tarvelon/platform/files/shared/KeyTable.h"
#include "tarvelon/platform/files/shared/Schema.h"
#include "tarvelon/platform/files/xmi/Parser.h"
#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::files {

/// The objects of a file by their ids. An id without an object belongs to an element that was skipped.
class IdTable {
 public:
  /// A numeric id, or a number that stands for a text id.
  using Key = std::uint64_t;
  Key keyOf(std::string_view text);
  std::string textOf(Key key) const;

  using Entry = KeyTable<native::Instance*>::Entry;
  /// Null if the id has not been read yet.
  const Entry* find(Key key) const noexcept { return mEntries.find(key); }
  /// Returns false if the id is in the table already.
  bool insert(Key key, native::Instance* object) { return mEntries.insert(key, object); }

 private:
  static constexpr Key kForeign = Key{1} << 63;

  KeyTable<native::Instance*> mEntries;
  std::unordered_map<std::string, Key, native::KeyedTextHash> mForeign;
  std::vector<const std::string*> mForeignTexts;
};

/// A reference whose target has not been read yet.
struct PendingReference {
  native::Instance* object;
  const Feature* feature;
  IdTable::Key target;
  /// Line 0 means the current position of the parser.
  Place place;
  /// Whether the reference is part of an attribute's value. The order in the attribute is the order of the
  /// list.
  bool isListed;
};

/// A queue of references, in the order in which they will be set. The references of one list share everything
/// except the target.
class PendingReferences {
 public:
  bool empty() const noexcept { return mLists.empty(); }
  /// REQUIRES: `targets` is not empty.
  void add(const PendingReference& first, const std::vector<IdTable::Key>& targets);
  template <class Visit>
  void forEach(Visit visit) const {
    auto target = mTargets.begin();
    for (const List& list : mLists) {
      PendingReference reference = list.first;
      for (std::size_t count = list.count; count != 0; --count) {
        reference.target = *target++;
        visit(std::as_const(reference));
      }
    }
  }
  void clear() noexcept;

 private:
  struct List {
    PendingReference first;
    std::size_t count;
  };
  std::deque<List> mLists;
  std::deque<IdTable::Key> mTargets;
};

}  // namespace Tarvelon::files
