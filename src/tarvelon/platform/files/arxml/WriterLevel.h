#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/files/arxml/Writer.h"

namespace Tarvelon::files::arxml {

/// The children of an element, and what has been found of the values.
struct Writer::Level {
  std::vector<Child> children;
  std::string_view tail;
  std::vector<Found> found;  ///< by part
  std::string indent;        ///< of the children
  bool hasLines = true;
};

}  // namespace Tarvelon::files::arxml
