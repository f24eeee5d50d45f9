#include "tarvelon/collections/SequenceChecks.h"

#include "tarvelon/boundary/k7q/Assertion.h"

namespace K7Q::SequenceChecks {

namespace {

[[noreturn]] void raise(Site site, const char* message) {
  LocalAsserter(site.file, site.line) = Asserter::MakeAlways(message);
  __builtin_unreachable();
}

}  // namespace

void raiseNotPositive(Site site) { raise(site, "sequence index must be positive"); }
void raiseOutOfBounds(Site site) { raise(site, "sequence index out of bounds"); }
void raiseEmpty(Site site) { raise(site, "sequence is empty"); }

}  // namespace K7Q::SequenceChecks
