#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Assertion.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tests/support/Host.h"

using host::raised;
using K7Q::Asserter;
using K7Q::LocalAsserter;

TEST(Asserter, RaisesMessageSiteAndDetail) {
  EXPECT_EQ(raised([] { LocalAsserter("kernel/some/File", 12) = Asserter(false).Make("it is empty"); }),
            "Assertion failed: it is empty at kernel/some/File:12: ");
  EXPECT_EQ(raised([] {
              const auto asserter = Asserter(false).Make("it is %d of %s", 3, "four");
              K7Q::AsserterEx<K7Q::Exception>(asserter).handle("kernel/some/File", 7, "in the second");
            }),
            "Assertion failed: it is 3 of four at kernel/some/File:7: in the second");
}

TEST(Asserter, DoesNothingWhenItPassed) {
  const std::string before = Asserter::fLogBuf;
  LocalAsserter("f", 1) = Asserter(true).Make("never said");
  EXPECT_EQ(Asserter::fLogBuf, before);
}

TEST(Asserter, RaisesTheBareTextWithoutAMessage) {
  EXPECT_EQ(raised([] { LocalAsserter("f", 1) = Asserter(false); }),
            "Internal assertion without a message detected! Please fix me asap");
}

TEST(Asserter, RaisesAlwaysWhatIsMadeAlways) {
  EXPECT_THROW((LocalAsserter("f", 1) = Asserter::MakeAlways(K7Q::kNullReference)), K7Q::Exception);
}

TEST(Asserter, CutsAMessageAtTheEndOfItsBuffer) {
  const std::string text(2 * Asserter::kBufferSize, 'x');
  const auto message = raised([&text] { LocalAsserter("f", 1) = Asserter(false).Make("%s", text.c_str()); });
  EXPECT_EQ(std::count(message.begin(), message.end(), 'x'), Asserter::kBufferSize - 1);
}

TEST(Asserter, ClearsTheBufferWhenTheMessageCannotBeFormatted) {
  // A wide character that the C locale cannot represent makes the formatting fail.
  const wchar_t text[] = {static_cast<wchar_t>(0xFFFFFF), 0};
  const auto message = raised([&text] { LocalAsserter("f", 1) = Asserter(false).Make("%ls", text); });
  EXPECT_EQ(message, "Internal assertion without a message detected! Please fix me asap");
  EXPECT_TRUE(
      std::all_of(std::begin(Asserter::fLogBuf), std::end(Asserter::fLogBuf), [](char c) { return c == 0; }));
}

TEST(TooManyElementsMessage, IsOneText) {
  EXPECT_STREQ(k7q::getTooManyElementsMessage(),
               "too many elements: set an optional value to one element, or unset it with an empty array");
}
