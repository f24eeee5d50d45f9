#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Assertion.h"
#include "tarvelon/boundary/k7q/Reference.h"

namespace K7Q {

namespace Generic {

/// Type-erased carrier of one element value.
///
/// The manager takes (true) or drops (false) a reference on the value; the equality function compares two
/// values.
class Ref {
 public:
  using Manager = void (*)(void* value, bool take);
  using Equality = bool (*)(const void* left, const void* right);

  constexpr Ref() noexcept = default;
  Ref(void* value, std::uintptr_t second, Manager manager, Equality equality)
      : mValue(value), mSecond(second), mManager(manager), mEquality(equality) {
    if (mManager) mManager(mValue, true);
  }
  Ref(const Ref& other) : Ref(other.mValue, other.mSecond, other.mManager, other.mEquality) {}
  Ref(Ref&& other) noexcept
      : mValue(std::exchange(other.mValue, nullptr)),
        mSecond(other.mSecond),
        mManager(std::exchange(other.mManager, nullptr)),
        mEquality(other.mEquality) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(mValue, other.mValue);
    std::swap(mSecond, other.mSecond);
    std::swap(mManager, other.mManager);
    std::swap(mEquality, other.mEquality);
    return *this;
  }
  ~Ref() {
    if (mManager) mManager(mValue, false);
  }

  /// The value: of a primitive the cell's 32-bit value, of a model object its ObjectIntf, of a text its
  /// StringIntf.
  void* value() const noexcept { return mValue; }
  /// 0 for a primitive, the deviant word of an object.
  std::uintptr_t second() const noexcept { return mSecond; }
  bool equals(const Ref& other) const {
    return mEquality && mEquality == other.mEquality && mEquality(mValue, other.mValue);
  }

 private:
  void* mValue = nullptr;
  std::uintptr_t mSecond = 0;
  Manager mManager = nullptr;
  Equality mEquality = nullptr;
};

class IteratorIntf;

/// The generic sequence interface. Indices are 0-based; the slot order is fixed.
/// Threads: a sequence, its iterators and the Refs that it gives belong to the thread that uses their model.
class TARVELON_API SequenceIntf : public ReferenceCountingIntf {
 public:
  ~SequenceIntf() override;
  const char* getVisitMethod() const override;
  void* cast(CooperativeVisitor::TagPair tag) override;
  virtual Ref generic_at(const Deviant& aDeviant, int index) const = 0;
  virtual Ref generic_front(const Deviant& aDeviant) const = 0;
  virtual Ref generic_back(const Deviant& aDeviant) const = 0;
  virtual std::unique_ptr<IteratorIntf> generic_begin(const Deviant& aDeviant) const = 0;
  virtual std::unique_ptr<IteratorIntf> generic_end(const Deviant& aDeviant) const = 0;
  virtual void generic_clear(const Deviant& aDeviant) = 0;
  virtual int generic_size(const Deviant& aDeviant) const = 0;
  virtual bool generic_empty(const Deviant& aDeviant) const = 0;
  virtual void generic_insert(const Deviant& aDeviant, int index, Ref ref) = 0;
  virtual std::unique_ptr<IteratorIntf> generic_insert(const Deviant& aDeviant, const IteratorIntf* iterator,
                                                       Ref ref) = 0;
  virtual std::unique_ptr<IteratorIntf> generic_erase(const Deviant& aDeviant,
                                                      const IteratorIntf* iterator) = 0;
  virtual std::unique_ptr<IteratorIntf> generic_erase(const Deviant& aDeviant, const IteratorIntf* first,
                                                      const IteratorIntf* last) = 0;
  virtual void generic_erase(const Deviant& aDeviant, int index) = 0;
  virtual void generic_pop_back(const Deviant& aDeviant) = 0;
  virtual void generic_pop_front(const Deviant& aDeviant) = 0;
  virtual void generic_push_back(const Deviant& aDeviant, Ref ref) = 0;
  virtual void generic_push_front(const Deviant& aDeviant, Ref ref) = 0;
  virtual void generic_replace(const Deviant& aDeviant, int index, Ref ref) = 0;
  virtual bool generic_contains(const Deviant& aDeviant, Ref ref) const = 0;
  /// The host class of the sequence, told from what it holds; `name` is the class that was declared.
  virtual const char* generic_getRuvoName(bool isSequenceImmutable, bool isElementImmutable,
                                          const char* name) const = 0;
  virtual int generic_removeAll(const Deviant& aDeviant, Ref ref) = 0;
  virtual bool specialized_equal(const SequenceIntf* other) const;
  virtual bool specialized_assign(const SequenceIntf* other);
};

/// The generic iterator interface; the slot order is fixed.
class TARVELON_API IteratorIntf : public ReferenceCountingIntf {
 public:
  ~IteratorIntf() override;
  const char* getVisitMethod() const override;
  void* cast(CooperativeVisitor::TagPair tag) override;
  virtual Ref current(const Deviant& aDeviant) const = 0;
  virtual void next(const Deviant& aDeviant) = 0;
  virtual void previous(const Deviant& aDeviant) = 0;
  virtual std::unique_ptr<IteratorIntf> clone() const = 0;
  virtual bool equal(const IteratorIntf* other) const = 0;
};

}  // namespace Generic

/// A sequence that counts its references for real; the count starts at 0 and the last release destroys it.
class TARVELON_API SequenceProxy : public Generic::SequenceIntf {
 public:
  ~SequenceProxy() override;
  void addRef() const override;
  void release() const override;
  int numRef() const override { return mReferences; }

 private:
  mutable std::int32_t mReferences = 0;
};

/// An iterator that counts its references for real.
class TARVELON_API IteratorProxy : public Generic::IteratorIntf {
 public:
  ~IteratorProxy() override;
  void addRef() const override;
  void release() const override;
  int numRef() const override { return mReferences; }

 private:
  mutable std::int32_t mReferences = 0;
};

/// The handle on a sequence: interface and deviant. Copying shares the object. A null handle is a legal
/// state.
class SequenceHandle {
 public:
  constexpr SequenceHandle() noexcept = default;
  SequenceHandle(Generic::SequenceIntf* interface, Deviant deviant)
      : mInterface(interface), mDeviant(deviant) {
    if (mInterface) mInterface->addRef();
  }
  SequenceHandle(const SequenceHandle& other) : SequenceHandle(other.mInterface, other.mDeviant) {}
  SequenceHandle(SequenceHandle&& other) noexcept
      : mInterface(std::exchange(other.mInterface, nullptr)), mDeviant(other.mDeviant) {}
  /// With equal pointers nothing happens.
  SequenceHandle& operator=(const SequenceHandle& other) {
    if (mInterface == other.mInterface) return *this;
    SequenceHandle copy(other);
    std::swap(mInterface, copy.mInterface);
    mDeviant = other.mDeviant;
    return *this;
  }
  ~SequenceHandle() {
    if (mInterface) mInterface->release();
  }
  Generic::SequenceIntf* getInterface() const noexcept { return mInterface; }
  Deviant getDeviant() const noexcept { return mDeviant; }
  /// The sequence behind the handle. Raises the NULL sequence text for a null handle.
  Generic::SequenceIntf& get() const {
    if (!mInterface) throwNull();
    return *mInterface;
  }

 private:
  [[noreturn]] TARVELON_API static void throwNull();
  Generic::SequenceIntf* mInterface = nullptr;
  Deviant mDeviant;
};

/// The handle on an iterator: interface and deviant. Copying clones the iterator.
class IteratorHandle {
 public:
  constexpr IteratorHandle() noexcept = default;
  IteratorHandle(Generic::IteratorIntf* interface, Deviant deviant)
      : mInterface(interface), mDeviant(deviant) {
    if (mInterface) mInterface->addRef();
  }
  IteratorHandle(std::unique_ptr<Generic::IteratorIntf> iterator, Deviant deviant)
      : IteratorHandle(iterator.release(), deviant) {}
  IteratorHandle(const IteratorHandle& other)
      : IteratorHandle(other.mInterface ? other.mInterface->clone() : nullptr, other.mDeviant) {}
  IteratorHandle(IteratorHandle&& other) noexcept
      : mInterface(std::exchange(other.mInterface, nullptr)), mDeviant(other.mDeviant) {}
  IteratorHandle& operator=(IteratorHandle other) noexcept {
    std::swap(mInterface, other.mInterface);
    std::swap(mDeviant, other.mDeviant);
    return *this;
  }
  ~IteratorHandle() {
    // The count says who frees, which the analyser cannot follow through clones.
    if (mInterface) mInterface->release();  // NOLINT(clang-analyzer-cplusplus.NewDelete)
  }
  Generic::IteratorIntf* getInterface() const noexcept { return mInterface; }
  Deviant getDeviant() const noexcept { return mDeviant; }

 private:
  Generic::IteratorIntf* mInterface = nullptr;
  Deviant mDeviant;
};

template <class T>
class ImmutableSequence : public SequenceHandle {
 public:
  using SequenceHandle::SequenceHandle;
};

template <class T>
class Sequence : public SequenceHandle {
 public:
  using SequenceHandle::SequenceHandle;
};

template <class T>
class ImmutableIterator : public IteratorHandle {
 public:
  using IteratorHandle::IteratorHandle;
};

template <class T>
class Iterator : public IteratorHandle {
 public:
  using IteratorHandle::IteratorHandle;
};

}  // namespace K7Q
