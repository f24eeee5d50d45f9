#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

/// Copy-on-write containers.
///
/// A wrapper points to a reference-counted payload, which contains the container. All new wrappers of a
/// container type share one empty payload, so a wrapper that is never written needs no memory for a
/// container. Before a wrapper is written, it copies a shared payload.
///
/// Threads: one thread at a time uses a wrapper. Wrappers of different threads may share a payload, because
///          the reference count is atomic.
namespace Performance {

/// The payload: a container and a reference count. While the count is above 1, the container must not be
/// written.
template <class C>
struct COWWrapperTypedData {
  /// Creates a payload with a copy of `value` and a reference count of 1.
  explicit COWWrapperTypedData(const C& value) : mRefCount(0), mValue(value) {
    mRefCount.store(1, std::memory_order_relaxed);
#ifndef __SANITIZE_THREAD__
    // The value must be visible to every thread that gets a pointer to the payload. ThreadSanitizer does not
    // support fences; for its analysis the atomic operations on the count are enough.
    std::atomic_thread_fence(std::memory_order_seq_cst);
#endif
  }

  /// The shared empty payload. Its count starts at 1 without a wrapper, so no wrapper ever frees it.
  static COWWrapperTypedData* getSharedNull() {
    static COWWrapperTypedData shared_null{C()};
    return &shared_null;
  }

  std::atomic<std::int32_t> mRefCount;
  C mValue;
};

template <class C>
class COWDataAccessToken;

/// Base of the wrappers: points to a shared or private payload.
template <class C>
class COWWrapper {
 public:
  /// Shares the empty payload. Does not allocate.
  COWWrapper() : COWWrapper(COWWrapperTypedData<C>::getSharedNull()) {}
  /// Shares the payload of `other`. REQUIRES: no token is attached to `other`; code with a token may write
  /// the payload.
  COWWrapper(const COWWrapper& other) : COWWrapper(other.mData) {}
  COWWrapper& operator=(const COWWrapper&) = delete;
  virtual ~COWWrapper() { swapData(nullptr); }

  /// Makes the payload private: copies a shared payload. Throws std::bad_alloc, and then nothing has changed.
  void detach() {
    if (!isPrivate()) copyShared();
  }

  /// Makes the payload private and returns the container, which may be read and written as long as the token
  /// is attached to this wrapper. Detaches the token from any other wrapper.
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

  /// The container for reading. Any change through this wrapper may invalidate the reference.
  const C& data() const noexcept { return mData->mValue; }
  /// Makes the payload private and returns the container. The container may be written until the payload is
  /// shared again.
  C& detachedData() {
    detach();
    return mData->mValue;
  }

 protected:
  COWWrapperTypedData<C>* mData;
  /// The number of attached tokens.
  std::int32_t mTokenCount = 0;

 private:
  friend class COWDataAccessToken<C>;

  explicit COWWrapper(COWWrapperTypedData<C>* data) noexcept : mData(data) {
    mData->mRefCount.fetch_add(1, std::memory_order_acq_rel);
  }
  // The caller writes a private payload. The acquire order makes sure that the reads of former sharers happen
  // before that write. On x86-64 this is a plain load.
  bool isPrivate() const noexcept { return mData->mRefCount.load(std::memory_order_acquire) == 1; }
  // Not inlined into detach(), so that the usual case is only a test.
  [[gnu::noinline]] void copyShared() {
    // Another thread may have released the payload meanwhile; then no copy is needed.
    if (isPrivate()) return;
    swapData(new COWWrapperTypedData<C>(mData->mValue));
  }
  void swapData(COWWrapperTypedData<C>* data) noexcept {
    if (mData == data) return;
    if (mData->mRefCount.fetch_add(-1, std::memory_order_acq_rel) - 1 <= 0) free(mData);
    mData = data;
  }
  // Not inlined: the compiler would assume that the shared empty payload can be freed here, and warn.
  [[gnu::noinline]] static void free(COWWrapperTypedData<C>* data) noexcept { delete data; }
};

/// Marks the scope in which the container of a wrapper is accessed. Code that calls publicDataRef() has a
/// token as a local variable.
///
/// REQUIRES: the wrapper outlives the token.
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

/// A wrapper of a container with size().
template <class C>
class COWWrapperContainer : public COWWrapper<C> {
 public:
  /// Does not copy a shared payload.
  std::size_t size() const noexcept { return this->mData->mValue.size(); }
};

/// A wrapper of a sequential container with random access, such as std::vector.
template <class C>
class COWWrapperContainerSequential : public COWWrapperContainer<C> {
 public:
  using Position = typename C::const_iterator;

  /// Inserts before `position` and returns the position of the new element. `position` may refer to the
  /// shared payload: the function then inserts at the same index of the private copy.
  Position insert(const Position& position, const typename C::value_type& value) {
    const auto offset = position - this->mData->mValue.cbegin();
    C& own = this->detachedData();
    return own.insert(own.cbegin() + offset, value);
  }
  /// Erases the element at `position`, in the same way. Returns the position of the element after it.
  Position erase(Position position) {
    const auto offset = position - this->mData->mValue.cbegin();
    C& own = this->detachedData();
    return own.erase(own.cbegin() + offset);
  }
};

}  // namespace Performance
