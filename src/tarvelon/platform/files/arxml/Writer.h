#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/arxml/Changes.h"
#include "tarvelon/platform/files/arxml/ClassShape.h"
#include "tarvelon/platform/files/arxml/Layout.h"
#include "tarvelon/platform/files/arxml/Source.h"
#include "tarvelon/platform/files/shared/Output.h"

namespace Tarvelon::files::arxml {

/// What a release cannot have, found while a model is written.
struct Refused {
  std::string path;
  std::string text;
};

/// Writes a model as ARXML.
///
/// An element that was loaded and has not changed is copied from its file. In a changed element each part is
/// compared with what the object says now: what is equal is copied, what is not is written anew, and what has
/// no class stays where it stands. A new element is written where the schema wants it.
class Writer {
 public:
  /// `sources` may be null. `release` is the release of the text.
  Writer(native::NativeModel& model, const Sources* sources, unsigned release);
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  /// The text of one file with everything.
  void writeAll(native::Instance& root, Sink& sink);
  /// The text of one of the files of the model: what stands in it, and what is new in its objects.
  void writeFile(std::uint32_t file, native::Instance& root, Sink& sink);
  const std::vector<Refused>& refused() const noexcept { return mRefused; }

 private:
  static constexpr std::size_t kMaxWay = 16;  ///< more elements than the longest path of a place has
  static constexpr std::uint32_t kAll = 0xFFFFFFFF;

  /// An object whose values stand in an element, the spot of its shape that the element is, and which of its
  /// places are written.
  struct Part {
    native::Instance* object = nullptr;
    const ClassShape* shape = nullptr;
    std::uint16_t spot = 0;
    std::shared_ptr<const std::vector<bool>> active;
    /// Whether the object has its main element elsewhere. Then only its name, references and contained
    /// objects are compared here.
    bool isSecondary = false;
  };

  /// An element that is to be written: one of a file with its changes, or a new one.
  struct Emit {
    const SourceFile* file = nullptr;  ///< null for a new element
    std::uint32_t element = 0;
    std::string name;
    const Content* content = nullptr;
    std::vector<Part> parts;
    std::string indent;          ///< of the line of a new element
    std::uint32_t index = kAll;  ///< of an element that is repeated for each value: which value
    bool isObject = false;       ///< whether the element is an object's own one
    bool isFlat = false;         ///< whether a new element stands on one line
    /// Whether the first part is the owner of the object, which says something itself in the object's
    /// element.
    bool hasOwner() const noexcept { return isObject && parts.front().spot != 0; }
  };
  using Piece = std::variant<std::string_view, std::string, Emit>;

  /// A child of an element that is being written, with the text before it.
  struct Child {
    std::string_view lead;
    Piece piece;
    std::uint16_t place = 0;
    const native::Instance* object = nullptr;
  };

  /// What has been found of a part's values among the children of an element.
  struct Found {
    std::vector<std::uint32_t> counts;  ///< by spot: how many elements there are
    std::unordered_set<const native::Instance*> objects;
  };

  struct Level;

  /// Where the schema leads: whether it has all elements on the way, and what is known of the last one's
  /// content.
  struct Walk {
    const Content* content;
    bool isKnown;
  };

  void write(native::Instance& root, const SourceFile* file, Sink& sink);
  void findObjects();
  std::uint32_t homeOf(const native::Instance& object) const;
  /// Whether an object is written into the file that is being made.
  bool isHere(const native::Instance& object) const {
    return mWritten == kAll || homeOf(object) == mWritten || mDivided.contains(&object);
  }

  // Elements
  void run(Emit first, Sink& sink);
  void expand(const Emit& emit, std::vector<Piece>& pieces);
  void expandBody(const Emit& emit, std::vector<Piece>& pieces);
  void collect(const Emit& emit, Level& level);
  static void reorder(const Part& part, Level& level);
  void addMissing(const Emit& emit, Level& level);
  void addMissingAt(const Emit& emit, Level& level, std::size_t part, std::uint16_t spot);
  void addObjects(const Emit& emit, Level& level, std::size_t part, const Place& place);
  void insert(const Emit& emit, Level& level, std::string_view name, Piece piece,
              const native::Instance* object = nullptr);
  void finish(const Emit& emit, Level& level, std::vector<Piece>& pieces);
  std::string startTag(const Emit& emit);
  std::string childIndent(const Emit& emit) const;

  // Children of a loaded element. No result: the element is left out.
  std::optional<Piece> decide(const Emit& emit, Level& level, std::uint32_t child);
  std::optional<Piece> decideLeaf(const Emit& emit, Level& level, std::size_t part, std::uint16_t spot,
                                  std::uint32_t child);
  std::optional<Piece> decideWrapper(const Emit& emit, Level& level, std::size_t part, std::uint16_t spot,
                                     std::uint32_t child);
  std::optional<Piece> decideObject(const Emit& emit, Level& level, std::uint32_t child);
  std::optional<Piece> decideText(const Emit& emit, const Part& part, const Place& place, std::uint32_t child,
                                  std::uint32_t index);
  std::optional<Piece> decideReference(const Emit& emit, const Part& part, const Place& place,
                                       std::uint32_t child, std::uint32_t index);
  static const Place* placeOf(const Part& part, std::uint32_t name) noexcept;
  bool saysOwner(const Emit& emit, std::size_t part, const Place& place, std::uint32_t name);
  static bool leavesToObject(const Emit& emit, std::size_t part, const Place& place, std::uint32_t name);
  bool isInRelease(const Emit& emit, std::uint32_t child, std::uint32_t name);
  bool keepsForeign(const Emit& emit, std::uint32_t wrapper, const Part& part, std::uint16_t spot) const;

  // Objects
  Piece emitObject(native::Instance& object, std::string name, const Content* content, std::string indent,
                   const SourceFile* file, std::uint32_t element, bool isFlat = false,
                   const Part* owner = nullptr);
  void refuseUnread(const native::Instance& object, std::string_view name, const SourceFile* file,
                    std::uint32_t element);
  Piece emitRole(native::Instance& object, const Part& owner, std::uint16_t spot, const Content* content,
                 std::string indent, const SourceFile* file, std::uint32_t element, bool isFlat = false);
  std::vector<Part> partsOf(native::Instance& object, std::string_view name, const Content* content,
                            const SourceFile* file, std::uint32_t element);
  std::shared_ptr<const std::vector<bool>> activePlaces(const native::Instance& object,
                                                        const ClassShape& shape, const Content* content,
                                                        const SourceFile* file, std::uint32_t element);
  void refuseUnplaced(const native::Instance& object, const ClassShape& shape, const Content* content,
                      const std::vector<bool>& active);
  void refuseWrongName(const native::Instance& object, const SourceFile* file, std::uint32_t element);
  void refuseHomeless(const Part& part, const Content* content);
  const metamodel::ElementRow* rowFor(const native::Instance& object, const Content* content);
  bool answers(const native::Instance& object, const ClassShape& shape, const metamodel::ElementRow& row);
  bool standsAt(const native::Instance& object, const Part& owner, const Place& place,
                const Content* content);
  native::Instance* objectAt(const SourceFile& file, std::uint32_t element) const;
  const Content* contentAt(const Content* content, const ClassShape& shape, std::uint16_t spot) const;
  Walk walk(const Content* content, const ClassShape& shape, std::uint16_t from, std::uint16_t to) const;
  bool isInPlace(const native::Instance& object, SourcePlace source) const noexcept;
  bool isBare(const native::Instance& object, const ClassShape& shape) const;
  bool isLeft(const Emit& emit, const Part& part, const Place& place, std::uint32_t child,
              std::uint32_t index) const;

  // Values
  std::uint32_t countOf(const Part& part, const Place& place, const Content* content);
  std::uint32_t countBelow(const Part& part, std::uint16_t spot, const Content* content);
  std::string textOf(const native::Instance& object, const Place& place, std::uint32_t index) const;
  native::Instance* targetOf(const native::Instance& object, const Place& place, std::uint32_t index) const;
  std::string reference(const native::Instance& object, std::string_view name,
                        const native::Instance& target);
  std::string bodyOf(const Part& part);
  std::string sameBody(const SourceFile& file, std::uint32_t element, const Part& part);
  std::string oldPathOf(const native::Instance& object) const;
  const native::Instance* meantIn(const Part& part, std::string_view text, bool isName);
  std::string referenceName(const Part& part, const native::Instance& target) const;
  std::string elementNameOf(const native::Instance& object);
  std::string basePath(const native::Instance& object, std::string_view label);

  void refuse(const native::Instance& object, std::string text);

  native::NativeModel& mModel;
  const Sources* mSources;
  unsigned mRelease;
  std::uint32_t mWritten = kAll;  ///< the number of the file that is being made; kAll: all in one
  ClassShapes mShapes;
  std::unique_ptr<Changes> mChanges;
  Layout mLayout;
  /// The objects that have their main element in another file, but another one in the file that is being
  /// made.
  std::unordered_set<const native::Instance*> mDivided;
  /// By file and element: the object that was loaded from it and still exists.
  std::vector<std::vector<native::Instance*>> mObjects;
  std::vector<Refused> mRefused;
};

}  // namespace Tarvelon::files::arxml
