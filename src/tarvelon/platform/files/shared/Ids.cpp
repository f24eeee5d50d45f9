#include "tarvelon/platform/files/shared/Ids.h"

#include <bit>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/shared/Contents.h"
#include "tarvelon/platform/files/shared/KeyTable.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace Tarvelon::files {

using native::ClassData;
using native::Instance;
using native::Word;

namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr unsigned kTopShift = 60;
constexpr std::uint64_t kNumbers = (std::uint64_t{1} << 63) - 1;

constexpr std::array<std::int8_t, 256> makeValues() {
  std::array<std::int8_t, 256> values{};
  values.fill(-1);
  for (std::size_t digit = 0; digit < kDigits.size(); ++digit)
    values[static_cast<unsigned char>(kDigits[digit])] = static_cast<std::int8_t>(digit);
  return values;
}
constexpr auto kValues = makeValues();

/// One run of assignIds().
class Assignment {
 public:
  Assignment(const native::NativeModel& model, Schema& schema, std::size_t count) : mSchema(schema) {
    mTaken.reserve(count);
    model.instances().forEach([this](const Instance& object) {
      if (const Word* id = numberedId(object)) mTaken.insert(id->bits);
    });
  }
  /// Gives ids to a root and to everything it contains, owners first. `index` is the number of the root among
  /// the roots.
  void visit(Instance& root, std::uint32_t index) {
    enter(root, 0, index);
    while (!mOpen.empty()) {
      Level& level = mOpen.back();
      if (level.held.next()) {
        const std::uint64_t feature = level.cls->features[level.held.slot()].nameHash;
        enter(*level.held.value().object, mixed(level.id + feature), level.held.index());
      } else {
        mOpen.pop_back();
      }
    }
  }

 private:
  /// An object with an id. Some objects that it contains may have none yet.
  struct Level {
    Cursor held;
    const ClassSchema* cls;
    std::uint64_t id;
  };

  void enter(Instance& object, std::uint64_t place, std::uint32_t index) {
    requireDepth(object, mOpen.size() + 1);
    const ClassSchema& cls = mSchema.of(object.cls());
    const std::uint64_t id = idOf(object, cls, place, index);
    mOpen.push_back({Cursor(object, object.cls().holdingSlots), &cls, id});
  }

  std::uint64_t idOf(Instance& object, const ClassSchema& cls, std::uint64_t place, std::uint32_t index) {
    if (const Word* id = numberedId(object)) return id->bits;
    if (const Word* id = foreignId(object)) return hashOf(id->text->view());
    const Word* name = cls.name ? object.find(cls.name->slot) : nullptr;
    const std::uint64_t own = name && name->text ? hashOf(name->text->view()) : index;
    std::uint64_t number = mixed(mixed(place + cls.typeHash) + own) & kNumbers;
    // If the id is taken, the index of the object in its list is mixed in. So even many equal names in one
    // list need no long search.
    for (std::uint64_t turn = index; number == 0 || !mTaken.insert(number); ++turn)
      number = mixed(number + turn + 1) & kNumbers;
    setId(object, number);
    return number;
  }

  Schema& mSchema;
  KeySet mTaken;
  std::vector<Level> mOpen;
};

}  // namespace

std::array<char, kIdLength> idText(std::uint64_t number) noexcept {
  std::array<char, kIdLength> text;
  text[0] = '_';
  unsigned shift = kTopShift;
  for (std::size_t place = 1; place < kIdLength; ++place, shift -= 6)
    text[place] = kDigits[number >> shift & 63];
  return text;
}

std::optional<std::uint64_t> idNumber(std::string_view text) noexcept {
  if (text.size() != kIdLength || text[0] != '_') return {};
  std::uint64_t number = 0;
  int bad = 0;
  for (const char digit : text.substr(1)) {
    const int value =
        kValues[static_cast<unsigned char>(digit)];  // NOLINT(bugprone-signed-char-misuse): -1 is none
    bad |= value;
    number = number << 6 | static_cast<std::uint64_t>(value & 63);
  }
  const bool isCut = kValues[static_cast<unsigned char>(text[1])] > 7;
  if (bad < 0 || isCut || number == 0) return {};
  return number;
}

void setId(Instance& object, std::uint64_t number) {
  object.put(ClassData::kIdSlot, Word{.bits = number}, object.reserveLasting());
}

void setForeignId(Instance& object, std::string_view text) {
  native::LastingRoom room = object.reserveLasting();
  const K7Q::String id = K7Q::String::fromUtf8(text);
  auto* cell = K7Q::NSInterface::StringIntf::make(id.view());
  object.put(ClassData::kForeignIdSlot, Word{.text = cell}, std::move(room));
}

void assignIds(const native::NativeModel& model, Schema& schema) {
  std::size_t count = 0;
  std::size_t missing = 0;
  // Deleted objects that an undo can restore keep their ids, so these are taken too.
  model.instances().forEach([&](const Instance& object) {
    ++count;
    if (object.isAlive() && !numberedId(object) && !foreignId(object)) ++missing;
  });
  if (missing == 0) return;
  Assignment assignment(model, schema, count);
  std::uint32_t root = 0;
  model.forEachInstance([&](Instance& object) {
    if (!object.owner()) assignment.visit(object, root++);
  });
}

void requireDepth(const Instance& object, std::size_t depth) {
  if (depth <= static_cast<std::size_t>(kMaxDepth)) return;
  throw K7Q::Exception(std::string("a ") + object.cls().methods->className().shortName() +
                       " is nested more than " + std::to_string(kMaxDepth) +
                       " levels deep, the maximum of a file; nest the objects less deeply");
}

}  // namespace Tarvelon::files
