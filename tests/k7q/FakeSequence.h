#pragma once

#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"

namespace fake {

using K7Q::Deviant;

/// A view of a list of values, with reading and appending only.
class Sequence final : public K7Q::SequenceProxy {
 public:
  using Ref = K7Q::Generic::Ref;
  using IteratorIntf = K7Q::Generic::IteratorIntf;
  using IteratorPtr = std::unique_ptr<IteratorIntf>;
  using List = std::vector<Ref>;

  Sequence(K7Q::ClassObject owner, List& list, bool isImmutable)
      : mOwner(std::move(owner)), mList(list), mIsImmutable(isImmutable) {}
  bool isImmutable() const { return mIsImmutable; }

  Ref generic_at(const Deviant&, int index) const override {
    return mList.at(static_cast<std::size_t>(index));
  }
  Ref generic_front(const Deviant&) const override { return mList.front(); }
  Ref generic_back(const Deviant&) const override { return mList.back(); }
  IteratorPtr generic_begin(const Deviant&) const override { return nullptr; }
  IteratorPtr generic_end(const Deviant&) const override { return nullptr; }
  void generic_clear(const Deviant&) override { mList.clear(); }
  int generic_size(const Deviant&) const override { return static_cast<int>(mList.size()); }
  bool generic_empty(const Deviant&) const override { return mList.empty(); }
  void generic_insert(const Deviant&, int, Ref) override {}
  IteratorPtr generic_insert(const Deviant&, const IteratorIntf*, Ref) override { return nullptr; }
  IteratorPtr generic_erase(const Deviant&, const IteratorIntf*) override { return nullptr; }
  IteratorPtr generic_erase(const Deviant&, const IteratorIntf*, const IteratorIntf*) override {
    return nullptr;
  }
  void generic_erase(const Deviant&, int) override {}
  void generic_pop_back(const Deviant&) override { mList.pop_back(); }
  void generic_pop_front(const Deviant&) override {}
  void generic_push_back(const Deviant&, Ref ref) override { mList.push_back(std::move(ref)); }
  void generic_push_front(const Deviant&, Ref) override {}
  void generic_replace(const Deviant&, int, Ref) override {}
  bool generic_contains(const Deviant&, Ref) const override { return false; }
  const char* generic_getRuvoName(bool, bool, const char* name) const override { return name; }
  int generic_removeAll(const Deviant&, Ref) override { return 0; }

 private:
  K7Q::ClassObject mOwner;
  List& mList;
  bool mIsImmutable;
};

}  // namespace fake
