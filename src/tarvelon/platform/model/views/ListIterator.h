#pragma once

#include <limits>
#include <memory>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/platform/model/views/ListView.h"

namespace Tarvelon::metamodel::native {

/// A place in a sequence of the model: a view and an index, which may be past either end. A change of the
/// list makes it stale: then it can be cloned and compared, and nothing else.
class ListIterator final : public K7Q::IteratorProxy {
 public:
  ListIterator(const ListView& view, int index) : mView(&view), mIndex(index), mChanges(view.changes()) {
    mView->addRef();
  }
  ~ListIterator() override;

  K7Q::Generic::Ref current(const K7Q::Deviant& aDeviant) const override {
    mView->requireFresh(*this);
    return mView->generic_at(aDeviant, mIndex);
  }
  void next(const K7Q::Deviant& /*aDeviant*/) override {
    mView->requireFresh(*this);
    if (mIndex < std::numeric_limits<int>::max()) ++mIndex;
  }
  void previous(const K7Q::Deviant& /*aDeviant*/) override {
    mView->requireFresh(*this);
    if (mIndex > std::numeric_limits<int>::min()) --mIndex;
  }
  std::unique_ptr<IteratorIntf> clone() const override {
    auto copy = std::make_unique<ListIterator>(*mView, mIndex);
    copy->mChanges = mChanges;
    return copy;
  }
  /// Whether both stand at the same place of the same property's list; a stale one stands nowhere.
  bool equal(const IteratorIntf* other) const override;

  const ListView& view() const noexcept { return *mView; }
  int index() const noexcept { return mIndex; }
  /// REQUIRES: the object of the list is valid.
  bool isStale() const { return mChanges != mView->changes(); }
  /// Says that the place was told after the change.
  void refresh() { mChanges = mView->changes(); }
  /// The same for another place.
  void moveTo(std::uint32_t index) {
    mIndex = static_cast<int>(index);
    refresh();
  }

 private:
  const ListView* mView;
  int mIndex;
  std::uint32_t mChanges;
};

}  // namespace Tarvelon::metamodel::native
