#include "tarvelon/platform/tarvelon/KeyedHash.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace Tarvelon::metamodel::native {

namespace {

HashKey drawKey() noexcept {
  const int onStack = 0;
  // Where there is no source of chance, the place of the stack is one.
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

std::uint64_t hashOf(const char* bytes, std::size_t size) noexcept {
  std::uint64_t hash = kHashKey.first + size;
  while (size != 0) {
    std::uint64_t block = 0;
    const std::size_t count = std::min(size, sizeof(block));
    std::memcpy(&block, bytes, count);
    hash = mixed(hash ^ block);
    bytes += count;
    size -= count;
  }
  return mixed(hash + kHashKey.second);
}

}  // namespace

const HashKey kHashKey = drawKey();

std::uint64_t keyedHash(std::string_view text) noexcept { return hashOf(text.data(), text.size()); }

std::uint64_t keyedHash(std::u16string_view text) noexcept {
  return hashOf(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
}

}  // namespace Tarvelon::metamodel::native
