#include "tarvelon/platform/model/objects/Instance.h"

#include <algorithm>
#include <cstring>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/words/Memory.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::metamodel::native {

namespace {

void disposeList(WordList& list, bool isOfTexts) noexcept {
  for (std::uint32_t index = 0; isOfTexts && index < list.size(); ++index) list.at(index).text->release();
  list.dispose();
}

}  // namespace

Instance::~Instance() { dropValues(); }

void Instance::addRef() const {
  if (mReferences++ == 0) mModel->addRef();
}

void Instance::release() const {
  if (--mReferences != 0) return;
  NativeModel& model = *mModel;
  if (hasExpired()) model.free(const_cast<Instance&>(*this));
  model.release();
}

void Instance::reserve(unsigned more) {
  const unsigned needed = count() + more;
  if (needed > capacity()) grow(needed);
}

LastingRoom Instance::reserveLasting() {
  if (mModel->journal()) {
    grow(capacity() + 1);
  } else {
    reserve(1);
  }
  return {};
}

void Instance::grow(unsigned needed) {
  // An odd number of words fills the allocator's blocks.
  const unsigned capacity = needed | 1;
  Word* words = allocateArray<Word>(capacity);
  std::memcpy(words, this->words(), count() * sizeof(Word));
  if (isExternal()) utFree(mWords[0].words);
  mWords[0].words = words;
  mWords[1].bits = capacity;
  mState |= kExternal;
}

void Instance::putWord(unsigned slot, Word word) noexcept {
  const std::uint64_t bit = std::uint64_t{1} << slot;
  Word* place = words() + std::popcount(mState & (bit - 1));
  if ((mState & bit) == 0) {
    const auto behind = static_cast<std::size_t>(words() + count() - place);
    std::memmove(place + 1, place, behind * sizeof(Word));
    mState |= bit;
  }
  *place = word;
}

void Instance::remove(unsigned slot, StepRoom /*room*/) noexcept {
  Word* place = find(slot);
  const auto behind = static_cast<std::size_t>(words() + count() - place - 1);
  std::memmove(place, place + 1, behind * sizeof(Word));
  mState &= ~(std::uint64_t{1} << slot);
}

void Instance::reserveReferrer() {
  if (Word* word = find(kReferrerSlot)) {
    Referrers(word->bits).reserve();
  } else {
    put(kReferrerSlot, Word{.bits = 0}, reserveLasting());
  }
}

void Instance::addReferrer(Referrer referrer) noexcept {
  Referrers(find(kReferrerSlot)->bits).insert(referrer);
}

void Instance::removeReferrer(Referrer referrer, bool keepsRoom) noexcept {
  if (Word* word = find(kReferrerSlot)) Referrers(word->bits).erase(referrer, keepsRoom);
}

bool Instance::isReferredBy(Referrer referrer) const noexcept {
  const Word* word = find(kReferrerSlot);
  if (!word) return false;
  std::uint64_t bits = word->bits;
  return Referrers(bits).contains(referrer);
}

void Instance::dropValues() noexcept {
  const Word* word = words();
  for (std::uint64_t left = presence(); left != 0; left &= left - 1, ++word) {
    const auto bit = left & (~left + 1);
    if ((mClass->listSlots & bit) != 0) {
      disposeList(*word->list, (mClass->textSlots & bit) != 0);
    } else if ((mClass->textSlots & bit) != 0) {
      if (word->text) word->text->release();
    } else if (bit == std::uint64_t{1} << kReferrerSlot) {
      std::uint64_t bits = word->bits;
      Referrers(bits).dispose();
    }
  }
  if (isExternal()) utFree(mWords[0].words);
  mState &= ~(kPresence | kExternal);
}

void Instance::expire() noexcept {
  dropValues();
  mOwner = nullptr;
  mState = kGone;
  if (mReferences == 0) mModel->free(*this);
}

}  // namespace Tarvelon::metamodel::native
