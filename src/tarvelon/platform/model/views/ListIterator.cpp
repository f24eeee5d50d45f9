#include "tarvelon/platform/model/views/ListIterator.h"

namespace Tarvelon::metamodel::native {

ListIterator::~ListIterator() { mView->release(); }

bool ListIterator::equal(const IteratorIntf* other) const {
  const auto* own = dynamic_cast<const ListIterator*>(other);
  if (!own || own->mIndex != mIndex || !own->mView->showsSameAs(*mView)) return false;
  return own == this || (mView->isThere() && !isStale() && !own->isStale());
}

}  // namespace Tarvelon::metamodel::native
