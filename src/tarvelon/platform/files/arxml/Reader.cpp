#include "tarvelon/platform/files/arxml/Reader.h"

#include <algorithm>

#include "tarvelon/arplatform/common/Names.h"
#include "tarvelon/platform/files/arxml/Values.h"
#include "tarvelon/platform/files/shared/Utf.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/values/Values.h"
#include "tarvelon/platform/model/words/TextCell.h"

namespace Tarvelon::files::arxml {

using metamodel::Form;
using native::Instance;
using native::Storage;
using native::Word;

namespace {

namespace common = metamodel::arplatform::common;

constexpr std::string_view kNamespace = "http://autosar.org/schema/r4.0";
constexpr std::size_t kReported = std::size_t{1} << 14;

const native::ClassData& dataOf(const metamodel::ClassName& name) { return native::tableOf(name).data(); }

template <class X>
const native::ClassData& dataOf() {
  return dataOf(X::Interface::kName);
}

std::string quoted(std::string_view text) {
  constexpr std::size_t kShown = 60;
  return "'" + std::string(text.substr(0, kShown)) + (text.size() > kShown ? "...'" : "'");
}

/// The last word of a text.
std::string_view lastWord(std::string_view text) noexcept {
  text = trimmed(text);
  const std::size_t blank = text.find_last_of(" \t\r\n");
  return blank == std::string_view::npos ? text : text.substr(blank + 1);
}

std::uint32_t sizeOf(const Instance& object, std::uint8_t slot) noexcept {
  const native::WordList* list = native::listOf(object, slot);
  return list ? list->size() : 0;
}

/// The text of the first reference that an object's element has directly inside.
std::string_view referenceIn(const Document& document, std::uint32_t element, const ClassShape& shape) {
  for (const Place& place : shape.places()) {
    if (place.form() != Form::Reference ||
        std::string_view(place.row->path).find('/') != std::string_view::npos)
      continue;
    const std::uint32_t found = document.find(element, place.row->path);
    if (found != 0) return trimmed(document.inner(found));
  }
  return {};
}

/// The class of objects whose element is named by its role.
const native::ClassData* classOfRole(const native::ClassMethods& type) {
  if (!type.isAbstract()) return &type.data();
  for (const metamodel::ShapeTable& shape : shapeTables()) {
    const native::ClassMethods& cls = native::tableOf(*shape.name);
    if (!cls.isAbstract() && cls.data().isKindOf(type.data().ordinal)) return &cls.data();
  }
  return nullptr;
}

}  // namespace

void Reader::report(std::uint32_t offset, std::string text) {
  ++mProblems.count;
  if (mProblems.kept.size() >= Problems::kKept) return;
  if (!mLines) mLines.emplace(document());
  const LineAndColumn place = mLines->placeOf(offset);
  if (mSources.files.size() > 1) text = mFile->path.string() + ": " + text;
  mProblems.kept.push_back({place.line, place.column, std::move(text)});
}

/// Reports a wrong value in the innermost open element.
void Reader::reportValue(std::uint32_t offset, const std::string& text) {
  const std::string path = mFrames.empty() ? std::string() : document().pathOf(mFrames.back().element);
  report(offset, path.empty() ? text : path + "." + text);
}

void Reader::reportAt(std::uint32_t element, const std::string& text) {
  const std::string path = document().pathOf(element);
  report(document().element(element).begin, path.empty() ? text : path + ": " + text);
}

void Reader::readRoot(SourceFile& file, bool isLenient) {
  mFile = &file;
  mLines.reset();
  const Document& text = file.document;
  if (text.nameOf(0) != "AUTOSAR") {
    report(text.element(0).begin,
           "expected the root element <AUTOSAR>, got <" + std::string(text.nameOf(0)) + ">");
    throw Unreadable();
  }
  const std::string_view space = text.attribute(0, "xmlns");
  if (space.starts_with("http://autosar.org/") && !space.starts_with("http://autosar.org/schema/")) {
    report(text.element(0).begin, "the file is of AUTOSAR 3 (namespace " + quoted(space) +
                                      "), which is another format; convert it to AUTOSAR 4 first");
    throw Unreadable();
  }
  if (space != kNamespace) {
    report(text.element(0).begin,
           "expected the namespace '" + std::string(kNamespace) + "', got " + quoted(space));
    if (!isLenient) throw Unreadable();
  }
  const std::string_view schema = lastWord(text.attribute(0, "xsi:schemaLocation"));
  file.release = releaseOf(schema);
  if (file.release != 0) return;
  file.release = usualRelease();
  report(text.element(0).begin, "the schema " + quoted(schema) + " is none of the releases " +
                                    textOf(~Releases{0}) + "; the file is taken for " +
                                    releaseRow(file.release).name);
}

void Reader::read(std::uint32_t index) {
  mFileIndex = index;
  mFile = &mSources.files[index];
  mLines.reset();
  const Document& text = document();
  const Format& format = Format::get();
  mNumbers.clear();
  for (const std::string& name : text.names()) mNumbers.push_back(format.numberOf(name));
  mFile->isObject.assign(text.size(), false);

  const auto name = std::ranges::find(text.names(), "SHORT-NAME");
  const auto isName = [number = name - text.names().begin()](const Element& each) {
    return each.name == number;
  };
  mNamed += static_cast<std::size_t>(std::ranges::count_if(text.elements(), isName));
  mPaths.reserve(mNamed);
  if (!mRoot) {
    mRoot = &mModel.add(dataOf<common::AUTOSAR>(), 4);
    setSource(*mRoot, {index, 0});
  } else {
    mFile->divided.push_back({0, {0, 0}});
  }
  pushObject(*mRoot, nullptr, 0, &format.root());
  for (std::uint32_t each = 1; each < text.size();) {
    while (each >= mFrames.back().end) mFrames.pop_back();
    each = readElement(each) ? each + 1 : text.element(each).next;
    if (mProgress && each % kReported == 0) mProgress(0.5 + 0.4 * each / text.size());
  }
  mFrames.clear();
}

/// Returns whether the elements inside are to be read.
bool Reader::readElement(std::uint32_t element) {
  Frame& frame = mFrames.back();
  const std::uint32_t name = mNumbers[document().element(element).name];
  const Content* content = nullptr;
  if (name == 0) return false;
  if (frame.content) {
    const std::size_t first = frame.lastPlace == 0 ? 0 : frame.lastPlace - 1U;
    const ContentItem* item = frame.content->find(name, mFile->release, first);
    checkContent(frame, element, name, item);
    if (item) content = item->content;
  }
  for (std::uint8_t index = 0; index < frame.count; ++index) {
    const Part part = frame.parts[index];
    if (const std::uint16_t spot = part.shape->find(part.spot, name); spot != 0) {
      const std::uint16_t value = part.shape->spot(spot).value;
      if (value != Spot::kNone) return readLeaf(part, part.shape->places()[value], element, content);
      return openWrapper(part, spot, element, content);
    }
    for (const std::uint16_t place : part.shape->spot(part.spot).inside) {
      if (openInside(part, part.shape->places()[place], element, name, content)) return true;
    }
  }
  return false;
}

/// Reports an element in the wrong place, once too often, or of another release. `item` is null if the
/// content does not have the element.
void Reader::checkContent(Frame& frame, std::uint32_t element, std::uint32_t name, const ContentItem* item) {
  const auto tag = [&] { return "<" + std::string(document().nameOf(element)) + ">"; };
  if (!item) {
    const Releases known = frame.content->releasesOf(name);
    if (known == 0) return;
    return reportAt(element, tag() + " is not in the release " + releaseRow(mFile->release).name +
                                 " of the file; it is in " + textOf(known));
  }
  if (!frame.content->isOrdered) return;
  const auto place = static_cast<std::uint16_t>(item->place + 1);
  if (place < frame.lastPlace) {
    reportAt(element, tag() + " stands in the wrong place; move it before <" +
                          std::string(Format::get().nameOf(frame.content->items[frame.lastPlace - 1U].name)) +
                          ">");
  } else if (place == frame.lastPlace && !item->isMany) {
    reportAt(element, tag() + " stands twice; remove all but one");
  }
  frame.lastPlace = std::max(frame.lastPlace, place);
}

bool Reader::openWrapper(const Part& part, std::uint16_t spot, std::uint32_t element,
                         const Content* content) {
  Frame frame;
  frame.element = element;
  frame.end = document().element(element).next;
  frame.path = mFrames.back().path;
  frame.content = content;
  frame.parts[0] = {part.object, part.shape, spot, part.isSecondary};
  frame.count = 1;
  mFrames.push_back(frame);
  return true;
}

bool Reader::readLeaf(const Part& part, const Place& place, std::uint32_t element, const Content* content) {
  const Element& where = document().element(element);
  // The main element of the object says it.
  if (part.isSecondary && !place.isMany() && part.object->has(place.slot) && place.form() != Form::Reference)
    return false;
  switch (place.form()) {
    case Form::Role:
      return openRole(part, place, element, content);
    case Form::Reference:
      mPending.push_back({part.object, &place, {mFileIndex, element}});
      return false;
    default:
      // A formula or marked-up text is no plain value: it stays foreign content.
      if (!document().hasElements(element))
        readScalar(part, place, where.contentBegin, document().inner(element));
      return false;
  }
}

void Reader::readScalar(const Part& part, const Place& place, std::uint32_t offset, std::string_view text) {
  std::string plain;
  store(part, place, offset, valueOf(text, plain));
}

void Reader::store(const Part& part, const Place& place, std::uint32_t offset, std::string_view text) {
  const Storage storage = place.property->storage();
  Instance& object = *part.object;
  if (!place.isMany() && object.has(place.slot)) return;  // reported as an element that stands twice
  if (storage == Storage::Text || storage == Storage::Texts) return storeText(part, place, offset, text);
  Word word{};
  const ScalarFault fault = arxml::readValue(*place.property, text, word);
  if (fault != ScalarFault::None) {
    return reportValue(offset, std::string(place.row->property) + ": expected " +
                                   expectedText(*place.property) + ", got " + quoted(text) +
                                   (fault == ScalarFault::OutOfRange ? ", which is out of range" : ""));
  }
  if (place.isMany()) {
    native::insertNumber(object, place.slot, sizeOf(object, place.slot), integerOf(word));
  } else {
    native::store(object, place.slot, {word, false});
  }
}

void Reader::storeText(const Part& part, const Place& place, std::uint32_t offset, std::string_view text) {
  decode(text, mUnits);
  Instance& object = *part.object;
  try {
    native::checkText({object.cls(), *place.property, mModel}, mUnits);
  } catch (const K7Q::WrongValue& refusal) {
    return reportValue(offset, refusal.what());
  }
  const native::TextCell cell(mUnits);
  if (place.isMany()) {
    native::insertText(object, place.slot, sizeOf(object, place.slot), cell.get());
  } else if (!mUnits.empty()) {
    native::store(object, place.slot, {Word{.text = cell.get()}, false});
  }
}

bool Reader::fits(const Candidate& candidate, const Place& place, std::uint32_t element) const {
  if (candidate.cls->isAbstract()) return false;
  if (candidate.row->reference) {
    const std::uint32_t found = document().findPath(element, candidate.row->reference);
    if (found == 0 || document().attribute(found, "DEST") != candidate.row->dest) return false;
  }
  return candidate.cls->data().isKindOf(place.property->type()->data().ordinal);
}

bool Reader::openInside(const Part& part, const Place& place, std::uint32_t element, std::uint32_t name,
                        const Content* content) {
  for (const Candidate& candidate : Format::get().candidates(name)) {
    if (fits(candidate, place, element))
      return openObject(part, place, candidate.cls->data(), candidate.row, element, content);
  }
  return false;
}

bool Reader::openRole(const Part& part, const Place& place, std::uint32_t element, const Content* content) {
  const native::ClassData* cls = classOfRole(*place.property->type());
  if (!cls || !openObject(part, place, *cls, nullptr, element, content)) return false;
  if (part.shape->spot(place.spot).children.empty()) return true;
  // What the owner says itself inside of the element goes to the owner.
  Frame& frame = mFrames.back();
  std::copy_backward(frame.parts, frame.parts + frame.count, frame.parts + frame.count + 1);
  frame.parts[0] = part;
  frame.parts[0].spot = place.spot;
  ++frame.count;
  return true;
}

/// A package whose path an earlier file has is the same object.
bool Reader::joinPackage(const native::ClassData& cls, std::uint32_t element, const Content* content) {
  if (&cls != &dataOf<common::Package>() || mFileIndex == 0) return false;
  const std::uint32_t name = document().find(element, "SHORT-NAME");
  if (name == 0) return false;
  std::string plain;
  const std::uint64_t path = PathIndex::append(mFrames.back().path, valueOf(document().inner(name), plain));
  Instance* present = mPaths.find(path);
  SourcePlace source;
  if (!present || &present->cls() != &cls || !findSource(*present, source) || source.file == mFileIndex)
    return false;
  mFile->divided.push_back({element, source});
  pushObject(*present, nullptr, element, content);
  return true;
}

/// Two elements with different inlined objects that refer to the same thing are one object: the com spec and
/// the annotation of a data element.
bool Reader::joinInfo(const Part& owner, const Place& place, const native::ClassData& cls,
                      const metamodel::ElementRow* row, std::uint32_t element, const Content* content) {
  const native::WordList* list = place.isMany() ? native::listOf(*owner.object, place.slot) : nullptr;
  if (!list || !row || !row->inlined) return false;
  const ClassShape& shape = mShapes.of(cls);
  const std::uint8_t slot = shape.slotOf(*shape.property(row->inlined));
  const std::string_view wanted = referenceIn(document(), element, shape);
  for (std::uint32_t index = 0; !wanted.empty() && index < list->size(); ++index) {
    Instance& object = *list->at(index).object;
    SourcePlace source;
    if (&object.cls() != &cls || object.has(slot) || !findSource(object, source)) continue;
    if (referenceIn(mSources.files[source.file].document, source.element, shape) != wanted) continue;
    mFile->divided.push_back({element, source});
    pushObject(object, row, element, content);
    return true;
  }
  return false;
}

Instance* Reader::create(const Part& owner, const Place& place, const native::ClassData& cls,
                         std::uint32_t element) {
  Instance& holder = *owner.object;
  if (!place.isMany() && holder.has(place.slot)) {
    // The variants of an object: the first one is the object, the others stay foreign content.
    const Frame& around = mFrames.back();
    const std::uint32_t name = mNumbers[document().element(element).name];
    const ContentItem* item = around.content ? around.content->find(name, mFile->release) : nullptr;
    if (item && item->isMany) return nullptr;
    reportAt(element, "<" + std::string(document().nameOf(element)) + "> stands twice; remove all but one");
    return nullptr;
  }
  Instance& object = mModel.add(cls, 4);
  if (place.isMany()) {
    native::insertElement(holder, place.slot, sizeOf(holder, place.slot), object);
  } else {
    native::store(holder, place.slot, {Word{.object = &object}, false});
  }
  return &object;
}

bool Reader::openObject(const Part& owner, const Place& place, const native::ClassData& cls,
                        const metamodel::ElementRow* row, std::uint32_t element, const Content* content) {
  if (joinPackage(cls, element, content) || joinInfo(owner, place, cls, row, element, content)) return true;
  Instance* object = create(owner, place, cls, element);
  if (!object) return false;
  setSource(*object, {mFileIndex, element});
  choose(*object, place.row->choice);
  if (row) choose(*object, row->choice);
  pushObject(*object, row, element, content);
  return true;
}

void Reader::pushObject(Instance& object, const metamodel::ElementRow* row, std::uint32_t element,
                        const Content* content) {
  Frame frame;
  frame.element = element;
  frame.end = document().element(element).next;
  frame.path = mFrames.empty() ? PathIndex::kRoot : mFrames.back().path;
  frame.content = content;
  mFile->isObject[element] = true;
  const ClassShape& shape = mShapes.of(object.cls());
  SourcePlace source;
  const bool isFirst =
      !findSource(object, source) || (source.file == mFileIndex && source.element == element);
  frame.parts[frame.count++] = {&object, &shape, 0, !isFirst};
  if (row && row->inlined) {
    const native::Property* property = shape.property(row->inlined);
    for (const std::uint16_t index : shape.inlined()) {
      const Place& place = shape.places()[index];
      if (!property || place.slot != shape.slotOf(*property)) continue;
      Instance& part = mModel.add(dataOf(*row->inlinedClass), 4);
      native::store(object, place.slot, {Word{.object = &part}, false});
      frame.parts[frame.count++] = {&part, &mShapes.of(part.cls()), 0, false};
    }
  }
  if (isFirst) makeRequired(object, shape);
  enterName(frame, shape);
  mFrames.push_back(frame);
  for (std::uint8_t index = isFirst ? 0 : 1; index < frame.count; ++index) {
    readAttributes(frame.parts[index], element);
    readBody(frame.parts[index], element);
  }
}

/// Creates what an object cannot be without, and what no file has.
void Reader::makeRequired(Instance& object, const ClassShape& shape) {
  for (const Place& place : shape.places()) {
    if (place.form() != Form::Nowhere || !place.property->holds() || !place.property->isRequired()) continue;
    if (place.property->type()->isAbstract() || object.has(place.slot)) continue;
    Instance& part = mModel.add(place.property->type()->data(), 0);
    native::store(object, place.slot, {Word{.object = &part}, false});
  }
}

/// Enters the object of a frame that is about to be opened under its path.
void Reader::enterName(Frame& frame, const ClassShape& shape) {
  if (!shape.isNamed()) return;
  const std::uint32_t name = document().find(frame.element, "SHORT-NAME");
  if (name == 0) {
    // Some elements have a name only in some releases.
    const std::uint32_t number = Format::get().numberOf("SHORT-NAME");
    if (frame.content && !frame.content->find(number, mFile->release)) return;
    return reportAt(frame.element,
                    "<" + std::string(document().nameOf(frame.element)) + "> has no SHORT-NAME; add one");
  }
  std::string plain;
  const std::string_view text = valueOf(document().inner(name), plain);
  if (text.empty()) return reportAt(name, "the SHORT-NAME is empty; write a name");
  frame.path = PathIndex::append(frame.path, text);
  if (mPaths.add(frame.path, *frame.parts[0].object) || mPaths.find(frame.path) == frame.parts[0].object)
    return;
  if (document().find(frame.element, "VARIATION-POINT") != 0) return;
  reportAt(name, "the SHORT-NAME " + quoted(text) + " stands twice here; rename one of the elements");
}

void Reader::choose(Instance& object, const metamodel::ChoiceRow& choice) {
  if (!choice.property) return;
  const ClassShape& shape = mShapes.of(object.cls());
  const native::Property* property = shape.property(choice.property);
  const std::uint8_t slot = property ? shape.slotOf(*property) : native::ClassData::kNoSlot;
  if (slot == native::ClassData::kNoSlot || object.has(slot)) return;
  native::store(object, slot, {native::wordOf(choice.value), false});
}

void Reader::readAttributes(const Part& part, std::uint32_t element) {
  for (const std::uint16_t index : part.shape->attributes()) {
    const Place& place = part.shape->places()[index];
    const std::string_view text = document().attribute(element, place.row->path);
    if (text.data()) readScalar(part, place, document().attributeOffset(element, place.row->path), text);
  }
}

void Reader::readBody(const Part& part, std::uint32_t element) {
  const Place* place = part.shape->body();
  if (!place) return;
  if (place->form() == Form::Reference) {
    // The same class may also stand in an element that contains the reference.
    if (!document().attribute(element, "DEST").data()) return;
    mPending.push_back({part.object, place, {mFileIndex, element}});
    return;
  }
  const std::string text = formulaOf(document(), element);
  if (!text.empty()) store(part, *place, document().element(element).contentBegin, text);
}

void Reader::resolve() {
  for (std::size_t index = 0; index < mPending.size(); ++index) {
    link(mPending[index]);
    if (mProgress && index % kReported == 0)
      mProgress(0.9 + 0.1 * static_cast<double>(index) / static_cast<double>(mPending.size()));
  }
  for (SourceFile& file : mSources.files) {
    std::ranges::sort(file.unresolved);
    std::ranges::sort(file.relative);
  }
}

Instance* Reader::targetOf(const Pending& reference) {
  const Document& text = mSources.files[reference.source.file].document;
  std::string plain;
  const std::string_view path = valueOf(text.inner(reference.source.element), plain);
  if (path.empty()) return nullptr;
  if (path.front() == '/') return mPaths.find(PathIndex::hashOf(path));
  SourceFile& file = mSources.files[reference.source.file];
  std::uint32_t around = reference.source.element;
  while (!file.isObject[around]) around = text.element(around).parent;
  file.relative.push_back(around);
  const std::string_view label = text.attribute(reference.source.element, "BASE");
  return mPaths.find(
      PathIndex::hashOf(path, PathIndex::hashOf(referenceBase(mSources, *reference.object, label))));
}

void Reader::leave(const Pending& reference) {
  mSources.files[reference.source.file].unresolved.push_back(reference.source.element);
}

void Reader::link(const Pending& reference) {
  Instance* target = targetOf(reference);
  const Place& place = *reference.place;
  Instance& object = *reference.object;
  if (!target || !target->cls().isKindOf(place.property->type()->data().ordinal)) return leave(reference);
  const native::Property* back = place.property->opposite();
  if (back && !back->isMany()) {
    const Word* other = target->find(target->cls().placeOf(back->ownerClass().data(), back->id()).slot);
    if (other && other->object != &object) return leave(reference);
  }
  if (!place.isMany()) {
    const Word* present = object.find(place.slot);
    if (present && present->object != target) return leave(reference);
    if (!present) native::store(object, place.slot, {Word{.object = target}, false});
  } else if (native::containsElement(object, place.slot, *target)) {
    leave(reference);
  } else {
    native::insertElement(object, place.slot, sizeOf(object, place.slot), *target);
  }
}

}  // namespace Tarvelon::files::arxml
