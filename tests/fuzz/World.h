#pragma once

#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"
#include "tests/fuzz/Input.h"

namespace fuzz {

/// An object that the program has met, and of an iterator the sequence that it walks.
struct Held {
  ruvo::RVOInterfacePtr object;
  ruvo::RVOInterfacePtr sequence;
};

/// The objects of one program. Its end closes every model.
class World {
 public:
  World();
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  /// Never empty.
  std::vector<Held>& held() noexcept { return mHeld; }
  /// Keeps an object that came out of a call on `self`, which may be null; one that is there already gives
  /// way when there are many.
  void keep(ruvo::RVOInterface* object, ruvo::RVOInterface* self, Input& input);
  void drop(std::size_t index);
  /// What is held of an object, null if nothing is.
  Held* find(const ruvo::RVOInterface* object) noexcept;
  /// The first object at or behind a place that is of the class, null if there is none.
  ruvo::RVOInterface* fitting(ruvo::Class& cls, std::size_t from);
  /// Forgets the iterators over values: the element of one of them may be gone.
  void forgetValueIterators();
  /// Makes a model if there is none that is open.
  ruvo::RVOInterfacePtr openModel();

 private:
  void addModel(const char* cls, const char* method);

  std::vector<Held> mHeld;
};

}  // namespace fuzz
