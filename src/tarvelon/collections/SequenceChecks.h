#pragma once

#include <cstddef>
#include <cstdint>

/// The tests that sequences make before they change anything. A failed test throws K7Q::Exception.
namespace K7Q::SequenceChecks {

/// The source position in the error of a failed test.
struct Site {
  const char* file;
  int line;
};

[[noreturn]] void raiseNotPositive(Site site);
[[noreturn]] void raiseOutOfBounds(Site site);
[[noreturn]] void raiseEmpty(Site site);

/// Throws for an index without an element. The error names the given line for a negative index, and the next
/// line for an index that is too large.
inline void requireElement(Site site, int index, std::size_t size) {
  if (index < 0) raiseNotPositive(site);
  if (index >= static_cast<std::int32_t>(size)) raiseOutOfBounds({site.file, site.line + 1});
}

/// The same for the index of an insertion, which may be equal to the size.
inline void requirePlace(Site site, int index, std::size_t size) {
  if (index < 0) raiseNotPositive(site);
  if (index > static_cast<std::int32_t>(size)) raiseOutOfBounds({site.file, site.line + 1});
}

inline void requireNotEmpty(Site site, bool isEmpty) {
  if (isEmpty) raiseEmpty(site);
}

}  // namespace K7Q::SequenceChecks
