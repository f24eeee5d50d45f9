#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/boundary/k7q/Sequence.h"

namespace K7Q {

class IntrospectiveMethods;
class ImmutableClass;

namespace mi {

/// The multiplicity of a property: 0..1, exactly 1, or 0..* values. Property records and the metamodel's
/// tables use the same numbers.
enum class Multiplicity : std::uint8_t { Optional = 0, One = 1, Many = 2 };
/// Whether a property can be set.
enum class Mutability : std::uint8_t { Writable = 0, ReadOnly = 1 };

}  // namespace mi

namespace NSInterface {

/// The description of a class, an enumeration or a primitive type of the metamodel.
///
/// All descriptions (TypeIntf, PropertyIntf, ClassIntf, DataTypeIntf, PackageIntf) are created once, belong
/// to no model and live until the process ends. Any thread may use them. isValid() is always true.
class TARVELON_API TypeIntf : public ObjectIntf {
 public:
  ~TypeIntf() override;
  /// The short name, such as u"Package".
  virtual std::u16string name() const = 0;
  /// The dotted name. For a class, the name of the mutable class.
  virtual const ruvo::InternedName& fullName() const = 0;
  bool isValid(Deviant) const override { return true; }
};

/// The description of a property of a metamodel class. The host class `K7Q.ImmutableProperty` publishes it.
class TARVELON_API PropertyIntf : public ObjectIntf {
 public:
  ~PropertyIntf() override;
  bool isValid(Deviant) const override { return true; }
  /// The meta name of the property, which begins with a capital letter.
  virtual const char* name() const = 0;
  /// The id of the property within its owner. Ids count from 1.
  virtual unsigned id() const = 0;
  /// The table of the class that declares the property.
  virtual const IntrospectiveMethods& owner() const = 0;
  /// The dotted name of the value type: a class, an enumeration, or a word such as "char vector".
  virtual const ruvo::InternedName& typeName() const = 0;
  /// How many values the property has, and whether it can be set.
  virtual mi::Multiplicity multiplicity() const = 0;
  virtual mi::Mutability mutability() const = 0;
  /// Whether the values are model objects: contained objects or cross references.
  virtual bool isReference() const = 0;
  /// Whether the property is a containment: the object owns the values.
  virtual bool isContainment() const = 0;
  /// The meta name of an inherited property that this property replaces in the property list of the class.
  /// Null if the property replaces none, or one of the same name.
  virtual const char* hiddenName() const = 0;
};

/// The description of a class. methods() gives its properties and bases, and creates objects.
class TARVELON_API ClassIntf : public TypeIntf {
 public:
  ~ClassIntf() override;
  virtual const IntrospectiveMethods& methods() const = 0;
};

/// The description of an enumeration or of a primitive type.
class TARVELON_API DataTypeIntf : public TypeIntf {
 public:
  ~DataTypeIntf() override;
  /// The literals in ascending order of value; the first literal has the value 0. Empty for a primitive type.
  virtual std::span<const std::string_view> literals() const = 0;
};

/// The description of a package of the metamodel. metaPackage() in tarvelon/Packages.h finds one by name.
class TARVELON_API PackageIntf : public ObjectIntf {
 public:
  ~PackageIntf() override;
  bool isValid(Deviant) const override { return true; }
  /// The last part of the dotted name.
  virtual std::u16string name() const = 0;
  virtual const ruvo::InternedName& fullName() const = 0;
  /// The contents, in the order of registration. Child packages are included, but not their contents.
  virtual std::vector<const ClassIntf*> classes() const = 0;
  virtual std::vector<const DataTypeIntf*> dataTypes() const = 0;
  virtual std::vector<const PackageIntf*> subPackages() const = 0;
};

}  // namespace NSInterface

/// The next five classes are handles on descriptions. Copying a handle is cheap, and any thread may use it. A
/// default-constructed handle is null.
///
/// Example:
///   const ImmutableClass cls = common::Package::MetaClass();
///   const std::u16string name = cls.getClass()->name();  // u"Package"
class TARVELON_API ImmutableProperty : public ImmutableObject {
 public:
  constexpr ImmutableProperty() noexcept = default;
  ImmutableProperty(const NSInterface::PropertyIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(const_cast<NSInterface::PropertyIntf*>(interface), deviant) {}
  /// The description, null for a null handle.
  const NSInterface::PropertyIntf* getProperty() const noexcept {
    return static_cast<const NSInterface::PropertyIntf*>(getInterface());
  }
};

class TARVELON_API ImmutableType : public ImmutableObject {
 public:
  constexpr ImmutableType() noexcept = default;
  ImmutableType(const NSInterface::TypeIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(const_cast<NSInterface::TypeIntf*>(interface), deviant) {}
};

class TARVELON_API ImmutableClass : public ImmutableType {
 public:
  constexpr ImmutableClass() noexcept = default;
  ImmutableClass(const NSInterface::ClassIntf* interface, Deviant deviant) noexcept
      : ImmutableType(interface, deviant) {}
  const NSInterface::ClassIntf* getClass() const noexcept {
    return static_cast<const NSInterface::ClassIntf*>(getInterface());
  }
};

class TARVELON_API ImmutableDataType : public ImmutableType {
 public:
  constexpr ImmutableDataType() noexcept = default;
  ImmutableDataType(const NSInterface::DataTypeIntf* interface, Deviant deviant) noexcept
      : ImmutableType(interface, deviant) {}
  const NSInterface::DataTypeIntf* getDataType() const noexcept {
    return static_cast<const NSInterface::DataTypeIntf*>(getInterface());
  }
};

class TARVELON_API ImmutablePackage : public ImmutableObject {
 public:
  constexpr ImmutablePackage() noexcept = default;
  ImmutablePackage(const NSInterface::PackageIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(const_cast<NSInterface::PackageIntf*>(interface), deviant) {}
  const NSInterface::PackageIntf* getPackage() const noexcept {
    return static_cast<const NSInterface::PackageIntf*>(getInterface());
  }
};

/// Reads and writes the properties of one metamodel class by property id. There is one such table for each
/// class; `X::Interface::sIntrospectiveMethods` is the table of the native handle X.
///
/// The functions take objects of the class and of its subclasses. Property ids count from 1 within the class
/// that declares the property, so an inherited property is read through the table of the base class that
/// declares it.
///
/// Errors:  an unknown id, a null object, an object of another class, a destroyed object and a wrong value
///          throw a K7Q::Exception, or a type derived from it, before anything changes. The text names the
///          class, the property, the expected value and the given value.
///          These functions do not test whether the view may be written. The caller tests that with
///          DeviantRegistry::isImmutable() and DeviantAssertions::assertWritable().
/// Threads: any thread may use a table, also for the first time. An object is used by the thread that uses
///          its model.
///
/// Example:
///   const auto& methods = common::Package::Interface::sIntrospectiveMethods;
///   K7Q::Object value;
///   methods.get(value, package.getClassObject(), package.getDeviant(), id);
class TARVELON_API IntrospectiveMethods {
 public:
  IntrospectiveMethods(const IntrospectiveMethods&) = delete;
  IntrospectiveMethods& operator=(const IntrospectiveMethods&) = delete;

  /// Reads a property into `value`. A property without a value gives the default of its type if the property
  /// is required, and a null object otherwise. A returned model object has the given deviant.
  /// REQUIRES: the property is not many-valued (otherwise throws).
  virtual void get(Object& value, NSInterface::ClassObjectIntf* object, Deviant deviant,
                   unsigned id) const = 0;
  /// Whether the property has a value, or a many-valued property has at least one element.
  virtual bool has(NSInterface::ClassObjectIntf* object, Deviant deviant, unsigned id) const = 0;
  /// Sets a property. A contained object moves: its previous owner loses it. The opposite of the property
  /// changes as well. A null object or an empty text unsets an optional property. The model takes over the
  /// text if `value` has the only reference on it, and copies it otherwise.
  /// REQUIRES: the property is neither many-valued nor read-only (otherwise throws).
  virtual void set(NSInterface::ClassObjectIntf* object, Deviant deviant, unsigned id,
                   const Object& value) const = 0;
  /// Removes the value of an optional property. Throws a K7Q::Exception for any other property.
  virtual void unset(NSInterface::ClassObjectIntf* object, Deviant deviant, unsigned id) const = 0;
  /// Returns a new view of a many-valued property. The view shows later changes of the property, changes the
  /// property unless `immutable` is true or the property is read-only, and keeps the model alive. Its
  /// reference count is 0: put it into a SequenceHandle, which frees it.
  virtual Generic::SequenceIntf* getSequence(NSInterface::ClassObjectIntf* object, Deviant deviant,
                                             unsigned id, bool immutable) const = 0;

  /// Calls the read method with that index, counted from 0, and returns its result as a new sequence, which
  /// is independent of the property. Its reference count is 0: put it into a SequenceHandle, which frees it.
  virtual Generic::SequenceIntf* read(NSInterface::ClassObjectIntf* object, Deviant deviant,
                                      unsigned index) const = 0;

  /// The highest id among the properties that the class itself declares, 0 if it declares none.
  virtual unsigned numberOfProperties() const = 0;
  /// The description of the property with that id. Null for 0, for an id above numberOfProperties() and for
  /// an id in between that the metamodel does not use.
  virtual const NSInterface::PropertyIntf* descriptor(unsigned id) const = 0;
  /// The tables of the direct base classes, in the order of the metamodel.
  virtual std::span<const IntrospectiveMethods* const> bases() const = 0;
  /// The description of the class.
  virtual ImmutableClass metaClass() const = 0;
  /// The dotted name of the immutable or the mutable host class.
  virtual const ruvo::InternedName& name(bool immutable) const = 0;
  virtual bool isAbstract() const = 0;
  /// Whether the object is an instance of this class or of a subclass. False for null.
  virtual bool isInstance(const NSInterface::ObjectIntf* object) const = 0;

  /// Creates an object in the model, with the constructor of that index and its arguments. Index 0 is the
  /// constructor without arguments. The new object has no owner; the model frees it.
  /// Throws a K7Q::Exception with the text kNullReference for a null or closed model, K7Q::WrongType for an
  /// abstract class and for a wrong number of arguments, and what set() throws for a wrong argument.
  virtual ClassObject create(const Model& model, unsigned constructor,
                             std::span<const Object> arguments) const = 0;

 protected:
  constexpr IntrospectiveMethods() noexcept = default;
  ~IntrospectiveMethods() = default;
};

/// These functions wrap a model object or a text for SequenceIntf. The Ref holds a reference on it.
TARVELON_API Generic::Ref makeObjectRef(NSInterface::ObjectIntf* object, Deviant deviant);
TARVELON_API Generic::Ref makeStringRef(const String& text);

/// The visitor tags of a class. The table stores them, so that cast() needs no look-up by type name.
TARVELON_API CooperativeVisitor::TagPair tagsOfClass(const IntrospectiveMethods& methods);

}  // namespace K7Q
