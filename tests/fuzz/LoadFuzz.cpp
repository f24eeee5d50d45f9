// Any bytes as a file: the loader refuses them or loads them, and what it loads can be saved and loaded
// again.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/files/Files.h"

namespace {

namespace files = Tarvelon::files;

void requirePlaces(const files::Problems& problems) {
  for (const files::Problem& problem : problems.kept) {
    if (problem.line == 0 || problem.column == 0 || problem.text.empty()) std::abort();
  }
}

}  // namespace

// What is raised out of here, a refusal of a file that we have written ourselves, is a find.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  files::Loaded loaded;
  try {
    loaded = files::loadText({reinterpret_cast<const char*>(data), size}, {nullptr, true});
  } catch (const files::WrongFile& refusal) {
    requirePlaces(refusal.problems());
    if (refusal.problems().count == 0) std::abort();
    return 0;
  }
  requirePlaces(loaded.problems);
  const std::string saved = files::saveText(loaded.model);
  if (files::saveText(files::loadText(saved).model) != saved) std::abort();
  return 0;
}
