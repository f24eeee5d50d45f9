#include "tarvelon/platform/tarvelon/api/Json.h"

#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/tarvelon/Links.h"
#include "tarvelon/platform/tarvelon/NativeModel.h"
#include "tarvelon/platform/tarvelon/QualifiedName.h"
#include "tarvelon/platform/tarvelon/Refusal.h"
#include "tarvelon/platform/tarvelon/copy/Hashes.h"
#include "tarvelon/platform/tarvelon/copy/JsonValues.h"
#include "tarvelon/platform/tarvelon/copy/KeyIndex.h"
#include "tarvelon/platform/tarvelon/copy/Paths.h"

namespace Tarvelon::metamodel::native {

namespace {

/// How references are written, and which objects need an id for it.
class References {
 public:
  explicit References(const Tree& tree);
  std::string path(const Instance& target) const;
  bool hasId(std::uint32_t node) const noexcept { return mHasId[node]; }
  std::string id(const Instance& object) const { return mPaths.uniquePath(object); }

 private:
  void note(std::uint32_t node, KeyIndex& names, const std::vector<Hash>& hashes);

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
                    if (found != Tree::kNone) note(found, names, hashes);
                  });
  }
}

void References::note(std::uint32_t node, KeyIndex& names, const std::vector<Hash>& hashes) {
  mHasId[node] = !isNamed(*mTree[node].object) || names.isShared(hashes[node]);
}

std::string References::path(const Instance& target) const {
  const std::uint32_t node = mTree.find(target);
  return node != Tree::kNone && mHasId[node] ? mPaths.uniquePath(target) : mPaths.path(target);
}

class JsonPrinter {
 public:
  JsonPrinter(const Tree& tree, int indent) : mTree(tree), mReferences(tree), mIndent(indent) {}

  /// The next object of the tree with all it holds.
  void printObject();
  void printModel(std::u16string_view uri);
  std::string take() noexcept { return std::move(mOut); }

 private:
  /// An object that is open.
  struct Frame {
    const Instance* object;
    std::uint64_t slots;
    /// The list that is open, and how many of its elements are written.
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
  mOut.append(static_cast<std::size_t>(mDepth) * static_cast<std::size_t>(mIndent), ' ');
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

void JsonPrinter::openObject() {
  const std::uint32_t node = mNext++;
  const Instance& object = *mTree[node].object;
  open('{');
  key("class");
  appendJson(mOut, shortName(object.cls()));
  if (mReferences.hasId(node)) {
    key("id");
    appendJson(mOut, std::string_view(mReferences.id(object)));
  }
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

void JsonPrinter::printModel(std::u16string_view uri) {
  open('{');
  if (!uri.empty()) {
    key("uri");
    appendJson(mOut, uri);
  }
  key("objects");
  open('[');
  const bool isEmpty = mTree.size() == 0;
  while (mNext < mTree.size()) {
    next();
    printObject();
  }
  close(']', isEmpty);
  close('}');
}

}  // namespace

}  // namespace Tarvelon::metamodel::native

namespace Tarvelon::metamodel {

std::string toJson(const K7Q::ObjectHandle& modelOrObject, int indent) {
  using namespace native;  // NOLINT(google-build-using-namespace)
  modelOrObject.requireValid();
  if (auto* model = dynamic_cast<NativeModel*>(modelOrObject.getInterface())) {
    Tree tree(*model);
    tree.index();
    JsonPrinter printer(tree, indent);
    printer.printModel(model->getUri(modelOrObject.getDeviant()));
    return printer.take();
  }
  Instance* object = asInstance(modelOrObject.getInterface());
  if (!object) {
    throw K7Q::WrongType("toJson: expected a model or an object of one, got " +
                         describe(K7Q::Object(modelOrObject.getInterface(), modelOrObject.getDeviant())));
  }
  Tree tree(*object);
  tree.index();
  JsonPrinter printer(tree, indent);
  printer.printObject();
  return printer.take();
}

}  // namespace Tarvelon::metamodel
