#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string_view>

#include "tarvelon/boundary/Export.h"

namespace ruvo {

namespace internal {

/// A tag type, the template argument of InternedName. It says how the empty name is stored: as a null
/// pointer, without an entry.
struct IdEmptyPolicy;

/// The kind of value that a type name stands for. All names except "void", "logical scalar", "int32 scalar",
/// "double scalar", "char" and "char vector" are class names.
enum class TypeKind : std::uint8_t { Class, Void, Logical, Int32, Double, Char, CharVector };

/// The one copy of an interned text. It lives until the process ends.
struct InternedEntry {
  const char* text;
  std::uint32_t length;
  TypeKind kind;
};

/// Finds or creates the entry of a text. Returns null for null and for the empty text. Any thread may call
/// this function, as all functions of this file.
///
/// Errors: bedrock::core::except::bad_alloc.
/// Cost:   one hash computation and one look-up; also a lock if the text is new.
TARVELON_API const InternedEntry* makeInterned(std::string_view text);
TARVELON_API const InternedEntry* makeInterned(const char* text);

/// Returns the entry of a text, or null if the text was never interned. Use this function to look up a name
/// that may be unknown: it adds no entry.
TARVELON_API const InternedEntry* findInterned(std::string_view text) noexcept;

/// The number of interned texts.
TARVELON_API std::size_t internedCount() noexcept;

}  // namespace internal

/// An interned name: two names are equal if and only if their pointers are equal, so comparing and hashing
/// take constant time. A name is copied like a pointer, and its text lives until the process ends.
///
/// Example:
///   const ruvo::InternedName name("Tarvelon.metamodel.arplatform.common.Package");
///   name == ruvo::InternedName("Tarvelon.metamodel.arplatform.common.Package");  // true
template <class EmptyPolicy>
class RVOInternedBase {
 public:
  constexpr RVOInternedBase() noexcept = default;
  explicit RVOInternedBase(std::string_view text) : mEntry(internal::makeInterned(text)) {}
  /// Null gives the empty name.
  explicit RVOInternedBase(const char* text) : mEntry(internal::makeInterned(text)) {}
  explicit constexpr RVOInternedBase(const internal::InternedEntry* entry) noexcept : mEntry(entry) {}

  constexpr bool empty() const noexcept { return mEntry == nullptr; }
  /// NUL-terminated; "" for the empty name.
  constexpr const char* c_str() const noexcept { return mEntry ? mEntry->text : ""; }
  constexpr std::string_view view() const noexcept {
    return mEntry ? std::string_view(mEntry->text, mEntry->length) : std::string_view();
  }
  constexpr internal::TypeKind kind() const noexcept {
    return mEntry ? mEntry->kind : internal::TypeKind::Class;
  }
  constexpr const internal::InternedEntry* entry() const noexcept { return mEntry; }
  friend constexpr bool operator==(RVOInternedBase left, RVOInternedBase right) noexcept {
    return left.mEntry == right.mEntry;
  }

 private:
  const internal::InternedEntry* mEntry = nullptr;
};

using InternedName = RVOInternedBase<internal::IdEmptyPolicy>;

/// A name whose text is composed when the name is first needed. Later calls only read a pointer. Any thread
/// may call get().
///
/// Example:
///   LazyName mSequenceName;
///   const InternedName& sequenceName() const {
///     return mSequenceName.get([this] { return "SequenceOf" + mShortName; });
///   }
class LazyName {
 public:
  /// Returns the name. Calls make() if there is no name yet; make() returns an InternedName or its text.
  /// Several threads may call make() at the same time, and must get the same text.
  template <class Make>
  const InternedName& get(Make make) const {
    // The name is written only once, so the caller may read the returned reference without synchronisation.
    if (std::atomic_ref(mName).load(std::memory_order_acquire).empty()) keep(InternedName(make()));
    return mName;
  }

 private:
  /// Stores the name, unless another thread has stored one.
  TARVELON_API void keep(InternedName name) const noexcept;

  mutable InternedName mName;
};

/// A name with a fixed text, which is interned at the first call of get(). The object is
/// constant-initialised, so a static LiteralName runs no code when its library is loaded. Any thread may call
/// get().
///
/// Example:
///   static constinit ruvo::LiteralName type("char vector");
///   useType(type.get());
class LiteralName {
 public:
  /// REQUIRES: `text` outlives the object.
  explicit constexpr LiteralName(const char* text) noexcept : mText(text) {}
  const InternedName& get() const {
    return mName.get([this] { return internal::makeInterned(mText); });
  }
  constexpr const char* text() const noexcept { return mText; }

 private:
  const char* mText;
  LazyName mName;
};

}  // namespace ruvo

template <class EmptyPolicy>
struct std::hash<ruvo::RVOInternedBase<EmptyPolicy>> {
  std::size_t operator()(ruvo::RVOInternedBase<EmptyPolicy> name) const noexcept {
    return std::hash<const void*>()(name.entry());
  }
};
