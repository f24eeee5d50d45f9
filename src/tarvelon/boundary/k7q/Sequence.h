#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Assertion.h"
#include "tarvelon/boundary/k7q/Reference.h"

namespace K7Q {

namespace Generic {

/// One element of a sequence in type-erased form: a pointer to the value, a second word, a function that
/// counts references and a function that compares values.
///
/// makeObjectRef(), makeStringRef() and makeRef() create Refs for model objects, texts and enumeration
/// values. A default-constructed Ref is empty.
///
/// Ownership: a Ref holds one reference on the value.
/// Threads:   a Ref belongs to the thread that uses the value.
class Ref {
 public:
  /// Adds (`take` is true) or releases (false) a reference on the value.
  using Manager = void (*)(void* value, bool take);
  /// Compares two values of the kind for which the Ref was created.
  using Equality = bool (*)(const void* left, const void* right);

  constexpr Ref() noexcept = default;
  /// Adds a reference on the value.
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

  /// The pointer to the value: the ObjectIntf of a model object, the StringIntf of a text, the PrimitiveCell
  /// of an enumeration value. Null for an empty Ref.
  void* value() const noexcept { return mValue; }
  /// The deviant word of a model object, 0 for any other value.
  std::uintptr_t second() const noexcept { return mSecond; }
  /// Whether both Refs carry equal values of the same kind. An empty Ref is equal to no other.
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

/// The interface of all sequences: many-valued properties of a model, and lists that a host creates.
///
/// Indices count from 0. The deviant of each call becomes the deviant of the returned elements, and a deviant
/// that forbids writing makes changing functions throw. The order of the virtual functions is part of the
/// binary interface and must not change.
///
/// Elements:  a property of references contains an object at most once. Adding an object that is already an
///            element at the front or the back changes nothing; inserting it at an index moves it there;
///            replacing another element by it exchanges the two.
/// Errors:    an index out of range, an empty sequence, an element of a wrong class or model and a view that
///            cannot be changed throw a K7Q::Exception, or a type derived from it, before anything changes.
/// Iterators: a change of a property invalidates the iterators of its sequences, except for the iterator that
///            the changing function returns. A sequence of a property rejects an invalid iterator and an
///            iterator of another sequence with a K7Q::Exception. The sequences of enumeration values that a
///            host creates do not test iterators (collections/MultiIndexImpl.h).
/// Threads:   the thread that uses the model uses the sequence, its iterators and the returned Refs.
class TARVELON_API SequenceIntf : public ReferenceCountingIntf {
 public:
  ~SequenceIntf() override;
  const char* getVisitMethod() const override;
  void* cast(CooperativeVisitor::TagPair tag) override;
  /// The element at the index. Throws for an index out of range.
  virtual Ref generic_at(const Deviant& aDeviant, int index) const = 0;
  /// The first and the last element. Both throw for an empty sequence.
  virtual Ref generic_front(const Deviant& aDeviant) const = 0;
  virtual Ref generic_back(const Deviant& aDeviant) const = 0;
  /// Return new iterators, at the first element and behind the last one.
  virtual std::unique_ptr<IteratorIntf> generic_begin(const Deviant& aDeviant) const = 0;
  virtual std::unique_ptr<IteratorIntf> generic_end(const Deviant& aDeviant) const = 0;
  /// Removes all elements. Contained objects stay in the model, without an owner.
  virtual void generic_clear(const Deviant& aDeviant) = 0;
  virtual int generic_size(const Deviant& aDeviant) const = 0;
  virtual bool generic_empty(const Deviant& aDeviant) const = 0;
  /// Inserts before the element at `index`. The index may be equal to the size.
  virtual void generic_insert(const Deviant& aDeviant, int index, Ref ref) = 0;
  /// Inserts before the position of the iterator, and returns an iterator on the inserted element.
  virtual std::unique_ptr<IteratorIntf> generic_insert(const Deviant& aDeviant, const IteratorIntf* iterator,
                                                       Ref ref) = 0;
  /// Removes an element, and returns an iterator on the element after it.
  virtual std::unique_ptr<IteratorIntf> generic_erase(const Deviant& aDeviant,
                                                      const IteratorIntf* iterator) = 0;
  /// Removes the elements from `first` up to, but not including, `last`.
  virtual std::unique_ptr<IteratorIntf> generic_erase(const Deviant& aDeviant, const IteratorIntf* first,
                                                      const IteratorIntf* last) = 0;
  virtual void generic_erase(const Deviant& aDeviant, int index) = 0;
  /// Remove the last and the first element. Both throw for an empty sequence.
  virtual void generic_pop_back(const Deviant& aDeviant) = 0;
  virtual void generic_pop_front(const Deviant& aDeviant) = 0;
  /// Add an element at the end and at the front. An object that is added to a containment property moves
  /// there from its previous owner; the same holds for insertion and replacement.
  virtual void generic_push_back(const Deviant& aDeviant, Ref ref) = 0;
  virtual void generic_push_front(const Deviant& aDeviant, Ref ref) = 0;
  /// Replaces the element at the index. A contained object that is replaced stays in the model, without an
  /// owner.
  virtual void generic_replace(const Deviant& aDeviant, int index, Ref ref) = 0;
  /// Whether an element is equal to `ref`. Objects are equal if they are the same object, texts if they have
  /// the same characters.
  virtual bool generic_contains(const Deviant& aDeviant, Ref ref) const = 0;
  /// The dotted name of the sequence's host class, found from its element class. `name` is the class that the
  /// signature declares; a sequence without a host class of its own returns it.
  virtual const char* generic_getRuvoName(bool isSequenceImmutable, bool isElementImmutable,
                                          const char* name) const = 0;
  /// Removes all elements that are equal to `ref`, and returns their number.
  virtual int generic_removeAll(const Deviant& aDeviant, Ref ref) = 0;
  /// Whether both sequences have equal elements in the same order. The default implementation compares the
  /// addresses of the two sequences.
  virtual bool specialized_equal(const SequenceIntf* other) const;
  /// Replaces all elements by those of `other`. Returns false if `other` is a sequence of another kind. The
  /// default implementation always returns false.
  virtual bool specialized_assign(const SequenceIntf* other);
};

/// The interface of all iterators: a position in a sequence, which may be outside of the sequence. The order
/// of the virtual functions is part of the binary interface and must not change.
///
/// Example:
///   const auto end = sequence.generic_end(deviant);
///   for (auto each = sequence.generic_begin(deviant); !each->equal(end.get()); each->next(deviant))
///     visit(each->current(deviant));
class TARVELON_API IteratorIntf : public ReferenceCountingIntf {
 public:
  ~IteratorIntf() override;
  const char* getVisitMethod() const override;
  void* cast(CooperativeVisitor::TagPair tag) override;
  /// The element at the position.
  virtual Ref current(const Deviant& aDeviant) const = 0;
  /// Move the iterator by one element. The iterators of a property may move beyond both ends; current() then
  /// throws.
  virtual void next(const Deviant& aDeviant) = 0;
  virtual void previous(const Deviant& aDeviant) = 0;
  /// Returns a new iterator at the same position.
  virtual std::unique_ptr<IteratorIntf> clone() const = 0;
  /// Whether both iterators are at the same position of the same sequence.
  virtual bool equal(const IteratorIntf* other) const = 0;
};

}  // namespace Generic

/// Base of sequences that count their references. The count starts at 0; the release() that brings the count
/// back to 0 destroys the sequence.
class TARVELON_API SequenceProxy : public Generic::SequenceIntf {
 public:
  ~SequenceProxy() override;
  void addRef() const override;
  void release() const override;
  int numRef() const override { return mReferences; }

 private:
  mutable std::int32_t mReferences = 0;
};

/// Base of iterators that count their references in the same way as SequenceProxy.
class TARVELON_API IteratorProxy : public Generic::IteratorIntf {
 public:
  ~IteratorProxy() override;
  void addRef() const override;
  void release() const override;
  int numRef() const override { return mReferences; }

 private:
  mutable std::int32_t mReferences = 0;
};

/// A handle on a sequence: a reference on the sequence, and the deviant for its elements. Copies of a handle
/// share the sequence. A default-constructed handle is null.
///
/// Example:
///   const SequenceHandle sequence(methods.getSequence(object, deviant, id, false), deviant);
///   for (int i = 0; i < sequence.get().generic_size(deviant); ++i)
///     visit(sequence.get().generic_at(deviant, i));
class SequenceHandle {
 public:
  constexpr SequenceHandle() noexcept = default;
  /// Adds a reference on the sequence, which may be null.
  SequenceHandle(Generic::SequenceIntf* interface, Deviant deviant)
      : mInterface(interface), mDeviant(deviant) {
    if (mInterface) mInterface->addRef();
  }
  SequenceHandle(const SequenceHandle& other) : SequenceHandle(other.mInterface, other.mDeviant) {}
  SequenceHandle(SequenceHandle&& other) noexcept
      : mInterface(std::exchange(other.mInterface, nullptr)), mDeviant(other.mDeviant) {}
  /// Assigning a handle on the same sequence changes nothing, not even the deviant.
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
  /// The sequence. Throws a K7Q::Exception for a null handle.
  Generic::SequenceIntf& get() const {
    if (!mInterface) throwNull();
    return *mInterface;
  }

 private:
  [[noreturn]] TARVELON_API static void throwNull();
  Generic::SequenceIntf* mInterface = nullptr;
  Deviant mDeviant;
};

/// A handle on an iterator: a reference on the iterator, and the deviant for its elements. Copying a handle
/// clones the iterator, so the copies move independently.
class IteratorHandle {
 public:
  constexpr IteratorHandle() noexcept = default;
  /// Adds a reference on the iterator, which may be null.
  IteratorHandle(Generic::IteratorIntf* interface, Deviant deviant)
      : mInterface(interface), mDeviant(deviant) {
    if (mInterface) mInterface->addRef();
  }
  /// Takes over a new iterator, whose count is 0.
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
    // The analyser cannot follow the reference count through clones.
    if (mInterface) mInterface->release();  // NOLINT(clang-analyzer-cplusplus.NewDelete)
  }
  Generic::IteratorIntf* getInterface() const noexcept { return mInterface; }
  Deviant getDeviant() const noexcept { return mDeviant; }

 private:
  Generic::IteratorIntf* mInterface = nullptr;
  Deviant mDeviant;
};

/// The next four classes give a handle the type of its elements. The conversions between a host and native
/// functions use that type; at run time, the four classes are the same as the untyped handles.
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
