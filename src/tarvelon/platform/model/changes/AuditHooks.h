#pragma once

/// A library that is built with TARVELON_AUDIT checks a model whenever a change of it has ended.
///
/// The objects of the last steps are checked each time. The whole model is checked each time while it is
/// small. In a large model each change pays a part of the price, and the model is checked when all is paid.
/// The environment variable TARVELON_AUDIT is read once: `off` checks nothing, `all` checks the whole model
/// each time.
///
/// A fault ends the process with a sentence: the invariant, the object, the last step.
/// Without TARVELON_AUDIT nothing of this is compiled.
namespace Tarvelon::metamodel::native {

class NativeModel;
struct Step;

#ifdef TARVELON_AUDIT
inline constexpr bool kAudits = true;
#else
inline constexpr bool kAudits = false;
#endif

/// Looks at the objects of the last steps, then perhaps at the whole model.
void runAudit(NativeModel& model) noexcept;
[[noreturn]] void endWithoutRoom(const Step& step) noexcept;
/// How many changes on this thread are under way, which an audit must not see half done.
int& changesUnderWay() noexcept;

/// A change has ended; nothing happens while it is part of another.
inline void auditAfter([[maybe_unused]] NativeModel& model) noexcept {
  if constexpr (kAudits) {
    if (changesUnderWay() == 0) runAudit(model);
  }
}

/// A step is about to be noted.
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
