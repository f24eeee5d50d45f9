// The random programs of tests/world on four threads. Each program has its own models.
#include <filesystem>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/Host.h"
#include "tests/threads/Threads.h"
#include "tests/world/World.h"

namespace {

constexpr std::uint64_t kPrograms = 30;
constexpr std::size_t kSteps = 60;

TEST(Programs, OfSeveralThreadsDoNotMeet) {
  host::openModule();
  const auto folder =
      std::filesystem::temp_directory_path() / ("tarvelon-threads-" + std::to_string(getpid()));
  threads::onEach([&folder](int thread) {
    world::Options options;
    options.letsFail = false;
    options.usesHost = false;
    options.folder = (folder / std::to_string(thread)).string();
    std::filesystem::create_directories(options.folder);
    const std::uint64_t first = 1 + static_cast<std::uint64_t>(thread) * kPrograms;
    for (std::uint64_t seed = first; seed < first + kPrograms; ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed));
      world::run(world::randomProgram(seed, kSteps), options);
    }
  });
  std::filesystem::remove_all(folder);
}

}  // namespace
