#pragma once

#include <atomic>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interface.h"

namespace ruvo::factory::basic {

/// A place inside a native id in which the registry keeps the id's host object, so that it is found without
/// hashing. An id whose bit 0 is set points at such a slot, bits 0 to 2 masked off; any other pointer is
/// kept in a hash table. Bit 1 says that the id stands for an immutable view, bit 2 that the native object is
/// one that all threads share and that never goes: its host object is and does the same.
struct BindingSlot {
  std::atomic<RVOInterface*> hostObject = nullptr;

  static constexpr std::uintptr_t kSlotted = 1;
  static constexpr std::uintptr_t kImmutable = 2;
  static constexpr std::uintptr_t kShared = 4;
  static bool isSlotted(const void* id) noexcept {
    return (reinterpret_cast<std::uintptr_t>(id) & kSlotted) != 0;
  }
  static bool isImmutable(const void* id) noexcept {
    return (reinterpret_cast<std::uintptr_t>(id) & (kSlotted | kImmutable)) == (kSlotted | kImmutable);
  }
  static bool isShared(const void* id) noexcept {
    return (reinterpret_cast<std::uintptr_t>(id) & (kSlotted | kShared)) == (kSlotted | kShared);
  }
  static BindingSlot* of(const void* id) noexcept {
    constexpr std::uintptr_t kMarks = kSlotted | kImmutable | kShared;
    return reinterpret_cast<BindingSlot*>(reinterpret_cast<std::uintptr_t>(id) & ~kMarks);
  }
};

/// Which host object stands for which native id. One native id has at most one host object.
///
/// Ownership: the registry holds no reference; a host object that goes takes its binding along: the class's
///            destroyInstance() calls remove().
/// Threads:   an id and its host object belong to the thread that uses the native object, unless that is
///            shared.
class TARVELON_API BindingRegistry {
 public:
  /// Finds or makes the host object of `pointer` as an instance of `className`; `wasNew` tells which. An
  /// object that is known under a superclass of `className` is narrowed to it, and never widened. A null
  /// pointer gives null. The result is kept alive by its first holder: box it at once. Throws K7Q::Exception
  /// for an unknown class, bedrock::core::except::bad_alloc.
  static RVOInterface* announce(void* pointer, const InternedName& className, bool& wasNew);
  static RVOInterface* announce(void* pointer, const InternedName& className);
  static RVOInterface* announce(const void* pointer, const InternedName& className);

  /// Binds `pointer` to the object that element 0 of `array` holds, which the host has created. `flag` is
  /// true.
  static void announceForConstructor(void* pointer, const InternedName& className, hx::hxArray* array,
                                     bool flag);

  /// Forgets an id; one that is not bound is no error.
  static void remove(const void* pointer) noexcept;

  /// The host object of an id, or null.
  static RVOInterface* find(const void* pointer) noexcept;

  /// How many ids are bound in all threads, without those of shared objects. Exact while no thread binds
  /// one.
  static std::size_t size() noexcept;
};

}  // namespace ruvo::factory::basic
