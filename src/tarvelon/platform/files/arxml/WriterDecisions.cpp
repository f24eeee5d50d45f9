#include <algorithm>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/files/arxml/Values.h"
#include "tarvelon/platform/files/arxml/Writer.h"
#include "tarvelon/platform/files/arxml/WriterLevel.h"
#include "tarvelon/platform/hx/Utf.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/Slots.h"

// What becomes of each child of a loaded element: it is copied, changed or left out.
namespace Tarvelon::files::arxml {

using metamodel::Form;
using native::Instance;
using native::Storage;
using native::Word;

/// Whether the element may stand here in the release that is written. If not, it is reported.
bool Writer::isInRelease(const Emit& emit, std::uint32_t child, std::uint32_t name) {
  if (!emit.content || mRelease == emit.file->release || name == 0) return true;
  const Releases known = emit.content->releasesOf(name);
  if (known == 0 || (known & bitOf(mRelease)) != 0) return true;
  mRefused.push_back({emit.file->document.pathOf(child),
                      "<" + std::string(emit.file->document.nameOf(child)) + "> is not in the release " +
                          releaseRow(mRelease).name + "; it is in " + arxml::textOf(known)});
  return false;
}

/// The place of a part whose values are the elements of that name. Null if there is none.
const Place* Writer::placeOf(const Part& part, std::uint32_t name) noexcept {
  const std::uint16_t spot = part.shape->find(part.spot, name);
  if (spot == 0 || part.shape->spot(spot).value == Spot::kNone) return nullptr;
  return &part.shape->places()[part.shape->spot(spot).value];
}

/// Whether the owner of an object, whose values come first, writes the element in the object's element
/// itself. If the object says something else, that is reported.
bool Writer::saysOwner(const Emit& emit, std::size_t part, const Place& place, std::uint32_t name) {
  if (part == 0 || !emit.hasOwner()) return false;
  const Part& owner = emit.parts.front();
  const Place* other = placeOf(owner, name);
  if (!other || countOf(owner, *other, emit.content) == 0) return false;
  const Instance& object = *emit.parts[part].object;
  const bool isSame = place.property->isReference()
                          ? targetOf(object, place, 0) == targetOf(*owner.object, *other, 0)
                          : textOf(object, place, 0) == textOf(*owner.object, *other, 0);
  if (object.has(place.slot) && !isSame) {
    refuse(object, std::string(place.property->metaName()) + " is not written, since its owner has another " +
                       std::string(other->property->metaName()) + "; set only one of the two");
  }
  return true;
}

/// Whether the owner has no value for an element in the object's element, but the object has one.
bool Writer::leavesToObject(const Emit& emit, std::size_t part, const Place& place, std::uint32_t name) {
  if (part != 0 || !emit.hasOwner() || emit.parts.front().object->has(place.slot)) return false;
  const Place* other = placeOf(emit.parts[1], name);
  return other && emit.parts[1].object->has(other->slot);
}

std::optional<Writer::Piece> Writer::decide(const Emit& emit, Level& level, std::uint32_t child) {
  const Document& document = emit.file->document;
  const std::uint32_t name = Format::get().numberOf(document.nameOf(child));
  for (std::size_t index = 0; name != 0 && index < emit.parts.size(); ++index) {
    const Part& part = emit.parts[index];
    const std::uint16_t spot = part.shape->find(part.spot, name);
    if (spot == 0) continue;
    const std::uint16_t value = part.shape->spot(spot).value;
    if (value == Spot::kNone) return decideWrapper(emit, level, index, spot, child);
    if (leavesToObject(emit, index, part.shape->places()[value], name)) continue;
    // A place that the release does not have: its value is written at another one, if there is one.
    if (!(*part.active)[part.shape->places()[value].index]) {
      return part.object->has(part.shape->places()[value].slot) ? std::nullopt
                                                                : std::optional<Piece>(document.outer(child));
    }
    return decideLeaf(emit, level, index, spot, child);
  }
  if (emit.file->isObject[child]) return decideObject(emit, level, child);
  if (!isInRelease(emit, child, name)) return std::nullopt;
  return document.outer(child);
}

std::optional<Writer::Piece> Writer::decideObject(const Emit& emit, Level& level, std::uint32_t child) {
  Instance* object = objectAt(*emit.file, child);
  if (!object || !object->owner()) return std::nullopt;
  const Document& document = emit.file->document;
  for (std::size_t index = 0; index < emit.parts.size(); ++index) {
    const Part& part = emit.parts[index];
    if (object->owner() != part.object) continue;
    for (const std::uint16_t each : part.shape->spot(part.spot).inside) {
      const Place& place = part.shape->places()[each];
      if (place.slot != object->ownerSlot() || !standsAt(*object, part, place, emit.content)) continue;
      const metamodel::ElementRow* row = rowFor(*object, emit.content);
      if (document.nameOf(child) != row->name) continue;
      level.found[index].objects.insert(object);
      const ContentItem* item =
          emit.content ? emit.content->find(Format::get().numberOf(row->name), mRelease) : nullptr;
      return emitObject(*object, row->name, item ? item->content : nullptr, {}, emit.file, child);
    }
  }
  return std::nullopt;
}

std::optional<Writer::Piece> Writer::decideLeaf(const Emit& emit, Level& level, std::size_t index,
                                                std::uint16_t spot, std::uint32_t child) {
  const Part& part = emit.parts[index];
  const Place& place = part.shape->places()[part.shape->spot(spot).value];
  std::uint32_t& count = level.found[index].counts[spot];
  const Document& document = emit.file->document;
  const bool isName = place.slot == part.object->cls().nameSlot;
  if (part.isSecondary && !isName && place.form() != Form::Reference) return document.outer(child);
  if (place.form() == Form::Role) {
    if (!emit.file->isObject[child]) return document.outer(child);
    Instance* object = objectAt(*emit.file, child);
    if (!object || object->owner() != part.object || object->ownerSlot() != place.slot) return std::nullopt;
    ++count;
    level.found[index].objects.insert(object);
    const ContentItem* item =
        emit.content ? emit.content->find(part.shape->spot(spot).name, mRelease) : nullptr;
    return emitRole(*object, part, spot, item ? item->content : nullptr, {}, emit.file, child);
  }
  // A second value of a property that has one is wrong, but it was not lost by reading it.
  if (!place.isMany() && count != 0) return document.outer(child);
  const std::uint32_t value = emit.index != kAll ? emit.index : count;
  const bool isValue = !isLeft(emit, part, place, child, value);
  std::optional<Piece> piece = place.form() == Form::Reference
                                   ? decideReference(emit, part, place, child, value)
                                   : decideText(emit, part, place, child, value);
  if (piece && isValue) ++count;
  return piece;
}

/// Whether an element stays without being a value of the object: a reference whose target is not in the
/// model, or a text that is empty or was not understood.
bool Writer::isLeft(const Emit& emit, const Part& part, const Place& place, std::uint32_t child,
                    std::uint32_t index) const {
  if (place.form() == Form::Reference) {
    if (!emit.file->isUnresolved(child)) return false;
    return place.isMany() || !targetOf(*part.object, place, index);
  }
  if (!textOf(*part.object, place, index).empty()) return false;
  const Document& document = emit.file->document;
  std::string plain;
  const std::string_view text = valueOf(document.inner(child), plain);
  if (text.empty() || document.hasElements(child)) return true;
  const Storage storage = place.property->storage();
  Word word{};
  return storage != Storage::Text && storage != Storage::Texts &&
         readValue(*place.property, text, word) != ScalarFault::None;
}

std::optional<Writer::Piece> Writer::decideText(const Emit& emit, const Part& part, const Place& place,
                                                std::uint32_t child, std::uint32_t index) {
  const Document& document = emit.file->document;
  const std::string value = textOf(*part.object, place, index);
  const bool isFormula = document.hasElements(child);
  std::string plain;
  const std::string_view text = valueOf(document.inner(child), plain);
  const Storage storage = place.property->storage();
  const bool isText = storage == Storage::Text || storage == Storage::Texts;
  Word word{};
  const bool isRead = isText || readValue(*place.property, text, word) == ScalarFault::None;
  if (value.empty()) {
    const bool isKept = isFormula || !isRead || (isText && text.empty());
    return isKept ? std::optional<Piece>(document.outer(child)) : std::nullopt;
  }
  if (!isFormula && (isText ? text == value : isRead && valueText(*place.property, word) == value))
    return document.outer(child);
  std::string written(document.startTag(child));
  if (written.ends_with("/>")) written.replace(written.size() - 2, 2, ">");
  appendEscaped(written, value);
  return written + "</" + std::string(document.nameOf(child)) + ">";
}

namespace {

/// A property of an object as text. Empty if it has none of that name.
std::string propertyText(const Instance& object, const ClassShape& shape, const char* name) {
  const native::Property* property = shape.property(name);
  const Word* word = property ? object.find(shape.slotOf(*property)) : nullptr;
  if (!word) return {};
  return property->storage() == Storage::Text ? word->text ? hx::toUtf8(word->text->view()) : std::string()
                                              : valueText(*property, *word);
}

}  // namespace

/// The path for which a reference base stands now, seen from an object. An empty label: the default base.
std::string Writer::basePath(const Instance& object, std::string_view label) {
  for (const Instance* each = &object; each; each = each->owner()) {
    const ClassShape& shape = mShapes.of(each->cls());
    const native::Property* bases = shape.property("ReferenceBase");
    const native::WordList* list = bases ? native::listOf(*each, shape.slotOf(*bases)) : nullptr;
    for (std::uint32_t index = 0; list && index < list->size(); ++index) {
      const Instance& base = *list->at(index).object;
      const ClassShape& own = mShapes.of(base.cls());
      const bool isMeant = label.empty() ? propertyText(base, own, "IsDefault") == "true"
                                         : propertyText(base, own, "ShortLabel") == label;
      if (!isMeant) continue;
      const Word* package = base.find(own.slotOf(*own.property("Package")));
      return package ? pathOf(*package->object, mShapes) : referenceBase(*mSources, object, label);
    }
  }
  return {};
}

std::optional<Writer::Piece> Writer::decideReference(const Emit& emit, const Part& part, const Place& place,
                                                     std::uint32_t child, std::uint32_t index) {
  const Document& document = emit.file->document;
  Instance* target = targetOf(*part.object, place, index);
  const bool isOpen = emit.file->isUnresolved(child);
  if (isOpen && (place.isMany() || !target)) return document.outer(child);
  if (!target) return std::nullopt;
  const std::string path = pathOf(*target, mShapes);
  std::string plain;
  const std::string_view text = valueOf(document.inner(child), plain);
  if (text == path) return document.outer(child);
  std::string tag(document.startTag(child));
  std::string written = path;
  if (!text.starts_with('/')) {
    const std::string base = basePath(*part.object, document.attribute(child, "BASE")) + "/";
    if (base + std::string(text) == path) return document.outer(child);
    if (base.size() > 1 && path.starts_with(base)) {
      written = path.substr(base.size());
    } else {
      tag = withAttribute(std::move(tag), "BASE", {});
    }
  }
  const std::string_view dest = document.attribute(child, "DEST");
  const auto rows = Format::get().candidates(Format::get().numberOf(dest));
  const std::string element = elementNameOf(*target);
  if (!rows.empty() && dest != element) tag = withAttribute(std::move(tag), "DEST", element);
  if (tag.ends_with("/>")) tag.replace(tag.size() - 2, 2, ">");
  appendEscaped(tag, written);
  return tag + "</" + std::string(document.nameOf(child)) + ">";
}

/// Whether a wrapper has content that no row knows, a comment or an instruction.
bool Writer::keepsForeign(const Emit& emit, std::uint32_t wrapper, const Part& part,
                          std::uint16_t spot) const {
  const Document& document = emit.file->document;
  std::vector<std::pair<std::uint32_t, std::uint16_t>> left{{wrapper, spot}};
  while (!left.empty()) {
    const auto [element, at] = left.back();
    left.pop_back();
    std::uint32_t offset = document.element(element).contentBegin;
    for (std::uint32_t each = element + 1; each < document.element(element).next;
         each = document.element(each).next) {
      if (!trimmed(document.slice(offset, document.element(each).begin)).empty()) return true;
      offset = document.element(each).end;
      const std::uint16_t inner = part.shape->find(at, Format::get().numberOf(document.nameOf(each)));
      if (inner == 0) {
        if (!emit.file->isObject[each]) return true;
        continue;
      }
      const std::uint16_t value = part.shape->spot(inner).value;
      if (value == Spot::kNone) {
        left.emplace_back(each, inner);
      } else if (isLeft(emit, part, part.shape->places()[value], each, 0)) {
        return true;
      }
    }
    if (!trimmed(document.slice(offset, document.element(element).contentEnd)).empty()) return true;
  }
  return false;
}

std::optional<Writer::Piece> Writer::decideWrapper(const Emit& emit, Level& level, std::size_t index,
                                                   std::uint16_t spot, std::uint32_t child) {
  const Part& part = emit.parts[index];
  const Document& document = emit.file->document;
  const ContentItem* item =
      emit.content ? emit.content->find(part.shape->spot(spot).name, mRelease) : nullptr;
  const Content* content = item ? item->content : nullptr;
  std::uint32_t& count = level.found[index].counts[spot];
  const bool isRepeated = std::ranges::any_of(part.shape->spot(spot).places, [&](std::uint16_t each) {
    return part.shape->places()[each].repeats == spot;
  });
  const std::uint32_t wanted = countBelow(part, spot, content);
  const bool isKept = !document.hasElements(child) || keepsForeign(emit, child, part, spot);
  if (count >= wanted && !isKept) return std::nullopt;
  if (!isInRelease(emit, child, part.shape->spot(spot).name)) return std::nullopt;
  Emit inner;
  inner.file = emit.file;
  inner.element = child;
  inner.name = document.nameOf(child);
  inner.content = content;
  inner.parts = {{part.object, part.shape, spot, part.active, part.isSecondary}};
  inner.index = isRepeated ? count : emit.index;
  ++count;
  return inner;
}

}  // namespace Tarvelon::files::arxml
