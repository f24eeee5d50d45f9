#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define TARVELON_HAS_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARVELON_HAS_ASAN 1
#endif
#endif

namespace hx {

/// Whether AddressSanitizer watches: then every object is a block of its own that is never reused, so that a
/// use after the end and a leak are seen.
#ifdef TARVELON_HAS_ASAN
inline constexpr bool kHasAsan = true;
#else
inline constexpr bool kHasAsan = false;
#endif

}  // namespace hx
