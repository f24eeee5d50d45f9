#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"

/// Host arrays: the form in which every value but a raw scalar crosses the boundary.
///
/// An array has a class, rows and columns and that many elements in column order. Character elements are
/// UTF-16 units.
///
/// Ownership: who creates an array destroys it, unless it is handed over as the result of a call.
/// Threads:   an array, and what it holds, belongs to one thread at a time. It may be destroyed on another
///            than the one that made it.
/// Cost:      an array of one scalar, one object or up to some dozens of characters is one block from a free
///            list.
namespace hx {

struct hxArray;

/// The class of an array's elements.
enum hxClassId : int { hxLogical = 3, hxChar = 4, hxDouble = 6, hxInt32 = 12, hxObject = 18 };

enum hxComplexity : int { hxReal = 0 };

/// What an object array holds: something counted, which goes when the last holder drops it.
/// Threads: one at a time, unless it is shared.
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
  /// kShared for one that all threads share.
  std::int32_t references() const noexcept { return mReferences; }

  static constexpr std::int32_t kShared = -1;

 protected:
  Element() = default;
  virtual ~Element();
  /// From now on all threads may hold it, and it never goes. REQUIRES: no holder.
  void share() noexcept { mReferences = kShared; }

 private:
  /// Must not throw.
  virtual void dispose() = 0;
  std::int32_t mReferences = 0;
};

/// A 1 by n character array from NUL-terminated UTF-16 text; null text gives 0 by 0.
TARVELON_API hxArray* hxCreateString_UTF16(const char16_t* text);
/// The same for text that may be any length, NUL units included.
TARVELON_API hxArray* hxCreateString_UTF16(std::u16string_view text);
/// A 1 by n character array from UTF-8 text. Malformed text is refused with std::invalid_argument.
TARVELON_API hxArray* hxCreateString_UTF8(std::string_view text);
/// The characters as NUL-terminated UTF-8, to be released with hxFree(). A lone surrogate becomes U+FFFD.
TARVELON_API char* hxArrayToString_UTF8(const hxArray* array);
/// Releases what hxArrayToString_UTF8() gave; null is allowed.
TARVELON_API void hxFree(void* text) noexcept;
/// A zeroed numeric array of rows by columns.
TARVELON_API hxArray* hxCreateNumericMatrix(std::size_t rows, std::size_t columns, hxClassId classId,
                                            hxComplexity complexity);
/// 1 by 1 arrays.
TARVELON_API hxArray* hxCreateLogicalScalar(bool value);
TARVELON_API hxArray* hxCreateInt32Scalar(std::int32_t value);
TARVELON_API hxArray* hxCreateDoubleScalar(double value);
/// An object array of `rows` by `columns` empty elements. `className` is a text that outlives the array (an
/// interned name): what the elements are, also when there is none.
TARVELON_API hxArray* hxCreateObjectMatrix(std::size_t rows, std::size_t columns, const char* className);
/// A copy; object elements are shared.
TARVELON_API hxArray* hxDuplicateArray(const hxArray* array);
/// Destroys an array and drops its objects; null is allowed.
TARVELON_API void hxDestroyArray(hxArray* array) noexcept;

/// The product of all dimensions; a null array counts 0.
TARVELON_API std::size_t hxGetNumberOfElements(const hxArray* array) noexcept;
TARVELON_API std::size_t hxGetRows(const hxArray* array) noexcept;
TARVELON_API std::size_t hxGetColumns(const hxArray* array) noexcept;
TARVELON_API hxClassId hxGetClassId(const hxArray* array) noexcept;
/// The name given at creation of an object array, null for others.
TARVELON_API const char* hxGetClassName(const hxArray* array) noexcept;
/// The elements: bool, char16_t, double, std::int32_t or Element* by the array's class.
TARVELON_API void* hxGetData(hxArray* array) noexcept;
TARVELON_API const void* hxGetData(const hxArray* array) noexcept;
/// Element `index` of a numeric, logical or character array as a number. REQUIRES: not an object array, index
/// in range.
TARVELON_API double hxGetNumber(const hxArray* array, std::size_t index) noexcept;
/// Element `index` of an object array, null if it is empty. REQUIRES: an object array, index in range.
TARVELON_API Element* hxGetElement(const hxArray* array, std::size_t index) noexcept;
/// Puts an object in; takes a reference and drops the one of the object that was there.
TARVELON_API void hxSetElement(hxArray* array, std::size_t index, Element* element) noexcept;
/// The characters of a character array; other classes have none.
TARVELON_API std::u16string_view hxGetText(const hxArray* array) noexcept;

/// The array's characters.
TARVELON_API std::u16string get_ustring(const hxArray* array);

/// How many arrays exist in all threads: leak tests compare it before and after. Exact while no thread makes
/// or destroys one.
TARVELON_API std::size_t hxLiveArrays() noexcept;

}  // namespace hx
