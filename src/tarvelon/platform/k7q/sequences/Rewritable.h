#pragma once

#include <span>

#include "tarvelon/boundary/k7q/Sequence.h"

namespace K7Q {

/// A sequence whose whole contents can be changed in one go: sorted, reversed, in parts given anew.
///
/// A sequence of the platform is one; ask with dynamic_cast.
class TARVELON_API RewritableIntf {
 public:
  virtual ~RewritableIntf();
  /// Whether an element stands there once.
  virtual bool isUnique() const noexcept = 0;
  /// Lets the sequence hold these elements in this order, as one change. An element that stays is neither
  /// taken out nor added. In a unique sequence one that is given again stands where it was given first.
  /// Raises what adding an element raises; nothing has changed then.
  virtual void rewrite(const Deviant& aDeviant, std::span<const Generic::Ref> elements) = 0;
};

}  // namespace K7Q
