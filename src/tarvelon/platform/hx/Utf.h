#pragma once

#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"

namespace hx {

/// Converts the text to UTF-8; a lone surrogate becomes U+FFFD.
TARVELON_API std::string toUtf8(std::u16string_view text);

}  // namespace hx
