#pragma once

#include <memory>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ruvo/Property.h"

namespace K7Q::mi {

/// Base of all property records of a model class: id and introspective table, through which every read and
/// write goes. Stateless after construction, so that any thread may use it, on objects of its own models.
class TARVELON_API K7qmiProperty : public ruvo::factory::impl::PropertyImplBase, public ruvo::PropertyGuard {
 public:
  /// Bits of the state mask.
  enum State : std::uint8_t { kMultiValued = 2, kReadOnly = 4, kRequired = 8 };

  /// `name` must outlive the record (a literal); the other texts are interned.
  K7qmiProperty(const ruvo::InternedName& ownerName, const char* name, const IntrospectiveMethods* methods,
                unsigned id, const ruvo::InternedName& typeName, Multiplicity multiplicity,
                Mutability mutability, ruvo::factory::PropertyAttributes attributes);
  ~K7qmiProperty() override;

  const ruvo::InternedName& getDataType() const override { return mTypeName; }
  int getMemberGetAccess() const override;
  int getMemberSetAccess() const override;
  ruvo::RVOValue getValue(ruvo::RVOInterface* object) override;
  virtual ruvo::RVOValue getSingleValuedValue(ClassObject& object) = 0;
  virtual ruvo::RVOValue getMultiValuedValue(ClassObject& object, ruvo::RVOInterface* interface);

  void requireSettable(ruvo::RVOInterface* object) const override;
  [[noreturn]] void throwWrongValue(ruvo::RVOInterface* object, const hx::hxArray* given) const override;
  bool isOptional() const override { return (mState & (kRequired | kMultiValued)) == 0; }
  bool isMany() const override { return (mState & kMultiValued) != 0; }
  bool isReadOnly() const override { return (mState & kReadOnly) != 0; }

  /// Raises the text for a write through an immutable object.
  [[noreturn]] static void throwSetProhibitedException();

  unsigned id() const noexcept { return mId; }
  const IntrospectiveMethods& methods() const noexcept { return *mMethods; }
  const ruvo::InternedName& ownerName() const noexcept { return mOwnerName; }
  Multiplicity multiplicity() const noexcept;
  Mutability mutability() const noexcept {
    return isReadOnly() ? Mutability::ReadOnly : Mutability::Writable;
  }
  /// "ClassObject", "DataType", "String", "Primitive", "OptionalPrimitive" or "PrimitiveSequence".
  virtual const char* kind() const = 0;

 protected:
  /// The handle behind a host object. Raises kNullReference for an object that is destroyed or was never
  /// bound.
  ClassObject classObject(ruvo::RVOInterface* object) const;

  ruvo::InternedName mOwnerName;
  ruvo::InternedName mTypeName;
  const IntrospectiveMethods* mMethods;
  unsigned mId;
  std::uint8_t mState;
};

/// The conversions of one enumeration, used by the record of each property of that type.
class TARVELON_API PropHelperBase {
 public:
  PropHelperBase() = default;
  PropHelperBase(const PropHelperBase&) = delete;
  PropHelperBase& operator=(const PropHelperBase&) = delete;
  /// A host object of class `typeName` for the value: a 1 by 1 object array, which belongs to the caller.
  virtual ruvo::RVOValue unboxAndReturn(Object value, const ruvo::InternedName& typeName) = 0;
  /// Writes the value that the host gave; false and nothing written when it held none.
  virtual bool boxAndSet(ClassObject* object, ruvo::RVOValue& value, const IntrospectiveMethods* methods,
                         unsigned id) = 0;
  virtual ~PropHelperBase();
};

/// Adds the property records and meta-property entries of one class, in the order of the calls.
class TARVELON_API K7qmiPropertyFactory {
 public:
  /// `className` is the dotted name of the class under definition.
  K7qmiPropertyFactory(ruvo::RVOClass* cls, const ruvo::InternedName& className,
                       const IntrospectiveMethods* methods)
      : mClass(cls), mClassName(className), mMethods(methods) {}

  void ClassObject(const char* name, unsigned id, const ruvo::InternedName& type, Multiplicity multiplicity,
                   Mutability mutability, ruvo::factory::PropertyAttributes attributes);
  /// Takes ownership of the helper.
  void DataType(const char* name, unsigned id, const ruvo::InternedName& type, PropHelperBase* helper,
                Multiplicity multiplicity, Mutability mutability,
                ruvo::factory::PropertyAttributes attributes);
  /// T is K7Q::String. The type given is not used: the record reports "char".
  template <class T>
  void String(const char* name, unsigned id, const char* /*type*/, Multiplicity multiplicity,
              Mutability mutability, ruvo::factory::PropertyAttributes attributes) {
    addString(name, id, multiplicity, mutability, attributes);
  }
  /// T is K7Q::Boolean, K7Q::Integer, K7Q::Double or K7Q::Real; multiplicity Optional gives the optional
  /// record.
  template <class T>
  void Primitive(const char* name, unsigned id, Multiplicity multiplicity, Mutability mutability,
                 ruvo::factory::PropertyAttributes attributes);
  void PrimitiveSequence(const char* name, unsigned id, const ruvo::InternedName& type, Mutability mutability,
                         ruvo::factory::PropertyAttributes attributes);

  /// Adds a static entry that returns lookup(id) when called by its name.
  using Lookup = ImmutableProperty (*)(const IntrospectiveMethods& owner, unsigned id);
  void addMetaProperty(const char* name, Lookup lookup, const IntrospectiveMethods& owner, unsigned id);

 private:
  void addString(const char* name, unsigned id, Multiplicity multiplicity, Mutability mutability,
                 ruvo::factory::PropertyAttributes attributes);

  ruvo::RVOClass* mClass;
  ruvo::InternedName mClassName;
  const IntrospectiveMethods* mMethods;
};

extern template void K7qmiPropertyFactory::Primitive<K7Q::Boolean>(const char*, unsigned, Multiplicity,
                                                                   Mutability,
                                                                   ruvo::factory::PropertyAttributes);
extern template void K7qmiPropertyFactory::Primitive<K7Q::Integer>(const char*, unsigned, Multiplicity,
                                                                   Mutability,
                                                                   ruvo::factory::PropertyAttributes);
extern template void K7qmiPropertyFactory::Primitive<K7Q::Double>(const char*, unsigned, Multiplicity,
                                                                  Mutability,
                                                                  ruvo::factory::PropertyAttributes);
extern template void K7qmiPropertyFactory::Primitive<K7Q::Real>(const char*, unsigned, Multiplicity,
                                                                Mutability,
                                                                ruvo::factory::PropertyAttributes);

/// A meta-property entry: a static method without arguments, kept apart from the ordinary ones by
/// introspection.
class TARVELON_API MetaPropertyEntry : public ruvo::factory::RuvoMethod {
 public:
  MetaPropertyEntry(const ruvo::InternedName& name, K7qmiPropertyFactory::Lookup lookup,
                    const IntrospectiveMethods& owner, unsigned id);
  ~MetaPropertyEntry() override;
  void invoke(const ruvo::RVOClient* client, std::uint32_t& resultCount, ruvo::RVOValue* results,
              int argumentCount, const ruvo::RVOValue* arguments) const override;
  const IntrospectiveMethods& owner() const noexcept { return *mOwner; }
  unsigned id() const noexcept { return mId; }

 private:
  K7qmiPropertyFactory::Lookup mLookup;
  const IntrospectiveMethods* mOwner;
  unsigned mId;
};

}  // namespace K7Q::mi
