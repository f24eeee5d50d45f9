#pragma once

#include <cstdarg>
#include <cstddef>

#include "tarvelon/boundary/Export.h"

/// The host's memory and formatted output.
///
/// Class infos and records come from utMalloc() or utCalloc() and go back through utFree(), on whichever side
/// of the boundary they are freed. Threads: any.

/// Storage of `size` bytes, or null when memory is exhausted.
TARVELON_API void* utMalloc(std::size_t size) noexcept;

/// Zeroed storage for `count` things of `size` bytes, or null when memory is exhausted.
TARVELON_API void* utCalloc(std::size_t count, std::size_t size) noexcept;

/// Gives back what utMalloc() or utCalloc() gave; null is allowed.
TARVELON_API void utFree(void* storage) noexcept;

/// Receives what utPrintf() prints: NUL-terminated UTF-8 text and its length in bytes.
using utPrintSink = void (*)(const char* text, std::size_t length);

/// Redirects utPrintf(), for all threads; null goes back to the process's standard output. Returns the sink
/// that was in force.
TARVELON_API utPrintSink utSetPrintSink(utPrintSink sink) noexcept;

/// Formatted output to the host's console. Returns the number of bytes printed, negative on failure.
TARVELON_API int utPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Formats into `buffer` of `size` bytes, always terminated; a negative number when it failed.
TARVELON_API int utVSNprintf(char* buffer, std::size_t size, const char* format, std::va_list arguments)
    __attribute__((format(printf, 3, 0)));

/// Test hook: the n-th allocation from now (1 is the next one) of utMalloc() or utCalloc() on the calling
/// thread fails; 0 disarms.
TARVELON_API void utFailAllocation(unsigned long countdown) noexcept;
