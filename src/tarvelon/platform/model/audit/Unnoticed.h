#pragma once

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <new>
#include <unordered_map>
#include <vector>

namespace Tarvelon::metamodel::native {

/// An allocator that uses malloc() directly. So the memory of an audit is not counted as memory of the
/// program, and an allocation failure that a test has requested does not happen in an audit.
template <class T>
struct Unnoticed {
  using value_type = T;
  Unnoticed() noexcept = default;
  template <class U>
  Unnoticed(const Unnoticed<U>& /*other*/) noexcept {
  }  // NOLINT(google-explicit-constructor): as std::allocator
  T* allocate(std::size_t count) {
    void* storage = std::malloc(count * sizeof(T));  // NOLINT(bugprone-sizeof-expression)
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
