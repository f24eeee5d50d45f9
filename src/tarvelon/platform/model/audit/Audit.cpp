#include "tarvelon/platform/model/audit/Audit.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string_view>

#include "tarvelon/platform/model/audit/Auditor.h"
#include "tarvelon/platform/model/changes/AuditHooks.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Steps.h"

namespace Tarvelon::metamodel::native {

namespace {

enum class Pace { Off, Paid, All };

Pace paceOfEnvironment() {
  const char* given = std::getenv("TARVELON_AUDIT");
  const std::string_view text = given ? given : "";
  if (text == "off") return Pace::Off;
  return text == "all" ? Pace::All : Pace::Paid;
}

/// The work that each change contributes to the next audit of the whole model.
constexpr std::uint64_t kPaid = 128;

[[noreturn]] void end(const Violation& violation, std::span<const Step> steps) {
  const Step* last = steps.empty() ? nullptr : &steps.back();
  std::fprintf(stderr, "audit: %s; found after %s\n", violation.text.c_str(),
               (last ? shownStep(*last) : "a change that is not in the journal").c_str());
  std::abort();
}

}  // namespace

void endWithoutRoom(const Step& step) noexcept {
  try {
    violate("memory is reserved before a step is recorded", "the journal has none for this step");
  } catch (const Violation& violation) {
    end(violation, {&step, 1});
  }
}

int& changesUnderWay() noexcept {
  static TARVELON_THREAD_LOCAL int changes = 0;
  return changes;
}

void runAudit(NativeModel& model) noexcept {
  static const Pace pace = paceOfEnvironment();
  if (pace == Pace::Off) return;
  constexpr std::size_t kSteps = 32;
  const Journal* journal = model.journal();
  // While listeners are called, the steps of the change are in none of the journal's lists.
  if (journal && journal->isTelling()) return;
  const auto steps = journal ? journal->lastSteps(kSteps) : std::span<const Step>();
  Auditor auditor(model);
  try {
    auditor.checkSteps(steps);
    if (!model.addAuditWork(kPaid) && pace != Pace::All) return;
    auditor.checkAll();
    model.setAuditCost(auditor.cost());
  } catch (const Violation& violation) {
    end(violation, steps);
  } catch (const std::bad_alloc&) {  // NOLINT(bugprone-empty-catch): the next one has memory again
  }
}

}  // namespace Tarvelon::metamodel::native

namespace Tarvelon::model {

std::string audit(const K7Q::Model& model) {
  using namespace metamodel::native;  // NOLINT(google-build-using-namespace)
  Auditor auditor(NativeModel::require(model));
  try {
    auditor.checkAll();
  } catch (const Violation& violation) {
    return violation.text;
  }
  return {};
}

}  // namespace Tarvelon::model
