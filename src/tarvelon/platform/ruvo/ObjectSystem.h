#pragma once

#include <atomic>
#include <exception>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ruvo/Package.h"
#include "tarvelon/boundary/ruvo/Property.h"
#include "tarvelon/platform/ruvo/HostValue.h"

/// The interface of the object system for hosts and programs: finding packages and classes, inspecting them,
/// and constructing objects, calling methods and accessing properties by name.
///
/// Laziness: a package is populated on the first query. A class is defined when its members are first needed.
///           Finding a class does not define it. Finding a package populates the package and its parents.
/// Errors:   the object system raises K7Q::UnknownName, K7Q::WrongType, K7Q::OutOfRange and K7Q::WrongValue.
///           Exceptions of an invoker pass through unchanged. If the initialisation of a package or the
///           definition of a class fails, the package or class keeps what it has, and every later use raises
///           the first error again.
///           Exhausted memory is different: std::bad_alloc is raised, and the next use tries again.
/// Threads:  any, for packages, classes and their members. If several threads need a new package or class at
///           once, one thread initialises it and the others wait. Objects, and values read or written through
///           them, belong to the thread that uses their model.
namespace ruvo {

class Class;

/// The origin of a class or package info, needed to repeat an initializer that ran out of memory. Settled:
/// the initializer has completed, or there is none. ThisRun: the running initializer has added the info.
/// EarlierRun: a run that was aborted for lack of memory has added the info; when the next run adds it again,
/// the existing info is kept.
enum class Origin : std::uint8_t { Settled, ThisRun, EarlierRun };

/// A package with its children, classes and functions in order of registration.
class TARVELON_API Package final : public RVOPackage {
 public:
  static Package& root();
  /// Finds a package by its dotted name and populates it. Returns null if there is none.
  static Package* find(std::string_view fullName);
  /// Like find(), but raises K7Q::UnknownName, with the most similar name, if there is no such package.
  static Package& get(std::string_view fullName);

  const InternedName& getFullName() const override { return mFullName; }
  std::string_view shortName() const noexcept;
  Package* parent() const noexcept { return mParent; }
  bool isPopulated() const noexcept { return mState.load(std::memory_order_acquire) == State::Populated; }
  /// Each of these functions populates the package. Lists are in order of registration. findPackage() does
  /// not populate the child it returns. If a name is missing, the package's infos are asked to load it.
  std::vector<std::string_view> packageNames();
  std::vector<std::string_view> classNames();
  std::vector<Class*> classes();
  std::vector<factory::FunctionInfo*> functions();
  Package* findPackage(std::string_view shortName);
  Class* findClass(std::string_view shortName);
  /// All functions with that name.
  std::vector<const factory::FunctionInfo*> findFunctions(std::string_view name);

  void addPackageInfo(RVOPackageInfo* info) override;
  void addClass(RVOClassInfo* info, int access) override;
  void addFunction(factory::FunctionInfo* function) override;

  ~Package() override;

 private:
  friend class ObjectSystem;
  enum class State : std::uint8_t { Attached, Populating, Populated, Failed };
  struct Content;
  Package(Package* parent, const InternedName& fullName);
  void populate();
  /// Populates this package only. REQUIRES: all parents are populated or are being populated.
  void populateAlone();
  void runInitializers();
  Origin originOfNew() const noexcept;

  Package* mParent;
  InternedName mFullName;
  std::atomic<State> mState = State::Attached;
  std::unique_ptr<Content> mContent;
};

/// A property in the list of a class.
struct PropertySlot {
  InternedName name;
  RVOPropInfo* property = nullptr;
  /// Checked before a value is converted; null if the record has no guard.
  PropertyGuard* guard = nullptr;
  /// The class that declares the property.
  Class* owner = nullptr;
};

/// All overloads that a call of one name on one class can choose from: in C3 order of the classes (the
/// nearest class first), then in order of registration.
struct OverloadSet {
  InternedName name;
  std::vector<const RVOMethodInfo*> candidates;
};

/// A class. All member functions define the class first, except those that return its names, info(),
/// access(), isDefined() and the host data.
class TARVELON_API Class final : public RVOClass {
 public:
  /// Finds a class by its dotted name and populates its package. Returns null if there is none.
  static Class* find(std::string_view fullName);
  static Class* find(const InternedName& fullName);
  /// Like find(), but raises K7Q::UnknownName, with the most similar name, if there is no such class.
  static Class& get(std::string_view fullName);
  static Class& get(const InternedName& fullName);
  /// The classes outside of all packages.
  static std::vector<Class*> globals();

  const char* getClassName() const override { return mFullName.c_str(); }
  const InternedName& getFullName() const override { return mFullName; }
  std::string_view shortName() const noexcept;
  const RVOClassInfo& info() const noexcept { return *mInfo; }
  RVOClassInfo& info() noexcept { return *mInfo; }
  /// The access value given to addClass().
  int access() const noexcept { return mAccess; }
  bool isDefined() const noexcept { return mState.load(std::memory_order_acquire) == State::Defined; }

  /// Defines the class if it is not defined yet. All functions from here to nearestMember() call it first.
  void define();
  std::span<const InternedName> superClassNames();
  /// The direct superclasses. Raises K7Q::UnknownName if one does not exist.
  std::span<Class* const> superClasses();
  /// This class and all its superclasses, in C3 order.
  std::span<Class* const> linearization();
  bool isKindOf(const Class& other);
  /// The methods that this class itself declares, in order of registration.
  std::span<RVOMethodInfo* const> methods();
  std::span<const PropertySlot> properties();
  /// Finds an own or inherited property, null if there is none. The result lives as long as the class.
  const PropertySlot* findProperty(const InternedName& name);
  const PropertySlot* findProperty(std::string_view name);
  const OverloadSet* findMethods(const InternedName& name);
  const OverloadSet* findMethods(std::string_view name);
  /// The constructors of this class, null if it has none (abstract class).
  const OverloadSet* constructors();
  /// The property or method name most similar to `name`; empty if no name is similar.
  std::string nearestMember(std::string_view name);

  void addSuperClass(const InternedName& fullName, int isPublic, int isVirtual, int isConstructed) override;
  void addMethod(RVOMethodInfo* record) override;
  void addProperty(RVOPropInfo* property, RVOPropInfo* same) override;

  /// A pointer that the host may attach to the class, for example to its own class object. Null at first.
  /// The object system only stores it. The host must synchronise the access.
  void* getHostData() const noexcept { return mHostData; }
  void setHostData(void* data) noexcept { mHostData = data; }

  ~Class() override;

 private:
  friend class Package;
  friend class RVOClass;
  friend class ObjectSystem;
  enum class State : std::uint8_t { Known, Defining, Defined, Failed };
  struct Members;
  Class(RVOClassInfo* info, const InternedName& fullName, int access);
  Members& members();
  void collectProperties();
  void collectConstructors();
  void requireDefining(const char* member) const;

  InternedName mFullName;
  RVOClassInfo* mInfo;
  std::unique_ptr<Members> mMembers;
  std::exception_ptr mFailure;
  void* mHostData = nullptr;
  int mAccess;
  std::atomic<State> mState = State::Known;
  Origin mOrigin = Origin::Settled;
};

/// The class of a host object.
inline Class& classOf(const RVOInterface& object) { return *static_cast<Class*>(object.getClass()); }

/// Constructs an object. Raises K7Q::WrongType if no constructor accepts the arguments (the text lists the
/// signatures), or if the class is abstract.
TARVELON_API RVOInterfacePtr construct(Class& cls, std::span<const HostValue> arguments);

/// Calls a method on an object. The method may be a self-as-argument method.
TARVELON_API HostResult call(RVOInterface* self, std::string_view method,
                             std::span<const HostValue> arguments);
/// Calls a static method. A self-as-argument method can be called too, with the object as the first argument.
TARVELON_API HostResult callStatic(Class& cls, std::string_view method, std::span<const HostValue> arguments);
TARVELON_API HostResult callFunction(Package& package, std::string_view function,
                                     std::span<const HostValue> arguments);
/// Calls an overload set found earlier by findMethods(). `self` may be null. For the bound methods of a host.
TARVELON_API HostResult callOverloads(Class& cls, const OverloadSet& overloads, RVOInterface* self,
                                      std::span<const HostValue> arguments);

TARVELON_API HostResult getProperty(RVOInterface* self, std::string_view property);
TARVELON_API void setProperty(RVOInterface* self, std::string_view property, const HostValue& value);
/// Like the functions above, for a slot found earlier by findProperty(). setProperty() checks in this order:
/// the property is many-valued, read-only, the object is immutable, the value is wrong.
TARVELON_API HostResult getProperty(RVOInterface* self, const PropertySlot& slot);
TARVELON_API void setProperty(RVOInterface* self, const PropertySlot& slot, const HostValue& value);

/// The signature of a record as error texts show it: "Package(K7Q.Model, char vector aName)".
TARVELON_API std::string describeSignature(const RVOMethodInfo& record, std::string_view shownName,
                                           bool isOnObject = false);
/// The value as error texts show it: `char vector "yes"`, `double scalar 0.5`, or a class name.
TARVELON_API std::string describeValue(const HostValue& value);
/// The candidate most similar to `name`; empty if no candidate is similar enough to be a typing error.
TARVELON_API std::string nearestName(std::string_view name, std::span<const std::string_view> candidates);

}  // namespace ruvo
