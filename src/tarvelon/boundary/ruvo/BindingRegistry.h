#pragma once

#include <atomic>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interface.h"

namespace ruvo::factory::basic {

/// The memory in which BindingRegistry stores the host object of an id, so that no hash table is needed.
///
/// An id with bit 0 set is the address of a BindingSlot with marks in its bits 0 to 2. The registry keeps any
/// other pointer in a hash table. The marks are:
///   kSlotted   bit 0: the pointer is the address of a slot
///   kImmutable bit 1: the id stands for an immutable view
///   kShared    bit 2: all threads share the native object, and both it and its host object live until the
///              process ends
/// REQUIRES: a slot has an alignment of at least 8, and stays at its address as long as the id is in use.
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
  /// The slot of an id. REQUIRES: isSlotted(id).
  static BindingSlot* of(const void* id) noexcept {
    constexpr std::uintptr_t kMarks = kSlotted | kImmutable | kShared;
    return reinterpret_cast<BindingSlot*>(reinterpret_cast<std::uintptr_t>(id) & ~kMarks);
  }
};

/// Maps native ids to host objects. A native id has at most one host object, so a host that receives the same
/// native object twice gets the same host object.
///
/// Ownership: the registry holds no references. When the last reference on a host object is released, the
///            class's destroyInstance() removes the binding.
/// Threads:   the thread that uses a native object uses its ids and host objects. All threads may use those
///            of a shared native object.
///
/// Example:
///   void* id = K7Q::DeviantRegistry::getId(object, K7Q::Deviant{}, false);
///   bool wasNew = false;
///   ruvo::RVOInterface* hostObject = BindingRegistry::announce(id, className, wasNew);
///   if (wasNew) object->addRef();  // destroyInstance() releases this reference
///   return ruvo::boxInterface(hostObject, className);
class TARVELON_API BindingRegistry {
 public:
  /// Finds or creates the host object of `pointer`, as an instance of class `className`. Sets `wasNew` to
  /// whether the object was created. If the existing host object has a superclass of `className`, it becomes
  /// an instance of `className`; otherwise its class does not change. A null pointer gives null. A new host
  /// object has a reference count of 0: put it into an array or an RVOInterfacePtr at once. Throws a
  /// K7Q::Exception for an unknown class, and bedrock::core::except::bad_alloc.
  static RVOInterface* announce(void* pointer, const InternedName& className, bool& wasNew);
  static RVOInterface* announce(void* pointer, const InternedName& className);
  static RVOInterface* announce(const void* pointer, const InternedName& className);

  /// Binds `pointer` to the host object in element 0 of `array`, which the host has created for a constructor
  /// call. `flag` has no effect. Does nothing for a null pointer. Throws a K7Q::Exception if the array
  /// contains no object, or if the host object or the pointer is already bound.
  static void announceForConstructor(void* pointer, const InternedName& className, hx::hxArray* array,
                                     bool flag);

  /// Removes the binding of an id. Does nothing if the id is not bound.
  static void remove(const void* pointer) noexcept;

  /// The host object of an id, without a reference for the caller; null if the id is not bound.
  static RVOInterface* find(const void* pointer) noexcept;

  /// The number of bound ids in all threads, except for those of shared objects. Leak tests compare the
  /// number. The number is exact while no thread adds or removes a binding.
  static std::size_t size() noexcept;
};

}  // namespace ruvo::factory::basic
