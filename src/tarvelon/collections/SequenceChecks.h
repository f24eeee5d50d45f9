#pragma once

#include <cstddef>
#include <cstdint>

/// What the containers test before they change anything. A failed test raises K7Q::Exception.
namespace K7Q::SequenceChecks {

/// Where a failed test is reported.
struct Site {
  const char* file;
  int line;
};

[[noreturn]] void raiseNotPositive(Site site);
[[noreturn]] void raiseOutOfBounds(Site site);
[[noreturn]] void raiseEmpty(Site site);

/// Refuses an index at which no element stands: a negative one at the given line, one too large at the next.
inline void requireElement(Site site, int index, std::size_t size) {
  if (index < 0) raiseNotPositive(site);
  if (index >= static_cast<std::int32_t>(size)) raiseOutOfBounds({site.file, site.line + 1});
}

/// The same for an index to insert at, which may be the size.
inline void requirePlace(Site site, int index, std::size_t size) {
  if (index < 0) raiseNotPositive(site);
  if (index > static_cast<std::int32_t>(size)) raiseOutOfBounds({site.file, site.line + 1});
}

inline void requireNotEmpty(Site site, bool isEmpty) {
  if (isEmpty) raiseEmpty(site);
}

}  // namespace K7Q::SequenceChecks
