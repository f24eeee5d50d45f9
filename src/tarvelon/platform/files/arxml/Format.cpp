#include "tarvelon/platform/files/arxml/Format.h"

#include <algorithm>
#include <charconv>

#include "tarvelon/arplatform/Content.h"
#include "tarvelon/platform/model/metamodel/Registry.h"

namespace Tarvelon::files::arxml {

namespace {

/// Calls visit(part) for each part of a text between separators.
template <class Visit>
void forEachPart(std::string_view text, std::string_view separator, Visit visit) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    if (end != 0) visit(text.substr(0, end));
    text.remove_prefix(std::min(end + separator.size(), text.size()));
  }
}

unsigned numberAt(std::string_view text) noexcept {
  unsigned number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// "3,5-22"
Releases readReleases(std::string_view text) {
  Releases set = 0;
  forEachPart(text, ",", [&set](std::string_view part) {
    const std::size_t dash = part.find('-');
    const unsigned first = numberAt(part);
    const unsigned last = dash == std::string_view::npos ? first : numberAt(part.substr(dash + 1));
    for (unsigned each = first; each <= last; ++each) set |= bitOf(each);
  });
  return set;
}

char small(char each) noexcept {
  return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
}
bool isSame(std::string_view left, std::string_view right) noexcept {
  return std::ranges::equal(left, right, {}, small, small);
}

}  // namespace

const ContentItem* Content::find(std::uint32_t name, unsigned release, std::size_t first) const noexcept {
  const auto isMeant = [&](const ContentItem& item) {
    return item.name == name && (item.releases & bitOf(release)) != 0;
  };
  const auto begin = items.begin() + static_cast<std::ptrdiff_t>(first);
  auto found = std::find_if(begin, items.end(), isMeant);
  if (found != items.end()) return &*found;
  found = std::find_if(items.begin(), begin, isMeant);
  return found == begin ? nullptr : &*found;
}

Releases Content::releasesOf(std::uint32_t name) const noexcept {
  Releases set = 0;
  for (const ContentItem& item : items) {
    if (item.name == name) set |= item.releases;
  }
  return set;
}

const Format& Format::get() {
  // Never freed: models may be loaded until the process ends.
  static const Format& format = *new Format();
  return format;
}

Format::Format() {
  mNames.emplace_back();
  readContent();
  mCandidates.resize(mNames.size());
  for (const metamodel::ShapeTable& shape : shapeTables()) {
    mShapes.emplace(shape.name->name, &shape);
    for (const metamodel::ElementRow& row : shape.elements) {
      const std::uint32_t name = enter(row.name);
      if (name >= mCandidates.size()) mCandidates.resize(name + 1);
      mCandidates[name].push_back({&native::tableOf(*shape.name), &row});
    }
    for (const metamodel::PlaceRow& place : shape.places) {
      if (place.form == metamodel::Form::Attribute) continue;
      forEachPart(place.path, "/", [this](std::string_view name) {
        if (name.ends_with('*')) name.remove_suffix(1);
        enter(name);
      });
    }
  }
  mCandidates.resize(mNames.size());
  for (const metamodel::ItemTable& items : itemTables()) mTexts.emplace(items.name->name, items.texts);
}

std::uint32_t Format::enter(std::string_view name) {
  const auto [found, isNew] = mNumbers.try_emplace(name, static_cast<std::uint32_t>(mNames.size()));
  if (isNew) mNames.push_back(name);
  return found->second;
}

void Format::readContent() {
  const auto& rows = metamodel::arplatform::kContent;
  mContents.resize(std::size(rows));
  for (std::size_t index = 0; index < std::size(rows); ++index) {
    mContents[index].type = rows[index].type;
    mContents[index].isOrdered = rows[index].isOrdered;
    mContentByType.emplace(rows[index].type, &mContents[index]);
  }
  for (std::size_t index = 0; index < std::size(rows); ++index)
    readItems(mContents[index], rows[index].items);
  mRoot = mContentByType.at("AUTOSAR");
}

void Format::readItems(Content& content, std::string_view items) {
  forEachPart(items, "; ", [&](std::string_view text) {
    ContentItem item;
    const std::size_t blank = text.find(' ');
    item.releases = readReleases(text.substr(blank + 1));
    std::string_view name = text.substr(0, blank);
    if (name.ends_with('*')) {
      item.isMany = true;
      name.remove_suffix(1);
    }
    const std::size_t equal = name.find('=');
    if (equal != std::string_view::npos) {
      item.content = mContentByType.at(name.substr(equal + 1));
      name = name.substr(0, equal);
    }
    item.name = enter(name);
    item.place = static_cast<std::uint16_t>(content.items.size());
    content.items.push_back(item);
  });
}

std::uint32_t Format::numberOf(std::string_view name) const noexcept {
  const auto found = mNumbers.find(name);
  return found == mNumbers.end() ? 0 : found->second;
}

std::span<const Candidate> Format::candidates(std::uint32_t name) const noexcept { return mCandidates[name]; }

const metamodel::ShapeTable& Format::shapeOf(const metamodel::ClassName& cls) const noexcept {
  static constexpr metamodel::ShapeTable kNone{};
  const auto found = mShapes.find(cls.name);
  return found == mShapes.end() ? kNone : *found->second;
}

std::span<const std::string_view> Format::textsOf(std::string_view enumeration) const noexcept {
  const auto found = mTexts.find(enumeration);
  return found == mTexts.end() ? std::span<const std::string_view>() : found->second;
}

unsigned releaseOf(std::string_view name) noexcept {
  const std::size_t slash = name.find_last_of("/\\");
  if (slash != std::string_view::npos) name.remove_prefix(slash + 1);
  constexpr std::string_view kStrict = "_STRICT.xsd";
  const bool isStrict =
      name.size() > kStrict.size() && isSame(name.substr(name.size() - kStrict.size()), kStrict);
  for (const metamodel::ReleaseRow& row : releases()) {
    const std::string_view schema = row.schema;
    if (isSame(name, row.name) || isSame(name, schema)) return row.number;
    if (isStrict && isSame(name.substr(0, name.size() - kStrict.size()), schema.substr(0, schema.size() - 4)))
      return row.number;
    unsigned found = 0;
    forEachPart(row.aliases, " ", [&](std::string_view alias) {
      if (isSame(name, alias)) found = row.number;
    });
    if (found != 0) return found;
  }
  return 0;
}

const metamodel::ReleaseRow& releaseRow(unsigned number) noexcept { return releases()[number - 1]; }

std::string releaseNames() {
  std::string text;
  for (const metamodel::ReleaseRow& row : releases())
    text += (text.empty() ? "" : ", ") + std::string(row.name);
  return text;
}

std::string textOf(Releases set) {
  std::string text;
  const auto last = static_cast<unsigned>(releases().size());
  for (unsigned first = 1; first <= last; ++first) {
    if ((set & bitOf(first)) == 0) continue;
    unsigned end = first;
    while (end < last && (set & bitOf(end + 1)) != 0) ++end;
    if (!text.empty()) text += ", ";
    text += releaseRow(first).name;
    if (end != first) text += std::string(" to ") + releaseRow(end).name;
    first = end;
  }
  return text;
}

}  // namespace Tarvelon::files::arxml
