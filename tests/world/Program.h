#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Programs: what a world does, as a list of steps that any bytes are.
namespace world {

/// What a step does. The names are those that programs are written with; a new one comes at the end, so that
/// the programs that are kept mean what they meant.
#define WORLD_OPERATIONS(OPERATION) \
  OPERATION(Create)                 \
  OPERATION(Grow)                   \
  OPERATION(Set)                    \
  OPERATION(Unset)                  \
  OPERATION(Add)                    \
  OPERATION(Replace)                \
  OPERATION(Erase)                  \
  OPERATION(Assign)                 \
  OPERATION(Destroy)                \
  OPERATION(Begin)                  \
  OPERATION(Commit)                 \
  OPERATION(RollBack)               \
  OPERATION(Limit)                  \
  OPERATION(Undo)                   \
  OPERATION(Redo)                   \
  OPERATION(Listen)                 \
  OPERATION(Unlisten)               \
  OPERATION(Save)                   \
  OPERATION(Load)                   \
  OPERATION(LoadBroken)             \
  OPERATION(Clone)                  \
  OPERATION(CloneModel)             \
  OPERATION(NewModel)               \
  OPERATION(Close)                  \
  OPERATION(Hold)                   \
  OPERATION(UseHeld)                \
  OPERATION(Drop)                   \
  OPERATION(HoldPlace)              \
  OPERATION(UsePlace)               \
  OPERATION(Search)                 \
  OPERATION(Validate)               \
  OPERATION(Compare)                \
  OPERATION(Fail)                   \
  OPERATION(Wrong)                  \
  OPERATION(Typed)                  \
  OPERATION(Undertake)

#define WORLD_ENUMERATOR(NAME) NAME,
enum class Operation : std::uint8_t { WORLD_OPERATIONS(WORLD_ENUMERATOR) };
#undef WORLD_ENUMERATOR

std::span<const std::string_view> operationNames() noexcept;

struct Step {
  static constexpr std::size_t kOperands = 7;
  static constexpr std::size_t kBytes = kOperands + 1;
  Operation operation{};
  std::array<std::uint8_t, kOperands> operands{};
  friend bool operator==(const Step&, const Step&) = default;
};
using Program = std::vector<Step>;

/// Every sequence of bytes is a program: eight bytes a step, the rest is left.
Program programOf(std::span<const std::uint8_t> bytes);
/// "Create 3 0 0 0 0 0 0", steps with a semicolon between; what is not there is 0. Raises
/// std::invalid_argument for an operation that there is not.
Program parse(std::string_view text);
std::string textOf(const Step& step);
std::string textOf(const Program& program);
/// Random steps, often as a sensible user would mix them.
Program randomProgram(std::uint64_t seed, std::size_t steps);

/// The decisions of one step, read from its operands; behind them more that follow from these.
class Operands {
 public:
  explicit Operands(const Step& step) noexcept;

  std::uint32_t next() noexcept;
  /// REQUIRES: count > 0.
  std::size_t below(std::size_t count) noexcept { return next() % count; }
  bool oneIn(unsigned count) noexcept { return next() % count == 1 % count; }
  template <class Range>
  auto& pick(Range& range) noexcept {
    return range[below(std::size(range))];
  }

 private:
  std::array<std::uint8_t, Step::kOperands> mOperands;
  std::size_t mNext = 0;
  std::uint64_t mMore = 0;
};

}  // namespace world
