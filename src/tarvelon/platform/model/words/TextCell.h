#pragma once

#include <string_view>
#include <utility>

#include "tarvelon/boundary/k7q/Primitives.h"

namespace Tarvelon::metamodel::native {

/// Owns one reference to a text for the length of a scope. Holds no reference for an empty text.
class TextCell {
 public:
  using Text = K7Q::NSInterface::StringIntf;

  explicit TextCell(std::u16string_view text) : mText(Text::make(text)) {}
  /// The text that a model stores when it is given `given`: usually a copy, since another holder may change
  /// the reference count of `given` on another thread. If the caller holds the only reference, the text
  /// itself is stored.
  static TextCell keptOf(Text* given) {
    if (!given) return TextCell(given);
    if (given->numRef() != 1) return TextCell(given->view());
    given->addRef();
    return TextCell(given);
  }
  TextCell(const TextCell&) = delete;
  TextCell& operator=(const TextCell&) = delete;
  ~TextCell() {
    if (mText) mText->release();
  }

  Text* get() const noexcept { return mText; }
  /// Transfers the reference to the caller.
  Text* release() noexcept { return std::exchange(mText, nullptr); }

 private:
  explicit TextCell(Text* counted) noexcept : mText(counted) {}

  Text* mText;
};

}  // namespace Tarvelon::metamodel::native
