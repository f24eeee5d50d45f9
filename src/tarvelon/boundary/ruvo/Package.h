#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Method.h"

namespace ruvo {

class RVOClassInfo;
class RVOPackage;

/// Describes a package to the object system. A module derives from this class and passes an instance to
/// RVOPackage::addPackageInfo() of the parent package.
///
/// The order of the virtual functions is part of the binary interface and must not change.
///
/// Ownership: the object system owns a package info once it is added.
/// Threads:   the object system calls these functions under its lock, on the thread that first needs the
///            package. Other threads wait meanwhile, so the functions must not wait for another thread.
///
/// Example:
///   class DemoInfo final : public ruvo::RVOPackageInfo {
///     const char* getName() const override { return "demo"; }
///     void initializePackage(ruvo::RVOPackage* package) override {
///       package->addClass(new DemoClassInfo("Wheel", "A wheel"), 0);
///     }
///   };
class TARVELON_API RVOPackageInfo {
 public:
  RVOPackageInfo() = default;
  RVOPackageInfo(const RVOPackageInfo&) = delete;
  RVOPackageInfo& operator=(const RVOPackageInfo&) = delete;
  virtual ~RVOPackageInfo();

  /// The short name, without a dot.
  virtual const char* getName() const = 0;
  virtual const char* getDescription() const;
  virtual const char* getDetailedDescription() const;
  /// The object system calls the attemptToLoad functions for a name that the package does not have. An
  /// override may add the child package, class, function or type to the package, and then returns true. The
  /// default returns false.
  virtual bool attemptToLoadSubPackage(const char* name);
  /// Throws the error for a class that is added under a name that the package already has. The default throws
  /// a K7Q::Exception.
  virtual void throwErrorForDefinitionOfExistingName(const char* name);
  virtual bool attemptToLoadClass(const char* name);
  virtual bool attemptToLoadFunction(const char* name);
  virtual bool attemptToLoadType(const char* name);
  virtual void* getMethodSelector();
  /// Adds the classes, functions and child packages. The object system calls this function when the package
  /// is first used. If the function runs out of memory, the next use of the package calls it again; classes
  /// and packages that the first call added are then not added twice. Any other exception is kept, and every
  /// later use throws it.
  virtual void initializePackage(RVOPackage* package) = 0;
  virtual bool isDestructible() const;
  virtual bool isLocked() const;
  virtual const char* getH1Line() const;
  virtual const char* getHelpText() const;

  /// Allocates with utMalloc(), so that either side of the boundary can free the package info.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, void* place) noexcept { return ::operator new(size, place); }
  static void operator delete(void* storage) noexcept;
  static void operator delete(void*, void*) noexcept {}
};

/// A package of the object system: a namespace of classes, functions and child packages. Any thread may use a
/// package.
///
/// Ownership: the object system owns packages, and a package owns what is added to it. A function that takes
///            ownership frees its argument if it throws.
class TARVELON_API RVOPackage {
 public:
  RVOPackage(const RVOPackage&) = delete;
  RVOPackage& operator=(const RVOPackage&) = delete;

  /// Returns the package with that dotted name, or null. Initialises the package and its parents if they are
  /// not initialised yet. Throws what an initializer throws.
  static RVOPackage* getPackage(const InternedName& fullName);

  /// Adds a child package and takes ownership of the package info. The child package is initialised at its
  /// first use. Throws a K7Q::Exception if the name of the package contains a dot or is empty.
  virtual void addPackageInfo(RVOPackageInfo* info) = 0;
  /// Adds a class and takes ownership of the class info. The object system only stores `access`, which
  /// Class::access() returns. Throws a K7Q::Exception if the name contains a dot, is empty or is in use.
  virtual void addClass(RVOClassInfo* info, int access) = 0;
  /// Adds a package function and takes ownership of the record. Functions with the same name are overloads.
  virtual void addFunction(factory::FunctionInfo* function) = 0;
  /// The dotted name.
  virtual const InternedName& getFullName() const = 0;

 protected:
  RVOPackage() = default;
  virtual ~RVOPackage();
};

namespace factory {

/// Creates the package with that dotted name and its missing parents, and returns the package. `initializer`
/// runs when the package is first used. If the package exists, the initializer is added to the initializers
/// that the package has. Any thread may call this function. Throws a K7Q::Exception for a name with an empty
/// part.
///
/// Example:
///   registerRuvoPackage("Company.tools", [](RVOPackage* package) { addClassesTo(*package); });
TARVELON_API RVOPackage* registerRuvoPackage(const std::string& fullName,
                                             std::function<void(RVOPackage*)> initializer);

/// A package that a library registers when it is loaded. The library defines a static LoadedPackage and
/// passes it to enterAtLoad().
///
/// enterAtLoad() allocates nothing, because a failure could not be reported while a library is being loaded.
/// The object system registers the package, as registerRuvoPackage() does, when it is next asked for any
/// package. If memory is exhausted then, that request throws, and the next request tries again.
///
/// Example:
///   constinit ruvo::factory::LoadedPackage gPackage("Company.tools", &initializeTools);
///   [[gnu::constructor]] void atLoad() { ruvo::factory::enterAtLoad(gPackage); }
class LoadedPackage {
 public:
  /// REQUIRES: `fullName` outlives the object.
  constexpr LoadedPackage(const char* fullName, void (*initializer)(RVOPackage*)) noexcept
      : mFullName(fullName), mInitializer(initializer) {}
  LoadedPackage(const LoadedPackage&) = delete;
  LoadedPackage& operator=(const LoadedPackage&) = delete;

 private:
  friend class LoadedPackages;
  const char* mFullName;
  void (*mInitializer)(RVOPackage*);
  LoadedPackage* mNext = nullptr;
  std::atomic<bool> mIsEntered = false;
};

/// Announces the package to the object system. Calling it again for the same package has no effect.
/// REQUIRES: the object lives until the process ends.
TARVELON_API void enterAtLoad(LoadedPackage& package) noexcept;

}  // namespace factory
}  // namespace ruvo
