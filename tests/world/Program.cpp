#include "tests/world/Program.h"

#include <algorithm>
#include <random>
#include <sstream>
#include <stdexcept>

namespace world {

namespace {

#define WORLD_NAME(NAME) #NAME,
constexpr std::string_view kNames[] = {WORLD_OPERATIONS(WORLD_NAME)};
#undef WORLD_NAME

/// The frequency of each operation in a random program, in the order of the operations.
constexpr std::uint8_t kWeights[] = {
    8, 16, 10, 6, 12, 4, 6, 2, 7,  // edits
    3, 2,  2,                      // transactions
    1, 10, 5,  2, 1,               // history, listeners
    9, 2,  1,                      // saves and loads
    4, 1,  1,  1,                  // clones, models
    3, 3,  1,  3, 5,               // what is held
    2, 1,  1,  5, 3,  2, 2,        // looks, failures
};
static_assert(std::size(kWeights) == std::size(kNames));

Operation weighted(std::uint32_t random) {
  static const std::vector<Operation> wheel = [] {
    std::vector<Operation> all;
    for (std::size_t index = 0; index < std::size(kWeights); ++index)
      all.insert(all.end(), kWeights[index], static_cast<Operation>(index));
    return all;
  }();
  return wheel[random % wheel.size()];
}

Step parseStep(const std::string& text) {
  std::istringstream in(text);
  std::string name;
  in >> name;
  const auto found = std::ranges::find(kNames, name);
  if (found == std::end(kNames)) throw std::invalid_argument("there is no operation '" + name + "'");
  Step step{static_cast<Operation>(found - std::begin(kNames)), {}};
  unsigned value = 0;
  for (std::size_t operand = 0; operand < Step::kOperands && in >> value; ++operand)
    step.operands[operand] = static_cast<std::uint8_t>(value);
  return step;
}

/// Sequences of operations that a random choice would rarely produce. kAny is any operation.
constexpr Operation kAny = static_cast<Operation>(std::size(kNames));
using Idiom = std::initializer_list<Operation>;
constexpr Idiom kIdioms[] = {
    {Operation::Save, kAny, Operation::Destroy, Operation::Save, Operation::Undo, Operation::Save},
    {Operation::Save, kAny, Operation::Undo, Operation::Redo, Operation::Save},
    {Operation::Unset, Operation::Save, Operation::Undo},
    {Operation::Erase, Operation::Save, Operation::Undo},
    {Operation::Begin, kAny, kAny, Operation::RollBack},
    {Operation::Begin, kAny, kAny, Operation::Commit, Operation::Undo},
    {Operation::HoldPlace, kAny, Operation::UsePlace},
    {Operation::Hold, kAny, Operation::UseHeld},
    {Operation::Listen, kAny, Operation::Undo, Operation::Redo},
    {Operation::Fail, kAny},
    {Operation::Undo, Operation::Undo, Operation::Redo, Operation::Redo},
};

class Generator {
 public:
  explicit Generator(std::uint64_t seed) : mRandom(seed) {}

  Program make(std::size_t steps) {
    // Two thirds of the programs have a long history from the beginning.
    if (mRandom() % 3 != 0) mProgram.push_back({Operation::Limit, {0, 3}});
    while (mProgram.size() < steps) {
      if (mRandom() % 8 == 0) {
        for (const Operation each : kIdioms[mRandom() % std::size(kIdioms)]) add(each);
      } else {
        add(kAny);
      }
    }
    mProgram.resize(steps);
    return std::move(mProgram);
  }

 private:
  void add(Operation operation) {
    // Often repeats a recent step: ids, names and undo must not confuse objects that are alike.
    constexpr std::size_t kMoment = 6;
    if (operation == kAny && !mProgram.empty() && mRandom() % 4 == 0) {
      mProgram.push_back(mProgram[mProgram.size() - 1 - mRandom() % std::min(kMoment, mProgram.size())]);
      return;
    }
    if (operation == kAny) operation = weighted(static_cast<std::uint32_t>(mRandom()));
    Step step{operation, {}};
    std::uint64_t bits = mRandom();
    for (auto& operand : step.operands) {
      operand = static_cast<std::uint8_t>(bits);
      bits >>= 8;
    }
    mProgram.push_back(step);
  }

  std::mt19937_64 mRandom;
  Program mProgram;
};

}  // namespace

std::span<const std::string_view> operationNames() noexcept { return kNames; }

Program programOf(std::span<const std::uint8_t> bytes) {
  Program program;
  for (; bytes.size() >= Step::kBytes; bytes = bytes.subspan(Step::kBytes)) {
    Step step{static_cast<Operation>(bytes[0] % std::size(kNames)), {}};
    std::ranges::copy(bytes.subspan(1, Step::kOperands), step.operands.begin());
    program.push_back(step);
  }
  return program;
}

Program parse(std::string_view text) {
  Program program;
  std::istringstream steps{std::string(text)};
  for (std::string step; std::getline(steps, step, ';');) program.push_back(parseStep(step));
  return program;
}

std::string textOf(const Step& step) {
  std::string text(kNames[static_cast<std::size_t>(step.operation)]);
  std::size_t used = Step::kOperands;
  while (used > 0 && step.operands[used - 1] == 0) --used;
  for (std::size_t operand = 0; operand < used; ++operand)
    text += " " + std::to_string(step.operands[operand]);
  return text;
}

std::string textOf(const Program& program) {
  std::string text;
  for (const Step& step : program) text += (text.empty() ? "" : "; ") + textOf(step);
  return text;
}

Program randomProgram(std::uint64_t seed, std::size_t steps) { return Generator(seed).make(steps); }

Operands::Operands(const Step& step) noexcept : mOperands(step.operands) {
  for (const std::uint8_t operand : mOperands) mMore = mMore * 31 + operand;
}

std::uint32_t Operands::next() noexcept {
  if (mNext < Step::kOperands) return mOperands[mNext++];
  mMore = mMore * 6364136223846793005U + 1442695040888963407U;
  return static_cast<std::uint32_t>(mMore >> 33);
}

}  // namespace world
