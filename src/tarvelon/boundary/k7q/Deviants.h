#pragma once

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/k7q/Reference.h"

namespace K7Q {

/// What an id stands for.
struct VariantInfo {
  ReferenceCountingIntf* object = nullptr;
  Deviant deviant;
};

/// The views under which one native object is read and written.
///
/// An id is a pointer-sized key of (object, deviant, immutable flag), the key of the host binding; the flag
/// lies in the id itself.
///
/// Lifetime: an id stays valid until its object is retracted; getVariantInfo() of a retired id is
///           {nullptr, 0} for as long as a host object is bound to it.
/// Threads:  the ids of an object belong to the thread that uses the object; those of a shared one to all.
/// Cost:     getId() and getVariantInfo() are constant time and do not allocate after the first call for an
///           object.
class TARVELON_API DeviantRegistry {
 public:
  /// The same id for the same three every time; null for a null object.
  static void* getId(const ReferenceCountingIntf* object, Deviant deviant, bool immutable);
  /// {nullptr, 0} for a pointer that is no id.
  static VariantInfo getVariantInfo(const void* id) noexcept;
  /// Whether an id was made immutable.
  static bool isImmutable(const void* id) noexcept;
  /// With false: the handle with the deviant word's own read-only mark cleared, if it has one. With true:
  /// with it set.
  static ImmutableObject setIsImmutable(const ImmutableObject& handle, bool immutable);
  /// Forgets an object's ids.
  static void retract(const ReferenceCountingIntf* object) noexcept;
};

class TARVELON_API DeviantAssertions {
 public:
  /// Sets the calling thread's switch and returns the old value.
  static bool enableAssertions(bool enable) noexcept;
  /// True when the view may be written; raises otherwise. Does nothing while assertions are off.
  static bool assertWritable(Deviant deviant, const ReferenceCountingIntf* object) {
    return deviant.isWritable() || !sAssertionsEnabled || internal_assertWritable(deviant, object);
  }
  static bool internal_assertWritable(Deviant deviant, const ReferenceCountingIntf* object);

  static TARVELON_THREAD_LOCAL bool sAssertionsEnabled;
};

}  // namespace K7Q
