#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace K7Q {

namespace NSInterface {

/// The object form of scalar values. There is one shared object for each scalar type; the value itself is in
/// the deviant of the handle. So a scalar passes as a K7Q::Object without an allocation.
///
/// Programs use Boolean, Integer, Double and Real instead, which convert to and from K7Q::Object.
class TARVELON_API ScalarIntf final : public ObjectIntf {
 public:
  enum class Type : std::uint8_t { Boolean, Integer, Double, Real };
  /// Only the four static objects below are used.
  explicit constexpr ScalarIntf(Type scalarType) noexcept : mType(scalarType) { share(); }
  ~ScalarIntf() override;
  /// Which of the four objects this is.
  Type type() const noexcept { return mType; }
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  ImmutableType getMetaType(Deviant deviant) const override;

  /// The four objects, which all scalar values share.
  static ScalarIntf sBoolean;
  static ScalarIntf sInteger;
  static ScalarIntf sDouble;
  static ScalarIntf sReal;

 private:
  Type mType;
};

/// The object form of a text. The object is immutable and reference counted; the characters follow it in the
/// same memory block. Programs use String instead.
///
/// Threads: one thread at a time uses the object and all references on it, because the count is a plain
///          integer. The object of the empty text is shared by all threads and not counted.
class TARVELON_API StringIntf final : public ObjectIntf {
 public:
  /// Creates an object with a reference count of 1, for the caller. Throws bedrock::core::except::bad_alloc.
  static StringIntf* make(std::u16string_view text);
  /// The shared object of the empty text.
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
  /// The number of UTF-16 code units, without the terminating NUL.
  std::uint32_t length() const noexcept { return mLength; }
  /// The characters, NUL-terminated.
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

/// The next four classes are the scalar values of properties. Each converts from and to the C++ type, and to
/// K7Q::Object without an allocation.
///
/// The constructor from an object accepts any scalar: a null object gives false or 0. It throws
/// K7Q::WrongType for an object that is not a scalar.
///
/// Example:
///   const K7Q::Object value = K7Q::Integer(7);
///   const int number = K7Q::Integer(value);
///
/// A truth value. A number other than 0 is true.
class TARVELON_API Boolean {
 public:
  constexpr Boolean() noexcept = default;
  constexpr Boolean(bool value) noexcept : mValue(value) {}  // NOLINT(google-explicit-constructor)
  explicit Boolean(const Object& object);
  constexpr operator bool() const noexcept { return mValue; }  // NOLINT(google-explicit-constructor)
  operator Object() const;                                     // NOLINT(google-explicit-constructor)

 private:
  bool mValue = false;
};

/// A signed whole number of 32 bits. The constructor from an object throws K7Q::OutOfRange for a number that
/// is not whole or does not fit.
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

/// A 64-bit floating-point number.
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

/// A 64-bit floating-point number. The metamodel has two such types, Double and Real.
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

/// A UTF-16 text. Copies share the characters, which never change. The empty text needs no memory.
///
/// Threads: one thread at a time uses a text and its copies. A text that was read from a model is used by the
///          thread of that model. A model copies the characters of a text that it stores, unless it gets the
///          only reference on the text. So one text may be stored in models of different threads.
///
/// Example:
///   const K7Q::String name = u"Brakes";
///   const std::string utf8 = K7Q::String::to_string(name);
///   const K7Q::String same = K7Q::String::fromUtf8(utf8);  // same == name
class TARVELON_API String {
 public:
  /// The empty text.
  constexpr String() noexcept = default;
  /// These three copy the characters. They throw bedrock::core::except::bad_alloc.
  String(const std::u16string& text)
      : String(std::u16string_view(text)) {}                           // NOLINT(google-explicit-constructor)
  String(std::u16string_view text);                                    // NOLINT(google-explicit-constructor)
  String(const char16_t* text) : String(std::u16string_view(text)) {}  // NOLINT(google-explicit-constructor)
  /// Throws K7Q::WrongType for an object that is not a text. A null object gives the empty text.
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

  /// The object form of the text, which shares the characters.
  operator Object() const&;  // NOLINT(google-explicit-constructor)
  /// Moves the reference into the object, so that a model can take over the text without a copy.
  operator Object() &&;                                               // NOLINT(google-explicit-constructor)
  operator std::u16string() const { return std::u16string(view()); }  // NOLINT(google-explicit-constructor)
  /// The characters, valid as long as this text or a copy of it exists.
  std::u16string_view view() const noexcept { return mCell ? mCell->view() : std::u16string_view(u""); }
  /// The characters, NUL-terminated; valid like those of view().
  const char16_t* c_str() const noexcept { return mCell ? mCell->text() : u""; }
  bool empty() const noexcept { return mCell == nullptr || mCell->length() == 0; }
  /// Converts to UTF-8. A lone surrogate becomes U+FFFD.
  static std::string to_string(const String& text);
  static std::string to_string(std::u16string_view text);
  /// Converts from UTF-8. Throws K7Q::WrongValue for malformed UTF-8.
  static String fromUtf8(std::string_view text);
  /// Compares code units; the texts need not share their characters.
  friend bool operator==(const String& left, const String& right) noexcept {
    return left.view() == right.view();
  }

 private:
  NSInterface::StringIntf* mCell = nullptr;
};

}  // namespace K7Q
