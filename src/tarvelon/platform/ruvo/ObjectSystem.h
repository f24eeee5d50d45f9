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

/// What a host and a program use of the object system: packages and classes by name, with everything
/// registered, and construction, calls and property access by name.
///
/// Laziness: a package is populated when it is asked for anything, a class is defined when its members are
///           asked for. Finding a class defines nothing; finding a package brings in its parents and itself.
/// Errors:   K7Q::UnknownName, K7Q::WrongType, K7Q::OutOfRange and K7Q::WrongValue of the object system;
///           whatever an invoker raises passes through. A package whose initialisation or a class whose
///           definition failed keeps what it has and raises that first error on every later use. Want of
///           memory is no failure of theirs: std::bad_alloc passes, and the next use tries again.
/// Threads:  any, for packages, classes and their members: what is brought in or defined first by several
///           threads at once is brought in by one of them while the others wait. Objects, and values read or
///           written through them, belong to the thread that uses their model.
namespace ruvo {

class Class;

/// Where a class or a package's info comes from: from an initializer that is at an end (or from none), from
/// the run of one that is at work, or from a run that was given up for want of memory. The next run of that
/// one adds it again, and finds it there.
enum class Origin : std::uint8_t { Settled, ThisRun, EarlierRun };

/// A package with its children, classes and functions in order of registration.
class TARVELON_API Package final : public RVOPackage {
 public:
  static Package& root();
  /// The package of that dotted name, null if there is none; brings it in.
  static Package* find(std::string_view fullName);
  /// The same, raising K7Q::UnknownName with the nearest name.
  static Package& get(std::string_view fullName);

  const InternedName& getFullName() const override { return mFullName; }
  std::string_view shortName() const noexcept;
  Package* parent() const noexcept { return mParent; }
  bool isPopulated() const noexcept { return mState.load(std::memory_order_acquire) == State::Populated; }
  /// Each of these populates the package; the names are in order of registration. A child that is found
  /// stays as it is until it is asked for something itself. The package's infos are asked for a missing name.
  std::vector<std::string_view> packageNames();
  std::vector<std::string_view> classNames();
  std::vector<Class*> classes();
  std::vector<factory::FunctionInfo*> functions();
  Package* findPackage(std::string_view shortName);
  Class* findClass(std::string_view shortName);
  /// All functions of that name.
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
  /// REQUIRES: those above are populated, or being it.
  void populateAlone();
  void runInitializers();
  Origin originOfNew() const noexcept;

  Package* mParent;
  InternedName mFullName;
  std::atomic<State> mState = State::Attached;
  std::unique_ptr<Content> mContent;
};

/// A property as a class has it.
struct PropertySlot {
  InternedName name;
  RVOPropInfo* property = nullptr;
  /// Asked before a value is converted; null for a record that does not say.
  PropertyGuard* guard = nullptr;
  /// The class that declared it.
  Class* owner = nullptr;
};

/// All records that a call of one name on one class may choose from, nearest first, in C3 order and then in
/// order of registration.
struct OverloadSet {
  InternedName name;
  std::vector<const RVOMethodInfo*> candidates;
};

/// A class. Only fullName(), info() and access() can be asked without defining it.
class TARVELON_API Class final : public RVOClass {
 public:
  /// The class of that dotted name, null if there is none; brings in its package.
  static Class* find(std::string_view fullName);
  static Class* find(const InternedName& fullName);
  /// The same, raising K7Q::UnknownName with the nearest name.
  static Class& get(std::string_view fullName);
  static Class& get(const InternedName& fullName);
  /// Classes that stand in no package.
  static std::vector<Class*> globals();

  const char* getClassName() const override { return mFullName.c_str(); }
  const InternedName& getFullName() const override { return mFullName; }
  std::string_view shortName() const noexcept;
  const RVOClassInfo& info() const noexcept { return *mInfo; }
  RVOClassInfo& info() noexcept { return *mInfo; }
  /// The integer given to addClass().
  int access() const noexcept { return mAccess; }
  bool isDefined() const noexcept { return mState.load(std::memory_order_acquire) == State::Defined; }

  /// Defines the class if need be. Each of the following does that first.
  void define();
  std::span<const InternedName> superClassNames();
  /// The superclasses themselves; raises K7Q::UnknownName if one does not exist.
  std::span<Class* const> superClasses();
  /// This class and all its superclasses in C3 order.
  std::span<Class* const> linearization();
  bool isKindOf(const Class& other);
  /// Own records in order of registration.
  std::span<RVOMethodInfo* const> methods();
  std::span<const PropertySlot> properties();
  /// Inherited ones too; null if there is none. The result lives as long as the class.
  const PropertySlot* findProperty(const InternedName& name);
  const PropertySlot* findProperty(std::string_view name);
  const OverloadSet* findMethods(const InternedName& name);
  const OverloadSet* findMethods(std::string_view name);
  /// The constructors: own records under the class's full name.
  const OverloadSet* constructors();
  /// The property or method name that comes closest, empty if none is close.
  std::string nearestMember(std::string_view name);

  void addSuperClass(const InternedName& fullName, int isPublic, int isVirtual, int isConstructed) override;
  void addMethod(RVOMethodInfo* record) override;
  void addProperty(RVOPropInfo* property, RVOPropInfo* same) override;

  /// A word for the host's own object that shows the class; the object system only keeps it, null at first.
  /// The host sees to it that one thread at a time uses it.
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

/// Constructs an object by the class's constructors. Raises K7Q::WrongType, listing the signatures, when none
/// fits, and for an abstract class.
TARVELON_API RVOInterfacePtr construct(Class& cls, std::span<const HostValue> arguments);

/// Calls a method on an object, self-as-argument methods included.
TARVELON_API HostResult call(RVOInterface* self, std::string_view method,
                             std::span<const HostValue> arguments);
/// Calls a static method or, with the object as an argument, a self-as-argument method.
TARVELON_API HostResult callStatic(Class& cls, std::string_view method, std::span<const HostValue> arguments);
TARVELON_API HostResult callFunction(Package& package, std::string_view function,
                                     std::span<const HostValue> arguments);
/// The same on an overload set that was found before: `self` may be null. What a host's bound method uses.
TARVELON_API HostResult callOverloads(Class& cls, const OverloadSet& overloads, RVOInterface* self,
                                      std::span<const HostValue> arguments);

TARVELON_API HostResult getProperty(RVOInterface* self, std::string_view property);
TARVELON_API void setProperty(RVOInterface* self, std::string_view property, const HostValue& value);
/// The same for a slot found before.
/// Refusals come in this order: many-valued, read-only, immutable, the value.
TARVELON_API HostResult getProperty(RVOInterface* self, const PropertySlot& slot);
TARVELON_API void setProperty(RVOInterface* self, const PropertySlot& slot, const HostValue& value);

/// A record's signature as an error lists it: "Package(K7Q.Model, char vector aName)".
TARVELON_API std::string describeSignature(const RVOMethodInfo& record, std::string_view shownName,
                                           bool isOnObject = false);
/// The value as an error shows it: `char vector "yes"`, `double scalar 0.5`, a class name.
TARVELON_API std::string describeValue(const HostValue& value);
/// The candidate that comes closest to `name`, empty if none is close enough to be a slip.
TARVELON_API std::string nearestName(std::string_view name, std::span<const std::string_view> candidates);

}  // namespace ruvo
