#pragma once

#include <cstddef>

#include "tarvelon/platform/k7q/sequences/HostList.h"

namespace K7Q {

/// A place in a list, counted from its start. A change of the list makes it stale: then it can be cloned and
/// compared, and nothing else. Keeps the list alive.
class HostListIterator final : public IteratorProxy {
 public:
  HostListIterator(const HostList& list, std::size_t position)
      : mList(list), mPosition(position), mChanges(list.changes()) {
    list.addRef();
  }

  ~HostListIterator() override;

  const HostList* list() const noexcept { return &mList; }
  std::size_t position() const noexcept { return mPosition; }
  /// Raises for an iterator that was taken before a change.
  void requireFresh() const;
  /// Says that the place was told after the change.
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
