#pragma once

#include <string>

#include "tarvelon/platform/tarvelon/api/History.h"
#include "tarvelon/platform/tarvelon/api/Search.h"
#include "tests/native/Shown.h"
#include "tests/native/Support.h"

// What the tests of transactions and of the history share.

/// A model with one package.
class Transactions : public testing::Test {
 protected:
  std::string shown() const { return shown::everything(mModel); }
  std::size_t objects() const { return Tarvelon::model::objects(mModel).size(); }

  K7Q::Model mModel = K7Q::Model::create();
  common::Package mPackage = common::Package::create(mModel, u"P");
};
