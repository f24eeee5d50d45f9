#pragma once

#include <stdexcept>

namespace world {

/// The engine and the naive model disagree, or a call ended as it must not.
class Fault : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

}  // namespace world
