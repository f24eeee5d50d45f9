#include "tarvelon/platform/files/arxml/Source.h"

#include <algorithm>

namespace Tarvelon::files::arxml {

bool SourceFile::isUnresolved(std::uint32_t element) const noexcept {
  return std::ranges::binary_search(unresolved, element);
}

namespace {

std::uint64_t bitsOf(SourcePlace place) noexcept { return std::uint64_t{place.file} << 32 | place.element; }

}  // namespace

void Sources::noteOthers() {
  for (std::uint32_t index = 0; index < files.size(); ++index) {
    for (const DividedElement& each : files[index].divided)
      others[bitsOf(each.main)].push_back({index, each.element});
  }
}

std::span<const SourcePlace> othersOf(const Sources& sources, SourcePlace main) {
  const auto found = sources.others.find(bitsOf(main));
  return found == sources.others.end() ? std::span<const SourcePlace>() : found->second;
}

void setSource(native::Instance& object, SourcePlace place) {
  const std::uint64_t bits = bitsOf(place);
  object.put(native::ClassData::kSourceSlot, native::Word{.bits = bits}, object.reserveLasting());
}

bool findSource(const native::Instance& object, SourcePlace& place) noexcept {
  const native::Word* word = object.find(native::ClassData::kSourceSlot);
  if (!word) return false;
  place = {static_cast<std::uint32_t>(word->bits >> 32), static_cast<std::uint32_t>(word->bits)};
  return true;
}

bool isInside(const Sources& sources, SourcePlace inner, SourcePlace outer) noexcept {
  return inner.file == outer.file && outer.element < inner.element &&
         inner.element < sources.files[outer.file].document.element(outer.element).next;
}

namespace {

/// The element of an object around another element. Returns whether there is one.
bool findAround(const Sources& sources, const native::Instance& object, SourcePlace inner,
                SourcePlace& around) {
  if (!findSource(object, around)) return false;
  if (isInside(sources, inner, around)) return true;
  for (const SourcePlace& other : othersOf(sources, around)) {
    around = other;
    if (isInside(sources, inner, other)) return true;
  }
  return false;
}

/// Whether an element still stands for an object: neither the object nor an object around it was moved.
bool isWritten(const Sources& sources, const native::Instance& object, SourcePlace element,
               const IsElementOf& isElementOf) {
  const native::Instance* each = &object;
  for (; each->owner(); each = each->owner()) {
    if (!isElementOf(*each, element) || !findAround(sources, *each->owner(), element, element)) return false;
  }
  return true;
}

}  // namespace

std::uint32_t homeOf(const Sources& sources, const native::Instance& object, const IsElementOf& isElementOf) {
  SourcePlace source;
  for (const native::Instance* each = &object; each; each = each->owner()) {
    if (!findSource(*each, source)) continue;
    SourcePlace main;
    if (!each->owner()) return source.file;
    if (!findSource(*each->owner(), main)) continue;
    for (const SourcePlace& other : othersOf(sources, main)) {
      if (isInside(sources, source, other) && isWritten(sources, *each->owner(), other, isElementOf))
        return source.file;
    }
  }
  return 0;
}

namespace {

/// The path of a base that is declared in a package's element. Empty if it is not the one that is meant.
std::string basePath(const Document& text, std::uint32_t base, std::string_view label) {
  const std::uint32_t name = text.find(base, "SHORT-LABEL");
  const std::uint32_t mark = text.find(base, "IS-DEFAULT");
  const std::uint32_t package = text.find(base, "PACKAGE-REF");
  const bool isDefault = mark != 0 && trimmed(text.inner(mark)) == "true";
  const bool isMeant = label.empty() ? isDefault : name != 0 && trimmed(text.inner(name)) == label;
  return isMeant && package != 0 ? std::string(trimmed(text.inner(package))) : std::string();
}

}  // namespace

std::string referenceBase(const Sources& sources, const native::Instance& object, std::string_view label) {
  for (const native::Instance* each = &object; each; each = each->owner()) {
    SourcePlace source;
    if (!findSource(*each, source)) continue;
    const Document& text = sources.files[source.file].document;
    const std::uint32_t bases = text.find(source.element, "REFERENCE-BASES");
    if (bases == 0) continue;
    for (std::uint32_t base = bases + 1; base < text.element(bases).next; base = text.element(base).next) {
      std::string path = basePath(text, base, label);
      if (!path.empty()) return path;
    }
  }
  return {};
}

}  // namespace Tarvelon::files::arxml
