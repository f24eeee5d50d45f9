#pragma once

#include "tarvelon/boundary/Compiler.h"  // IWYU pragma: export

/// Marks what one library declares and another one uses. Everything without it is hidden.
#define TARVELON_API __attribute__((visibility("default")))

/// A variable of which each thread has one: constant-initialised, and found at a fixed distance from the
/// thread's own storage. The usual way would let the C library allocate at a thread's first use, and end the
/// process where it cannot. The room for these is small and shared by all libraries of a process: a few
/// hundred bytes are ours.
#define TARVELON_THREAD_LOCAL __attribute__((tls_model("initial-exec"))) constinit thread_local
