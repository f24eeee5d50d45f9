// Runs random programs on several models and compares each step with a naive model.
//
// TARVELON_WORLD_SEED is the first seed. TARVELON_WORLD_SECONDS sets a time instead of a fixed number of
// programs. A failing program is shrunk and printed with its seed.

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "tests/support/Host.h"
#include "tests/world/Fault.h"
#include "tests/world/Shrink.h"

namespace {

using world::Program;
using world::Step;

constexpr std::size_t kSteps = 60;
constexpr std::uint64_t kPrograms = 400;
/// The number of programs that run in one process.
constexpr std::uint64_t kTogether = 50;

std::uint64_t numberFrom(const char* variable, std::uint64_t otherwise) {
  const char* given = std::getenv(variable);
  return given ? std::strtoull(given, nullptr, 10) : otherwise;
}

class Worlds : public testing::Test {
 protected:
  Worlds() {
    host::openModule();
    world::warmUp();
    std::filesystem::create_directories(mOptions.folder);
  }
  ~Worlds() override { std::filesystem::remove_all(mOptions.folder); }

  /// Runs the programs of `count` seeds; false if one has failed.
  bool runPrograms(std::uint64_t first, std::uint64_t count) {
    const auto ending = world::inChild(
        [&] {
          for (std::uint64_t seed = first; seed < first + count; ++seed) run(seed);
        },
        240);
    if (!ending.hasFailed) return true;
    for (std::uint64_t seed = first; seed < first + count; ++seed) {
      const std::string fault = world::faultOf(world::randomProgram(seed, kSteps), mOptions);
      if (fault.empty()) continue;
      ADD_FAILURE() << "seed " << seed << ": " << fault;
      return false;
    }
    ADD_FAILURE() << "seeds from " << first << " fail together alone: " << ending.output;
    return false;
  }
  void run(std::uint64_t seed) const { world::run(world::randomProgram(seed, kSteps), mOptions); }

  world::Options mOptions{
      false, 1, true, true,
      (std::filesystem::temp_directory_path() / ("tarvelon-world-" + std::to_string(getpid()))).string()};
};

}  // namespace

TEST_F(Worlds, AgreeWithTheNaiveModelWhateverHappens) {
  const std::uint64_t first = numberFrom("TARVELON_WORLD_SEED", 1);
  const std::uint64_t seconds = numberFrom("TARVELON_WORLD_SECONDS", 0);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  std::uint64_t seed = first;
  while (seconds == 0 ? seed < first + kPrograms : std::chrono::steady_clock::now() < end) {
    ASSERT_TRUE(runPrograms(seed, kTogether));
    seed += kTogether;
  }
  if (seconds != 0) std::printf("%llu programs\n", static_cast<unsigned long long>(seed - first));
}

TEST_F(Worlds, SeeAChangeThatNobodyToldThemOf) {
  world::Mirror mirror(K7Q::Model::create(), 0);
  mirror.check(true);
  world::concrete()[0]->methods->create(mirror.native, 0, {});
  EXPECT_THROW(mirror.check(false), world::Fault);
  mirror.native.close();
}

TEST(Programs, AreTheSameAsTextAndAsBytes) {
  const Program program = world::randomProgram(7, 40);
  EXPECT_EQ(world::parse(world::textOf(program)), program);
  std::vector<std::uint8_t> bytes;
  for (const Step& step : program) {
    bytes.push_back(static_cast<std::uint8_t>(step.operation));
    bytes.insert(bytes.end(), step.operands.begin(), step.operands.end());
  }
  EXPECT_EQ(world::programOf(bytes), program);
}

TEST(Programs, ShrinkToWhatTheyFailFor) {
  const auto fails = [](const Program& program) {
    std::size_t found = 0;
    for (const Step& step : program) {
      if (step.operation == world::Operation::Save && found == 0) found = 1;
      if (step.operation == world::Operation::Undo && step.operands[2] > 10 && found == 1) found = 2;
    }
    return found == 2;
  };
  Program program = world::randomProgram(3, 60);
  program[20] = world::parse("Save 1 2 3")[0];
  program[40] = world::parse("Undo 7 7 77 7")[0];
  ASSERT_TRUE(fails(program));
  EXPECT_EQ(world::textOf(world::shrink(program, fails)).find("Save"), 0U);
  EXPECT_EQ(world::shrink(program, fails).size(), 2U);
}

TEST(Programs, ThatCrashFailInAChild) {
  EXPECT_TRUE(world::inChild([] { std::abort(); }).hasFailed);
  EXPECT_TRUE(world::inChild([] { throw world::Fault("x"); }).hasFailed);
  EXPECT_FALSE(world::inChild([] {}).hasFailed);
}
