#include "tarvelon/platform/model/api/Json.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/copy/Hashes.h"
#include "tarvelon/platform/model/copy/JsonValues.h"
#include "tarvelon/platform/model/copy/KeyIndex.h"
#include "tarvelon/platform/model/copy/Paths.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/values/Refusal.h"

namespace Tarvelon::metamodel::native {

namespace {

/// How references are written, and which objects need an id for this.
class References {
 public:
  explicit References(const Tree& tree);
  std::string path(const Instance& target) const;
  bool hasId(std::uint32_t node) const noexcept { return mHasId[node]; }
  std::string id(std::uint32_t node) const;

 private:
  bool needsId(std::uint32_t node, KeyIndex& names, const std::vector<Hash>& hashes) const;

  const Tree& mTree;
  Paths mPaths;
  std::vector<bool> mHasId;
};

References::References(const Tree& tree) : mTree(tree), mPaths(tree), mHasId(tree.size()) {
  const std::vector<Hash> hashes = pathHashes(tree, &isNamed);
  KeyIndex names;
  names.reset(tree.size());
  for (std::uint32_t node = 0; node < tree.size(); ++node) {
    if (isNamed(*tree[node].object)) names.push(hashes[node], node);
  }
  for (const Tree::Node& node : tree.nodes()) {
    forEachTarget(*node.object, node.object->cls().referringSlots,
                  [&](const Instance& target, unsigned /*slot*/, std::uint32_t /*position*/) {
                    const std::uint32_t found = tree.find(target);
                    if (found == Tree::kNone || mHasId[found]) return;
                    mHasId[found] = needsId(found, names, hashes);
                  });
  }
}

bool References::needsId(std::uint32_t node, KeyIndex& names, const std::vector<Hash>& hashes) const {
  const Instance& object = *mTree[node].object;
  return !isNamed(object) || names.isShared(hashes[node]) || mPaths.isCut(object);
}

/// If even the path by property and index is too long, the id is the number of the object in the text.
std::string References::id(std::uint32_t node) const {
  const Instance& object = *mTree[node].object;
  return mPaths.isCut(object) ? "#" + std::to_string(node) : mPaths.uniquePath(object);
}

std::string References::path(const Instance& target) const {
  const std::uint32_t node = mTree.find(target);
  return node != Tree::kNone && mHasId[node] ? id(node) : mPaths.path(target);
}

/// The deepest level that is indented further. Without a limit, the length of the text would be quadratic in
/// the depth.
constexpr int kDeepestIndent = 128;

class JsonPrinter {
 public:
  JsonPrinter(const Tree& tree, int indent) : mTree(tree), mReferences(tree), mIndent(indent) {}

  /// Prints the next object of the tree and everything it contains.
  void printObject();
  void printModel(std::u16string_view uri);
  /// The same as rows: see toJsonRows().
  void printRows();
  void printModelRows(std::u16string_view uri);
  std::string take() noexcept { return std::move(mOut); }

 private:
  /// An object that is being printed.
  struct Frame {
    const Instance* object;
    std::uint64_t slots;
    /// The list that is being printed, and how many of its elements were printed.
    const WordList* list;
    std::uint32_t written;
  };
  void open(char bracket);
  void close(char bracket, bool isEmpty = false);
  void breakLine();
  /// Begins another member or element.
  void next();
  void key(std::string_view name);
  void openObject();
  void beginObject(std::uint32_t node);
  void beginModel(std::u16string_view uri);
  void printRow(std::uint32_t node);
  void step();
  void printValue(const Instance& object, unsigned slot);

  const Tree& mTree;
  References mReferences;
  int mIndent;
  int mDepth = 0;
  bool mIsFirst = true;
  std::uint32_t mNext = 0;
  std::vector<Frame> mFrames;
  std::string mOut;
};

void JsonPrinter::breakLine() {
  if (mIndent < 0) return;
  mOut.push_back('\n');
  const int levels = std::min(mDepth, kDeepestIndent);
  mOut.append(static_cast<std::size_t>(levels) * static_cast<std::size_t>(mIndent), ' ');
}

void JsonPrinter::open(char bracket) {
  mOut.push_back(bracket);
  ++mDepth;
  mIsFirst = true;
}

void JsonPrinter::close(char bracket, bool isEmpty) {
  --mDepth;
  if (!isEmpty) breakLine();
  mOut.push_back(bracket);
  mIsFirst = false;
}

void JsonPrinter::next() {
  if (!mIsFirst) mOut.append(mIndent < 0 ? ", " : ",");
  mIsFirst = false;
  breakLine();
}

void JsonPrinter::key(std::string_view name) {
  next();
  mOut.push_back('"');
  mOut.append(name).append("\": ");
}

void JsonPrinter::beginObject(std::uint32_t node) {
  open('{');
  key("class");
  appendJson(mOut, shortName(mTree[node].object->cls()));
  if (!mReferences.hasId(node)) return;
  key("id");
  appendJson(mOut, std::string_view(mReferences.id(node)));
}

void JsonPrinter::openObject() {
  const Instance& object = *mTree[mNext].object;
  beginObject(mNext++);
  mFrames.push_back({&object, valueSlots(object), nullptr, 0});
}

void JsonPrinter::printValue(const Instance& object, unsigned slot) {
  const Property& property = *object.cls().slotProperties[slot];
  const auto pathOf = [this](const Instance& target) { return mReferences.path(target); };
  const bool isMany = isList(object.cls(), slot);
  if (isMany) open('[');
  forEachWord(object, slot, [&](Word word, std::uint32_t /*position*/) {
    if (isMany) next();
    appendJson(mOut, property, word, pathOf);
  });
  if (isMany) close(']');
}

void JsonPrinter::step() {
  Frame& frame = mFrames.back();
  if (frame.list && frame.written < frame.list->size()) {
    ++frame.written;
    next();
    openObject();
    return;
  }
  if (frame.list) {
    close(']');
    frame.list = nullptr;
  }
  if (frame.slots == 0) {
    close('}');
    mFrames.pop_back();
    return;
  }
  const auto slot = static_cast<unsigned>(std::countr_zero(frame.slots));
  frame.slots &= frame.slots - 1;
  const Instance& object = *frame.object;
  if (!isShown(object, slot)) return;
  key(object.cls().slotProperties[slot]->row().name);
  if (!holds(object.cls(), slot)) {
    printValue(object, slot);
  } else if (isList(object.cls(), slot)) {
    frame.list = listOf(object, slot);
    frame.written = 0;
    open('[');
  } else {
    openObject();
  }
}

void JsonPrinter::printObject() {
  openObject();
  while (!mFrames.empty()) step();
}

void JsonPrinter::beginModel(std::u16string_view uri) {
  open('{');
  if (!uri.empty()) {
    key("uri");
    appendJson(mOut, uri);
  }
  key("objects");
}

void JsonPrinter::printModel(std::u16string_view uri) {
  beginModel(uri);
  open('[');
  const bool isEmpty = mTree.size() == 0;
  while (mNext < mTree.size()) {
    next();
    printObject();
  }
  close(']', isEmpty);
  close('}');
}

void JsonPrinter::printRow(std::uint32_t node) {
  const Tree::Node& each = mTree[node];
  const Instance& object = *each.object;
  const bool isRoot = each.parent == Tree::kNone;
  open('[');
  next();
  mOut.append(isRoot ? "null" : std::to_string(each.parent));
  next();
  if (isRoot) {
    mOut.append("null");
  } else {
    appendJson(mOut,
               std::string_view(mTree[each.parent].object->cls().slotProperties[each.slot]->row().name));
  }
  next();
  beginObject(node);
  forEachSlot(valueSlots(object), [&](unsigned slot) {
    if (!isShown(object, slot)) return;
    key(object.cls().slotProperties[slot]->row().name);
    if (!holds(object.cls(), slot)) return printValue(object, slot);
    mOut.append(isList(object.cls(), slot) ? "[]" : "null");
  });
  close('}');
  close(']');
}

void JsonPrinter::printRows() {
  open('[');
  for (std::uint32_t node = 0; node < mTree.size(); ++node) {
    next();
    printRow(node);
  }
  close(']', mTree.size() == 0);
}

void JsonPrinter::printModelRows(std::u16string_view uri) {
  beginModel(uri);
  printRows();
  close('}');
}

/// Calls `model` for a model or `one` for an object, with a printer for its tree. Returns the printed text.
template <class Model, class One>
std::string printed(const K7Q::ObjectHandle& shown, const char* function, int indent, Model model, One one) {
  shown.requireValid();
  auto* whole = dynamic_cast<NativeModel*>(shown.getInterface());
  Instance* object = whole ? nullptr : asInstance(shown.getInterface());
  if (!whole && !object) {
    throw K7Q::WrongType(std::string(function) + ": expected a model or an object of one, got " +
                         describe(K7Q::Object(shown.getInterface(), shown.getDeviant())));
  }
  Tree tree = whole ? Tree(*whole) : Tree(*object);
  tree.index();
  JsonPrinter printer(tree, indent);
  if (whole) {
    model(printer, whole->getUri(shown.getDeviant()));
  } else {
    one(printer);
  }
  return printer.take();
}

}  // namespace

}  // namespace Tarvelon::metamodel::native

namespace Tarvelon::metamodel {

std::string toJson(const K7Q::ObjectHandle& modelOrObject, int indent) {
  using native::JsonPrinter;
  return native::printed(
      modelOrObject, "toJson", indent,
      [](JsonPrinter& printer, std::u16string_view uri) { printer.printModel(uri); },
      [](JsonPrinter& printer) { printer.printObject(); });
}

std::string toJsonRows(const K7Q::ObjectHandle& modelOrObject) {
  using native::JsonPrinter;
  return native::printed(
      modelOrObject, "toJsonRows", -1,
      [](JsonPrinter& printer, std::u16string_view uri) { printer.printModelRows(uri); },
      [](JsonPrinter& printer) { printer.printRows(); });
}

}  // namespace Tarvelon::metamodel
