#pragma once

#include <cstdarg>
#include <cstddef>

#include "tarvelon/boundary/Export.h"

/// Memory allocation and formatted output through the host.
///
/// Class infos, method records and property records are allocated with utMalloc() or utCalloc(). Either side
/// of the boundary may free them with utFree(). Any thread may call these functions.

/// Allocates `size` bytes. Returns null only when memory is exhausted; 0 bytes give a pointer as well.
TARVELON_API void* utMalloc(std::size_t size) noexcept;

/// Allocates zeroed memory for `count` elements of `size` bytes. Returns null when memory is exhausted.
TARVELON_API void* utCalloc(std::size_t count, std::size_t size) noexcept;

/// Frees memory that utMalloc() or utCalloc() returned. Null is allowed.
TARVELON_API void utFree(void* storage) noexcept;

/// A function that receives the output of utPrintf(): NUL-terminated UTF-8 text and its length in bytes.
using utPrintSink = void (*)(const char* text, std::size_t length);

/// Redirects the output of utPrintf() in all threads to `sink`, which runs on the printing thread. Null
/// restores the standard output of the process. Returns the previous sink.
TARVELON_API utPrintSink utSetPrintSink(utPrintSink sink) noexcept;

/// Prints formatted output to the host's console. Returns the number of bytes, or a negative number when the
/// formatting failed.
TARVELON_API int utPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Formats into `buffer`, which has `size` bytes, and always writes the terminating NUL if `size` is not 0.
/// Returns the length of the whole text, which may be longer than the buffer, or a negative number when the
/// formatting failed.
TARVELON_API int utVSNprintf(char* buffer, std::size_t size, const char* format, std::va_list arguments)
    __attribute__((format(printf, 3, 0)));

/// For tests: lets the `countdown`-th next call of utMalloc() or utCalloc() on the calling thread fail; 1 is
/// the next call. 0 turns the hook off.
TARVELON_API void utFailAllocation(unsigned long countdown) noexcept;
