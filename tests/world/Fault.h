#pragma once

#include <stdexcept>

namespace world {

/// Thrown when the engine and the naive model differ, or when a call ends in an unexpected way.
class Fault : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

}  // namespace world
