#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"

namespace {

template <class Thrown, class Caught>
bool isCaughtAs() {
  try {
    throw Thrown("text");
  } catch (const Caught& error) {
    return std::string(error.what()) == "text";
  } catch (...) {
    return false;
  }
}

TEST(BadAlloc, IsCaughtAsTheStandardOne) {
  try {
    throw bedrock::core::except::bad_alloc();
  } catch (const std::bad_alloc& error) {
    EXPECT_STREQ(error.what(), "memory is exhausted");
  }
}

TEST(Exceptions, AreCaughtAsK7QExceptionWithTheirText) {
  EXPECT_TRUE((isCaughtAs<K7Q::WrongType, K7Q::Exception>()));
  EXPECT_TRUE((isCaughtAs<K7Q::OutOfRange, K7Q::Exception>()));
  EXPECT_TRUE((isCaughtAs<K7Q::WrongValue, K7Q::Exception>()));
  EXPECT_TRUE((isCaughtAs<K7Q::UnknownName, K7Q::Exception>()));
  EXPECT_TRUE((isCaughtAs<K7Q::Exception, std::runtime_error>()));
}

TEST(Exceptions, AreToldApart) {
  EXPECT_FALSE((isCaughtAs<K7Q::WrongType, K7Q::WrongValue>()));
  EXPECT_FALSE((isCaughtAs<K7Q::OutOfRange, K7Q::WrongType>()));
  EXPECT_FALSE((isCaughtAs<K7Q::Exception, K7Q::UnknownName>()));
}

}  // namespace
