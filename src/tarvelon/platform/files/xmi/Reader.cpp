#include "tarvelon/platform/files/xmi/Reader.h"

#include <algorithm>
#include <bit>
#include <charconv>

#include "tarvelon/platform/files/shared/Ids.h"
#include "tarvelon/platform/files/xmi/Migrations.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/words/WordList.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::files {

using native::Instance;
using native::Storage;
using native::Word;

bool isXmi(std::string_view space) noexcept {
  return space == kXmi || space.starts_with("http://schema.omg.org/spec/XMI/") ||
         space.starts_with("http://www.omg.org/spec/XMI/");
}

std::string inQuotes(std::string_view text) {
  std::size_t shown = 60;
  if (text.size() <= shown) return "'" + std::string(text) + "'";
  // The cut must not split a UTF-8 character.
  while (shown != 0 && (text[shown] & 0xC0) == 0x80) --shown;
  return "'" + std::string(text.substr(0, shown)) + "...'";
}

namespace {

std::string shown(QualifiedName name) {
  return name.space.empty() ? inQuotes(name.local)
                            : inQuotes(name.local) + " of namespace " + inQuotes(name.space);
}

constexpr const char* kLeftOut = "; the element is left out with its contents";
constexpr const char* kNothing = ": expected an empty element, got the ";

}  // namespace

void Reader::report(Place place, std::string text) {
  if (!isFull()) mProblems.kept.push_back({place.line, place.column, std::move(text)});
  ++mProblems.count;
}

std::string Reader::nameOf(const Instance& object, const Feature& feature) {
  return std::string(object.cls().methods->className().shortName()) + "." + std::string(feature.name());
}

std::string Reader::hint(std::string_view name, const std::vector<std::string_view>& names) const {
  return isFull() ? std::string() : ruvo::didYouMean(name, names);
}

void Reader::startElement(QualifiedName name, const char* const* attributes) {
  // The root element of the file is above all objects, and a value is below them: two levels more.
  requireDepth(mFrames.size() <= static_cast<std::size_t>(kMaxDepth) + 1);
  const Marks marks = marksOf(attributes);
  const Frame frame = open(name, marks, attributes);
  // Notes the id. So the problem that is reported for a reference to it can say that its object was skipped.
  if (frame.kind == Frame::Kind::Skipped && marks.id) mIds.insert(mIds.keyOf(marks.id), nullptr);
  if (frame.kind == Frame::Kind::Value) mValue.clear();
  mFrames.push_back(frame);
}

void Reader::requireDepth(bool isKept) {
  if (isKept) return;
  report(here(), "elements are nested more than " + std::to_string(kMaxDepth) + " levels deep");
  throw Unloadable();
}

Reader::Frame Reader::open(QualifiedName name, const Marks& marks, const char* const* attributes) {
  if (mFrames.empty()) return openRoot(name, marks, attributes);
  const Frame parent = mFrames.back();
  switch (parent.kind) {
    case Frame::Kind::Skipped:
      return {};
    case Frame::Kind::Value:
      report(here(), nameOf(*parent.object, *parent.feature) + ": expected a value, got the element " +
                         shown(name) + "; remove it");
      return {};
    case Frame::Kind::Nothing:
      report(here(), nameOf(*parent.object, *parent.feature) + kNothing + "element " + shown(name));
      return {};
    case Frame::Kind::Object:
      return openMember(parent, name, marks, attributes);
    case Frame::Kind::File:
      break;
  }
  return openTop(name, marks, attributes);
}

Reader::Frame Reader::openRoot(QualifiedName name, const Marks& marks, const char* const* attributes) {
  mHasRoot = true;
  if (!isXmi(name.space) && !marks.version && !marks.format && !name.space.starts_with(kMetamodelSpace)) {
    report(here(),
           "the file is neither ARXML (root element <AUTOSAR>) nor XMI (<xmi:XMI>): its root element is " +
               shown(name));
    throw Unloadable();
  }
  checkVersions(marks);
  if (isXmi(name.space) && name.local == "XMI") {
    requireMarks(attributes, false);
    Frame file;
    file.kind = Frame::Kind::File;
    return file;
  }
  // A file with a single object may have this object as its root element.
  return openTop(name, marks, attributes);
}

Reader::Frame Reader::openTop(QualifiedName name, const Marks& marks, const char* const* attributes) {
  ClassSchema* cls = classOf(name, here());
  if (cls && marks.type) {
    const ClassSchema& named = *cls;
    cls = classOfType(marks.type, placeOf({kXsi, "type"}));
    if (cls && !cls->data->isKindOf(named.data->ordinal)) {
      report(here(), "expected " + named.type + ", got " + cls->type + kLeftOut);
      cls = nullptr;
    }
  }
  return cls ? openObject(*cls, marks, attributes) : Frame{};
}

void Reader::checkVersions(const Marks& marks) {
  if (!marks.version) {
    report(here(), "the root element has no xmi:version; write xmi:version=\"2.0\"");
  } else if (!std::string_view(marks.version).starts_with("2.")) {
    report(here(), "expected XMI of version 2, got xmi:version " + inQuotes(marks.version));
  }
  if (marks.format) return readFormat(marks.format);
  report(here(),
         "the root element has no tarvelon:format: expected the number of the file's format, from 0 to " +
             std::to_string(kFormat) + "; if another program has removed it, write xmlns:tarvelon=\"" +
             std::string(kOwn) + "\" tarvelon:format=\"" + std::to_string(kFormat) + "\"");
}

void Reader::readFormat(const char* text) {
  const std::string_view digits = text;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), mFormat);
  const bool isNumber = end == digits.data() + digits.size() && mFormat >= 0 &&
                        error != std::errc::invalid_argument && digits[0] != '-';
  if (!isNumber) {
    mFormat = kFormat;
    report(placeOf({kOwn, "format"}), "expected the number of the file's format, got " + inQuotes(digits));
    return;
  }
  if (error == std::errc() && mFormat <= kFormat) return;
  report(placeOf({kOwn, "format"}), "the file has format " + std::string(digits.substr(0, 20)) +
                                        ", but this version reads formats up to " + std::to_string(kFormat) +
                                        "; load it with a newer version");
  throw Unloadable();
}

Reader::Frame Reader::openMember(const Frame& parent, QualifiedName name, const Marks& marks,
                                 const char* const* attributes) {
  const Feature* feature = featureOf(parent, name);
  if (!feature) {
    reportUnknown(parent, name, here(), kLeftOut);
    return {};
  }
  if (feature->declared->holds() && !marks.isNil) return openHeld(parent, *feature, marks, attributes);
  const Storage storage = feature->declared->storage();
  const bool refers = storage == Storage::Reference || storage == Storage::References;
  requireMarks(attributes, refers && !marks.isNil);
  Frame frame = parent;
  frame.kind = refers || marks.isNil ? Frame::Kind::Nothing : Frame::Kind::Value;
  frame.feature = feature;
  frame.hasText = false;
  if (!refers || marks.isNil) return frame;
  const bool isHere = marks.href && marks.href[0] == '#';
  if (!marks.idref && !isHere) {
    report(here(),
           nameOf(*parent.object, *feature) + ": expected the id of an object, got " +
               (marks.href ? "the reference " + inQuotes(marks.href) + " to another file" : "an element") +
               "; write the id as the attribute's value");
    return {};
  }
  readReferences(parent, *feature, marks.idref ? marks.idref : marks.href + 1, {});
  return frame;
}

Reader::Frame Reader::openHeld(const Frame& parent, const Feature& feature, const Marks& marks,
                               const char* const* attributes) {
  Instance& owner = *parent.object;
  if (const char* reference = marks.idref ? marks.idref : marks.href) {
    report(here(), nameOf(owner, feature) + ": expected a contained object, got the reference " +
                       inQuotes(reference) + "; nest the element of the object here");
    return {};
  }
  if (!feature.declared->isMany() && owner.has(feature.slot)) {
    report(here(), nameOf(owner, feature) + ": expected at most one object, got a second one" + kLeftOut);
    return {};
  }
  const native::ClassData& declared = feature.declared->type()->data();
  ClassSchema* cls = marks.type ? classOfType(marks.type, placeOf({kXsi, "type"})) : &mSchema.of(declared);
  if (!cls) return {};
  const native::ClassMethods& type = *feature.narrowest->type();
  if (!cls->data->isKindOf(type.data().ordinal)) {
    report(here(), nameOf(owner, feature) + ": expected " + typeName(type) + ", got " + cls->type + kLeftOut);
    return {};
  }
  const Frame frame = openObject(*cls, marks, attributes);
  if (frame.object) hold(owner, feature, *frame.object);
  return frame;
}

void Reader::hold(Instance& owner, const Feature& feature, Instance& held) {
  if (!feature.declared->isMany()) return native::store(owner, feature.slot, {Word{.object = &held}, false});
  const native::WordList* list = native::listOf(owner, feature.slot);
  native::insertElement(owner, feature.slot, list ? list->size() : 0, held);
}

Reader::Frame Reader::openObject(ClassSchema& cls, const Marks& marks, const char* const* attributes) {
  if (cls.data->methods->isAbstract()) {
    report(here(), cls.type + " is abstract: write a concrete subclass as xsi:type" + kLeftOut);
    return {};
  }
  const bool isInFile = !mFrames.empty() && mFrames.front().kind == Frame::Kind::File;
  requireDepth(mFrames.size() + (isInFile ? 0 : 1) <= static_cast<std::size_t>(kMaxDepth));
  Frame frame;
  frame.kind = Frame::Kind::Object;
  frame.cls = &cls;
  frame.object = &mModel.add(*cls.data, cls.expectedValues);
  if (marks.id) keepId(*frame.object, marks.id);
  for (const char* const* each = attributes; *each; each += 2) {
    readAttribute(frame, Parser::split(each[0]), each[1]);
  }
  return frame;
}

void Reader::keepId(Instance& object, const char* id) {
  // Ids in a list of references are separated by blanks.
  if (*id == 0 || std::string_view(id).find_first_of(" \t\r\n") != std::string_view::npos) {
    return report(placeOf({kXmi, "id"}), "expected an id without blanks, got " + inQuotes(id));
  }
  const IdTable::Key key = mIds.keyOf(id);
  if (!mIds.insert(key, &object)) {
    report(placeOf({kXmi, "id"}),
           "the id " + inQuotes(id) + " is used by an earlier object; give this object another id");
    return;
  }
  if (const auto number = idNumber(id)) {
    setId(object, *number);
  } else {
    setForeignId(object, id);
  }
}

Reader::Marks Reader::marksOf(const char* const* attributes) {
  Marks marks;
  for (const char* const* each = attributes; *each; each += 2) {
    const QualifiedName name = Parser::split(each[0]);
    const char* value = each[1];
    if (name.space.empty()) {
      if (name.local == "href") marks.href = value;
    } else if (isXmi(name.space)) {
      if (name.local == "id") marks.id = value;
      if (name.local == "type" && !marks.type) marks.type = value;
      if (name.local == "version") marks.version = value;
      if (name.local == "idref") marks.idref = value;
    } else if (name.space == kXsi) {
      if (name.local == "type") marks.type = value;
      if (name.local == "nil")
        marks.isNil = value == std::string_view("true") || value == std::string_view("1");
    } else if (name.space == kOwn && name.local == "format") {
      marks.format = value;
    }
  }
  return marks;
}

void Reader::endElement() {
  const Frame frame = mFrames.back();
  mFrames.pop_back();
  if (frame.kind == Frame::Kind::Value) {
    readValue(frame, *frame.feature, mValue, {});
  } else if (frame.kind == Frame::Kind::Object) {
    frame.cls->expectedValues = static_cast<unsigned>(std::popcount(frame.object->presence()));
  }
}

void Reader::characters(std::string_view text) {
  Frame& frame = mFrames.back();
  if (frame.kind == Frame::Kind::Value) {
    mValue.append(text);
    return;
  }
  if (frame.kind == Frame::Kind::Skipped || frame.hasText) return;
  const auto stray = text.find_first_not_of(" \t\r\n");
  if (stray == std::string_view::npos) return;
  frame.hasText = true;
  const std::string found = inQuotes(text.substr(stray));
  if (frame.kind == Frame::Kind::Nothing) {
    report(here(), nameOf(*frame.object, *frame.feature) + kNothing + "text " + found);
  } else {
    report(here(), "expected an element, got the text " + found + "; remove it");
  }
}

void Reader::startNamespace(std::string_view prefix, std::string_view uri) {
  mNamespaces[std::string(prefix)].emplace_back(uri);
  forgetTypes();
}

void Reader::endNamespace(std::string_view prefix) {
  mNamespaces[std::string(prefix)].pop_back();
  forgetTypes();
}

// A new map, since clear() keeps the buckets and walks over all of them each time.
void Reader::forgetTypes() {
  if (!mTypes.empty()) mTypes = {};
}

void Reader::documentType() {
  report(here(), "a document type declaration is not supported; remove the '<!DOCTYPE ...>'");
  throw Unloadable();
}

ClassSchema* Reader::classOf(QualifiedName name, Place place) {
  std::string key(name.space);
  key.append(1, '\n').append(name.local);
  const auto known = mClasses.find(key);
  if (known != mClasses.end()) return known->second;
  for (const native::PackageRow& package : native::packageRows()) {
    if (namespaceOf(package) != name.space) continue;
    std::vector<std::string_view> names;
    for (const native::ClassMethods* cls : package.classes) {
      names.emplace_back(cls->className().shortName());
      if (names.back() == name.local) return mClasses[std::move(key)] = &mSchema.of(cls->data());
    }
    report(place, "package " + inQuotes(prefixOf(package)) + " has no class " + inQuotes(name.local) +
                      hint(name.local, names) + kLeftOut);
    return nullptr;
  }
  report(place, "expected an object of the metamodel, got the element " + shown(name) + kLeftOut);
  return nullptr;
}

ClassSchema* Reader::classOfType(std::string_view type, Place place) {
  std::string text(type);
  const auto known = mTypes.find(text);
  if (known != mTypes.end()) return known->second;
  const auto colon = type.find(':');
  const bool hasPrefix = colon != std::string_view::npos;
  const auto scope = mNamespaces.find(hasPrefix ? text.substr(0, colon) : std::string());
  if (scope == mNamespaces.end() || scope->second.empty()) {
    report(place, "expected a class as 'package:Class', got the type " + inQuotes(type) +
                      ", whose prefix is not declared" + kLeftOut);
    return nullptr;
  }
  ClassSchema* cls = classOf({scope->second.back(), hasPrefix ? type.substr(colon + 1) : type}, place);
  if (cls) mTypes.emplace(std::move(text), cls);
  return cls;
}

const Feature* Reader::featureOf(const Frame& frame, QualifiedName name) const noexcept {
  if (!name.space.empty()) return nullptr;
  if (mFormat == kFormat) return frame.cls->find(name.local);
  return frame.cls->find(featureSince(mFormat, *frame.cls->data, name.local));
}

void Reader::reportUnknown(const Frame& frame, QualifiedName name, Place place, const char* cure) {
  report(place, frame.cls->type + " has no property " + shown(name) +
                    hint(name.local, frame.cls->featureNames()) + cure);
}

}  // namespace Tarvelon::files
