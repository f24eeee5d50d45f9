#include <algorithm>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/files/arxml/Values.h"
#include "tarvelon/platform/files/arxml/Writer.h"
#include "tarvelon/platform/hx/Utf.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/Slots.h"

// The values of objects as texts, and where they stand.
namespace Tarvelon::files::arxml {

using metamodel::Form;
using native::Instance;
using native::Storage;
using native::Word;

namespace {

/// The number of values in a slot.
std::uint32_t sizeOf(const Instance& object, const Place& place) noexcept {
  const Word* word = object.find(place.slot);
  if (!word) return 0;
  return place.isMany() ? word->list->size() : 1;
}

/// REQUIRES: index < sizeOf().
Word wordAt(const Instance& object, const Place& place, std::uint32_t index) noexcept {
  const Word word = *object.find(place.slot);
  return place.isMany() ? word.list->at(index) : word;
}

bool isWord(char each) noexcept {
  return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z') || (each >= '0' && each <= '9') ||
         each == '_';
}

std::string nameOf(const Instance& object) {
  const Word* name =
      object.cls().nameSlot == native::ClassData::kNoSlot ? nullptr : object.find(object.cls().nameSlot);
  return name && name->text ? hx::toUtf8(name->text->view()) : std::string();
}

}  // namespace

std::string Writer::textOf(const Instance& object, const Place& place, std::uint32_t index) const {
  if (index >= sizeOf(object, place)) return {};
  const Word word = wordAt(object, place, index);
  const Storage storage = place.property->storage();
  if (storage == Storage::Text || storage == Storage::Texts)
    return word.text ? hx::toUtf8(word.text->view()) : std::string();
  return valueText(*place.property, word);
}

Instance* Writer::targetOf(const Instance& object, const Place& place, std::uint32_t index) const {
  return index < sizeOf(object, place) ? wordAt(object, place, index).object : nullptr;
}

std::string Writer::elementNameOf(const Instance& object) {
  if (const metamodel::ElementRow* row = rowFor(object, nullptr)) return row->name;
  // An object whose element is named by its role.
  if (!object.owner()) return {};
  for (const Place& place : mShapes.of(object.owner()->cls()).places()) {
    if (place.slot != object.ownerSlot() || place.form() != Form::Role) continue;
    const std::string path = withoutStars(place.row->path);
    return path.substr(path.rfind('/') + 1);
  }
  return {};
}

std::string Writer::reference(const Instance& object, std::string_view name, const Instance& target) {
  const std::string path = pathOf(target, mShapes);
  if (path.empty()) {
    refuse(object, "<" + std::string(name) + "> refers to an object without a path: give " +
                       std::string(target.cls().methods->className().shortName()) + " and its owners names");
  }
  std::string text = "<" + std::string(name) + " DEST=\"" + elementNameOf(target) + "\">";
  appendEscaped(text, path);
  return text + "</" + std::string(name) + ">";
}

/// The name of the element with which a formula refers to an object.
std::string Writer::referenceName(const Part& part, const Instance& target) const {
  for (const Place& place : part.shape->places()) {
    if (place.form() != Form::Reference || place.spot == 0) continue;
    for (std::uint32_t index = 0; index < sizeOf(*part.object, place); ++index) {
      if (targetOf(*part.object, place, index) == &target)
        return std::string(Format::get().nameOf(part.shape->spot(place.spot).name));
    }
  }
  return {};
}

/// The text of an object's element. In a formula, the names of the objects that it refers to are references.
std::string Writer::bodyOf(const Part& part) {
  const std::string body = textOf(*part.object, *part.shape->body(), 0);
  std::string text;
  for (std::size_t place = 0; place < body.size();) {
    std::size_t end = place;
    while (end < body.size() && isWord(body[end])) ++end;
    if (end == place) {
      appendEscaped(text, body.substr(place, 1));
      ++place;
      continue;
    }
    const std::string word = body.substr(place, end - place);
    place = end;
    const Instance* meant = meantIn(part, word, true);
    if (meant) {
      text += reference(*part.object, referenceName(part, *meant), *meant);
    } else {
      text += word;
    }
  }
  return text;
}

/// The path that an object had in its file. Empty for a new object.
std::string Writer::oldPathOf(const Instance& object) const {
  SourcePlace source;
  if (!mSources || !findSource(object, source)) return {};
  return mSources->files[source.file].document.pathOf(source.element);
}

/// The object to which a formula refers with a path or, if `isName` is true, with the last name of one. Null
/// if it refers to none.
const Instance* Writer::meantIn(const Part& part, std::string_view text, bool isName) {
  const auto isMeant = [&](const std::string& path) {
    return isName ? path.substr(path.rfind('/') + 1) == text : path == text;
  };
  for (const Place& place : part.shape->places()) {
    if (place.form() != Form::Reference || place.spot == 0) continue;
    for (std::uint32_t index = 0; index < sizeOf(*part.object, place); ++index) {
      const Instance* target = targetOf(*part.object, place, index);
      if (isMeant(pathOf(*target, mShapes)) || isMeant(oldPathOf(*target))) return target;
    }
  }
  return nullptr;
}

/// The content of a formula that has not changed, with the paths that its references have now.
std::string Writer::sameBody(const SourceFile& file, std::uint32_t element, const Part& part) {
  const Document& document = file.document;
  const Element& where = document.element(element);
  std::string text;
  std::uint32_t offset = where.contentBegin;
  for (std::uint32_t each = element + 1; each < where.next; each = document.element(each).next) {
    text += document.slice(offset, document.element(each).begin);
    offset = document.element(each).end;
    const std::string old = plainText(trimmed(document.inner(each)));
    const Instance* target = meantIn(part, old, false);
    const std::string path = target ? pathOf(*target, mShapes) : old;
    if (path == old) {
      text += document.outer(each);
      continue;
    }
    text += document.startTag(each);
    appendEscaped(text, path);
    text += "</" + std::string(document.nameOf(each)) + ">";
  }
  return text.append(document.slice(offset, where.contentEnd));
}

/// Follows the schema from an element of one spot, with that content, inwards to an element of another spot.
Writer::Walk Writer::walk(const Content* content, const ClassShape& shape, std::uint16_t from,
                          std::uint16_t to) const {
  std::uint16_t way[kMaxWay];
  std::size_t depth = 0;
  for (; to != from && depth < kMaxWay; to = shape.spot(to).parent) way[depth++] = to;
  while (content && depth > 0) {
    const ContentItem* item = content->find(shape.spot(way[--depth]).name, mRelease);
    if (!item) return {nullptr, false};
    content = item->content;
  }
  return {content, true};
}

const Content* Writer::contentAt(const Content* content, const ClassShape& shape, std::uint16_t spot) const {
  return walk(content, shape, 0, spot).content;
}

/// Which places of an object are written. Of several places for one property, the one that the loaded element
/// has; else the first one that the schema knows.
std::shared_ptr<const std::vector<bool>> Writer::activePlaces(const Instance& object, const ClassShape& shape,
                                                              const Content* content, const SourceFile* file,
                                                              std::uint32_t element) {
  auto active = std::make_shared<std::vector<bool>>(shape.places().size(), false);
  const auto isPresent = [&](const Place& place) {
    return file && place.row->path[0] != '\0' &&
           file->document.findPath(element, withoutStars(place.row->path)) != 0;
  };
  for (const Place& place : shape.places()) {
    const Form form = place.form();
    const bool hasPath =
        form == Form::Text || form == Form::Role || form == Form::Inside || form == Form::Reference;
    if (!hasPath || !walk(content, shape, 0, place.spot).isKnown) continue;
    if (form == Form::Inside || place.row->choice.property) {
      (*active)[place.index] = true;
      continue;
    }
    std::size_t present = shape.places().size();
    for (const Place& other : shape.places()) {
      if (other.slot == place.slot && (*active)[other.index]) present = other.index;
    }
    if (present == shape.places().size()) {
      (*active)[place.index] = true;
    } else if (isPresent(place) && !isPresent(shape.places()[present])) {
      (*active)[present] = false;
      (*active)[place.index] = true;
    }
  }
  refuseUnplaced(object, shape, content, *active);
  return active;
}

/// Reports the values for which the release has no place.
void Writer::refuseUnplaced(const Instance& object, const ClassShape& shape, const Content* content,
                            const std::vector<bool>& active) {
  std::uint64_t reported = 0;
  for (const Place& place : shape.places()) {
    if (active[place.index] || !object.has(place.slot) || place.spot == 0) continue;
    if (place.form() == Form::Nowhere || place.form() == Form::Chosen || sizeOf(object, place) == 0) continue;
    const bool isElsewhere = std::ranges::any_of(
        shape.places(), [&](const Place& other) { return other.slot == place.slot && active[other.index]; });
    if (isElsewhere || (reported >> place.slot & 1) != 0) continue;
    reported |= std::uint64_t{1} << place.slot;
    const Content* around = contentAt(content, shape, shape.spot(place.spot).parent);
    const Releases known = around ? around->releasesOf(shape.spot(place.spot).name) : 0;
    refuse(object, std::string(place.property->metaName()) + " has no place in the release " +
                       releaseRow(mRelease).name +
                       (known != 0 ? "; <" + std::string(Format::get().nameOf(shape.spot(place.spot).name)) +
                                         "> is in " + arxml::textOf(known)
                                   : std::string()));
  }
}

/// Reports a new or changed name that no file can have.
void Writer::refuseWrongName(const Instance& object, const SourceFile* file, std::uint32_t element) {
  constexpr std::size_t kLongest = 128;
  const std::string name = nameOf(object);
  const std::uint32_t old = file ? file->document.find(element, "SHORT-NAME") : 0;
  const std::string_view before = old == 0 ? std::string_view() : trimmed(file->document.inner(old));
  if (file && before == name) return;
  if (name.empty()) return refuse(object, "the name is empty; set Name");
  const bool isWrong = !std::ranges::all_of(name, isWord) || name.front() == '_' ||
                       (name.front() >= '0' && name.front() <= '9') || name.size() > kLongest;
  if (!isWrong) return;
  refuse(object,
         "the name '" + name.substr(0, kLongest) +
             "' cannot be a SHORT-NAME; use letters, digits and '_', at most 128, and begin with a letter");
}

/// Reports contained objects that have no element in the release.
void Writer::refuseHomeless(const Part& part, const Content* content) {
  const auto stands = [&](const Place& place, const Instance& object) {
    if (place.form() == Form::Role) return standsAt(object, part, place, nullptr);
    return standsAt(object, part, place, contentAt(content, *part.shape, place.spot));
  };
  std::uint64_t done = 0;
  for (const Place& place : part.shape->places()) {
    const bool isLast = (done >> place.slot & 1) == 0;
    done |= std::uint64_t{1} << place.slot;
    if (!isLast || !place.property->holds()) continue;
    for (std::uint32_t index = 0; index < sizeOf(*part.object, place); ++index) {
      const Instance& object = *targetOf(*part.object, place, index);
      bool isSaid = false;
      bool hasPlace = false;
      for (const Place& each : part.shape->places()) {
        if (each.slot != place.slot) continue;
        const bool isElement = each.form() == Form::Inside || each.form() == Form::Role;
        isSaid |=
            !isElement || mShapes.of(object.cls()).rows().reason[0] != '\0' || !(*part.active)[each.index];
        hasPlace |= isElement && stands(each, object);
      }
      if (isSaid || hasPlace || !isHere(object)) continue;
      Releases known = 0;
      for (const Place& each : part.shape->places()) {
        const Content* around =
            each.slot == place.slot ? contentAt(content, *part.shape, each.spot) : nullptr;
        for (const metamodel::ElementRow& row : mShapes.of(object.cls()).rows().elements)
          known |= around ? around->releasesOf(Format::get().numberOf(row.name)) : 0;
      }
      refuse(object, std::string("there is no element for a ") +
                         object.cls().methods->className().shortName() + " here in the release " +
                         releaseRow(mRelease).name +
                         (known != 0 ? "; there is one in " + arxml::textOf(known) : std::string()));
    }
  }
}

std::vector<Writer::Part> Writer::partsOf(Instance& object, std::string_view name, const Content* content,
                                          const SourceFile* file, std::uint32_t element) {
  const ClassShape& shape = mShapes.of(object.cls());
  std::vector<Part> parts;
  SourcePlace source;
  const bool isSecondary = file && findSource(object, source) &&
                           (&mSources->files[source.file] != file || source.element != element);
  parts.push_back({&object, &shape, 0, activePlaces(object, shape, content, file, element), isSecondary});
  for (const std::uint16_t index : shape.inlined()) {
    Instance* part = targetOf(object, shape.places()[index], 0);
    if (!part) continue;
    const bool isHere = std::ranges::any_of(shape.rows().elements, [&](const metamodel::ElementRow& row) {
      return row.name == name &&
             (!row.inlined || (shape.slotOf(*shape.property(row.inlined)) == shape.places()[index].slot &&
                               part->cls().isKindOf(native::tableOf(*row.inlinedClass).data().ordinal)));
    });
    if (!isHere) continue;
    const ClassShape& inner = mShapes.of(part->cls());
    parts.push_back({part, &inner, 0, activePlaces(*part, inner, content, file, element), false});
  }
  for (const Part& part : parts) refuseHomeless(part, content);
  if (!isSecondary && shape.isNamed()) refuseWrongName(object, file, element);
  return parts;
}

Writer::Piece Writer::emitObject(Instance& object, std::string name, const Content* content,
                                 std::string indent, const SourceFile* file, std::uint32_t element,
                                 bool isFlat, const Part* owner) {
  const bool isChanged = !file || mRelease != file->release || mChanges->has(owner ? *owner->object : object);
  if (!isChanged) return file->document.outer(element);
  Emit emit;
  emit.file = file;
  emit.element = element;
  emit.content = content;
  emit.parts = partsOf(object, name, content, file, element);
  if (owner) emit.parts.insert(emit.parts.begin(), *owner);
  emit.name = std::move(name);
  emit.indent = std::move(indent);
  emit.isObject = true;
  emit.isFlat = isFlat;
  refuseUnread(object, emit.name, file, element);
  return emit;
}

/// Reports an object whose class could not be read from its element, since the reference that says it is
/// missing.
void Writer::refuseUnread(const Instance& object, std::string_view name, const SourceFile* file,
                          std::uint32_t element) {
  const ClassShape& shape = mShapes.of(object.cls());
  for (const metamodel::ElementRow& row : shape.rows().elements) {
    if (row.name != name || !row.reference) continue;
    for (const Place& place : shape.places()) {
      if (place.form() != Form::Reference || std::string_view(place.row->path) != row.reference) continue;
      if (targetOf(object, place, 0)) return;
      const std::uint32_t found = file ? file->document.findPath(element, row.reference) : 0;
      if (found != 0 && file->isUnresolved(found)) return;
      return refuse(object, std::string(place.property->metaName()) +
                                " is not set, so the file could not say that this is a " +
                                object.cls().methods->className().shortName() + "; set it");
    }
  }
}

/// The object of a role. What its owner says itself in the object's element is written with it.
Writer::Piece Writer::emitRole(Instance& object, const Part& owner, std::uint16_t spot,
                               const Content* content, std::string indent, const SourceFile* file,
                               std::uint32_t element, bool isFlat) {
  std::string name(Format::get().nameOf(owner.shape->spot(spot).name));
  Part around = owner;
  around.spot = spot;
  const bool isShared = !owner.shape->spot(spot).children.empty();
  return emitObject(object, std::move(name), content, std::move(indent), file, element, isFlat,
                    isShared ? &around : nullptr);
}

Instance* Writer::objectAt(const SourceFile& file, std::uint32_t element) const {
  return mObjects[static_cast<std::size_t>(&file - mSources->files.data())][element];
}

/// Whether an object has what the row of its element asks for.
bool Writer::answers(const Instance& object, const ClassShape& shape, const metamodel::ElementRow& row) {
  const auto valueOf = [&](const char* name) -> const Word* {
    const native::Property* property = shape.property(name);
    return property ? object.find(shape.slotOf(*property)) : nullptr;
  };
  if (row.choice.property) {
    const Word* word = valueOf(row.choice.property);
    if ((word ? integerOf(*word) : 0) != row.choice.value) return false;
  }
  if (row.inlined) {
    const Word* word = valueOf(row.inlined);
    if (!word || !word->object->cls().isKindOf(native::tableOf(*row.inlinedClass).data().ordinal))
      return false;
  }
  if (!row.reference) return true;
  for (const Place& place : shape.places()) {
    if (place.form() != Form::Reference || std::string_view(place.row->path) != row.reference) continue;
    const Instance* target = targetOf(object, place, 0);
    if (!target) continue;
    const auto rows = mShapes.of(target->cls()).rows().elements;
    return std::ranges::any_of(rows,
                               [&](const auto& each) { return std::string_view(each.name) == row.dest; });
  }
  SourcePlace source;
  if (!mSources || !findSource(object, source)) return true;
  const Document& document = mSources->files[source.file].document;
  const std::uint32_t found = document.findPath(source.element, row.reference);
  return found == 0 || document.attribute(found, "DEST") == row.dest;
}

/// The element of an object that stands in an element with that content. Null if there is none.
const metamodel::ElementRow* Writer::rowFor(const Instance& object, const Content* content) {
  const ClassShape& shape = mShapes.of(object.cls());
  const metamodel::ElementRow* fallback = nullptr;
  for (const metamodel::ElementRow& row : shape.rows().elements) {
    if (content && !content->find(Format::get().numberOf(row.name), mRelease)) continue;
    if (answers(object, shape, row)) return &row;
    // An object without them stands in the first one.
    const metamodel::ElementRow& first = shape.rows().elements.front();
    if (!fallback && row.inlined && first.inlined && std::string_view(row.inlined) == first.inlined &&
        isBare(object, shape))
      fallback = &row;
  }
  return fallback;
}

/// Whether none of the objects is there that would stand in the object's element.
bool Writer::isBare(const Instance& object, const ClassShape& shape) const {
  return std::ranges::none_of(shape.inlined(), [&](std::uint16_t index) {
    return targetOf(object, shape.places()[index], 0) != nullptr;
  });
}

/// Whether a contained object stands in an element with that content, at a place of its owner.
bool Writer::standsAt(const Instance& object, const Part& owner, const Place& place, const Content* content) {
  if (!(*owner.active)[place.index] || !isHere(object)) return false;
  const metamodel::ChoiceRow& choice = place.row->choice;
  if (choice.property) {
    const ClassShape& shape = mShapes.of(object.cls());
    const native::Property* property = shape.property(choice.property);
    const Word* word = property ? object.find(shape.slotOf(*property)) : nullptr;
    if ((word ? integerOf(*word) : 0) != choice.value) return false;
  }
  return place.form() == Form::Role || rowFor(object, content) != nullptr;
}

/// How many values of a property are written at a place. `around` is the content of the element around the
/// place's own ones.
std::uint32_t Writer::countOf(const Part& part, const Place& place, const Content* around) {
  if (!(*part.active)[place.index]) return 0;
  const bool isElement = place.form() == Form::Role || place.form() == Form::Inside;
  if (!isElement && (part.isSecondary || !isHere(*part.object))) return 0;
  const std::uint32_t size = sizeOf(*part.object, place);
  if (place.form() == Form::Text) {
    return size == 1 && textOf(*part.object, place, 0).empty() ? 0 : size;
  }
  if (!isElement) return size;
  std::uint32_t count = 0;
  for (std::uint32_t index = 0; index < size; ++index)
    count += standsAt(*targetOf(*part.object, place, index), part, place, around) ? 1 : 0;
  return place.form() == Form::Role ? (count == 0 ? 0 : size) : count;
}

/// How many elements a spot needs that only surrounds others.
std::uint32_t Writer::countBelow(const Part& part, std::uint16_t spot, const Content* content) {
  std::uint32_t most = 0;
  for (const std::uint16_t index : part.shape->spot(spot).places) {
    const Place& place = part.shape->places()[index];
    const std::uint16_t around =
        place.form() == Form::Inside ? place.spot : part.shape->spot(place.spot).parent;
    const std::uint32_t count = countOf(part, place, walk(content, *part.shape, spot, around).content);
    if (count == 0) continue;
    most = std::max(most, place.repeats == spot ? count : 1U);
  }
  return most;
}

}  // namespace Tarvelon::files::arxml
