// The entry point for libFuzzer. Each input is a program; it must leave nothing behind. Most programs are
// those of a world (tests/world), which a naive model checks. The others are single calls of any method with
// any arguments.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>

#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tests/fuzz/Catalog.h"
#include "tests/fuzz/Program.h"
#include "tests/world/World.h"

namespace {

constexpr std::size_t kBytes = world::Step::kBytes;

fuzz::Tally gTally;
std::uint64_t gWorlds = 0;

const std::string& folder() {
  static const std::string made =
      (std::filesystem::temp_directory_path() / ("tarvelon-fuzz-" + std::to_string(getpid()))).string();
  return made;
}

/// The counts of existing things, to detect leaks.
struct Counts {
  std::size_t bindings = ruvo::factory::basic::BindingRegistry::size();
  std::size_t arrays = hx::hxLiveArrays();
  std::size_t objects = Tarvelon::metamodel::native::liveObjects();
};

void requireNothingLeft(const Counts& before) {
  const Counts after;
  if (after.bindings <= before.bindings && after.arrays <= before.arrays && after.objects <= before.objects) {
    return;
  }
  std::fprintf(stderr,
               "tarvelon_fuzz: left behind: %zu host objects, %zu arrays, %zu model objects (there were %zu, "
               "%zu, %zu)\n",
               after.bindings, after.arrays, after.objects, before.bindings, before.arrays, before.objects);
  std::abort();
}

/// The first byte selects the kind of program.
bool isOfCalls(const std::uint8_t* data) noexcept { return data[0] % 8 == 7; }

void runWorld(const world::Program& program) {
  // Prints each step when a single program is run again.
  static const bool isVerbose = std::getenv("TARVELON_FUZZ_VERBOSE") != nullptr;
  ++gWorlds;
  try {
    world::run(program, {isVerbose, isVerbose ? 1U : 4U, true, true, folder()});
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "tarvelon_fuzz: %s\n  in %s\n", fault.what(), world::textOf(program).c_str());
    std::abort();
  }
}

/// Mutates whole steps, so that the steps behind a mutation keep their meaning.
class Mutation {
 public:
  Mutation(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed)
      : mSteps(data + 1), mCount((size - 1) / kBytes), mMost((room - 1) / kBytes), mRandom(seed) {}

  std::size_t make() {
    switch (mCount == 0 ? 0 : mRandom() % 5) {
      case 0:
        insert(world::randomProgram(mRandom(), 2).back());
        break;
      case 1:
        remove();
        break;
      case 2:
        insert(stepAt(mRandom() % mCount));
        break;
      case 3:
        swap(mRandom() % mCount, mRandom() % mCount);
        break;
      default:
        at(mRandom() % mCount)[mRandom() % kBytes] = static_cast<std::uint8_t>(mRandom());
    }
    return 1 + mCount * kBytes;
  }

 private:
  std::uint8_t* at(std::size_t step) { return mSteps + step * kBytes; }
  world::Step stepAt(std::size_t step) { return world::programOf({at(step), kBytes})[0]; }
  void insert(const world::Step& step) {
    if (mCount == mMost) return remove();
    const std::size_t place = mRandom() % (mCount + 1);
    std::memmove(at(place + 1), at(place), (mCount - place) * kBytes);
    *at(place) = static_cast<std::uint8_t>(step.operation);
    std::ranges::copy(step.operands, at(place) + 1);
    ++mCount;
  }
  void swap(std::size_t left, std::size_t right) {
    if (left != right) std::swap_ranges(at(left), at(left + 1), at(right));
  }
  void remove() {
    const std::size_t place = mRandom() % mCount;
    std::memmove(at(place), at(place + 1), (mCount - place - 1) * kBytes);
    --mCount;
  }

  std::uint8_t* mSteps;
  std::size_t mCount;
  std::size_t mMost;
  std::minstd_rand mRandom;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room,
                                               unsigned seed) {
  if (size == 0 || room <= kBytes || isOfCalls(data) || seed % 4 == 0)
    return LLVMFuzzerMutate(data, size, room);
  return Mutation(data, size, room, seed).make();
}

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  fuzz::Catalog::instance();
  utSetPrintSink([](const char* /*text*/, std::size_t /*length*/) {});
  world::warmUp();
  std::filesystem::create_directories(folder());
  std::atexit([] {
    std::filesystem::remove_all(folder());
    std::fprintf(stderr, "%llu programs of worlds; single calls:\n",
                 static_cast<unsigned long long>(gWorlds));
    gTally.print();
  });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const Counts before;
  if (isOfCalls(data)) {
    fuzz::Input input({data + 1, size - 1});
    fuzz::run(input, gTally);
  } else {
    runWorld(world::programOf({data + 1, size - 1}));
  }
  requireNothingLeft(before);
  return 0;
}
