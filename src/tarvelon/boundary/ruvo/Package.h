#pragma once

#include <functional>
#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/ruvo/Interned.h"
#include "tarvelon/boundary/ruvo/Method.h"

namespace ruvo {

class RVOClassInfo;
class RVOPackage;

/// What a package is, told by whoever publishes it. The object system asks; the slot order is fixed.
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

/// A package of the object system.
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
/// besides.
TARVELON_API RVOPackage* registerRuvoPackage(const std::string& fullName,
                                             std::function<void(RVOPackage*)> initializer);

}  // namespace factory
}  // namespace ruvo
