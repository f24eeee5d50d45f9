#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Programs: lists of steps for a World. Any bytes are a valid program.
namespace world {

/// The operations of steps, with their names in program texts. Add a new operation at the end, so that stored
/// programs keep their meaning.
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

/// Converts bytes into a program: eight bytes for each step; the rest is ignored.
Program programOf(std::span<const std::uint8_t> bytes);
/// Parses "Create 3 0 0 0 0 0 0". Steps are separated by semicolons; missing operands are 0. Raises
/// std::invalid_argument for an unknown operation.
Program parse(std::string_view text);
std::string textOf(const Step& step);
std::string textOf(const Program& program);
/// A random program. Its steps are often in an order that a user might choose.
Program randomProgram(std::uint64_t seed, std::size_t steps);

/// Decisions for one step: first its operands, then numbers computed from them.
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
