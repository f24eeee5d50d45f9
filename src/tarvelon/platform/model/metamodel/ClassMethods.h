#pragma once

#include <array>
#include <atomic>
#include <span>
#include <typeinfo>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

namespace Tarvelon::metamodel::native {

struct ClassData;
class Instance;
class Property;

/// The introspective table of a class: the rows of the class and, once the class is first used, its
/// ClassData.
///
/// A class that is only named and has no rows has a table too: it has no properties and no instances. Tables
/// are constant-initialised, so loading the library runs no code for them.
class ClassMethods final : public K7Q::IntrospectiveMethods {
 public:
  constexpr ClassMethods(const ClassName& name, const std::type_info& interface, const ClassTable* rows,
                         std::span<const K7Q::IntrospectiveMethods* const> bases) noexcept
      : mClassName(&name),
        mInterface(&interface),
        mRows(rows),
        mBases(bases),
        mNames{ruvo::LiteralName(name.name), ruvo::LiteralName(name.immutable)} {}

  void get(K7Q::Object& value, K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant deviant,
           unsigned id) const override;
  bool has(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant deviant, unsigned id) const override;
  void set(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant deviant, unsigned id,
           const K7Q::Object& value) const override;
  void unset(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant deviant, unsigned id) const override;
  K7Q::Generic::SequenceIntf* getSequence(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant deviant,
                                          unsigned id, bool immutable) const override;
  K7Q::Generic::SequenceIntf* read(K7Q::NSInterface::ClassObjectIntf* object, K7Q::Deviant deviant,
                                   unsigned index) const override;
  unsigned numberOfProperties() const override;
  const K7Q::NSInterface::PropertyIntf* descriptor(unsigned id) const override;
  std::span<const K7Q::IntrospectiveMethods* const> bases() const override { return mBases; }
  K7Q::ImmutableClass metaClass() const override;
  const ruvo::InternedName& name(bool immutable) const override { return mNames[immutable ? 1 : 0].get(); }
  bool isAbstract() const override { return !mRows || mRows->constructors.empty(); }
  bool isInstance(const K7Q::NSInterface::ObjectIntf* object) const override;
  K7Q::ClassObject create(const K7Q::Model& model, unsigned constructor,
                          std::span<const K7Q::Object> arguments) const override;

  /// Null for a class without rows.
  const ClassTable* rows() const noexcept { return mRows; }
  const ClassName& className() const noexcept { return *mClassName; }
  const std::type_info& interface() const noexcept { return *mInterface; }
  /// The layout of the class. It is created by the first call.
  const ClassData& data() const {
    const ClassData* data = mData.load(std::memory_order_acquire);
    return data ? *data : makeData();
  }
  bool isInstance(const Instance& object) const noexcept;
  /// The name of the host's class for sequences of this class's objects.
  const ruvo::InternedName& sequenceName(bool isSequenceImmutable, bool isElementImmutable) const;

 private:
  struct Place;
  const ClassData& makeData() const;
  Place locate(K7Q::NSInterface::ClassObjectIntf* object, unsigned id) const;
  [[noreturn]] void refuseObject(K7Q::NSInterface::ClassObjectIntf* object) const;
  [[noreturn]] void refuseId(unsigned id) const;

  const ClassName* mClassName;
  const std::type_info* mInterface;
  const ClassTable* mRows;
  std::span<const K7Q::IntrospectiveMethods* const> mBases;
  std::array<ruvo::LiteralName, 2> mNames;
  mutable std::atomic<const ClassData*> mData = nullptr;
  std::array<ruvo::LazyName, 4> mSequenceNames{};
};

/// Where a property of an object is stored.
struct ClassMethods::Place {
  Instance& object;
  const Property& property;
  unsigned slot;
};

}  // namespace Tarvelon::metamodel::native
