#include "tarvelon/platform/model/words/KeyedHash.h"

#include <random>

namespace Tarvelon::metamodel::native {

namespace {

HashKey drawKey() noexcept {
  const int onStack = 0;
  // Used if the system has no source of random numbers: the address of the stack is random too.
  HashKey key{reinterpret_cast<std::uintptr_t>(&onStack), 0x9E3779B97F4A7C15U};
  try {
    std::random_device chance;
    const auto draw = [&chance] { return std::uint64_t{chance()} << 32 | chance(); };
    key = {draw(), draw()};
  } catch (...) {
    key.second ^= mixed(key.first);
  }
  return key;
}

}  // namespace

const HashKey kHashKey = drawKey();

std::uint64_t keyedHash(std::string_view text) noexcept { return keyedHash(0, text.data(), text.size()); }
std::uint64_t keyedHash(std::u16string_view text) noexcept { return keyedHash(0, text); }

}  // namespace Tarvelon::metamodel::native
