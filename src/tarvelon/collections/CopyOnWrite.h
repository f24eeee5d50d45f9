#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

/// Containers with value semantics at the price of a pointer.
///
/// All wrappers of a container type start on one shared, empty payload; a wrapper takes a private copy of its
/// payload at the moment it is about to be written, so one that is never written costs no storage.
///
/// Threads: a wrapper belongs to one thread at a time. Wrappers on different threads may share a payload,
///          whose count is atomic.
namespace Performance {

/// The payload that wrappers share. Whoever sees a count above 1 must not write the value.
template <class C>
struct COWWrapperTypedData {
  /// A payload for one holder.
  explicit COWWrapperTypedData(const C& value) : mRefCount(0), mValue(value) {
    mRefCount.store(1, std::memory_order_relaxed);
#ifndef __SANITIZE_THREAD__
    // The value must be there for every thread that learns of the payload. ThreadSanitizer, which sees no
    // fences, is content with the counts.
    std::atomic_thread_fence(std::memory_order_seq_cst);
#endif
  }

  /// The empty payload. Its count of 1 is its hold on itself: no wrapper ever frees it.
  static COWWrapperTypedData* getSharedNull() {
    static COWWrapperTypedData shared_null{C()};
    return &shared_null;
  }

  std::atomic<std::int32_t> mRefCount;
  C mValue;
};

template <class C>
class COWDataAccessToken;

/// Holds a payload, shared or private.
template <class C>
class COWWrapper {
 public:
  /// Starts on the shared empty payload. Cost: no allocation.
  COWWrapper() : COWWrapper(COWWrapperTypedData<C>::getSharedNull()) {}
  /// Shares the payload of `other`. REQUIRES: no token is attached to `other`, since whoever holds one may
  /// write.
  COWWrapper(const COWWrapper& other) : COWWrapper(other.mData) {}
  COWWrapper& operator=(const COWWrapper&) = delete;
  virtual ~COWWrapper() { swapData(nullptr); }

  /// Makes the payload private. When no memory is left for the copy, nothing has changed.
  void detach() {
    if (!isPrivate()) copyShared();
  }

  /// The private container, to be read and written for as long as the token is attached to this wrapper. A
  /// token that is attached to another wrapper is moved here.
  C& publicDataRef(COWDataAccessToken<C>& token) {
    detach();
    if (token.mWrapper != this) {
      token.release();
      token.mWrapper = this;
      ++mTokenCount;
    }
    detach();
    return mData->mValue;
  }

  /// The container as it stands. Any change through this wrapper may end it.
  const C& data() const noexcept { return mData->mValue; }
  /// Detaches and gives the private container, until the payload is shared again.
  C& detachedData() {
    detach();
    return mData->mValue;
  }

 protected:
  COWWrapperTypedData<C>* mData;
  /// How many tokens are attached.
  std::int32_t mTokenCount = 0;

 private:
  friend class COWDataAccessToken<C>;

  explicit COWWrapper(COWWrapperTypedData<C>* data) noexcept : mData(data) {
    mData->mRefCount.fetch_add(1, std::memory_order_acq_rel);
  }
  // Who finds the payload private writes it: what the others read of it before they let go comes first. On
  // the processors at hand this is a plain load.
  bool isPrivate() const noexcept { return mData->mRefCount.load(std::memory_order_acquire) == 1; }
  // Apart from detach(), which most of the time is the test alone.
  [[gnu::noinline]] void copyShared() {
    // Another thread may have let go meanwhile, which saves the copy.
    if (isPrivate()) return;
    swapData(new COWWrapperTypedData<C>(mData->mValue));
  }
  void swapData(COWWrapperTypedData<C>* data) noexcept {
    if (mData == data) return;
    if (mData->mRefCount.fetch_add(-1, std::memory_order_acq_rel) - 1 <= 0) free(mData);
    mData = data;
  }
  // Not inlined: the compiler would believe that the shared empty payload can come here, and warn.
  [[gnu::noinline]] static void free(COWWrapperTypedData<C>* data) noexcept { delete data; }
};

/// Says that the data of a wrapper is being accessed: a local object of whoever does so.
///
/// Lifetime: the wrapper must outlive the token.
template <class C>
class COWDataAccessToken {
 public:
  COWDataAccessToken() noexcept = default;
  COWDataAccessToken(const COWDataAccessToken&) = delete;
  COWDataAccessToken& operator=(const COWDataAccessToken&) = delete;
  ~COWDataAccessToken() { release(); }

  /// Detaches the token from its wrapper, if it has one.
  void release() noexcept {
    if (!mWrapper) return;
    --mWrapper->mTokenCount;
    mWrapper = nullptr;
  }

 private:
  friend class COWWrapper<C>;
  COWWrapper<C>* mWrapper = nullptr;
};

/// A wrapper that knows how many elements it has.
template <class C>
class COWWrapperContainer : public COWWrapper<C> {
 public:
  /// Does not detach.
  std::size_t size() const noexcept { return this->mData->mValue.size(); }
};

/// A wrapper of elements in a row.
template <class C>
class COWWrapperContainerSequential : public COWWrapperContainer<C> {
 public:
  using Position = typename C::const_iterator;

  /// Inserts before `position`, which may stand in a payload that is still shared: the private copy is
  /// changed at the same place. Gives the place of the new element.
  Position insert(const Position& position, const typename C::value_type& value) {
    const auto offset = position - this->mData->mValue.cbegin();
    C& own = this->detachedData();
    return own.insert(own.cbegin() + offset, value);
  }
  /// Erases one element in the same way. Gives the place of the element behind it.
  Position erase(Position position) {
    const auto offset = position - this->mData->mValue.cbegin();
    C& own = this->detachedData();
    return own.erase(own.cbegin() + offset);
  }
};

}  // namespace Performance
