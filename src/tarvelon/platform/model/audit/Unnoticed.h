#pragma once

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <new>
#include <unordered_map>
#include <vector>

namespace Tarvelon::metamodel::native {

/// Memory of malloc() itself: an audit is not counted among the allocations of a program, and one that is to
/// fail by request does not fail there.
template <class T>
struct Unnoticed {
  using value_type = T;
  Unnoticed() noexcept = default;
  template <class U>
  Unnoticed(const Unnoticed<U>& /*other*/) noexcept {
  }  // NOLINT(google-explicit-constructor): as std::allocator
  T* allocate(std::size_t count) {
    void* storage = std::malloc(count * sizeof(T));
    if (!storage) throw std::bad_alloc();
    return static_cast<T*>(storage);
  }
  void deallocate(T* storage, std::size_t /*count*/) noexcept { std::free(storage); }
  bool operator==(const Unnoticed& /*other*/) const noexcept { return true; }
};

template <class T>
using UnnoticedVector = std::vector<T, Unnoticed<T>>;
template <class Key, class Value, class Hash = std::hash<Key>>
using UnnoticedMap =
    std::unordered_map<Key, Value, Hash, std::equal_to<Key>, Unnoticed<std::pair<const Key, Value>>>;

}  // namespace Tarvelon::metamodel::native
