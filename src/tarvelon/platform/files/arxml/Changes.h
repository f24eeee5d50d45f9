#pragma once

#include <vector>

#include "tarvelon/platform/files/arxml/ClassShape.h"
#include "tarvelon/platform/files/arxml/Source.h"

namespace Tarvelon::files::arxml {

/// Which objects cannot be saved as they stand in their files: those that have changed, that are new, that
/// refer to an object whose path has changed, and all that contain such an object.
class Changes {
 public:
  Changes(native::NativeModel& model, const Sources& sources, ClassShapes& shapes);
  /// Counts objects that are divided between files as changed too: one file cannot copy what it has of them.
  void addDivided(const native::NativeModel& model);
  bool has(const native::Instance& object) const noexcept { return mMarks[object.number()]; }

 private:
  void mark(const native::Instance& object);
  void markRelative(const native::NativeModel& model);
  void markReferrers(native::Instance& root);
  bool hasMoved(const native::Instance& object) const;

  const Sources& mSources;
  ClassShapes& mShapes;
  std::vector<bool> mMarks;
};

/// The path of an object: the SHORT-NAMEs of the named objects around it and its own. Empty if the object has
/// no name.
std::string pathOf(const native::Instance& object, ClassShapes& shapes);

}  // namespace Tarvelon::files::arxml
