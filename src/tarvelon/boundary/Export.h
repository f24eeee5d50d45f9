#pragma once

#include "tarvelon/boundary/Compiler.h"  // IWYU pragma: export

/// Marks a class, function or variable that one library defines and other libraries use. The libraries are
/// compiled with hidden visibility, so a declaration without this macro cannot be used from outside.
#define TARVELON_API __attribute__((visibility("default")))

/// Declares a thread-local variable that is constant-initialised and uses the initial-exec TLS model. Reading
/// such a variable never allocates and never fails. With the default TLS model, the C library may allocate
/// when a thread first uses the variable, and it ends the process if that allocation fails.
///
/// The space for initial-exec variables is small, and all libraries of a process share it. Tarvelon uses a
/// few hundred bytes of it.
///
/// Example:
///   TARVELON_THREAD_LOCAL bool tHasFailed = false;
#define TARVELON_THREAD_LOCAL __attribute__((tls_model("initial-exec"))) constinit thread_local
