#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "tarvelon/platform/files/arxml/Document.h"
#include "tarvelon/platform/model/objects/NativeModel.h"

namespace Tarvelon::files::arxml {

namespace native = metamodel::native;

/// Where an object stood in the files of its model.
struct SourcePlace {
  std::uint32_t file = 0;
  std::uint32_t element = 0;
  friend bool operator==(const SourcePlace&, const SourcePlace&) = default;
};

/// An element of an object that has its main element in another place.
struct DividedElement {
  std::uint32_t element = 0;
  SourcePlace main;
};

/// A file from which objects of a model were loaded. It is kept with the model: what nobody changes is saved
/// as it stands in the text.
struct SourceFile {
  std::filesystem::path path;      ///< as it was given; empty for a text
  std::filesystem::path absolute;  ///< the same, whatever the current folder becomes
  Encoding encoding;
  /// The hash of what this process has last written to the file. Only the model that was loaded from the file
  /// is saved back to it.
  mutable std::optional<std::size_t> written;
  Document document;
  unsigned release = 0;
  /// By element: whether an object was made for it.
  std::vector<bool> isObject;
  /// The elements of references whose targets are not in the model, in ascending order.
  std::vector<std::uint32_t> unresolved;
  /// In the order of the elements.
  std::vector<DividedElement> divided;
  /// The elements of objects with a relative reference, in ascending order.
  std::vector<std::uint32_t> relative;

  bool isUnresolved(std::uint32_t element) const noexcept;
};

/// The files of a model, in the order in which they were loaded.
struct Sources {
  std::vector<SourceFile> files;
  /// By the main element of an object, as setSource() keeps it: the other elements of the object.
  std::unordered_map<std::uint64_t, std::vector<SourcePlace>> others;
  /// Fills `others`. Called when all files were read.
  void noteOthers();
};

/// The files of a model. Null if it was not loaded from ARXML.
inline const Sources* sourcesOf(const native::NativeModel& model) noexcept {
  return static_cast<const Sources*>(model.sources());
}

/// The elements of an object besides its main one.
std::span<const SourcePlace> othersOf(const Sources& sources, SourcePlace main);
/// Remembers the element of an object that was just created.
void setSource(native::Instance& object, SourcePlace place);
/// Returns whether the object was loaded from a file; then `place` is set.
bool findSource(const native::Instance& object, SourcePlace& place) noexcept;

/// Whether an element stands inside of another one.
bool isInside(const Sources& sources, SourcePlace inner, SourcePlace outer) noexcept;
/// Whether an element is that of an object. A copy of an object has the element of its original.
using IsElementOf = std::function<bool(const native::Instance& object, SourcePlace element)>;
/// The number of the file in which an object is saved. It is saved where its owner is saved. The owner may be
/// divided between files: then it is the file with the element of the owner around the object's own element.
std::uint32_t homeOf(const Sources& sources, const native::Instance& object, const IsElementOf& isElementOf);

/// The path for which a reference base stands, seen from an object. An empty label: the default base. Empty
/// if no package around the object declares it.
std::string referenceBase(const Sources& sources, const native::Instance& object, std::string_view label);

}  // namespace Tarvelon::files::arxml
