#pragma once

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/k7q/Reference.h"

namespace K7Q {

/// The native object and the deviant that an id stands for.
struct VariantInfo {
  ReferenceCountingIntf* object = nullptr;
  Deviant deviant;
};

/// Maps a view of a native object to an id, and an id back to the view.
///
/// A view is a combination of native object, deviant and immutable flag. Its id has the size of a pointer.
/// Host objects are bound to ids (ruvo::factory::basic::BindingRegistry). The immutable flag is a bit of the
/// id.
///
/// Lifetime: an id is valid until its object is retracted, which the destructor of ReferenceCountingIntf
///           does. After that, getVariantInfo() returns {nullptr, 0} as long as a host object is bound to the
///           id. Once that host object is gone, the id may be reused for another view.
/// Threads:  the thread that uses an object uses its ids. Ids of a shared object may be used by all threads.
/// Cost:     getId() allocates at most once for each view. An object rarely has more than two views, so both
///           directions take constant time.
///
/// Example:
///   void* id = DeviantRegistry::getId(object, Deviant{}, true);
///   DeviantRegistry::getVariantInfo(id).object == object;
///   DeviantRegistry::isImmutable(id) == true;
class TARVELON_API DeviantRegistry {
 public:
  /// Returns the id of a view, the same one at every call. Returns null for a null object. Throws
  /// bedrock::core::except::bad_alloc when memory for a new id is exhausted.
  static void* getId(const ReferenceCountingIntf* object, Deviant deviant, bool immutable);
  /// Returns the view of an id. Returns {nullptr, 0} for null and for any aligned pointer that is not an id.
  static VariantInfo getVariantInfo(const void* id) noexcept;
  /// Whether the id stands for an immutable view. False for a pointer that is not an id.
  static bool isImmutable(const void* id) noexcept;
  /// Returns the same handle with the deviant's kReadOnly bit set (true) or cleared (false). The kFrozen bit
  /// does not change.
  static ImmutableObject setIsImmutable(const ImmutableObject& handle, bool immutable);
  /// Removes the ids of an object. Null, and an object without ids, are allowed.
  static void retract(const ReferenceCountingIntf* object) noexcept;
};

/// The check that a view may be written. Each thread can turn the check off for itself.
class TARVELON_API DeviantAssertions {
 public:
  /// Turns the check on or off for the calling thread and returns the previous state.
  static bool enableAssertions(bool enable) noexcept;
  /// Returns true if the deviant allows writing or the check is off. Otherwise throws a K7Q::Exception.
  static bool assertWritable(Deviant deviant, const ReferenceCountingIntf* object) {
    return deviant.isWritable() || !sAssertionsEnabled || internal_assertWritable(deviant, object);
  }
  /// Makes the check even if the calling thread has turned it off: throws a K7Q::Exception if the deviant
  /// forbids writing.
  static bool internal_assertWritable(Deviant deviant, const ReferenceCountingIntf* object);

  /// The state of the calling thread; true at first.
  static TARVELON_THREAD_LOCAL bool sAssertionsEnabled;
};

}  // namespace K7Q
