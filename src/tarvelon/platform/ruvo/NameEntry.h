#pragma once

#include <atomic>

#include "tarvelon/boundary/ruvo/Interned.h"

namespace ruvo {

class Class;

/// An entry of the name table. It also points to the class with that full name, so that finding a class by
/// its interned name needs no look-up.
struct NameEntry : internal::InternedEntry {
  std::atomic<Class*> bearer;
};

/// Casts the entry of a name. REQUIRES: the name is not empty. Safe because the table creates all entries as
/// NameEntry.
inline NameEntry& entryOf(const InternedName& name) noexcept {
  return *const_cast<NameEntry*>(static_cast<const NameEntry*>(name.entry()));
}

/// The class with that full name, null if no such class is registered (yet).
inline Class* bearerOf(const InternedName& name) noexcept {
  return name.empty() ? nullptr : entryOf(name).bearer.load(std::memory_order_acquire);
}

}  // namespace ruvo
