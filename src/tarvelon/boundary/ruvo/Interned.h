#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string_view>

#include "tarvelon/boundary/Export.h"

namespace ruvo {

namespace internal {

/// The empty name is a null entry: no text is interned for it.
struct IdEmptyPolicy;

/// What kind of slot a type-name string stands for; other names are classes.
enum class TypeKind : std::uint8_t { Class, Void, Logical, Int32, Double, Char, CharVector };

struct InternedEntry {
  const char* text;
  std::uint32_t length;
  TypeKind kind;
};

/// The one entry of a text, which lives as long as the process; null for null or empty text.
/// Cost: a hash of the text and one look-up; a lock for a text that is new. Throws
/// bedrock::core::except::bad_alloc. Threads: any, as for all of this file.
TARVELON_API const InternedEntry* makeInterned(std::string_view text);
TARVELON_API const InternedEntry* makeInterned(const char* text);

/// The entry if the text was interned before, else null: a look-up with an unknown name keeps nothing.
TARVELON_API const InternedEntry* findInterned(std::string_view text) noexcept;

/// How many texts are interned.
TARVELON_API std::size_t internedCount() noexcept;

}  // namespace internal

/// A name that is compared by one pointer. Names with equal texts are the same name.
template <class EmptyPolicy>
class RVOInternedBase {
 public:
  constexpr RVOInternedBase() noexcept = default;
  explicit RVOInternedBase(std::string_view text) : mEntry(internal::makeInterned(text)) {}
  /// The empty name for null.
  explicit RVOInternedBase(const char* text) : mEntry(internal::makeInterned(text)) {}
  explicit constexpr RVOInternedBase(const internal::InternedEntry* entry) noexcept : mEntry(entry) {}

  constexpr bool empty() const noexcept { return mEntry == nullptr; }
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

/// A name that is put together when it is first asked for, and then costs one load. Threads: any.
class LazyName {
 public:
  /// `make` gives the name or its text.
  template <class Make>
  const InternedName& get(Make make) const {
    // Written once: who reads the result later reads it without a fence.
    if (std::atomic_ref(mName).load(std::memory_order_acquire).empty()) keep(InternedName(make()));
    return mName;
  }

 private:
  /// The name of the thread that comes first is kept.
  TARVELON_API void keep(InternedName name) const noexcept;

  mutable InternedName mName;
};

/// A name of fixed text that is interned at first use.
/// `text` must outlive the object; constant-initialised, so a static one costs nothing at load.
/// Threads: any.
class LiteralName {
 public:
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
