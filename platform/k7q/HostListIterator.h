#pragma once

#include <cstddef>

#include "platform/k7q/HostList.h"

namespace K7Q {

/// A place in a list, counted from its start: a change before it moves another element there, and the end is
/// known at every step. Keeps the list alive.
class HostListIterator final : public IteratorProxy {
 public:
  HostListIterator(const HostList& list, std::size_t position) : mList(list), mPosition(position) {
    list.addRef();
  }

  const HostList* list() const noexcept { return &mList; }
  std::size_t position() const noexcept { return mPosition; }

  Generic::Ref current(const Deviant& aDeviant) const override;
  void next(const Deviant& aDeviant) override;
  void previous(const Deviant& aDeviant) override;
  std::unique_ptr<Generic::IteratorIntf> clone() const override;
  bool equal(const Generic::IteratorIntf* other) const override;

 private:
  ~HostListIterator() override;
  bool isAtEnd(const Deviant& aDeviant) const {
    return mPosition >= static_cast<std::size_t>(mList.generic_size(aDeviant));
  }

  const HostList& mList;
  std::size_t mPosition;
};

}  // namespace K7Q
