#include "tarvelon/collections/MakeSequence.h"

#include <utility>

#include "tarvelon/boundary/k7q/Assertion.h"
#include "tarvelon/collections/GenericReferenceCountingSequenceProxy.h"

namespace K7Q::SequenceCreatorInternal {

namespace {

constexpr const char* kSite = "kernel/containers/sequence/SequenceCreator";

}  // namespace

void requireNotUnique(const SequenceOptions& options) {
  LocalAsserter(kSite, 85) =
      Asserter(!options.aIsUnique).Make("cannot use STD_VECTOR and aIsUnique together");
}

void raiseUnknownImplementation() {
  LocalAsserter(kSite, 102) = Asserter::MakeAlways("unknown sequence implementation requested");
  __builtin_unreachable();
}

std::unique_ptr<Generic::SequenceIntf> finish(std::unique_ptr<Generic::SequenceIntf> implementation,
                                              const SequenceOptions& options) {
  LocalAsserter(kSite, 107) = Asserter(implementation != nullptr).Make("sequence not created");
  if (!options.aUseReferenceCountingProxy) return implementation;
  return std::make_unique<GenericReferenceCountingSequenceProxy>(std::move(implementation));
}

}  // namespace K7Q::SequenceCreatorInternal
