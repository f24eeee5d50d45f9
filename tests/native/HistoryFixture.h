#pragma once

#include <string>

#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

// Helpers for the tests of transactions and of the history.

/// A model with one package.
class Transactions : public testing::Test {
 protected:
  std::string shown() const { return shown::everything(mModel); }
  std::size_t objects() const { return Tarvelon::model::objects(mModel).size(); }

  /// Makes a change, undoes and redoes it twice, and compares everything that can be seen of the model.
  template <class Change>
  void takeBack(Change change) {
    const std::string before = shown();
    change();
    const std::string after = shown();
    ASSERT_NE(before, after);
    for (int i = 0; i < 2; ++i) {
      ASSERT_TRUE(Tarvelon::model::undo(mModel));
      EXPECT_EQ(shown(), before);
      shown::checkAgreement(mModel);
      ASSERT_TRUE(Tarvelon::model::redo(mModel));
      EXPECT_EQ(shown(), after);
      shown::checkAgreement(mModel);
    }
  }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mPackage = common::Package::create(mModel, u"P");
};
