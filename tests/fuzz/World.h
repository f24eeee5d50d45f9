#pragma once

#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"
#include "tests/fuzz/Input.h"

namespace fuzz {

/// An object that the program knows; for an iterator also its sequence.
struct Held {
  ruvo::RVOInterfacePtr object;
  ruvo::RVOInterfacePtr sequence;
};

/// The objects of one program. The destructor closes all models.
class World {
 public:
  World();
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  /// Never empty.
  std::vector<Held>& held() noexcept { return mHeld; }
  /// Keeps an object that a call on `self` has returned (`self` may be null). If there are many objects, it
  /// replaces another one.
  void keep(ruvo::RVOInterface* object, ruvo::RVOInterface* self, Input& input);
  void drop(std::size_t index);
  /// The entry of an object, null if there is none.
  Held* find(const ruvo::RVOInterface* object) noexcept;
  /// The first object from index `from` on that is an instance of the class; null if there is none.
  ruvo::RVOInterface* fitting(ruvo::Class& cls, std::size_t from);
  /// Drops the iterators over enumeration values, because their elements may have been removed.
  void forgetValueIterators();
  /// Returns an open model; creates one if there is none.
  ruvo::RVOInterfacePtr openModel();

 private:
  void addModel(const char* cls, const char* method);

  std::vector<Held> mHeld;
};

}  // namespace fuzz
