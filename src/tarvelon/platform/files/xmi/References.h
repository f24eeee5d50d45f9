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

/// The objects of a file by their ids. An id may be known without an object: of one that was left out.
class IdTable {
 public:
  /// An id as a number: its own, or that of a text that is none.
  using Key = std::uint64_t;
  Key keyOf(std::string_view text);
  std::string textOf(Key key) const;

  using Entry = KeyTable<native::Instance*>::Entry;
  /// Null for an id that has not come yet.
  const Entry* find(Key key) const noexcept { return mEntries.find(key); }
  /// False if it is there already.
  bool insert(Key key, native::Instance* object) { return mEntries.insert(key, object); }

 private:
  static constexpr Key kForeign = Key{1} << 63;

  KeyTable<native::Instance*> mEntries;
  std::unordered_map<std::string, Key, native::KeyedTextHash> mForeign;
  std::vector<const std::string*> mForeignTexts;
};

/// A reference to an object that has not been read yet.
struct PendingReference {
  native::Instance* object;
  const Feature* feature;
  IdTable::Key target;
  /// Line 0: where the parser stands.
  Place place;
  /// Whether it stands in the text of an attribute, whose order is that of the list.
  bool isListed;
};

/// References in the order in which they are to be made. Those of one list share all but the target.
class PendingReferences {
 public:
  bool empty() const noexcept { return mLists.empty(); }
  /// REQUIRES: there are targets.
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
