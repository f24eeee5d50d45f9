#include "tarvelon/platform/files/arxml/Foreign.h"

#include <algorithm>
#include <unordered_map>

#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/files/arxml/ClassShape.h"

// What the files of a model have that its objects do not have.
namespace Tarvelon::files {

namespace native = metamodel::native;
using arxml::ClassShape;
using arxml::Document;
using arxml::SourceFile;
using arxml::SourcePlace;
using arxml::Sources;
using native::Instance;

namespace arxml {

namespace {

/// The shapes of an object and of the objects that are inlined in its element.
std::vector<const ClassShape*> shapesOf(const Instance& object, ClassShapes& known) {
  const ClassShape& own = known.of(object.cls());
  std::vector<const ClassShape*> shapes{&own};
  for (const std::uint16_t index : own.inlined()) {
    const native::Word* word = object.find(own.places()[index].slot);
    if (word) shapes.push_back(&known.of(word->object->cls()));
  }
  return shapes;
}

}  // namespace

std::vector<std::uint32_t> foreignIn(const SourceFile& file, std::uint32_t element, const Instance& object,
                                     ClassShapes& known) {
  struct Open {
    std::uint32_t element;
    std::size_t shape;
    std::uint16_t spot;
  };
  const Document& document = file.document;
  const auto shapes = shapesOf(object, known);
  std::vector<std::uint32_t> found;
  // The elements in a text belong to the text.
  const Place* body = shapes.front()->body();
  if (body && body->form() == metamodel::Form::Body) return found;
  std::vector<Open> left{{element, shapes.size(), 0}};
  while (!left.empty()) {
    const Open open = left.back();
    left.pop_back();
    const std::uint32_t end = document.element(open.element).next;
    for (std::uint32_t each = open.element + 1; each < end; each = document.element(each).next) {
      if (file.isObject[each]) continue;
      const std::uint32_t name = Format::get().numberOf(document.nameOf(each));
      bool isKnown = false;
      for (std::size_t index = 0; index < shapes.size() && !isKnown && name != 0; ++index) {
        if (open.shape != shapes.size() && open.shape != index) continue;
        const std::uint16_t spot = shapes[index]->find(open.spot, name);
        isKnown = spot != 0;
        if (!isKnown) continue;
        const std::uint16_t value = shapes[index]->spot(spot).value;
        if (value == Spot::kNone) {
          left.push_back({each, index, spot});
        } else if (shapes[index]->places()[value].form() == metamodel::Form::Text) {
          isKnown = !document.hasElements(each);
        }
      }
      if (!isKnown) found.push_back(each);
    }
  }
  std::ranges::sort(found);
  return found;
}

}  // namespace arxml

namespace {

std::string nameOf(const Document& document, std::uint32_t element) {
  const std::uint32_t name = document.find(element, "SHORT-NAME");
  return name == 0 ? std::string() : std::string(arxml::trimmed(document.inner(name)));
}

/// Collects content of the files of a model.
class Collector {
 public:
  explicit Collector(const Sources& sources) : mSources(sources) {}
  void addForeign(const Instance& object);
  void addUnresolved(const Instance& object);
  std::vector<KeptContent> take() noexcept { return std::move(mFound); }

 private:
  KeptContent contentOf(const SourceFile& file, std::uint32_t element);
  KeptContent referenceOf(const SourceFile& file, std::uint32_t element);
  bool isSet(const SourceFile& file, std::uint32_t element, std::uint32_t reference, const Instance& object);

  const Sources& mSources;
  arxml::ClassShapes mShapes;
  std::unordered_map<const SourceFile*, arxml::Lines> mLines;
  std::vector<KeptContent> mFound;
};

KeptContent Collector::contentOf(const SourceFile& file, std::uint32_t element) {
  const Document& document = file.document;
  const arxml::Lines& lines = mLines.try_emplace(&file, document).first->second;
  KeptContent content;
  content.tag = document.nameOf(element);
  content.name = nameOf(document, element);
  content.path = document.pathOf(element);
  content.file = file.path;
  content.line = lines.placeOf(document.element(element).begin).line;
  content.xml = document.outer(element);
  return content;
}

KeptContent Collector::referenceOf(const SourceFile& file, std::uint32_t element) {
  KeptContent content = contentOf(file, element);
  content.name = arxml::plainText(arxml::trimmed(file.document.inner(element)));
  content.dest = file.document.attribute(element, "DEST");
  return content;
}

/// Calls visit(file, element) for each element of an object.
template <class Visit>
void forEachElement(const Sources& sources, const Instance& object, Visit visit) {
  SourcePlace source;
  if (!arxml::findSource(object, source)) return;
  visit(sources.files[source.file], source.element);
  for (const SourcePlace& each : arxml::othersOf(sources, source))
    visit(sources.files[each.file], each.element);
}

void Collector::addForeign(const Instance& object) {
  forEachElement(mSources, object, [&](const SourceFile& file, std::uint32_t element) {
    for (const std::uint32_t each : arxml::foreignIn(file, element, object, mShapes))
      mFound.push_back(contentOf(file, each));
  });
}

/// Whether the property of a single reference in an object's element has got a value.
bool Collector::isSet(const SourceFile& file, std::uint32_t element, std::uint32_t reference,
                      const Instance& object) {
  std::vector<std::uint32_t> way;
  for (std::uint32_t each = reference; each != element; each = file.document.element(each).parent)
    way.push_back(each);
  const ClassShape& shape = mShapes.of(object.cls());
  std::uint16_t spot = 0;
  while (!way.empty()) {
    spot = shape.find(spot, arxml::Format::get().numberOf(file.document.nameOf(way.back())));
    if (spot == 0) return false;
    way.pop_back();
  }
  const std::uint16_t value = shape.spot(spot).value;
  if (value == arxml::Spot::kNone) return false;
  const arxml::Place& place = shape.places()[value];
  return !place.isMany() && object.has(place.slot);
}

/// The references in an element of an object, outside of the objects that it contains.
void Collector::addUnresolved(const Instance& object) {
  forEachElement(mSources, object, [&](const SourceFile& file, std::uint32_t element) {
    const auto& all = file.unresolved;
    const std::uint32_t end = file.document.element(element).next;
    for (auto each = std::ranges::lower_bound(all, element); each != all.end() && *each < end; ++each) {
      std::uint32_t around = file.isObject[*each] ? *each : file.document.element(*each).parent;
      while (!file.isObject[around]) around = file.document.element(around).parent;
      if (around == element && !isSet(file, element, *each, object))
        mFound.push_back(referenceOf(file, *each));
    }
  });
}

const Instance& require(const K7Q::ClassObject& object) {
  const Instance* found = native::asInstance(object.getInterface());
  if (!found || !found->isAlive()) throw K7Q::Exception("expected an object of a model");
  return *found;
}

using Add = void (Collector::*)(const Instance&);

std::vector<KeptContent> collect(const K7Q::ClassObject& object, Add add) {
  const Instance& instance = require(object);
  const Sources* sources = arxml::sourcesOf(instance.model());
  if (!sources) return {};
  Collector collector(*sources);
  (collector.*add)(instance);
  return collector.take();
}

std::vector<KeptContent> collect(const K7Q::Model& handle, Add add) {
  const native::NativeModel& model = native::NativeModel::require(handle);
  const Sources* sources = arxml::sourcesOf(model);
  if (!sources) return {};
  Collector collector(*sources);
  model.forEachInstance([&](const Instance& object) { (collector.*add)(object); });
  return collector.take();
}

}  // namespace

std::vector<KeptContent> foreign(const K7Q::ClassObject& object) {
  return collect(object, &Collector::addForeign);
}
std::vector<KeptContent> foreign(const K7Q::Model& model) { return collect(model, &Collector::addForeign); }
std::vector<KeptContent> unresolved(const K7Q::ClassObject& object) {
  return collect(object, &Collector::addUnresolved);
}
std::vector<KeptContent> unresolved(const K7Q::Model& model) {
  return collect(model, &Collector::addUnresolved);
}

std::vector<std::filesystem::path> filesOf(const K7Q::Model& model) {
  const native::NativeModel& native = native::NativeModel::require(model);
  const Sources* sources = arxml::sourcesOf(native);
  std::vector<std::filesystem::path> paths;
  if (!sources || !native.ownsSources()) return paths;
  for (const SourceFile& file : sources->files) paths.push_back(file.path);
  return paths;
}

std::filesystem::path fileOf(const K7Q::ClassObject& object) {
  const Instance& instance = require(object);
  const Sources* sources = arxml::sourcesOf(instance.model());
  const Instance* root = &instance;
  while (root->owner()) root = root->owner();
  SourcePlace source;
  if (!sources || !arxml::findSource(*root, source)) return {};
  const auto isElementOf = [](const Instance& /*object*/, SourcePlace /*element*/) { return true; };
  return sources->files[arxml::homeOf(*sources, instance, isElementOf)].path;
}

}  // namespace Tarvelon::files
