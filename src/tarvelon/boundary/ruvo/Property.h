#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interface.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Value.h"

namespace ruvo {

/// What the object system asks of a property. The slot order is fixed.
/// Threads: any, each on objects of its own.
class TARVELON_API RVOPropInfo {
 public:
  RVOPropInfo() = default;
  RVOPropInfo(const RVOPropInfo&) = delete;
  RVOPropInfo& operator=(const RVOPropInfo&) = delete;
  virtual ~RVOPropInfo();

  virtual const char* getName() const = 0;
  virtual const char* getDescription() const = 0;
  virtual const char* getDetailedDescription() const = 0;
  virtual std::uint32_t attributeWord() const = 0;
  /// The type name as the record reports it.
  virtual const InternedName& getDataType() const = 0;
  virtual int getMemberGetAccess() const = 0;
  virtual int getExtendedGetAccess() const;
  virtual int getMemberSetAccess() const = 0;
  virtual int getExtendedSetAccess() const;
  virtual bool predicate12() const = 0;
  virtual bool hasInternalDefault() const;
  virtual bool predicate14() const = 0;
  virtual bool predicate15() const = 0;
  virtual bool predicate16() const = 0;
  virtual bool predicate17() const = 0;
  virtual bool predicate18() const = 0;
  virtual bool predicate19() const = 0;
  virtual bool isWarnOnCopyError() const;
  virtual bool predicate21() const = 0;
  virtual bool predicate22() const = 0;
  virtual bool predicate23() const = 0;
  virtual bool predicate24() const = 0;
  virtual bool predicate25() const = 0;
  virtual bool isNeverAmbiguous() const;
  virtual int getPartialMatchPriority() const;
  virtual bool predicate28() const = 0;
  virtual bool predicate29() const = 0;
  virtual bool predicate30() const = 0;
  virtual bool isWeakReference() const;
  /// The value in the form of getDataType(): raw for a scalar type, else an array to be given to
  /// releaseValue().
  virtual RVOValue getValue(RVOInterface* object) = 0;
  /// Writes the value, which stays the caller's. A set is refused in this order: many-valued, read-only,
  /// immutable, then for the value.
  virtual void setValue(RVOInterface* object, RVOValue value) = 0;
  virtual void releaseValue(RVOInterface* object, RVOValue value) = 0;
  virtual bool predicate35() const = 0;
  virtual bool isDestructible() const;
  virtual void* getInterfaces(const RVOClient* client, RVOInterface* object);
  virtual void* getZtArrays(const RVOClient* client, RVOInterface* object);
};

/// A record that can say whether a set may go ahead before anybody converts the value.
class TARVELON_API PropertyGuard {
 public:
  PropertyGuard(const PropertyGuard&) = delete;
  PropertyGuard& operator=(const PropertyGuard&) = delete;

  /// Raises if the property is many-valued, read-only or seen through an immutable object, tested in this
  /// order.
  virtual void requireSettable(RVOInterface* object) const = 0;
  /// Raises a K7Q::WrongType for a value that is none of the record's: names class, property, expected and
  /// given.
  [[noreturn]] virtual void throwWrongValue(RVOInterface* object, const hxArray* given) const = 0;
  /// Whether an empty array unsets the property.
  virtual bool isOptional() const = 0;
  virtual bool isMany() const = 0;
  virtual bool isReadOnly() const = 0;

 protected:
  PropertyGuard() = default;
  ~PropertyGuard() = default;
};

namespace factory {

/// 2048 makes the one inverted predicate of a property record answer false.
class PropertyAttributes {
 public:
  explicit constexpr PropertyAttributes(std::uint32_t word) noexcept : mWord(word) {}
  constexpr std::uint32_t word() const noexcept { return mWord; }

 private:
  std::uint32_t mWord;
};

namespace impl {

/// A property record: name, description and attribute word, from which the predicates answer.
class TARVELON_API PropertyImplBase : public RVOPropInfo {
 public:
  /// `name` and `description` must outlive the record (literals or interned).
  PropertyImplBase(const char* name, const char* description, PropertyAttributes attributes) noexcept
      : mName(name), mDescription(description), mAttributes(attributes.word()) {}
  ~PropertyImplBase() override;

  const char* getName() const override { return mName; }
  const char* getDescription() const override { return mDescription; }
  const char* getDetailedDescription() const override { return getDescription(); }
  std::uint32_t attributeWord() const override { return mAttributes; }
  bool predicate12() const override { return has(1); }
  bool predicate14() const override { return has(2); }
  bool predicate15() const override { return has(4); }
  bool predicate16() const override { return has(8); }
  bool predicate17() const override { return has(16); }
  bool predicate18() const override { return has(32); }
  bool predicate19() const override { return has(64); }
  bool predicate21() const override { return has(128); }
  bool predicate22() const override { return has(256); }
  bool predicate23() const override { return has(512); }
  bool predicate24() const override { return has(1024); }
  bool predicate25() const override { return !has(2048); }
  bool predicate28() const override { return has(4096); }
  bool predicate29() const override { return has(8192); }
  bool predicate30() const override { return has(16384); }
  bool predicate35() const override { return has(32768); }

  static void* operator new(std::size_t size);
  static void operator delete(void* storage) noexcept;

 private:
  bool has(std::uint32_t bit) const noexcept { return (mAttributes & bit) != 0; }
  const char* mName;
  const char* mDescription;
  std::uint32_t mAttributes;
};

}  // namespace impl
}  // namespace factory
}  // namespace ruvo
