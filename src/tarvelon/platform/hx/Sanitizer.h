#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define TARVELON_HAS_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARVELON_HAS_ASAN 1
#endif
#endif

namespace hx {

/// Whether this is a build with AddressSanitizer. Such a build allocates each object separately and never
/// reuses its memory, so that the sanitizer sees leaks and uses after free.
#ifdef TARVELON_HAS_ASAN
inline constexpr bool kHasAsan = true;
#else
inline constexpr bool kHasAsan = false;
#endif

}  // namespace hx
