#pragma once

#include <memory>
#include <utility>

#include "tarvelon/boundary/k7q/Sequence.h"

namespace K7Q {

/// Adds a reference count to a sequence that has none. The proxy owns the sequence and forwards every
/// operation to it. The release of the last reference destroys both.
///
/// Threads: one thread at a time, because the count is a plain integer.
class GenericReferenceCountingSequenceProxy final : public SequenceProxy {
 public:
  using IteratorPtr = std::unique_ptr<Generic::IteratorIntf>;

  explicit GenericReferenceCountingSequenceProxy(
      std::unique_ptr<Generic::SequenceIntf> implementation) noexcept
      : mImplementation(std::move(implementation)) {}
  ~GenericReferenceCountingSequenceProxy() override;

  Generic::Ref generic_at(const Deviant& aDeviant, int index) const override;
  Generic::Ref generic_front(const Deviant& aDeviant) const override;
  Generic::Ref generic_back(const Deviant& aDeviant) const override;
  IteratorPtr generic_begin(const Deviant& aDeviant) const override;
  IteratorPtr generic_end(const Deviant& aDeviant) const override;
  void generic_clear(const Deviant& aDeviant) override;
  int generic_size(const Deviant& aDeviant) const override;
  bool generic_empty(const Deviant& aDeviant) const override;
  void generic_insert(const Deviant& aDeviant, int index, Generic::Ref ref) override;
  IteratorPtr generic_insert(const Deviant& aDeviant, const Generic::IteratorIntf* iterator,
                             Generic::Ref ref) override;
  IteratorPtr generic_erase(const Deviant& aDeviant, const Generic::IteratorIntf* iterator) override;
  IteratorPtr generic_erase(const Deviant& aDeviant, const Generic::IteratorIntf* first,
                            const Generic::IteratorIntf* last) override;
  void generic_erase(const Deviant& aDeviant, int index) override;
  void generic_pop_back(const Deviant& aDeviant) override;
  void generic_pop_front(const Deviant& aDeviant) override;
  void generic_push_back(const Deviant& aDeviant, Generic::Ref ref) override;
  void generic_push_front(const Deviant& aDeviant, Generic::Ref ref) override;
  void generic_replace(const Deviant& aDeviant, int index, Generic::Ref ref) override;
  bool generic_contains(const Deviant& aDeviant, Generic::Ref ref) const override;
  const char* generic_getRuvoName(bool isSequenceImmutable, bool isElementImmutable,
                                  const char* name) const override;
  int generic_removeAll(const Deviant& aDeviant, Generic::Ref ref) override;

 private:
  std::unique_ptr<Generic::SequenceIntf> mImplementation;
};

}  // namespace K7Q
