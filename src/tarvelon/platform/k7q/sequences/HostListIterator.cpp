#include "tarvelon/platform/k7q/sequences/HostListIterator.h"

#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

HostListIterator::~HostListIterator() { mList.release(); }

void HostListIterator::requireFresh() const {
  LocalAsserter(__FILE__, __LINE__) = Asserter(mChanges == mList.changes()).Make(text::kIteratorStale);
}

Generic::Ref HostListIterator::current(const Deviant& aDeviant) const {
  requireFresh();
  LocalAsserter(__FILE__, __LINE__) = Asserter(!isAtEnd(aDeviant)).Make(text::kIteratorAtEnd);
  return mList.generic_at(aDeviant, static_cast<int>(mPosition));
}

void HostListIterator::next(const Deviant& aDeviant) {
  requireFresh();
  LocalAsserter(__FILE__, __LINE__) = Asserter(!isAtEnd(aDeviant)).Make(text::kIteratorAtEnd);
  ++mPosition;
}

void HostListIterator::previous(const Deviant& /*aDeviant*/) {
  requireFresh();
  LocalAsserter(__FILE__, __LINE__) = Asserter(mPosition > 0).Make(text::kIteratorAtBegin);
  --mPosition;
}

std::unique_ptr<Generic::IteratorIntf> HostListIterator::clone() const {
  auto* copy = new HostListIterator(mList, mPosition);
  copy->mChanges = mChanges;
  return std::unique_ptr<Generic::IteratorIntf>(copy);
}

bool HostListIterator::equal(const Generic::IteratorIntf* other) const {
  const auto* position = dynamic_cast<const HostListIterator*>(other);
  return position && &position->mList == &mList && position->mPosition == mPosition &&
         position->mChanges == mChanges;
}

}  // namespace K7Q
