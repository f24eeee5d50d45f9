#pragma once

#include <memory>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ruvo/Property.h"

namespace K7Q::mi {

/// Base of all property records of metamodel classes. A record stores the property id and the table of the
/// class (IntrospectiveMethods); every read and write of a host goes through that table.
///
/// Ownership: the class to which the record is added owns the record.
/// Errors:    reads and writes of a destroyed or unbound host object throw a K7Q::Exception with the text
///            kNullReference. setValue() throws before anything changes; RVOPropInfo::setValue() says in
///            which order it tests.
/// Threads:   a record does not change after construction. Any thread may use it, on objects of its own
///            models.
class TARVELON_API K7qmiProperty : public ruvo::factory::impl::PropertyImplBase, public ruvo::PropertyGuard {
 public:
  /// The bits of mState.
  enum State : std::uint8_t { kMultiValued = 2, kReadOnly = 4, kRequired = 8 };

  /// `ownerName` is the dotted name of the host class under definition, `typeName` the type that the record
  /// reports. REQUIRES: `name` outlives the record, as a literal does.
  K7qmiProperty(const ruvo::InternedName& ownerName, const char* name, const IntrospectiveMethods* methods,
                unsigned id, const ruvo::InternedName& typeName, Multiplicity multiplicity,
                Mutability mutability, ruvo::factory::PropertyAttributes attributes);
  ~K7qmiProperty() override;

  const ruvo::InternedName& getDataType() const override { return mTypeName; }
  int getMemberGetAccess() const override;
  int getMemberSetAccess() const override;
  /// Calls getMultiValuedValue() for a many-valued property and getSingleValuedValue() for any other.
  ruvo::RVOValue getValue(ruvo::RVOInterface* object) override;
  virtual ruvo::RVOValue getSingleValuedValue(ClassObject& object) = 0;
  /// Returns a view of the property as a host sequence. Its class is an immutable sequence class if the
  /// property is read-only or the host object is immutable.
  virtual ruvo::RVOValue getMultiValuedValue(ClassObject& object, ruvo::RVOInterface* interface);

  void requireSettable(ruvo::RVOInterface* object) const override;
  [[noreturn]] void throwWrongValue(ruvo::RVOInterface* object, const hx::hxArray* given) const override;
  bool isOptional() const override { return (mState & (kRequired | kMultiValued)) == 0; }
  bool isMany() const override { return (mState & kMultiValued) != 0; }
  bool isReadOnly() const override { return (mState & kReadOnly) != 0; }

  /// Throws the K7Q::Exception for a write through an immutable host object.
  [[noreturn]] static void throwSetProhibitedException();

  unsigned id() const noexcept { return mId; }
  const IntrospectiveMethods& methods() const noexcept { return *mMethods; }
  const ruvo::InternedName& ownerName() const noexcept { return mOwnerName; }
  Multiplicity multiplicity() const noexcept;
  Mutability mutability() const noexcept {
    return isReadOnly() ? Mutability::ReadOnly : Mutability::Writable;
  }
  /// The kind of record, for descriptions: "ClassObject", "DataType", "String", "Primitive",
  /// "OptionalPrimitive" or "PrimitiveSequence".
  virtual const char* kind() const = 0;

 protected:
  /// The handle on the native object of a host object. Throws a K7Q::Exception with the text kNullReference
  /// for null, an object that is not bound, and a destroyed object.
  ClassObject classObject(ruvo::RVOInterface* object) const;

  ruvo::InternedName mOwnerName;
  ruvo::InternedName mTypeName;
  const IntrospectiveMethods* mMethods;
  unsigned mId;
  std::uint8_t mState;
};

/// Converts the values of one enumeration between a host and a model. Each property record of that type owns
/// such a helper.
class TARVELON_API PropHelperBase {
 public:
  PropHelperBase() = default;
  PropHelperBase(const PropHelperBase&) = delete;
  PropHelperBase& operator=(const PropHelperBase&) = delete;
  /// Returns a 1 by 1 object array with a host object of class `typeName` for the value. The caller owns the
  /// array.
  virtual ruvo::RVOValue unboxAndReturn(Object value, const ruvo::InternedName& typeName) = 0;
  /// Sets property `id` of the object to the value in the host's array. Returns false and sets nothing if the
  /// array contains no value.
  virtual bool boxAndSet(ClassObject* object, ruvo::RVOValue& value, const IntrospectiveMethods* methods,
                         unsigned id) = 0;
  virtual ~PropHelperBase();
};

/// Adds property records and meta-property entries to a class that is being defined. The order of the calls
/// is the order in which the class lists them.
///
/// Errors: each function throws a K7Q::Exception if the class has a property of that name or is not being
///         defined.
///
/// Example (inside defineMembers()):
///   K7qmiPropertyFactory factory(cls, className, &methods);
///   factory.String<K7Q::String>("Name", 1, "", Multiplicity::Optional, Mutability::Writable,
///                               ruvo::factory::PropertyAttributes(0));
class TARVELON_API K7qmiPropertyFactory {
 public:
  /// `className` is the dotted name of the class that is being defined.
  K7qmiPropertyFactory(ruvo::RVOClass* cls, const ruvo::InternedName& className,
                       const IntrospectiveMethods* methods)
      : mClass(cls), mClassName(className), mMethods(methods) {}

  /// Adds a property whose values are objects of class `type`.
  void ClassObject(const char* name, unsigned id, const ruvo::InternedName& type, Multiplicity multiplicity,
                   Mutability mutability, ruvo::factory::PropertyAttributes attributes);
  /// Adds a property whose values are literals of the enumeration `type`. Takes ownership of the helper.
  void DataType(const char* name, unsigned id, const ruvo::InternedName& type, PropHelperBase* helper,
                Multiplicity multiplicity, Mutability mutability,
                ruvo::factory::PropertyAttributes attributes);
  /// Adds a text property. T is K7Q::String. The type argument is not used: the record reports "char".
  template <class T>
  void String(const char* name, unsigned id, const char* /*type*/, Multiplicity multiplicity,
              Mutability mutability, ruvo::factory::PropertyAttributes attributes) {
    addString(name, id, multiplicity, mutability, attributes);
  }
  /// Adds a scalar property. T is K7Q::Boolean, K7Q::Integer, K7Q::Double or K7Q::Real. The value of an
  /// optional property passes as an array, which is empty for an unset property.
  template <class T>
  void Primitive(const char* name, unsigned id, Multiplicity multiplicity, Mutability mutability,
                 ruvo::factory::PropertyAttributes attributes);
  /// Adds a many-valued property of texts or of enumeration values.
  void PrimitiveSequence(const char* name, unsigned id, const ruvo::InternedName& type, Mutability mutability,
                         ruvo::factory::PropertyAttributes attributes);

  /// Adds a meta-property entry: a static method without arguments that returns lookup(owner, id).
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

/// A meta-property entry: a static method without arguments that returns the description of a property. It is
/// a type of its own, so that descriptions of a class can list it apart from ordinary methods.
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
