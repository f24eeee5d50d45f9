#pragma once

#include <atomic>

#include "tarvelon/boundary/ruvo/Interned.h"

namespace ruvo {

class Class;

/// An entry as the table makes it: with the class that bears the name, so that a class is found without a
/// look-up.
struct NameEntry : internal::InternedEntry {
  std::atomic<Class*> bearer;
};

/// Every entry comes from the table, so every entry is one of these.
inline NameEntry& entryOf(const InternedName& name) noexcept {
  return *const_cast<NameEntry*>(static_cast<const NameEntry*>(name.entry()));
}

/// The class of that full name, null if none is known (yet).
inline Class* bearerOf(const InternedName& name) noexcept {
  return name.empty() ? nullptr : entryOf(name).bearer.load(std::memory_order_acquire);
}

}  // namespace ruvo
