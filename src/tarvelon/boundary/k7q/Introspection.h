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

/// How many values a property holds. The values are those of the registrations.
enum class Multiplicity : std::uint8_t { Optional = 0, One = 1, Many = 2 };
enum class Mutability : std::uint8_t { Writable = 0, ReadOnly = 1 };

}  // namespace mi

namespace NSInterface {

/// A class, an enumeration or a primitive type of a metamodel, as an object.
class TARVELON_API TypeIntf : public ObjectIntf {
 public:
  ~TypeIntf() override;
  virtual std::u16string name() const = 0;
  /// The dotted name; of a class the mutable one.
  virtual const ruvo::InternedName& fullName() const = 0;
  bool isValid(Deviant) const override { return true; }
};

/// A metamodel property: what `K7Q.ImmutableProperty` answers.
class TARVELON_API PropertyIntf : public ObjectIntf {
 public:
  ~PropertyIntf() override;
  bool isValid(Deviant) const override { return true; }
  /// The name in the meta-property list.
  virtual const char* name() const = 0;
  /// The ordinal within the owner, counted from 1.
  virtual unsigned id() const = 0;
  virtual const IntrospectiveMethods& owner() const = 0;
  /// The dotted name of the value type: a class, an enumeration, or a word such as "char vector".
  virtual const ruvo::InternedName& typeName() const = 0;
  virtual mi::Multiplicity multiplicity() const = 0;
  virtual mi::Mutability mutability() const = 0;
  /// Whether the values are objects, held or referred to.
  virtual bool isReference() const = 0;
  /// Whether the values belong to the object (containment) rather than being referred to.
  virtual bool isContainment() const = 0;
  /// The inherited entry that a class's list leaves out for this one, null if it is of the same name or none.
  virtual const char* hiddenName() const = 0;
};

class TARVELON_API ClassIntf : public TypeIntf {
 public:
  ~ClassIntf() override;
  virtual const IntrospectiveMethods& methods() const = 0;
};

class TARVELON_API DataTypeIntf : public TypeIntf {
 public:
  ~DataTypeIntf() override;
  /// The literals in ascending order of value, counted from 0; none for a primitive type.
  virtual std::span<const std::string_view> literals() const = 0;
};

class TARVELON_API PackageIntf : public ObjectIntf {
 public:
  ~PackageIntf() override;
  bool isValid(Deviant) const override { return true; }
  virtual std::u16string name() const = 0;
  virtual const ruvo::InternedName& fullName() const = 0;
  virtual std::vector<const ClassIntf*> classes() const = 0;
  virtual std::vector<const DataTypeIntf*> dataTypes() const = 0;
  virtual std::vector<const PackageIntf*> subPackages() const = 0;
};

}  // namespace NSInterface

/// Handles on descriptions. Descriptions live as long as the process and belong to no model. Threads: any.
class TARVELON_API ImmutableProperty : public ImmutableObject {
 public:
  constexpr ImmutableProperty() noexcept = default;
  ImmutableProperty(const NSInterface::PropertyIntf* interface, Deviant deviant) noexcept
      : ImmutableObject(const_cast<NSInterface::PropertyIntf*>(interface), deviant) {}
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

/// The table through which every property of one class is read and written by id.
///
/// Ids count from 1 within the class that owns the property. An object of any subclass is taken.
/// Every write checks the value (class, model, range), and refuses it with an error that names class,
/// property, expected and given, before anything changes; whether the view may be written is the caller's
/// question (DeviantRegistry::isImmutable, DeviantAssertions::assertWritable).
/// Threads: any, also for the first use of a class; an object belongs to the thread that uses its model. A
///          text that only the given handle holds becomes the model's own, any other is copied.
class TARVELON_API IntrospectiveMethods {
 public:
  IntrospectiveMethods(const IntrospectiveMethods&) = delete;
  IntrospectiveMethods& operator=(const IntrospectiveMethods&) = delete;

  /// The value as an object; the type's default for a required property never set, an empty object else. A
  /// reference carries `deviant`. REQUIRES: not many-valued.
  virtual void get(Object& value, NSInterface::ClassObjectIntf* object, Deviant deviant,
                   unsigned id) const = 0;
  /// Whether a value was set; of a many-valued property, whether it holds an element.
  virtual bool has(NSInterface::ClassObjectIntf* object, Deviant deviant, unsigned id) const = 0;
  /// REQUIRES: not many-valued, `value` not empty.
  virtual void set(NSInterface::ClassObjectIntf* object, Deviant deviant, unsigned id,
                   const Object& value) const = 0;
  virtual void unset(NSInterface::ClassObjectIntf* object, Deviant deviant, unsigned id) const = 0;
  /// The live view of a many-valued property: a new SequenceProxy each time, without a reference for the
  /// caller. `immutable` gives the view that cannot be changed. It keeps the object's model alive.
  virtual Generic::SequenceIntf* getSequence(NSInterface::ClassObjectIntf* object, Deviant deviant,
                                             unsigned id, bool immutable) const = 0;

  /// What the class's read method of that index gives, counted from 0: a new sequence of its own, without a
  /// reference for the caller.
  virtual Generic::SequenceIntf* read(NSInterface::ClassObjectIntf* object, Deviant deviant,
                                      unsigned index) const = 0;

  /// How many own meta properties the class has: ids run from 1 to this.
  virtual unsigned numberOfProperties() const = 0;
  /// The descriptor array: index 0 is empty (null). REQUIRES: id <= numberOfProperties().
  virtual const NSInterface::PropertyIntf* descriptor(unsigned id) const = 0;
  virtual std::span<const IntrospectiveMethods* const> bases() const = 0;
  /// The metamodel class itself.
  virtual ImmutableClass metaClass() const = 0;
  virtual const ruvo::InternedName& name(bool immutable) const = 0;
  virtual bool isAbstract() const = 0;
  /// Whether the object is of the class or a subclass.
  virtual bool isInstance(const NSInterface::ObjectIntf* object) const = 0;

  /// A new object with the arguments of the class's constructor of that index (0 is the one with none).
  /// Raises kNullReference for a null or closed model.
  virtual ClassObject create(const Model& model, unsigned constructor,
                             std::span<const Object> arguments) const = 0;

 protected:
  constexpr IntrospectiveMethods() noexcept = default;
  ~IntrospectiveMethods() = default;
};

/// Carriers of a model object, which hold a reference on it, and of a text.
TARVELON_API Generic::Ref makeObjectRef(NSInterface::ObjectIntf* object, Deviant deviant);
TARVELON_API Generic::Ref makeStringRef(const String& text);

/// The visitor tags of the class whose table this is: stored in the table, so that a cast costs no type
/// look-up.
TARVELON_API CooperativeVisitor::TagPair tagsOfClass(const IntrospectiveMethods& methods);

}  // namespace K7Q
