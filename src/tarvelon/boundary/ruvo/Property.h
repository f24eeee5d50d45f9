#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interface.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Value.h"

namespace ruvo {

/// The interface of property records: describes a property of a host class, and reads and writes it.
///
/// A metamodel class uses the records of K7Q::mi::K7qmiPropertyFactory. The object system calls getName(),
/// getDataType(), getValue(), setValue() and releaseValue(); hosts show attributeWord() and the descriptions.
/// The other functions are part of the interface, but nothing calls them. The order of the virtual functions
/// is part of the binary interface and must not change.
///
/// Ownership: the class to which the record is added owns the record.
/// Threads:   any thread may use a record, on objects that this thread uses.
class TARVELON_API RVOPropInfo {
 public:
  RVOPropInfo() = default;
  RVOPropInfo(const RVOPropInfo&) = delete;
  RVOPropInfo& operator=(const RVOPropInfo&) = delete;
  virtual ~RVOPropInfo();

  virtual const char* getName() const = 0;
  virtual const char* getDescription() const = 0;
  virtual const char* getDetailedDescription() const = 0;
  /// The bits from which the predicates are computed (factory::PropertyAttributes).
  virtual std::uint32_t attributeWord() const = 0;
  /// The type name of the value: a class, an enumeration, or a word such as "int32 scalar" or "char".
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
  /// Returns the value: a raw scalar if getDataType() is a scalar type, otherwise an array. Pass the result
  /// to releaseValue() after use.
  virtual RVOValue getValue(RVOInterface* object) = 0;
  /// Writes the value; the caller keeps ownership of it. Throws if the property is many-valued, if it is
  /// read-only, if the host object is immutable, or if the value is wrong; the tests are made in this order.
  /// An exception means that nothing has changed.
  virtual void setValue(RVOInterface* object, RVOValue value) = 0;
  /// Frees a value that getValue() returned.
  virtual void releaseValue(RVOInterface* object, RVOValue value) = 0;
  virtual bool predicate35() const = 0;
  virtual bool isDestructible() const;
  virtual void* getInterfaces(const RVOClient* client, RVOInterface* object);
  virtual void* getZtArrays(const RVOClient* client, RVOInterface* object);
};

/// An additional interface of property records. Through it, a host tests whether a property can be set before
/// the host converts the value. A record implements it by deriving from both classes.
class TARVELON_API PropertyGuard {
 public:
  PropertyGuard(const PropertyGuard&) = delete;
  PropertyGuard& operator=(const PropertyGuard&) = delete;

  /// Throws a K7Q::Exception if the property is many-valued, if it is read-only, or if the host object is
  /// immutable. The tests are made in this order.
  virtual void requireSettable(RVOInterface* object) const = 0;
  /// Throws the K7Q::WrongType for a value of a wrong type. The text names the class, the property, the
  /// expected type and the given value.
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

/// The attribute word of a property record. Each of the bits 1 to 32768 makes one predicate true, except for
/// 2048: this bit makes predicate25() false. The metamodel's tables use 0, or 2048 under the name kHidden.
class PropertyAttributes {
 public:
  explicit constexpr PropertyAttributes(std::uint32_t word) noexcept : mWord(word) {}
  constexpr std::uint32_t word() const noexcept { return mWord; }

 private:
  std::uint32_t mWord;
};

namespace impl {

/// A property record that stores its name, description and attribute word, and computes the predicates from
/// the attribute word. Derived classes read and write the value.
class TARVELON_API PropertyImplBase : public RVOPropInfo {
 public:
  /// REQUIRES: `name` and `description` outlive the record, as literals and interned names do.
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

  /// Allocates with utMalloc(), so that either side of the boundary can free the record. Throws
  /// bedrock::core::except::bad_alloc.
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
