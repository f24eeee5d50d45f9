#include "tarvelon/platform/files/arxml/Writer.h"

#include <algorithm>
#include <unordered_map>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/files/arxml/Values.h"
#include "tarvelon/platform/files/arxml/WriterLevel.h"
#include "tarvelon/platform/model/objects/Slots.h"

// The elements of the text: what is copied from a file, and what is inserted where.
namespace Tarvelon::files::arxml {

using metamodel::Form;
using native::Instance;

namespace {

constexpr std::string_view kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xsi:schemaLocation=\"http://autosar.org/schema/r4.0 ";

bool isBlank(std::string_view text) noexcept {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// What stays of the text before an element that is left out: comments before it, but not its own line.
std::string_view withoutLastLine(std::string_view lead) noexcept {
  if (isBlank(lead)) return {};
  const std::size_t end = lead.find_last_not_of(" \t\r\n");
  return lead.substr(0, end + 1);
}

}  // namespace

Writer::Writer(native::NativeModel& model, const Sources* sources, unsigned release)
    : mModel(model), mSources(sources), mRelease(release) {
  if (sources) mChanges = std::make_unique<Changes>(model, *sources, mShapes);
}

void Writer::findObjects() {
  mObjects.clear();
  for (const SourceFile& file : mSources->files) mObjects.emplace_back(file.document.size(), nullptr);
  mModel.forEachInstance([this](Instance& object) {
    SourcePlace source;
    if (!findSource(object, source)) return;
    Instance*& found = mObjects[source.file][source.element];
    if (!found || !isInPlace(*found, source)) found = &object;
  });
  for (std::size_t index = 0; index < mSources->files.size(); ++index) {
    for (const DividedElement& each : mSources->files[index].divided)
      mObjects[index][each.element] = mObjects[each.main.file][each.main.element];
  }
}

/// Whether the owner of an object stands around the element from which the object was loaded. A copy of an
/// object has the element of its original, but another owner.
bool Writer::isInPlace(const Instance& object, SourcePlace source) const noexcept {
  SourcePlace around;
  if (!object.owner() || !findSource(*object.owner(), around)) return false;
  const auto isAround = [&](SourcePlace place) { return isInside(*mSources, source, place); };
  return isAround(around) || std::ranges::any_of(othersOf(*mSources, around), isAround);
}

void Writer::writeAll(Instance& root, Sink& sink) {
  mWritten = kAll;
  if (mSources && mSources->files.size() > 1) mChanges->addDivided(mModel);
  SourcePlace source;
  const bool isLoaded = mSources && findSource(root, source);
  write(root, isLoaded ? &mSources->files[source.file] : nullptr, sink);
}

void Writer::writeFile(std::uint32_t file, Instance& root, Sink& sink) {
  mWritten = file;
  write(root, &mSources->files[file], sink);
}

void Writer::write(Instance& root, const SourceFile* file, Sink& sink) {
  const auto put = [&sink](std::string_view text) { sink.write(text.data(), text.size()); };
  if (file && mWritten == kAll && mSources->files.size() == 1 && mRelease == file->release &&
      !mChanges->has(root)) {
    return put(file->document.text());
  }
  if (mSources && mObjects.empty()) findObjects();
  mDivided.clear();
  if (mWritten != kAll) {
    for (const DividedElement& each : mSources->files[mWritten].divided)
      mDivided.insert(mObjects[mWritten][each.element]);
  }
  Emit first;
  first.isObject = true;
  first.name = "AUTOSAR";
  first.content = &Format::get().root();
  first.file = file;
  first.parts = partsOf(root, first.name, first.content, file, 0);
  if (!file) {
    run(std::move(first), sink);
    return put("\n");
  }
  const Document& document = file->document;
  const Element& element = document.element(0);
  mLayout = Layout::of(document);
  put(document.slice(0, element.begin));
  run(std::move(first), sink);
  put(document.text().substr(element.end));
}

std::uint32_t Writer::homeOf(const Instance& object) const {
  return arxml::homeOf(*mSources, object, [this](const Instance& each, SourcePlace element) {
    return mObjects[element.file][element.element] == &each;
  });
}

/// Writes an element and everything in it. The pieces that are still to be written are a stack.
void Writer::run(Emit first, Sink& sink) {
  Output out(sink);
  std::vector<Piece> left;
  std::vector<Piece> pieces;
  left.emplace_back(std::move(first));
  while (!left.empty()) {
    Piece piece = std::move(left.back());
    left.pop_back();
    if (const auto* slice = std::get_if<std::string_view>(&piece)) {
      out.raw(*slice);
    } else if (const auto* own = std::get_if<std::string>(&piece)) {
      out.raw(*own);
    } else {
      pieces.clear();
      expand(std::get<Emit>(piece), pieces);
      std::move(pieces.rbegin(), pieces.rend(), std::back_inserter(left));
    }
  }
  out.flush();
}

std::string Writer::startTag(const Emit& emit) {
  const bool isRoot = emit.isObject && emit.name == "AUTOSAR";
  if (!emit.file) {
    if (isRoot) return std::string(kHeader) + releaseRow(mRelease).schema + "\">";
    std::string tag = "<" + emit.name;
    const metamodel::ElementRow* row =
        emit.isObject && !emit.hasOwner() ? rowFor(*emit.parts[0].object, nullptr) : nullptr;
    if (row && row->fixed[0] != '\0') tag += std::string(" ") + row->fixed;
    for (std::size_t index = 0; emit.isObject && index < emit.parts.size(); ++index) {
      const Part& part = emit.parts[index];
      if (part.spot != 0) continue;
      for (const std::uint16_t each : part.shape->attributes()) {
        const Place& place = part.shape->places()[each];
        std::string written = textOf(*part.object, place, 0);
        if (written.empty()) written = place.row->fallback;
        if (written.empty()) continue;
        tag += std::string(" ") + place.row->path + "=\"";
        appendAttribute(tag, written);
        tag += "\"";
      }
    }
    return tag + ">";
  }
  const Document& document = emit.file->document;
  std::string tag(document.startTag(emit.element));
  if (isRoot && mRelease != emit.file->release) {
    const std::string_view schema = document.attribute(emit.element, "xsi:schemaLocation");
    const std::size_t last = schema.find_last_of(" \t\r\n/") + 1;
    const std::size_t offset =
        static_cast<std::size_t>(schema.data() - document.startTag(emit.element).data());
    if (schema.data()) tag.replace(offset + last, schema.size() - last, releaseRow(mRelease).schema);
  }
  if (!emit.isObject) return tag;
  // A copy of an object is another object.
  if (objectAt(*emit.file, emit.element) != emit.parts[emit.hasOwner() ? 1 : 0].object)
    tag = withAttribute(std::move(tag), "UUID", {});
  for (const Part& part : emit.parts) {
    if (part.spot != 0) continue;
    for (const std::uint16_t each : part.shape->attributes()) {
      const Place& place = part.shape->places()[each];
      tag = withAttribute(std::move(tag), place.row->path, textOf(*part.object, place, 0));
    }
  }
  return tag;
}

std::string Writer::childIndent(const Emit& emit) const {
  if (!emit.file) return emit.indent + mLayout.unit;
  const Document& document = emit.file->document;
  if (document.hasElements(emit.element)) {
    const std::string_view indent = indentOf(document, emit.element + 1);
    if (!indent.empty()) return std::string(indent);
  }
  return std::string(indentOf(document, emit.element)) + mLayout.unit;
}

void Writer::expand(const Emit& emit, std::vector<Piece>& pieces) {
  const Part& main = emit.parts.front();
  if (emit.file && mRelease == emit.file->release && !mChanges->has(*main.object))
    return pieces.push_back(emit.file->document.outer(emit.element));
  if (emit.isObject && main.shape->body() && main.shape->body()->form() == Form::Body)
    return expandBody(emit, pieces);
  Level level;
  level.found.resize(emit.parts.size());
  for (std::size_t index = 0; index < emit.parts.size(); ++index)
    level.found[index].counts.assign(emit.parts[index].shape->spotCount(), 0);
  level.indent = childIndent(emit);
  level.hasLines = mLayout.hasLines && !emit.isFlat;
  if (emit.file) {
    collect(emit, level);
    for (std::size_t index = 0; index < emit.parts.size(); ++index) reorder(emit.parts[index], level);
  }
  addMissing(emit, level);
  finish(emit, level, pieces);
}

/// An element whose text is a value.
void Writer::expandBody(const Emit& emit, std::vector<Piece>& pieces) {
  std::string tag = startTag(emit);
  const Part& part = emit.parts.front();
  const bool isSame = emit.file && formulaOf(emit.file->document, emit.element) ==
                                       textOf(*part.object, *part.shape->body(), 0);
  if (isSame && tag.ends_with("/>")) {
    pieces.emplace_back(std::move(tag));
    return;
  }
  const std::string body = isSame ? sameBody(*emit.file, emit.element, part) : bodyOf(part);
  if (tag.ends_with("/>")) tag.replace(tag.size() - 2, 2, ">");
  pieces.emplace_back(std::move(tag) + body + "</" + emit.name + ">");
}

/// Takes the children of a loaded element that stay.
void Writer::collect(const Emit& emit, Level& level) {
  const Document& document = emit.file->document;
  const Element& element = document.element(emit.element);
  std::uint32_t offset = element.contentBegin;
  // What no row knows belongs to the element before it.
  std::uint16_t place = 0;
  for (std::uint32_t child = emit.element + 1; child < element.next; child = document.element(child).next) {
    const std::string_view lead = document.slice(offset, document.element(child).begin);
    offset = document.element(child).end;
    std::optional<Piece> piece = decide(emit, level, child);
    if (!piece) {
      const std::string_view comments = withoutLastLine(lead);
      if (!comments.empty()) level.children.push_back({comments, std::string_view(), place, nullptr});
      continue;
    }
    const std::uint32_t name = Format::get().numberOf(document.nameOf(child));
    const ContentItem* item = emit.content ? emit.content->find(name, mRelease) : nullptr;
    if (item) place = item->place;
    const Instance* object = emit.file->isObject[child] ? objectAt(*emit.file, child) : nullptr;
    level.children.push_back({lead, std::move(*piece), place, object});
  }
  level.tail = document.slice(offset, element.contentEnd);
  level.hasLines = level.children.empty() ? mLayout.hasLines
                                          : level.children.front().lead.find('\n') != std::string_view::npos;
}

/// Puts objects that are still here into the order of their list. The places between their neighbours stay.
void Writer::reorder(const Part& part, Level& level) {
  for (const std::uint16_t index : part.shape->spot(part.spot).inside) {
    const Place& place = part.shape->places()[index];
    const native::WordList* list = place.isMany() ? native::listOf(*part.object, place.slot) : nullptr;
    if (!list || !part.object->hasChanged()) continue;
    std::unordered_map<const Instance*, std::uint32_t> order;
    for (std::uint32_t each = 0; each < list->size(); ++each) order.emplace(list->at(each).object, each);
    std::vector<std::size_t> places;
    places.reserve(level.children.size());
    for (std::size_t each = 0; each < level.children.size(); ++each) {
      if (level.children[each].object && order.contains(level.children[each].object)) places.push_back(each);
    }
    const auto orderAt = [&](std::size_t each) { return order.at(level.children[each].object); };
    if (std::ranges::is_sorted(places, {}, orderAt)) continue;
    std::vector<Child> moved;
    std::vector<std::string_view> leads;
    moved.reserve(places.size());
    leads.reserve(places.size());
    for (const std::size_t each : places) {
      leads.push_back(level.children[each].lead);
      moved.push_back(std::move(level.children[each]));
    }
    std::ranges::stable_sort(moved, {}, [&order](const Child& each) { return order.at(each.object); });
    for (std::size_t each = 0; each < places.size(); ++each) {
      moved[each].lead = leads[each];
      level.children[places[each]] = std::move(moved[each]);
    }
  }
}

void Writer::addMissing(const Emit& emit, Level& level) {
  for (std::size_t index = 0; index < emit.parts.size(); ++index) {
    const Part& part = emit.parts[index];
    const Spot& spot = part.shape->spot(part.spot);
    for (const std::uint16_t child : spot.children) addMissingAt(emit, level, index, child);
    for (const std::uint16_t place : spot.inside) addObjects(emit, level, index, part.shape->places()[place]);
  }
}

/// Adds the elements of a spot that are not there yet.
void Writer::addMissingAt(const Emit& emit, Level& level, std::size_t index, std::uint16_t spotIndex) {
  const Part& part = emit.parts[index];
  const Spot& spot = part.shape->spot(spotIndex);
  const std::string_view name = Format::get().nameOf(spot.name);
  const ContentItem* item = emit.content ? emit.content->find(spot.name, mRelease) : nullptr;
  const Content* content = item ? item->content : nullptr;
  std::uint32_t& count = level.found[index].counts[spotIndex];
  const Place* own = spot.value == Spot::kNone ? nullptr : &part.shape->places()[spot.value];
  // Without the object of a role, its element only surrounds what the owner says itself inside of it.
  if (!own || (own->form() == Form::Role && !spot.children.empty() && !part.object->has(own->slot))) {
    const std::uint32_t wanted = countBelow(part, spotIndex, content);
    for (; count < wanted; ++count) {
      Emit inner;
      inner.name = name;
      inner.content = content;
      inner.parts = {{part.object, part.shape, spotIndex, part.active, part.isSecondary}};
      inner.indent = level.indent;
      inner.index = wanted > 1 ? count : emit.index;
      inner.isFlat = !level.hasLines;
      insert(emit, level, name, std::move(inner));
    }
    return;
  }
  const Place& place = *own;
  const bool isElsewhere = part.isSecondary || (place.form() != Form::Role && !isHere(*part.object));
  if (isElsewhere || !(*part.active)[place.index] || saysOwner(emit, index, place, spot.name)) return;
  std::uint32_t all = countOf(part, place, emit.content);
  if (item && !item->isMany && emit.index == kAll && all > 1 && place.repeats == spotIndex) {
    refuse(*part.object, "<" + std::string(name) + "> stands once in the release " +
                             releaseRow(mRelease).name + "; " + std::string(place.property->metaName()) +
                             " has " + std::to_string(all) + " values");
    all = 1;
  }
  const bool isOne = emit.index != kAll;
  const std::uint32_t first = isOne ? emit.index + count : count;
  const std::uint32_t end = isOne ? std::min(all, emit.index + 1) : all;
  for (std::uint32_t value = first; value < end; ++value) {
    Instance* target = place.property->isReference() ? targetOf(*part.object, place, value) : nullptr;
    if (place.form() == Form::Role) {
      if (!standsAt(*target, part, place, emit.content)) continue;
      if (level.found[index].objects.contains(target)) continue;
      SourcePlace source;
      const bool isMoved = mSources && findSource(*target, source);
      const SourceFile* file = isMoved ? &mSources->files[source.file] : nullptr;
      const bool isSame = file && file->document.nameOf(source.element) == name;
      insert(emit, level, name,
             emitRole(*target, part, spotIndex, content, level.indent, isSame ? file : nullptr,
                      source.element, !level.hasLines),
             target);
    } else if (place.form() == Form::Reference) {
      insert(emit, level, name, reference(*part.object, name, *target));
    } else {
      std::string text = "<" + std::string(name) + ">";
      appendEscaped(text, textOf(*part.object, place, value));
      insert(emit, level, name, text + "</" + std::string(name) + ">");
    }
  }
}

/// Adds the objects of a property that are not there yet. Each is inserted behind the object before it in the
/// list, if that one is here.
void Writer::addObjects(const Emit& emit, Level& level, std::size_t index, const Place& place) {
  const Part& part = emit.parts[index];
  const std::uint32_t count =
      place.isMany()
          ? native::listOf(*part.object, place.slot) ? native::listOf(*part.object, place.slot)->size() : 0
      : part.object->has(place.slot) ? 1
                                     : 0;
  std::vector<Child> added;
  std::size_t next = 0;
  const Instance* before = nullptr;
  const auto flush = [&](const Instance* behind) {
    if (added.empty()) return;
    std::size_t at = level.children.size();
    for (std::size_t each = next; each < level.children.size(); ++each) {
      const Instance* object = level.children[each].object;
      if (!object || (object != before && (before || object != behind))) continue;
      at = object == before ? each + 1 : each;
      break;
    }
    level.children.insert(level.children.begin() + static_cast<std::ptrdiff_t>(at),
                          std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
    next = at + added.size();
    added.clear();
  };
  const auto& here = level.found[index].objects;
  for (std::uint32_t value = 0; value < count; ++value) {
    Instance& object = *targetOf(*part.object, place, value);
    if (here.contains(&object)) {
      flush(&object);
      before = &object;
      continue;
    }
    if (!standsAt(object, part, place, emit.content)) continue;
    const metamodel::ElementRow* row = rowFor(object, emit.content);
    const std::uint32_t name = Format::get().numberOf(row->name);
    const ContentItem* item = emit.content ? emit.content->find(name, mRelease) : nullptr;
    SourcePlace source;
    const bool isMoved = mSources && findSource(object, source);
    const SourceFile* file = isMoved ? &mSources->files[source.file] : nullptr;
    if (file && file->document.nameOf(source.element) != row->name) file = nullptr;
    Child child{{},
                emitObject(object, row->name, item ? item->content : nullptr, level.indent, file,
                           source.element, !level.hasLines),
                static_cast<std::uint16_t>(item ? item->place : 0),
                &object};
    if (emit.content && emit.content->isOrdered && !before) {
      insert(emit, level, row->name, std::move(child.piece), &object);
    } else {
      added.push_back(std::move(child));
    }
  }
  flush(nullptr);
}

/// Inserts an element where the schema wants it: behind the last one that may stand before it.
void Writer::insert(const Emit& emit, Level& level, std::string_view name, Piece piece,
                    const Instance* object) {
  const ContentItem* item =
      emit.content ? emit.content->find(Format::get().numberOf(name), mRelease) : nullptr;
  Child child{{}, std::move(piece), static_cast<std::uint16_t>(item ? item->place : 0), object};
  auto at = level.children.end();
  if (item && emit.content->isOrdered) {
    at = std::find_if(level.children.rbegin(), level.children.rend(), [&child](const Child& each) {
           return each.place <= child.place;
         }).base();
  }
  level.children.insert(at, std::move(child));
}

void Writer::finish(const Emit& emit, Level& level, std::vector<Piece>& pieces) {
  std::string tag = startTag(emit);
  const bool isSelf = emit.isObject && emit.parts.front().shape->body() &&
                      (!emit.file || emit.file->document.attribute(emit.element, "DEST").data()) &&
                      emit.name.ends_with("REF");
  if (isSelf) {
    const Place& place = *emit.parts.front().shape->body();
    Instance* target = targetOf(*emit.parts.front().object, place, 0);
    if (target) {
      pieces.emplace_back(reference(*emit.parts.front().object, emit.name, *target));
      return;
    }
    if (emit.file) return pieces.push_back(emit.file->document.outer(emit.element));
  }
  const bool isEmpty = level.children.empty();
  if (isEmpty && isBlank(level.tail)) {
    if (emit.file) {
      const bool hadElements = emit.file->document.hasElements(emit.element);
      if (!hadElements) {
        pieces.emplace_back(std::move(tag));
        const Element& element = emit.file->document.element(emit.element);
        return pieces.push_back(emit.file->document.slice(element.contentBegin, element.end));
      }
      pieces.emplace_back(std::move(tag) + "</" + emit.name + ">");
      return;
    }
    tag.replace(tag.size() - 1, 1, "/>");
    pieces.emplace_back(std::move(tag));
    return;
  }
  if (tag.ends_with("/>")) tag.replace(tag.size() - 2, 2, ">");
  pieces.emplace_back(std::move(tag));
  const bool hadElements = emit.file && emit.file->document.hasElements(emit.element);
  // Comments of an element that had no elements yet.
  if (emit.file && !hadElements) pieces.push_back(withoutLastLine(level.tail));
  const std::string line = level.hasLines ? mLayout.newline + level.indent : std::string();
  for (Child& child : level.children) {
    if (child.lead.data()) {
      pieces.push_back(child.lead);
    } else {
      pieces.emplace_back(line);
    }
    pieces.push_back(std::move(child.piece));
  }
  if (hadElements) {
    pieces.push_back(level.tail);
  } else if (level.hasLines) {
    const std::string own(emit.file ? indentOf(emit.file->document, emit.element)
                                    : std::string_view(emit.indent));
    pieces.emplace_back(mLayout.newline + own);
  }
  pieces.emplace_back("</" + emit.name + ">");
}

void Writer::refuse(const Instance& object, std::string text) {
  const Instance* named = &object;
  while (named->owner() && pathOf(*named, mShapes).empty()) named = named->owner();
  if (named != &object) text.insert(0, std::string(object.cls().methods->className().shortName()) + ": ");
  mRefused.push_back({pathOf(*named, mShapes), std::move(text)});
}

}  // namespace Tarvelon::files::arxml
