#pragma once

namespace bench {

/// The option with which the program runs one repetition. It writes the results to standard output, for the
/// parent process.
inline constexpr const char* kPublishingRound = "--publishing-round";

/// Registers and reads everything, from loading the module to reading the last record. Each repetition runs
/// in a process of its own. Prints time and memory.
void reportPublishing();

/// Runs one such repetition. Returns the exit status.
int publishingRound();

}  // namespace bench
