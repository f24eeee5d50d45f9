#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tarvelon/boundary/tarvelon/Shapes.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"

namespace Tarvelon::files::arxml {

namespace native = metamodel::native;

/// A set of releases: bit n stands for the release with the number n.
using Releases = std::uint32_t;
constexpr Releases bitOf(unsigned release) noexcept { return Releases{1} << release; }

/// An element that may stand in another one.
struct ContentItem {
  std::uint32_t name = 0;   ///< Format::numberOf()
  std::uint16_t place = 0;  ///< the position in the order
  bool isMany = false;
  Releases releases = 0;
  const struct Content* content = nullptr;  ///< null if no row describes its content
};

/// Which elements may stand in an element, in the order of the schema.
struct Content {
  std::string_view type;
  bool isOrdered = false;
  std::vector<ContentItem> items;

  /// The item of that name in a release. Null if there is none. The search begins at the item with the index
  /// `first`: the elements of a file mostly stand in the order of the items.
  const ContentItem* find(std::uint32_t name, unsigned release, std::size_t first = 0) const noexcept;
  /// All releases in which the name may stand here; 0 if the schemas don't know it here.
  Releases releasesOf(std::uint32_t name) const noexcept;
};

/// A class that an element may stand for.
struct Candidate {
  const native::ClassMethods* cls = nullptr;
  const metamodel::ElementRow* row = nullptr;
};

/// What the rows say about the format, ready for look-ups. One object serves all threads; it is created when
/// it is first used.
class Format {
 public:
  static const Format& get();
  Format(const Format&) = delete;
  Format& operator=(const Format&) = delete;

  /// The number of an element's name; 0 if no row has the name.
  std::uint32_t numberOf(std::string_view name) const noexcept;
  std::string_view nameOf(std::uint32_t number) const noexcept { return mNames[number]; }
  /// The content of the root element.
  const Content& root() const noexcept { return *mRoot; }
  std::span<const Candidate> candidates(std::uint32_t name) const noexcept;
  /// The rows of a class. An empty table for a class without a shape.
  const metamodel::ShapeTable& shapeOf(const metamodel::ClassName& cls) const noexcept;
  /// The texts of an enumeration, by value.
  std::span<const std::string_view> textsOf(std::string_view enumeration) const noexcept;

 private:
  Format();
  ~Format() = default;
  std::uint32_t enter(std::string_view name);
  void readContent();
  void readItems(Content& content, std::string_view items);

  std::vector<std::string_view> mNames;
  std::unordered_map<std::string_view, std::uint32_t> mNumbers;
  std::unordered_map<std::string_view, const Content*> mContentByType;
  std::vector<Content> mContents;
  std::vector<std::vector<Candidate>> mCandidates;
  std::unordered_map<std::string_view, const metamodel::ShapeTable*> mShapes;
  std::unordered_map<std::string_view, std::span<const std::string_view>> mTexts;
  const Content* mRoot = nullptr;
};

/// The shapes of all classes and the texts of all enumerations.
std::span<const metamodel::ShapeTable> shapeTables() noexcept;
std::span<const metamodel::ItemTable> itemTables() noexcept;

std::span<const metamodel::ReleaseRow> releases() noexcept;
/// The release that a person names, such as "R22-11" or "4.3.1", or a schema file, with or without folders
/// and in any case. 0 if there is none.
unsigned releaseOf(std::string_view name) noexcept;
/// The release in which a new model is saved.
unsigned usualRelease() noexcept;
const metamodel::ReleaseRow& releaseRow(unsigned number) noexcept;
/// The names of all releases: "4.0.1, 4.0.2, ..., R25-11".
std::string releaseNames();
/// "4.0.1 to 4.3.0, R22-11"
std::string textOf(Releases set);

}  // namespace Tarvelon::files::arxml
