#pragma once

#include <span>

#include "tarvelon/boundary/k7q/Sequence.h"

namespace K7Q {

/// A sequence whose whole contents can be replaced at once, for example by a sort.
///
/// All sequences of the platform implement it; use dynamic_cast to get it.
class TARVELON_API RewritableIntf {
 public:
  virtual ~RewritableIntf();
  /// Whether each element occurs at most once.
  virtual bool isUnique() const noexcept = 0;
  /// Replaces the contents by these elements in this order, as one change. An element that was there before
  /// is neither removed nor added, it only moves. A unique sequence uses the first occurrence of an element
  /// and ignores the others. Raises the same exceptions as adding an element; then nothing has changed.
  virtual void rewrite(const Deviant& aDeviant, std::span<const Generic::Ref> elements) = 0;
};

}  // namespace K7Q
