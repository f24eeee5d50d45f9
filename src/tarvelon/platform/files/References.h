#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tarvelon/platform/files/Parser.h"
#include "tarvelon/platform/files/Schema.h"
#include "tarvelon/platform/tarvelon/Instance.h"

namespace Tarvelon::files {

/// The objects of a file by their ids. An id may be known without an object: of one that was left out.
class IdTable {
 public:
  /// An id as a number: its own, or that of a text that is none.
  using Key = std::uint64_t;
  Key keyOf(std::string_view text);
  std::string textOf(Key key) const;

  struct Entry {
    Key key = kNone;
    native::Instance* object = nullptr;
  };
  /// Null for an id that has not come yet.
  const Entry* find(Key key) const noexcept;
  /// False if it is there already.
  bool insert(Key key, native::Instance* object);

 private:
  static constexpr Key kNone = ~Key{0};
  static constexpr Key kForeign = Key{1} << 63;
  std::size_t placeOf(Key key) const noexcept;
  void grow();

  std::vector<Entry> mEntries;
  std::size_t mCount = 0;
  std::unordered_map<std::string, Key> mForeign;
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

/// References in the order in which they are to be made.
using PendingReferences = std::deque<PendingReference>;

}  // namespace Tarvelon::files
