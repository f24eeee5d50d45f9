#pragma once

#include <cstddef>
#include <new>

namespace ruvo {

/// A static object that is never destroyed, because hosts and modules use it until the process ends.
template <class T>
class Immortal {
 public:
  Immortal() { ::new (mStorage) T; }
  Immortal(const Immortal&) = delete;
  Immortal& operator=(const Immortal&) = delete;
  T& operator*() noexcept { return *std::launder(reinterpret_cast<T*>(mStorage)); }

 private:
  alignas(T) std::byte mStorage[sizeof(T)];
};

}  // namespace ruvo
