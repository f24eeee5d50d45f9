#include "tarvelon/collections/GenericReferenceCountingSequenceProxy.h"

namespace K7Q {

using Proxy = GenericReferenceCountingSequenceProxy;
using Generic::IteratorIntf;
using Generic::Ref;

// A Ref is passed on as a copy and not moved: the implementation gets a reference of its own, and the
// caller's Ref keeps the value alive until the call returns.

Proxy::~GenericReferenceCountingSequenceProxy() = default;

Ref Proxy::generic_at(const Deviant& aDeviant, int index) const {
  return mImplementation->generic_at(aDeviant, index);
}
Ref Proxy::generic_front(const Deviant& aDeviant) const { return mImplementation->generic_front(aDeviant); }
Ref Proxy::generic_back(const Deviant& aDeviant) const { return mImplementation->generic_back(aDeviant); }
Proxy::IteratorPtr Proxy::generic_begin(const Deviant& aDeviant) const {
  return mImplementation->generic_begin(aDeviant);
}
Proxy::IteratorPtr Proxy::generic_end(const Deviant& aDeviant) const {
  return mImplementation->generic_end(aDeviant);
}
void Proxy::generic_clear(const Deviant& aDeviant) { mImplementation->generic_clear(aDeviant); }
int Proxy::generic_size(const Deviant& aDeviant) const { return mImplementation->generic_size(aDeviant); }
bool Proxy::generic_empty(const Deviant& aDeviant) const { return mImplementation->generic_empty(aDeviant); }
void Proxy::generic_insert(const Deviant& aDeviant, int index, Ref ref) {
  mImplementation->generic_insert(aDeviant, index, ref);
}
Proxy::IteratorPtr Proxy::generic_insert(const Deviant& aDeviant, const IteratorIntf* iterator, Ref ref) {
  return mImplementation->generic_insert(aDeviant, iterator, ref);
}
Proxy::IteratorPtr Proxy::generic_erase(const Deviant& aDeviant, const IteratorIntf* iterator) {
  return mImplementation->generic_erase(aDeviant, iterator);
}
Proxy::IteratorPtr Proxy::generic_erase(const Deviant& aDeviant, const IteratorIntf* first,
                                        const IteratorIntf* last) {
  return mImplementation->generic_erase(aDeviant, first, last);
}
void Proxy::generic_erase(const Deviant& aDeviant, int index) {
  mImplementation->generic_erase(aDeviant, index);
}
void Proxy::generic_pop_back(const Deviant& aDeviant) { mImplementation->generic_pop_back(aDeviant); }
void Proxy::generic_pop_front(const Deviant& aDeviant) { mImplementation->generic_pop_front(aDeviant); }
void Proxy::generic_push_back(const Deviant& aDeviant, Ref ref) {
  mImplementation->generic_push_back(aDeviant, ref);
}
void Proxy::generic_push_front(const Deviant& aDeviant, Ref ref) {
  mImplementation->generic_push_front(aDeviant, ref);
}
void Proxy::generic_replace(const Deviant& aDeviant, int index, Ref ref) {
  mImplementation->generic_replace(aDeviant, index, ref);
}
bool Proxy::generic_contains(const Deviant& aDeviant, Ref ref) const {
  return mImplementation->generic_contains(aDeviant, ref);
}
const char* Proxy::generic_getRuvoName(bool isSequenceImmutable, bool isElementImmutable,
                                       const char* name) const {
  return mImplementation->generic_getRuvoName(isSequenceImmutable, isElementImmutable, name);
}
int Proxy::generic_removeAll(const Deviant& aDeviant, Ref ref) {
  return mImplementation->generic_removeAll(aDeviant, ref);
}

}  // namespace K7Q
