#include "boundary/hx/Array.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "boundary/bedrock/Except.h"
#include "platform/hx/FreeList.h"

namespace hx {

/// The head of an array's block; the elements follow it.
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

// What malloc() can hand out without a rest. Each holds a scalar, an object or a text of up to 4, 12, 28, 44,
// 76, 108 units with its NUL.
struct SizeClasses {
  FreeList<40> one;
  FreeList<56> two;
  FreeList<88> three;
  FreeList<120> four;
  FreeList<184> five;
  FreeList<248> six;
};

constinit SizeClasses gFree;
std::size_t gLive = 0;

/// Calls `use` with the list of a size class; larger arrays have none.
template <class Use, class Otherwise>
decltype(auto) withFreeList(std::uint32_t sizeClass, Use use, Otherwise otherwise) {
  switch (sizeClass) {
    case 0:
      return use(gFree.one);
    case 1:
      return use(gFree.two);
    case 2:
      return use(gFree.three);
    case 3:
      return use(gFree.four);
    case 4:
      return use(gFree.five);
    case 5:
      return use(gFree.six);
    default:
      return otherwise();
  }
}

std::uint32_t sizeClassOf(std::size_t bytes) noexcept {
  if (bytes <= 40) return 0;
  if (bytes <= 56) return 1;
  if (bytes <= 88) return 2;
  if (bytes <= 120) return 3;
  if (bytes <= 184) return 4;
  return bytes <= 248 ? 5 : 6;
}

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
  return sizeof(Element*);
}

std::size_t blockSize(std::size_t rows, std::size_t columns, std::size_t element) {
  std::size_t count = 0;
  std::size_t bytes = 0;
  if (__builtin_mul_overflow(rows, columns, &count) || __builtin_mul_overflow(count, element, &bytes) ||
      __builtin_add_overflow(bytes, sizeof(hxArray) + sizeof(char16_t), &bytes)) {
    throw bedrock::core::except::bad_alloc();
  }
  return bytes;
}

/// An array whose elements are not written yet. There is room for a NUL behind them.
hxArray* allocate(std::size_t rows, std::size_t columns, hxClassId classId, const char* className = nullptr) {
  std::size_t bytes = blockSize(rows, columns, elementSize(classId));
  if (classId != hxChar) bytes -= sizeof(char16_t);
  const auto sizeClass = sizeClassOf(bytes);
  void* block = withFreeList(
      sizeClass, [](auto& list) { return list.take(); }, [bytes] { return utMalloc(bytes); });
  if (!block) throw bedrock::core::except::bad_alloc();
  ++gLive;
  return ::new (block) hxArray{rows, columns, className, classId, sizeClass};
}

hxArray* allocateZeroed(std::size_t rows, std::size_t columns, hxClassId classId, const char* className) {
  hxArray* array = allocate(rows, columns, classId, className);
  std::memset(array->data(), 0, array->count() * elementSize(classId));
  return array;
}

template <class T>
hxArray* createScalar(hxClassId classId, T value) {
  hxArray* array = allocate(1, 1, classId);
  std::memcpy(array->data(), &value, sizeof value);
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
  --gLive;
  withFreeList(
      array->sizeClass, [array](auto& list) { list.give(array); }, [array] { utFree(array); });
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
  // Last: what goes now may reach this array again.
  if (old) old->release();
}

std::u16string_view hxGetText(const hxArray* array) noexcept {
  if (!array || array->classId != hxChar) return {};
  return {array->elements<char16_t>(), array->count()};
}

std::u16string get_ustring(const hxArray* array) { return std::u16string(hxGetText(array)); }

std::size_t hxLiveArrays() noexcept { return gLive; }

}  // namespace hx
