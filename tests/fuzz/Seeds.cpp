// Writes the first programs for the fuzzer into a folder: tarvelon_fuzz_seeds FOLDER. Most are random
// programs of a world; one in eight consists of single calls. The programs are the same each time.

#include <cstdio>
#include <fstream>
#include <random>
#include <string>

#include "tests/world/Program.h"

namespace {

constexpr std::uint64_t kPrograms = 256;
constexpr std::size_t kSteps = 60;

std::string bytesOf(std::uint64_t seed) {
  std::string bytes;
  if (seed % 8 == 7) {
    std::mt19937 random(static_cast<unsigned>(seed));
    bytes.push_back(7);
    for (std::size_t count = 0; count < 512; ++count) bytes.push_back(static_cast<char>(random()));
    return bytes;
  }
  bytes.push_back(0);
  for (const world::Step& step : world::randomProgram(seed, kSteps)) {
    bytes.push_back(static_cast<char>(step.operation));
    bytes.append(step.operands.begin(), step.operands.end());
  }
  return bytes;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: tarvelon_fuzz_seeds FOLDER\n");
    return 2;
  }
  for (std::uint64_t seed = 1; seed <= kPrograms; ++seed) {
    std::ofstream file(std::string(arguments[1]) + "/seed" + std::to_string(seed), std::ios::binary);
    file << bytesOf(seed);
    if (!file) return 1;
  }
  return 0;
}
