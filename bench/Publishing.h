#pragma once

namespace bench {

/// The argument with which the program runs one repetition of the measurement and writes its figures to the
/// standard output, for the process that started it.
inline constexpr const char* kPublishingRound = "--publishing-round";

/// Publishes everything, from the loading of the module to the reading of the last record, in a process of
/// its own for each repetition, and prints what it takes in time and memory.
void reportPublishing();

/// One such repetition. Gives the exit status.
int publishingRound();

}  // namespace bench
