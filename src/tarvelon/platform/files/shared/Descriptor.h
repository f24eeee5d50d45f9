#pragma once

#include <unistd.h>
#include <utility>

namespace Tarvelon::files {

/// Owns a file descriptor and closes it in the destructor. Negative means none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) noexcept : mNumber(number) {}
  Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(mNumber, other.mNumber);
    return *this;
  }
  ~Descriptor() {
    if (isOpen()) ::close(mNumber);
  }
  bool isOpen() const noexcept { return mNumber >= 0; }
  int number() const noexcept { return mNumber; }

 private:
  int mNumber;
};

}  // namespace Tarvelon::files
