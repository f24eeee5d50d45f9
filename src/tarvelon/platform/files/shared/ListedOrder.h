#pragma once

#include <cstdint>
#include <vector>

#include "tarvelon/platform/files/shared/KeyTable.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::files {

/// The order in which an attribute lists the elements of a list that has others already: the way back has put
/// them in. The list is put into that order once, when it is full.
class ListedOrder {
 public:
  bool isEmpty() const noexcept { return mElements.empty(); }
  /// The next one that is listed. False, and nothing noted, if it was listed before.
  bool add(metamodel::native::Instance& element) {
    if (!mSeen.insert(element.number())) return false;
    mElements.push_back(&element);
    return true;
  }
  /// Lets those come first that were listed, and the others behind them in the order they stand in; then
  /// forgets them. REQUIRES: all of them are in the list.
  void arrange(metamodel::native::WordList& list) {
    for (std::uint32_t index = 0; index < list.size(); ++index) add(*list.at(index).object);
    list.setAll([this](std::uint32_t index) { return metamodel::native::Word{.object = mElements[index]}; });
    mElements.clear();
    mSeen.clear();
  }

 private:
  std::vector<metamodel::native::Instance*> mElements;
  KeySet mSeen;
};

}  // namespace Tarvelon::files
