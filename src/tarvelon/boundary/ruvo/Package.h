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

/// What a package is, told by whoever publishes it. The object system asks; the slot order is fixed.
/// Threads: the object system calls it on one at a time, whichever asks first, while others wait: it may not
///          wait for another thread itself.
class TARVELON_API RVOPackageInfo {
 public:
  RVOPackageInfo() = default;
  RVOPackageInfo(const RVOPackageInfo&) = delete;
  RVOPackageInfo& operator=(const RVOPackageInfo&) = delete;
  virtual ~RVOPackageInfo();

  /// The short name.
  virtual const char* getName() const = 0;
  virtual const char* getDescription() const;
  virtual const char* getDetailedDescription() const;
  /// The four below are asked for a name that the package does not have; true when it was brought in.
  virtual bool attemptToLoadSubPackage(const char* name);
  virtual void throwErrorForDefinitionOfExistingName(const char* name);
  virtual bool attemptToLoadClass(const char* name);
  virtual bool attemptToLoadFunction(const char* name);
  virtual bool attemptToLoadType(const char* name);
  virtual void* getMethodSelector();
  /// Called once, when the package is first touched: adds its classes, functions and child packages.
  virtual void initializePackage(RVOPackage* package) = 0;
  virtual bool isDestructible() const;
  virtual bool isLocked() const;
  virtual const char* getH1Line() const;
  virtual const char* getHelpText() const;

  /// Storage that utFree() can release.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, void* place) noexcept { return ::operator new(size, place); }
  static void operator delete(void* storage) noexcept;
  static void operator delete(void*, void*) noexcept {}
};

/// A package of the object system. Threads: any.
class TARVELON_API RVOPackage {
 public:
  RVOPackage(const RVOPackage&) = delete;
  RVOPackage& operator=(const RVOPackage&) = delete;

  /// The package of that full dotted name, null if there is none. One whose info is attached but not
  /// initialised is brought in, and its parents before it.
  static RVOPackage* getPackage(const InternedName& fullName);

  /// Attaches a child package's info; takes ownership.
  virtual void addPackageInfo(RVOPackageInfo* info) = 0;
  /// Adds a class; takes ownership. `access` is kept for whoever asks.
  virtual void addClass(RVOClassInfo* info, int access) = 0;
  /// Adds a package function; takes ownership.
  virtual void addFunction(factory::FunctionInfo* function) = 0;
  /// The dotted name.
  virtual const InternedName& getFullName() const = 0;

 protected:
  RVOPackage() = default;
  virtual ~RVOPackage();
};

namespace factory {

/// Creates the package of that dotted name, with the parents it lacks, and returns it. `initializer` runs
/// when the package is first touched. A name that exists keeps its package and runs the initializer on it
/// besides. Threads: any.
TARVELON_API RVOPackage* registerRuvoPackage(const std::string& fullName,
                                             std::function<void(RVOPackage*)> initializer);

/// A package that a library publishes when it is loaded, as a static object.
///
/// Nothing can report a failure at load, so that enterAtLoad() takes no memory: the package is registered, as
/// by registerRuvoPackage(), when the object system is next asked for any package. Without memory for it that
/// request fails, and the next one tries again.
class LoadedPackage {
 public:
  /// `fullName` outlives the object.
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

/// Once for each package: more calls change nothing. REQUIRES: an object that lives as long as the process.
TARVELON_API void enterAtLoad(LoadedPackage& package) noexcept;

}  // namespace factory
}  // namespace ruvo
