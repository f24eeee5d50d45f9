#pragma once

#include <string>
#include <vector>

#include "tarvelon/platform/k7q/sequences/Rewritable.h"
#include "tests/native/Support.h"

// Helpers for the tests of many-valued properties and their iterators.

inline constexpr std::string_view kEmpty = "sequence is empty";
inline constexpr std::string_view kNegative = "sequence index must be positive";
inline constexpr std::string_view kBeyond = "sequence index out of bounds";

template <class Call>
void expectAssertion(std::string_view message, Call call) {
  const std::string text = refusalOf(call);
  EXPECT_EQ(text.find("Assertion failed: " + std::string(message) + " at platform/model/"), 0U) << text;
}

/// The sequence of the constants to which a formula refers.
class Sequence : public testing::Test {
 protected:
  Sequence() {
    for (const char16_t* name : {u"a", u"b", u"c"})
      mConstants.push_back(variant::SystemConst::create(mModel, name));
  }
  K7Q::Generic::SequenceIntf& sequence() const { return mSequence.get(); }
  K7Q::Generic::Ref ref(std::size_t index) const { return refOf(mConstants[index]); }
  void fill() const {
    for (const auto& constant : mConstants) sequence().generic_push_back({}, refOf(constant));
  }
  K7Q::IteratorHandle begin() const { return {sequence().generic_begin({}), {}}; }
  K7Q::IteratorHandle end() const { return {sequence().generic_end({}), {}}; }
  static K7Q::RewritableIntf& rewritable(K7Q::Generic::SequenceIntf& sequence) {
    return dynamic_cast<K7Q::RewritableIntf&>(sequence);
  }
  /// Replaces the contents of the sequence by the constants with these indices.
  void rewrite(const std::vector<std::size_t>& indices) const {
    std::vector<K7Q::Generic::Ref> refs;
    refs.reserve(indices.size());
    for (const std::size_t index : indices) refs.push_back(ref(index));
    rewritable(sequence()).rewrite({}, refs);
  }
  std::string names() const {
    std::string all;
    for (const auto& constant : mFormula.get<"SysConst">())
      all += K7Q::String::to_string(constant.get<"Name">());
    return all;
  }

  K7Q::Model mModel = K7Q::Model::create();
  std::vector<variant::SystemConst> mConstants;
  variant::SystemConstDependentFormula mFormula = variant::SystemConstDependentFormula::create(mModel, u"f");
  K7Q::SequenceHandle mSequence =
      Access<variant::SystemConstDependentFormula>(mFormula, "SysConst").sequence();
};
