#include "platform/tarvelon/ListIterator.h"

namespace Tarvelon::metamodel::native {

ListIterator::~ListIterator() { mView->release(); }

bool ListIterator::equal(const IteratorIntf* other) const {
  const auto* own = dynamic_cast<const ListIterator*>(other);
  return own && own->mIndex == mIndex && own->mView->showsSameAs(*mView);
}

}  // namespace Tarvelon::metamodel::native
