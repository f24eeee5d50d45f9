#pragma once

#include <limits>
#include <memory>

#include "boundary/k7q/Sequence.h"
#include "platform/tarvelon/ListView.h"

namespace Tarvelon::metamodel::native {

/// A place in a sequence of the model: a view and an index, which may be past either end.
class ListIterator final : public K7Q::IteratorProxy {
 public:
  ListIterator(const ListView& view, int index) noexcept : mView(&view), mIndex(index) { mView->addRef(); }
  ~ListIterator() override;

  K7Q::Generic::Ref current(const K7Q::Deviant& aDeviant) const override {
    return mView->generic_at(aDeviant, mIndex);
  }
  void next(const K7Q::Deviant& /*aDeviant*/) override {
    if (mIndex < std::numeric_limits<int>::max()) ++mIndex;
  }
  void previous(const K7Q::Deviant& /*aDeviant*/) override {
    if (mIndex > std::numeric_limits<int>::min()) --mIndex;
  }
  std::unique_ptr<IteratorIntf> clone() const override {
    return std::make_unique<ListIterator>(*mView, mIndex);
  }
  /// Whether both stand at the same place of the same property's list.
  bool equal(const IteratorIntf* other) const override;

  const ListView& view() const noexcept { return *mView; }
  int index() const noexcept { return mIndex; }

 private:
  const ListView* mView;
  int mIndex;
};

}  // namespace Tarvelon::metamodel::native
