#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace K7Q {

namespace NSInterface {

/// The object form of the scalar values: one shared interface per type, with the value in the handle's
/// deviant word, so that a scalar passes as a K7Q::Object without an allocation.
class TARVELON_API ScalarIntf final : public ObjectIntf {
 public:
  enum class Type : std::uint8_t { Boolean, Integer, Double, Real };
  explicit constexpr ScalarIntf(Type scalarType) noexcept : mType(scalarType) { share(); }
  ~ScalarIntf() override;
  Type type() const noexcept { return mType; }
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  ImmutableType getMetaType(Deviant deviant) const override;

  static ScalarIntf sBoolean;
  static ScalarIntf sInteger;
  static ScalarIntf sDouble;
  static ScalarIntf sReal;

 private:
  Type mType;
};

/// The object form of a text: counted, immutable, the characters behind the object in the same block.
/// Threads: one at a time, with all who hold it; that of the empty text, which is not counted, any.
class TARVELON_API StringIntf final : public ObjectIntf {
 public:
  /// A cell with one reference for the caller.
  static StringIntf* make(std::u16string_view text);
  /// The one of the empty text.
  static StringIntf* empty();
  void addRef() const override {
    if (mReferences != kUncounted) ++mReferences;
  }
  void release() const override {
    if (mReferences != kUncounted && --mReferences == 0) dispose();
  }
  int numRef() const override { return mReferences; }
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  ImmutableType getMetaType(Deviant deviant) const override;
  std::uint32_t length() const noexcept { return mLength; }
  /// NUL-terminated.
  const char16_t* text() const noexcept { return reinterpret_cast<const char16_t*>(this + 1); }
  std::u16string_view view() const noexcept { return {text(), mLength}; }

 private:
  explicit StringIntf(std::uint32_t length) noexcept : mLength(length) {}
  ~StringIntf() override;
  void dispose() const noexcept;
  static constexpr std::int32_t kUncounted = -1;
  mutable std::int32_t mReferences = 1;
  std::uint32_t mLength;
};

}  // namespace NSInterface

/// A truth value.
class TARVELON_API Boolean {
 public:
  constexpr Boolean() noexcept = default;
  constexpr Boolean(bool value) noexcept : mValue(value) {}  // NOLINT(google-explicit-constructor)
  /// Raises K7Q::WrongType for an object that is no truth value; an empty object is false.
  explicit Boolean(const Object& object);
  constexpr operator bool() const noexcept { return mValue; }  // NOLINT(google-explicit-constructor)
  operator Object() const;                                     // NOLINT(google-explicit-constructor)

 private:
  bool mValue = false;
};

/// A whole number of 32 bits.
class TARVELON_API Integer {
 public:
  constexpr Integer() noexcept = default;
  constexpr Integer(int value) noexcept : mValue(value) {}  // NOLINT(google-explicit-constructor)
  explicit Integer(const Object& object);
  constexpr operator int() const noexcept { return mValue; }  // NOLINT(google-explicit-constructor)
  operator Object() const;                                    // NOLINT(google-explicit-constructor)

 private:
  int mValue = 0;
};

/// A number of 64-bit floating point.
class TARVELON_API Double {
 public:
  constexpr Double() noexcept = default;
  constexpr Double(double value) noexcept : mValue(value) {}  // NOLINT(google-explicit-constructor)
  explicit Double(const Object& object);
  constexpr operator double() const noexcept { return mValue; }  // NOLINT(google-explicit-constructor)
  operator Object() const;                                       // NOLINT(google-explicit-constructor)

 private:
  double mValue = 0;
};

/// The same number under the metamodel's other name for it.
class TARVELON_API Real {
 public:
  constexpr Real() noexcept = default;
  constexpr Real(double value) noexcept : mValue(value) {}  // NOLINT(google-explicit-constructor)
  explicit Real(const Object& object);
  constexpr operator double() const noexcept { return mValue; }  // NOLINT(google-explicit-constructor)
  operator Object() const;                                       // NOLINT(google-explicit-constructor)

 private:
  double mValue = 0;
};

/// A UTF-16 text. Copies share one cell; the empty text has none and costs nothing.
/// Threads: one thread at a time uses a text and its copies; a text that was read from a model belongs to the
///          thread of that model. A model keeps its own copy of a text that it is given, so the same text may
///          be given to models of different threads.
class TARVELON_API String {
 public:
  constexpr String() noexcept = default;
  String(const std::u16string& text)
      : String(std::u16string_view(text)) {}                           // NOLINT(google-explicit-constructor)
  String(std::u16string_view text);                                    // NOLINT(google-explicit-constructor)
  String(const char16_t* text) : String(std::u16string_view(text)) {}  // NOLINT(google-explicit-constructor)
  /// Raises K7Q::WrongType for an object that is no text; an empty object is "".
  explicit String(const Object& object);
  String(const String& other) noexcept : mCell(other.mCell) {
    if (mCell) mCell->addRef();
  }
  String(String&& other) noexcept : mCell(std::exchange(other.mCell, nullptr)) {}
  String& operator=(String other) noexcept {
    std::swap(mCell, other.mCell);
    return *this;
  }
  ~String() {
    if (mCell) mCell->release();
  }

  operator Object() const&;  // NOLINT(google-explicit-constructor)
  /// Hands its cell over.
  operator Object() &&;                                               // NOLINT(google-explicit-constructor)
  operator std::u16string() const { return std::u16string(view()); }  // NOLINT(google-explicit-constructor)
  std::u16string_view view() const noexcept { return mCell ? mCell->view() : std::u16string_view(u""); }
  /// NUL-terminated.
  const char16_t* c_str() const noexcept { return mCell ? mCell->text() : u""; }
  bool empty() const noexcept { return mCell == nullptr || mCell->length() == 0; }
  /// UTF-16 to UTF-8; a lone surrogate becomes U+FFFD.
  static std::string to_string(const String& text);
  static std::string to_string(std::u16string_view text);
  /// UTF-8 to UTF-16. Malformed text is refused with K7Q::WrongValue.
  static String fromUtf8(std::string_view text);
  friend bool operator==(const String& left, const String& right) noexcept {
    return left.view() == right.view();
  }

 private:
  NSInterface::StringIntf* mCell = nullptr;
};

}  // namespace K7Q
