#include "tarvelon/boundary/hx/Array.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>
#include <utility>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/platform/hx/Blocks.h"
#include "tarvelon/platform/hx/ObjectScalar.h"

namespace hx {

/// The header of an array's memory block. The elements follow directly behind it.
struct hxArray {
  std::size_t rows;
  std::size_t columns;
  const char* className;
  hxClassId classId;
  std::uint32_t sizeClass;

  void* data() noexcept { return this + 1; }
  const void* data() const noexcept { return this + 1; }
  template <class T>
  const T* elements() const noexcept {
    return static_cast<const T*>(data());
  }
  std::size_t count() const noexcept { return rows * columns; }
  bool holdsObjects() const noexcept { return classId == hxObject; }
};

static_assert(sizeof(hxArray) == 32, "the elements are aligned like the block");

namespace {

// The smallest block holds a scalar. The largest block holds a text of up to 107 UTF-16 units and its NUL.
// Arrays that need more memory are allocated with utMalloc() and never go to a free list.
constexpr std::size_t kScalar = Blocks::sizeFor(sizeof(hxArray) + sizeof(double));
static_assert(kScalar == 0);
constexpr std::uint32_t kLarge = Blocks::kSizes;

std::size_t elementSize(hxClassId classId) noexcept {
  switch (classId) {
    case hxLogical:
      return sizeof(bool);
    case hxChar:
      return sizeof(char16_t);
    case hxInt32:
      return sizeof(std::int32_t);
    case hxDouble:
      return sizeof(double);
    case hxObject:
      break;
  }
  return sizeof(void*);
}

std::size_t blockSize(std::size_t rows, std::size_t columns, std::size_t element) {
  std::size_t count = 0;
  std::size_t bytes = 0;
  const std::size_t rest = sizeof(hxArray) + (element == sizeof(char16_t) ? sizeof(char16_t) : 0);
  if (__builtin_mul_overflow(rows, columns, &count) || __builtin_mul_overflow(count, element, &bytes) ||
      __builtin_add_overflow(bytes, rest, &bytes)) {
    throw bedrock::core::except::bad_alloc();
  }
  return bytes;
}

hxArray* place(void* block, hxArray head) {
  if (!block) throw bedrock::core::except::bad_alloc();
  addTo(Counted::Arrays, 1);
  return ::new (block) hxArray(head);
}

/// Returns an array with uninitialised elements. A character array has room for a NUL behind them.
hxArray* allocate(std::size_t rows, std::size_t columns, hxClassId classId, const char* className = nullptr) {
  const std::size_t bytes = blockSize(rows, columns, elementSize(classId));
  const auto sizeClass = static_cast<std::uint32_t>(std::min<std::size_t>(Blocks::sizeFor(bytes), kLarge));
  void* block = sizeClass < kLarge ? Blocks::take(sizeClass) : utMalloc(bytes);
  return place(block, {rows, columns, className, classId, sizeClass});
}

hxArray* allocateZeroed(std::size_t rows, std::size_t columns, hxClassId classId, const char* className) {
  hxArray* array = allocate(rows, columns, classId, className);
  std::memset(array->data(), 0, array->count() * elementSize(classId));
  return array;
}

template <class T>
hxArray* createScalar(hxClassId classId, T value, const char* className = nullptr) {
  hxArray* array = place(Blocks::take(kScalar), {1, 1, className, classId, 0});
  ::new (array->data()) T(value);
  return array;
}

}  // namespace

Element::~Element() = default;

hxArray* hxCreateString_UTF16(std::u16string_view text) {
  hxArray* array = allocate(1, text.size(), hxChar);
  auto* units = static_cast<char16_t*>(array->data());
  std::copy(text.begin(), text.end(), units);
  units[text.size()] = 0;
  return array;
}

hxArray* hxCreateString_UTF16(const char16_t* text) {
  if (text) return hxCreateString_UTF16(std::u16string_view(text));
  return hxCreateNumericMatrix(0, 0, hxChar, hxReal);
}

hxArray* hxCreateNumericMatrix(std::size_t rows, std::size_t columns, hxClassId classId,
                               hxComplexity /*complexity*/) {
  return allocateZeroed(rows, columns, classId, nullptr);
}

hxArray* hxCreateLogicalScalar(bool value) { return createScalar(hxLogical, value); }
hxArray* hxCreateInt32Scalar(std::int32_t value) { return createScalar(hxInt32, value); }
hxArray* hxCreateDoubleScalar(double value) { return createScalar(hxDouble, value); }

hxArray* hxCreateObjectMatrix(std::size_t rows, std::size_t columns, const char* className) {
  return allocateZeroed(rows, columns, hxObject, className);
}

hxArray* createObjectScalar(Element* element, const char* className) {
  hxArray* array = createScalar(hxObject, element, className);
  if (element) element->addRef();
  return array;
}

hxArray* hxDuplicateArray(const hxArray* array) {
  if (!array) return nullptr;
  hxArray* copy = allocate(array->rows, array->columns, array->classId, array->className);
  const std::size_t count = array->count();
  std::memcpy(copy->data(), array->data(), count * elementSize(array->classId));
  if (array->classId == hxChar) static_cast<char16_t*>(copy->data())[count] = 0;
  if (array->holdsObjects()) {
    std::for_each_n(array->elements<Element*>(), count, [](Element* element) {
      if (element) element->addRef();
    });
  }
  return copy;
}

void hxDestroyArray(hxArray* array) noexcept {
  if (!array) return;
  if (array->holdsObjects()) {
    std::for_each_n(array->elements<Element*>(), array->count(), [](Element* element) {
      if (element) element->release();
    });
  }
  addTo(Counted::Arrays, -1);
  if (array->sizeClass < kLarge) {
    Blocks::give(array->sizeClass, array);
  } else {
    utFree(array);
  }
}

std::size_t hxGetNumberOfElements(const hxArray* array) noexcept { return array ? array->count() : 0; }
std::size_t hxGetRows(const hxArray* array) noexcept { return array ? array->rows : 0; }
std::size_t hxGetColumns(const hxArray* array) noexcept { return array ? array->columns : 0; }
hxClassId hxGetClassId(const hxArray* array) noexcept { return array->classId; }
const char* hxGetClassName(const hxArray* array) noexcept { return array->className; }
void* hxGetData(hxArray* array) noexcept { return array->data(); }
const void* hxGetData(const hxArray* array) noexcept { return array->data(); }

double hxGetNumber(const hxArray* array, std::size_t index) noexcept {
  switch (array->classId) {
    case hxLogical:
      return array->elements<bool>()[index] ? 1 : 0;
    case hxChar:
      return array->elements<char16_t>()[index];
    case hxInt32:
      return array->elements<std::int32_t>()[index];
    case hxDouble:
      return array->elements<double>()[index];
    case hxObject:
      break;
  }
  return 0;
}

Element* hxGetElement(const hxArray* array, std::size_t index) noexcept {
  return array->elements<Element*>()[index];
}

void hxSetElement(hxArray* array, std::size_t index, Element* element) noexcept {
  if (element) element->addRef();
  Element* old = std::exchange(static_cast<Element**>(array->data())[index], element);
  // The release comes last: the destructor of the old element may access this array.
  if (old) old->release();
}

std::u16string_view hxGetText(const hxArray* array) noexcept {
  if (!array || array->classId != hxChar) return {};
  return {array->elements<char16_t>(), array->count()};
}

std::u16string get_ustring(const hxArray* array) { return std::u16string(hxGetText(array)); }

std::size_t hxLiveArrays() noexcept { return sumOf(Counted::Arrays); }

}  // namespace hx
