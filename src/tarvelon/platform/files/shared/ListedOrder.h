#pragma once

#include <cstdint>
#include <vector>

#include "tarvelon/platform/files/shared/KeyTable.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::files {

/// Records the order in which an attribute lists the elements of a list that already has elements: opposite
/// references that were read before have inserted them. Once all elements are known, the list is sorted into
/// that order in one go.
class ListedOrder {
 public:
  bool isEmpty() const noexcept { return mElements.empty(); }
  /// Adds the next listed element. Returns false and changes nothing if the element was added before.
  bool add(metamodel::native::Instance& element) {
    if (!mSeen.insert(element.number())) return false;
    mElements.push_back(&element);
    return true;
  }
  /// Sorts the list: first the added elements in their order, then the others in their present order. Then
  /// forgets the elements. REQUIRES: the list contains all added elements.
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
