#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/ruvo/Immortal.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace ruvo {

/// The global state of the object system. Registered packages, classes and members live until the process
/// ends; none is unregistered.
class ObjectSystem {
 public:
  /// The lock that is held while a package or class is registered, populated or defined. These operations may
  /// nest, so the lock is recursive. Never wait for another thread while holding it.
  static std::recursive_mutex& guard() noexcept;
  static Package& root();
  static std::vector<Class*>& globals() noexcept;
  /// The client passed to class definitions and method calls.
  static const RVOClient* client() {
    static Immortal<RVOClient> client;
    return &*client;
  }

  /// Creates a class for `info`, adds the class to `classes` and stores it in the entry of its full name
  /// (NameEntry). The class owns `info`. REQUIRES: guard() is held and no class has this name.
  static void addClass(std::vector<Class*>& classes, std::unique_ptr<RVOClassInfo> info,
                       const InternedName& fullName, int access);
  /// Returns the child with that short name; creates it if there is none. Populates nothing.
  /// REQUIRES: guard() is held.
  static Package& childOf(Package& parent, std::string_view shortName);
  /// Implements registerRuvoPackage(), starting below `root`.
  static Package& registerPackage(Package& root, std::string_view fullName,
                                  std::function<void(RVOPackage*)> initializer);
  /// Queues `initializer` to run on the next use of the package. REQUIRES: guard() is held.
  static void addInitializer(Package& package, std::function<void(RVOPackage*)> initializer);
};

struct Package::Content {
  /// A package info and its origin.
  struct Info {
    std::unique_ptr<RVOPackageInfo> info;
    Origin origin = Origin::Settled;
  };

  /// Calls `visit` with the origin of each class of this package, and of each package info of its child
  /// packages. Leaves out origins that are Settled.
  template <class Visit>
  void visitOrigins(Visit visit);

  std::vector<Package*> packages;
  std::vector<Class*> classes;
  std::vector<factory::FunctionInfo*> functions;
  std::vector<Info> infos;
  /// The initializers that still have to run.
  std::vector<std::function<void(RVOPackage*)>> initializers;
  std::exception_ptr failure;
};

/// parentName() is the part of a dotted name before the last dot, empty without a dot. lastName() is the part
/// behind the last dot.
inline std::string_view parentName(std::string_view name) noexcept {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : name.substr(0, dot);
}
inline std::string_view lastName(std::string_view name) noexcept { return name.substr(name.rfind('.') + 1); }

}  // namespace ruvo
