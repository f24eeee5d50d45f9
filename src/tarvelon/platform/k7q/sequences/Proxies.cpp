#include "tarvelon/boundary/k7q/Sequence.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

namespace {

constexpr const char* kProxySite = "kernel/containers/sequence/SequenceProxy";

// The count changes even in case of an error: one release() too many makes it negative, and the next addRef()
// reports that.
void countUp(std::int32_t& references, int line) {
  LocalAsserter(kProxySite, line) = Asserter(references >= 0);
  ++references;
}

/// Returns true when the last reference is released.
bool countDown(std::int32_t& references, int line) {
  --references;
  LocalAsserter(kProxySite, line) = Asserter(references >= 0);
  return references == 0;
}

}  // namespace

SequenceProxy::~SequenceProxy() = default;
void SequenceProxy::addRef() const { countUp(mReferences, 26); }
void SequenceProxy::release() const {
  if (countDown(mReferences, 35)) delete this;
}

IteratorProxy::~IteratorProxy() = default;
void IteratorProxy::addRef() const { countUp(mReferences, 61); }
void IteratorProxy::release() const {
  if (countDown(mReferences, 70)) delete this;
}

void SequenceHandle::throwNull() {
  LocalAsserter("kernel/containers/sequence/SequenceRef", 108) = Asserter::MakeAlways(text::kNullSequence);
  __builtin_unreachable();
}

}  // namespace K7Q
