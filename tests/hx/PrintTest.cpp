#include <cstdarg>
#include <string>

#include <gtest/gtest.h>

#include "tarvelon/boundary/ut/Memory.h"

namespace {

std::string printed;

void keep(const char* text, std::size_t length) {
  EXPECT_EQ(text[length], '\0');
  printed.assign(text, length);
}

class UtPrintf : public ::testing::Test {
 protected:
  UtPrintf() : mBefore(utSetPrintSink(&keep)) { printed = "nothing"; }
  ~UtPrintf() override { utSetPrintSink(mBefore); }

  utPrintSink mBefore;
};

int format(char* buffer, std::size_t size, const char* text, ...) __attribute__((format(printf, 3, 4)));
int format(char* buffer, std::size_t size, const char* text, ...) {
  std::va_list arguments;
  va_start(arguments, text);
  const int length = utVSNprintf(buffer, size, text, arguments);
  va_end(arguments);
  return length;
}

TEST_F(UtPrintf, GivesTheSinkTheFormattedText) {
  EXPECT_EQ(utPrintf("%s has %d", "it", 3), 8);
  EXPECT_EQ(printed, "it has 3");
}

TEST_F(UtPrintf, PrintsNothing) {
  EXPECT_EQ(utPrintf("%s", ""), 0);
  EXPECT_EQ(printed, "");
}

TEST_F(UtPrintf, PrintsTextOfAnyLength) {
  for (const std::size_t length : {511U, 512U, 513U, 100000U}) {
    const std::string text(length, 'x');
    EXPECT_EQ(utPrintf("%s", text.c_str()), static_cast<int>(length));
    EXPECT_EQ(printed, text);
  }
}

TEST_F(UtPrintf, GoesToStandardOutputWithoutASink) {
  utSetPrintSink(nullptr);
  ::testing::internal::CaptureStdout();
  utPrintf("%d\n", 42);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "42\n");
  EXPECT_EQ(printed, "nothing");
}

TEST(UtSetPrintSink, ReturnsTheSinkThatWasInForce) {
  const utPrintSink before = utSetPrintSink(&keep);
  EXPECT_EQ(utSetPrintSink(before), &keep);
}

TEST(UtVSNprintf, CutsTheTextAndTerminatesIt) {
  char buffer[4] = "???";
  EXPECT_EQ(format(buffer, sizeof buffer, "%s", "abcdef"), 6);
  EXPECT_STREQ(buffer, "abc");
}

TEST(UtVSNprintf, TerminatesTheBufferWhenItFails) {
  char buffer[8] = "before";
  // No locale of this program can represent the character.
  EXPECT_LT(format(buffer, sizeof buffer, "%lc", static_cast<wint_t>(0x110000)), 0);
  EXPECT_STREQ(buffer, "");
}

}  // namespace
