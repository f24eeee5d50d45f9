#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/ArrayPtr.h"

namespace hx {
namespace {

class Counted final : public Element {
 public:
  explicit Counted(int& alive) : mAlive(alive) { ++mAlive; }

 private:
  ~Counted() override { --mAlive; }
  void dispose() override { delete this; }
  int& mAlive;
};

TEST(NullArray, CountsAsEmpty) {
  EXPECT_EQ(hxGetNumberOfElements(nullptr), 0U);
  EXPECT_EQ(hxGetRows(nullptr), 0U);
  EXPECT_EQ(hxGetColumns(nullptr), 0U);
  EXPECT_EQ(hxGetText(nullptr), u"");
  EXPECT_EQ(hxDuplicateArray(nullptr), nullptr);
  hxDestroyArray(nullptr);
}

TEST(String, NullTextGivesZeroByZero) {
  const ArrayPtr array(hxCreateString_UTF16(nullptr));
  EXPECT_EQ(hxGetRows(array.get()), 0U);
  EXPECT_EQ(hxGetColumns(array.get()), 0U);
  EXPECT_EQ(hxGetClassId(array.get()), hxChar);
}

TEST(String, EmptyTextGivesOneByZero) {
  const ArrayPtr array(hxCreateString_UTF16(u""));
  EXPECT_EQ(hxGetRows(array.get()), 1U);
  EXPECT_EQ(hxGetNumberOfElements(array.get()), 0U);
}

TEST(String, DefaultViewGivesOneByZero) {
  const ArrayPtr array(hxCreateString_UTF16(std::u16string_view()));
  EXPECT_EQ(hxGetNumberOfElements(array.get()), 0U);
}

TEST(String, KeepsEveryUnitOfAnyLength) {
  for (const std::size_t length : {1U, 4U, 5U, 28U, 29U, 44U, 76U, 108U, 109U, 5000U}) {
    std::u16string text(length, u'x');
    text.back() = u'\u00e9';
    const ArrayPtr array(hxCreateString_UTF16(text));
    EXPECT_EQ(get_ustring(array.get()), text);
    EXPECT_EQ(hxGetColumns(array.get()), length);
    EXPECT_EQ(static_cast<const char16_t*>(hxGetData(array.get()))[length], u'\0')
        << "no NUL behind the text";
  }
}

TEST(String, KeepsNulUnits) {
  const std::u16string text(u"a\0b", 3);
  const ArrayPtr array(hxCreateString_UTF16(std::u16string_view(text)));
  EXPECT_EQ(get_ustring(array.get()), text);
}

TEST(NumericMatrix, IsZeroed) {
  for (const hxClassId classId : {hxLogical, hxChar, hxInt32, hxDouble}) {
    const ArrayPtr array(hxCreateNumericMatrix(3, 5, classId, hxReal));
    EXPECT_EQ(hxGetNumberOfElements(array.get()), 15U);
    EXPECT_EQ(hxGetClassId(array.get()), classId);
    EXPECT_EQ(hxGetClassName(array.get()), nullptr);
    for (std::size_t i = 0; i < 15; ++i) EXPECT_EQ(hxGetNumber(array.get(), i), 0);
  }
}

TEST(NumericMatrix, IsZeroedWhenItsBlockWasUsedBefore) {
  for (int round = 0; round < 3; ++round) {
    const ArrayPtr array(hxCreateNumericMatrix(1, 2, hxInt32, hxReal));
    auto* data = static_cast<std::int32_t*>(hxGetData(array.get()));
    EXPECT_EQ(data[0], 0);
    EXPECT_EQ(data[1], 0);
    data[0] = data[1] = -1;
  }
}

TEST(NumericMatrix, RefusesMoreThanMemoryCanHold) {
  constexpr auto kHuge = std::numeric_limits<std::size_t>::max();
  EXPECT_THROW(hxCreateNumericMatrix(kHuge, 2, hxDouble, hxReal), std::bad_alloc);
  EXPECT_THROW(hxCreateNumericMatrix(1, kHuge / 8, hxDouble, hxReal), std::bad_alloc);
  EXPECT_THROW(hxCreateNumericMatrix(1, kHuge, hxLogical, hxReal), std::bad_alloc);
}

TEST(Scalar, HoldsItsValue) {
  const ArrayPtr logical(hxCreateLogicalScalar(true));
  const ArrayPtr integer(hxCreateInt32Scalar(-7));
  const ArrayPtr real(hxCreateDoubleScalar(0.5));
  EXPECT_EQ(hxGetNumber(logical.get(), 0), 1);
  EXPECT_EQ(hxGetNumber(integer.get(), 0), -7);
  EXPECT_EQ(hxGetNumber(real.get(), 0), 0.5);
  EXPECT_EQ(hxGetClassId(logical.get()), hxLogical);
  EXPECT_EQ(hxGetClassId(integer.get()), hxInt32);
  EXPECT_EQ(hxGetClassId(real.get()), hxDouble);
}

TEST(Number, OfACharacterIsItsUnit) {
  const ArrayPtr array(hxCreateString_UTF16(u"\uffffA"));
  EXPECT_EQ(hxGetNumber(array.get(), 0), 65535);
  EXPECT_EQ(hxGetNumber(array.get(), 1), 65);
}

TEST(ObjectMatrix, IsEmptyAtFirst) {
  const ArrayPtr array(hxCreateObjectMatrix(2, 2, "K7Q.Object"));
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(hxGetElement(array.get(), i), nullptr);
  EXPECT_STREQ(hxGetClassName(array.get()), "K7Q.Object");
}

TEST(ObjectMatrix, KeepsItsClassWithoutElements) {
  const ArrayPtr array(hxCreateObjectMatrix(0, 0, "K7Q.Object"));
  EXPECT_EQ(hxGetNumberOfElements(array.get()), 0U);
  EXPECT_STREQ(hxGetClassName(array.get()), "K7Q.Object");
}

TEST(ObjectMatrix, HoldsItsElementsUntilItIsDestroyed) {
  int alive = 0;
  hxArray* array = hxCreateObjectMatrix(1, 1, "X");
  hxSetElement(array, 0, new Counted(alive));
  EXPECT_EQ(hxGetElement(array, 0)->references(), 1);
  hxDestroyArray(array);
  EXPECT_EQ(alive, 0);
}

TEST(SetElement, DropsTheElementThatWasThere) {
  int first = 0;
  int second = 0;
  const ArrayPtr array(hxCreateObjectMatrix(1, 1, "X"));
  hxSetElement(array.get(), 0, new Counted(first));
  hxSetElement(array.get(), 0, new Counted(second));
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
  hxSetElement(array.get(), 0, nullptr);
  EXPECT_EQ(second, 0);
}

TEST(SetElement, KeepsAnElementThatReplacesItself) {
  int alive = 0;
  const ArrayPtr array(hxCreateObjectMatrix(1, 1, "X"));
  auto* element = new Counted(alive);
  hxSetElement(array.get(), 0, element);
  hxSetElement(array.get(), 0, element);
  EXPECT_EQ(alive, 1);
  EXPECT_EQ(element->references(), 1);
}

TEST(Duplicate, SharesObjects) {
  int alive = 0;
  ArrayPtr array(hxCreateObjectMatrix(1, 2, "X"));
  hxSetElement(array.get(), 0, new Counted(alive));
  const ArrayPtr copy(hxDuplicateArray(array.get()));
  array.reset();
  EXPECT_EQ(alive, 1);
  EXPECT_EQ(hxGetElement(copy.get(), 0)->references(), 1);
  EXPECT_EQ(hxGetElement(copy.get(), 1), nullptr);
  EXPECT_STREQ(hxGetClassName(copy.get()), "X");
}

TEST(Duplicate, CopiesTextAndNumbers) {
  const ArrayPtr text(hxCreateString_UTF16(u"abc"));
  const ArrayPtr matrix(hxCreateNumericMatrix(2, 3, hxDouble, hxReal));
  static_cast<double*>(hxGetData(matrix.get()))[5] = 2.5;
  const ArrayPtr textCopy(hxDuplicateArray(text.get()));
  const ArrayPtr matrixCopy(hxDuplicateArray(matrix.get()));
  EXPECT_EQ(get_ustring(textCopy.get()), u"abc");
  EXPECT_EQ(static_cast<const char16_t*>(hxGetData(textCopy.get()))[3], u'\0');
  EXPECT_EQ(hxGetRows(matrixCopy.get()), 2U);
  EXPECT_EQ(hxGetNumber(matrixCopy.get(), 5), 2.5);
}

TEST(Text, OfANumericArrayIsEmpty) {
  const ArrayPtr array(hxCreateDoubleScalar(65));
  EXPECT_EQ(get_ustring(array.get()), u"");
}

TEST(LiveArrays, CountsThemAll) {
  const std::size_t before = hxLiveArrays();
  {
    const ArrayPtr small(hxCreateDoubleScalar(1));
    const ArrayPtr large(hxCreateNumericMatrix(100, 100, hxDouble, hxReal));
    EXPECT_EQ(hxLiveArrays(), before + 2);
  }
  EXPECT_EQ(hxLiveArrays(), before);
}

TEST(Allocation, ThatFailsLeavesNoArray) {
  hxDestroyArray(hxCreateDoubleScalar(1));
  const std::size_t before = hxLiveArrays();
  utFailAllocation(1);
  EXPECT_THROW(hxCreateDoubleScalar(1), bedrock::core::except::bad_alloc);
  utFailAllocation(1);
  EXPECT_THROW(hxCreateNumericMatrix(100, 100, hxDouble, hxReal), bedrock::core::except::bad_alloc);
  EXPECT_EQ(hxLiveArrays(), before);
}

}  // namespace
}  // namespace hx
