// Memory that is reserved for undo and rollback cannot be used by mistake: such code does not compile.

#include <type_traits>

#include "tarvelon/platform/model/objects/Instance.h"
#include "tests/native/Support.h"

namespace {

using Tarvelon::metamodel::native::Instance;
using Tarvelon::metamodel::native::LastingRoom;
using Tarvelon::metamodel::native::StepRoom;
using Tarvelon::metamodel::native::Word;

template <class... Room>
concept Puts = requires(Instance& object, Room&&... room) {
  object.put(0U, Word{}, static_cast<Room&&>(room)...);
};
template <class... Room>
concept Removes = requires(Instance& object, Room... room) {
  object.remove(0U, room...);
};

static_assert(!Puts<>, "a word is put without room");
static_assert(Puts<LastingRoom> && Puts<StepRoom>);
static_assert(!Puts<LastingRoom&>, "room for one word is used twice");
static_assert(!Removes<> && Removes<StepRoom>);
static_assert(!std::is_default_constructible_v<LastingRoom> && !std::is_copy_constructible_v<LastingRoom>,
              "room that nobody reserved");
static_assert(!std::is_default_constructible_v<StepRoom>, "room of a step that is none");
static_assert(!std::is_aggregate_v<LastingRoom> && !std::is_aggregate_v<StepRoom>);
static_assert(!std::is_same_v<decltype(std::declval<Instance&>().reserve(1)), LastingRoom>,
              "room that a journal counts on is taken for lasting");

}  // namespace

// The checks above are done by the compiler. This test shows that the types cost nothing at run time.
TEST(Room, IsOnlyAType) { EXPECT_TRUE(std::is_empty_v<LastingRoom> && std::is_empty_v<StepRoom>); }
