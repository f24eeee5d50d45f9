#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"

/// Host arrays. Texts, objects and optional scalars pass between a host and the libraries as host arrays;
/// only required scalars pass as raw values (ruvo/Value.h).
///
/// An array has an element class, a number of rows, a number of columns, and rows x columns elements in
/// column order. Elements of a character array are UTF-16 code units.
///
/// Ownership: the caller that creates an array destroys it with hxDestroyArray(), unless the caller passes
///            the array on as the result of a call.
/// Errors:    functions that create an array throw bedrock::core::except::bad_alloc when memory is exhausted.
/// Threads:   one thread at a time uses an array and its elements. Another thread than the creating one may
///            destroy the array.
/// Cost:      an array of one scalar, one object or up to about 100 characters is one block from a free list.
///            Larger arrays are allocated with utMalloc().
///
/// Example:
///   hx::hxArray* name = hx::hxCreateString_UTF8("Brakes");
///   const std::u16string_view text = hx::hxGetText(name);  // valid until the array is destroyed
///   hx::hxDestroyArray(name);
namespace hx {

struct hxArray;

/// The class of an array's elements. The C++ types are bool, char16_t, double, std::int32_t and Element*.
enum hxClassId : int { hxLogical = 3, hxChar = 4, hxDouble = 6, hxInt32 = 12, hxObject = 18 };

/// Only real numbers are supported.
enum hxComplexity : int { hxReal = 0 };

/// Base class of the objects in an object array.
///
/// Ownership: reference counted. A new element has a count of 0; the release() that brings the count back to
///            0 calls dispose().
/// Threads:   one thread at a time uses an element, because the count is a plain integer. After share(), all
///            threads may use the element.
class TARVELON_API Element {
 public:
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;
  void addRef() noexcept {
    if (mReferences != kShared) ++mReferences;
  }
  void release() noexcept {
    if (mReferences != kShared && --mReferences == 0) dispose();
  }
  /// The reference count, or kShared after share().
  std::int32_t references() const noexcept { return mReferences; }

  static constexpr std::int32_t kShared = -1;

 protected:
  Element() = default;
  virtual ~Element();
  /// Lets all threads use the element. The element then counts no references and is never disposed of.
  /// REQUIRES: the reference count is 0.
  void share() noexcept { mReferences = kShared; }

 private:
  /// Frees the element. An override must not throw.
  virtual void dispose() = 0;
  std::int32_t mReferences = 0;
};

/// Creates a 1 by n character array from NUL-terminated UTF-16 text. A null pointer gives a 0 by 0 array.
TARVELON_API hxArray* hxCreateString_UTF16(const char16_t* text);
/// Creates a 1 by n character array from UTF-16 text, which may contain NUL units.
TARVELON_API hxArray* hxCreateString_UTF16(std::u16string_view text);
/// Creates a 1 by n character array from UTF-8 text. Throws std::invalid_argument for malformed UTF-8.
TARVELON_API hxArray* hxCreateString_UTF8(std::string_view text);
/// Returns the characters as new NUL-terminated UTF-8 text, which the caller frees with hxFree(). A lone
/// surrogate becomes U+FFFD. An array of another class, and a null array, give the empty text.
TARVELON_API char* hxArrayToString_UTF8(const hxArray* array);
/// Frees the text that hxArrayToString_UTF8() returned. Null is allowed.
TARVELON_API void hxFree(void* text) noexcept;
/// Creates an array whose elements are all zero.
TARVELON_API hxArray* hxCreateNumericMatrix(std::size_t rows, std::size_t columns, hxClassId classId,
                                            hxComplexity complexity);
/// Each of the next three functions creates a 1 by 1 array.
TARVELON_API hxArray* hxCreateLogicalScalar(bool value);
TARVELON_API hxArray* hxCreateInt32Scalar(std::int32_t value);
TARVELON_API hxArray* hxCreateDoubleScalar(double value);
/// Creates an object array of `rows` by `columns` null elements. `className` names the class of the elements,
/// also for an array without elements. The array keeps the pointer, so the text must outlive the array; an
/// interned name does.
TARVELON_API hxArray* hxCreateObjectMatrix(std::size_t rows, std::size_t columns, const char* className);
/// Creates a copy. Both object arrays then hold references on the same objects. A null array gives null.
TARVELON_API hxArray* hxDuplicateArray(const hxArray* array);
/// Destroys an array and releases its objects. Null is allowed.
TARVELON_API void hxDestroyArray(hxArray* array) noexcept;

/// Rows times columns, 0 for a null array.
TARVELON_API std::size_t hxGetNumberOfElements(const hxArray* array) noexcept;
TARVELON_API std::size_t hxGetRows(const hxArray* array) noexcept;
TARVELON_API std::size_t hxGetColumns(const hxArray* array) noexcept;
/// REQUIRES, for this and the next functions up to hxSetElement(): the array is not null.
TARVELON_API hxClassId hxGetClassId(const hxArray* array) noexcept;
/// The class name given to hxCreateObjectMatrix(), null for an array of another class.
TARVELON_API const char* hxGetClassName(const hxArray* array) noexcept;
/// The first element; hxClassId tells its type. The pointer is valid until the array is destroyed.
TARVELON_API void* hxGetData(hxArray* array) noexcept;
TARVELON_API const void* hxGetData(const hxArray* array) noexcept;
/// Element `index` of a numeric, logical or character array as a number.
/// REQUIRES: not an object array; the index is in range.
TARVELON_API double hxGetNumber(const hxArray* array, std::size_t index) noexcept;
/// Element `index` of an object array, which may be null. The caller gets no reference.
/// REQUIRES: an object array; the index is in range.
TARVELON_API Element* hxGetElement(const hxArray* array, std::size_t index) noexcept;
/// Replaces element `index`: adds a reference to the new object and releases the old one. Null is allowed.
/// REQUIRES: an object array; the index is in range.
TARVELON_API void hxSetElement(hxArray* array, std::size_t index, Element* element) noexcept;
/// The characters of a character array, without a copy. Empty for an array of another class and for null.
TARVELON_API std::u16string_view hxGetText(const hxArray* array) noexcept;

/// A copy of the characters that hxGetText() returns.
TARVELON_API std::u16string get_ustring(const hxArray* array);

/// The number of arrays that exist in all threads. Leak tests compare the number before and after a test. The
/// number is exact while no thread creates or destroys an array.
TARVELON_API std::size_t hxLiveArrays() noexcept;

}  // namespace hx
