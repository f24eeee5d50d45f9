#pragma once

#include <cstddef>

#include "tarvelon/platform/k7q/sequences/HostList.h"

namespace K7Q {

/// A position in a list, as an index. Any change of the list invalidates the iterator; then it can only be
/// cloned and compared. The iterator keeps the list alive.
class HostListIterator final : public IteratorProxy {
 public:
  HostListIterator(const HostList& list, std::size_t position)
      : mList(list), mPosition(position), mChanges(list.changes()) {
    list.addRef();
  }

  ~HostListIterator() override;

  const HostList* list() const noexcept { return &mList; }
  std::size_t position() const noexcept { return mPosition; }
  /// Raises kIteratorStale if the list has changed since the iterator was created.
  void requireFresh() const;
  /// Marks the iterator as valid after a change that it already accounts for.
  void refresh() { mChanges = mList.changes(); }

  Generic::Ref current(const Deviant& aDeviant) const override;
  void next(const Deviant& aDeviant) override;
  void previous(const Deviant& aDeviant) override;
  std::unique_ptr<Generic::IteratorIntf> clone() const override;
  bool equal(const Generic::IteratorIntf* other) const override;

 private:
  bool isAtEnd(const Deviant& aDeviant) const {
    return mPosition >= static_cast<std::size_t>(mList.generic_size(aDeviant));
  }

  const HostList& mList;
  std::size_t mPosition;
  std::uint64_t mChanges;
};

}  // namespace K7Q
