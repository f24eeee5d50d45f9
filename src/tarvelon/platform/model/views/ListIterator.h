#pragma once

#include <limits>
#include <memory>

#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/platform/model/views/ListView.h"

namespace Tarvelon::metamodel::native {

/// A position in a sequence of the model: a view and an index, which may be outside the list. A change of the
/// list invalidates the iterator; then it can only be cloned and compared.
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
  /// Whether both are valid and refer to the same index of the same object's list. An invalidated iterator
  /// equals only itself.
  bool equal(const IteratorIntf* other) const override;

  const ListView& view() const noexcept { return *mView; }
  int index() const noexcept { return mIndex; }
  /// REQUIRES: the object that has the list is valid.
  bool isStale() const { return mChanges != mView->changes(); }
  /// Makes the iterator valid for the list as it is now.
  void refresh() { mChanges = mView->changes(); }
  /// Moves to another index and makes the iterator valid.
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
