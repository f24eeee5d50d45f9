#pragma once

/// Automatic audits. A library that is built with TARVELON_AUDIT checks a model after each change.
///
/// The objects of the last steps are checked each time. A small model is also checked completely each time.
/// In a large model each change contributes a fixed amount of work, and the model is checked completely when
/// the sum covers the cost of this check. The environment variable TARVELON_AUDIT is read once: `off`
/// disables all checks, `all` checks the whole model after each change.
///
/// A violation ends the process with a sentence that names the invariant, the object and the last step.
/// Without TARVELON_AUDIT none of this is compiled.
namespace Tarvelon::metamodel::native {

class NativeModel;
struct Step;

#ifdef TARVELON_AUDIT
inline constexpr bool kAudits = true;
#else
inline constexpr bool kAudits = false;
#endif

/// Checks the objects of the last steps and, when it is due, the whole model.
void runAudit(NativeModel& model) noexcept;
[[noreturn]] void endWithoutRoom(const Step& step) noexcept;
/// The number of nested changes in progress on this thread. An audit must not see a change that is not
/// complete.
int& changesUnderWay() noexcept;

/// Called when a change has ended. Does nothing while the change is part of another one.
inline void auditAfter([[maybe_unused]] NativeModel& model) noexcept {
  if constexpr (kAudits) {
    if (changesUnderWay() == 0) runAudit(model);
  }
}

/// Called before a step is recorded.
inline void auditRoom([[maybe_unused]] bool isThere, [[maybe_unused]] const Step& step) noexcept {
  if constexpr (kAudits) {
    if (!isThere) endWithoutRoom(step);
  }
}

inline void beginAuditedChange() noexcept {
  if constexpr (kAudits) ++changesUnderWay();
}
inline void endAuditedChange() noexcept {
  if constexpr (kAudits) --changesUnderWay();
}

}  // namespace Tarvelon::metamodel::native
