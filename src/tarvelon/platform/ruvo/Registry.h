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

/// Everything registered, which lives as long as the process: nothing is ever taken back.
class ObjectSystem {
 public:
  /// Held while something is registered, a package populated or a class defined, all of which may come back
  /// for more. Nothing that waits for another thread may be called under it.
  static std::recursive_mutex& guard() noexcept;
  static Package& root();
  static std::vector<Class*>& globals() noexcept;
  /// On whose behalf classes are defined and methods called.
  static const RVOClient* client() {
    static Immortal<RVOClient> client;
    return &*client;
  }

  /// Makes a class of the info, which it owns, puts it into the list and lets its full name lead to it.
  /// REQUIRES: guard(), a name that no class has.
  static void addClass(std::vector<Class*>& classes, std::unique_ptr<RVOClassInfo> info,
                       const InternedName& fullName, int access);
  /// The child of that short name as it stands, made if there is none. REQUIRES: guard().
  static Package& childOf(Package& parent, std::string_view shortName);
  /// What registerRuvoPackage() does, below `root`.
  static Package& registerPackage(Package& root, std::string_view fullName,
                                  std::function<void(RVOPackage*)> initializer);
  /// Lets the package run `initializer` when it is touched next. REQUIRES: guard().
  static void addInitializer(Package& package, std::function<void(RVOPackage*)> initializer);
};

struct Package::Content {
  /// What brings the package in, and whether its parent's initializer that has added it is at an end.
  struct Info {
    std::unique_ptr<RVOPackageInfo> info;
    Origin origin = Origin::Settled;
  };

  /// Passes the mark of each class and child's info that an initializer has added.
  template <class Visit>
  void visitOrigins(Visit visit);

  std::vector<Package*> packages;
  std::vector<Class*> classes;
  std::vector<factory::FunctionInfo*> functions;
  std::vector<Info> infos;
  /// What is still to be run when the package is touched.
  std::vector<std::function<void(RVOPackage*)>> initializers;
  std::exception_ptr failure;
};

/// The part of a dotted name before its last dot, empty if there is none, and the part behind it.
inline std::string_view parentName(std::string_view name) noexcept {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : name.substr(0, dot);
}
inline std::string_view lastName(std::string_view name) noexcept { return name.substr(name.rfind('.') + 1); }

}  // namespace ruvo
