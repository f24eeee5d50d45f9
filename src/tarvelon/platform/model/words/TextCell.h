#pragma once

#include <string_view>
#include <utility>

#include "tarvelon/boundary/k7q/Primitives.h"

namespace Tarvelon::metamodel::native {

/// A text with the one reference that goes with the scope; none for the empty text.
class TextCell {
 public:
  using Text = K7Q::NSInterface::StringIntf;

  explicit TextCell(std::u16string_view text) : mText(Text::make(text)) {}
  /// What a model keeps of a text that it is given: a copy of its own, since who else holds the text may
  /// count it on another thread. Where only the caller holds it, who lets go of it then, it is the text
  /// itself.
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
  /// Hands the reference over.
  Text* release() noexcept { return std::exchange(mText, nullptr); }

 private:
  explicit TextCell(Text* counted) noexcept : mText(counted) {}

  Text* mText;
};

}  // namespace Tarvelon::metamodel::native
