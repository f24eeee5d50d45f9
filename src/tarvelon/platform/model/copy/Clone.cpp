#include <bit>
#include <optional>
#include <string>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/model/api/Copy.h"
#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/copy/Paths.h"
#include "tarvelon/platform/model/copy/Placement.h"
#include "tarvelon/platform/model/copy/Tree.h"
#include "tarvelon/platform/model/copy/Visit.h"
#include "tarvelon/platform/model/names/QualifiedName.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/objects/Slots.h"
#include "tarvelon/platform/model/values/Refusal.h"
#include "tarvelon/platform/model/words/TextCell.h"
#include "tarvelon/platform/ruvo/Texts.h"

// A copy is made in the order of the tree: first all objects with their values, then containment, then cross
// references. All of this uses the same functions as any other change. If something fails, a journal undoes
// what was done so far; without a journal the new objects are destroyed again.
namespace Tarvelon::metamodel::native {

namespace {

class Copier {
 public:
  /// REQUIRES: tree.index().
  Copier(const Tree& tree, NativeModel& model) : mTree(tree), mModel(model), mBatch(model) {
    mCopies.reserve(tree.size());
  }
  Copier(const Copier&) = delete;
  Copier& operator=(const Copier&) = delete;
  /// Destroys the copies unless keep() was called.
  ~Copier();

  void copyAll();
  Instance& root() const noexcept { return *mCopies.front(); }
  void keep() noexcept { mCopies.clear(); }

 private:
  Instance& newObject(const Instance& original);
  void keepSource(const Instance& original, Instance& copy);
  void copyValues(const Instance& original, Instance& copy) const;
  void copyReferences(const Instance& original, Instance& copy, bool isOfLists) const;
  void hold(const Tree::Node& node, Instance& copy) const;
  Instance* counterpart(const ClassData& cls, unsigned slot, Instance& target) const;

  const Tree& mTree;
  NativeModel& mModel;
  Batch mBatch;
  std::vector<Instance*> mCopies;
};

// destroyTree() also destroys the copies that a copy contains. So only copies without an owner are destroyed
// here. The others leave the list before the first copy is destroyed, because they may not exist any more
// after that.
Copier::~Copier() {
  if (mModel.journal()) return;
  std::erase_if(mCopies, [](const Instance* copy) { return copy->owner() != nullptr; });
  for (Instance* copy : mCopies) destroyTree(*copy);
}

Instance& Copier::newObject(const Instance& original) {
  mBatch.reserve(1);
  const int values = std::popcount(valueSlots(original));
  Instance& copy = mModel.add(original.cls(), static_cast<unsigned>(values));
  if (mModel.journal()) make({&copy, {}, {}, 0, 0, Step::Kind::Life, false, true});
  keepSource(original, copy);
  return copy;
}

/// A copy has the element of a file from which its original was loaded: what has no class there is saved with
/// the copy too. In another model only if that model has no files of its own.
void Copier::keepSource(const Instance& original, Instance& copy) {
  const Word* source = original.find(ClassData::kSourceSlot);
  if (!source) return;
  if (!mModel.sources()) mModel.keepSources(original.model().sharedSources(), false);
  if (mModel.sources() == original.model().sources())
    copy.put(ClassData::kSourceSlot, *source, copy.reserveLasting());
}

void Copier::copyAll() {
  for (const Tree::Node& node : mTree.nodes()) {
    mCopies.push_back(&newObject(*node.object));
    copyValues(*node.object, *mCopies.back());
  }
  for (std::uint32_t index = 0; index < mTree.size(); ++index) hold(mTree[index], *mCopies[index]);
  // Lists first: if a list and a single-valued reference are opposites, the list decides the order.
  for (const bool isOfLists : {true, false}) {
    for (std::uint32_t index = 0; index < mTree.size(); ++index)
      copyReferences(*mTree[index].object, *mCopies[index], isOfLists);
  }
}

/// Models share no texts, since they may be used by different threads.
TextCell copyOf(K7Q::NSInterface::StringIntf* text) {
  return text ? TextCell(text->view()) : TextCell::keptOf(nullptr);
}

void Copier::copyValues(const Instance& original, Instance& copy) const {
  const ClassData& cls = original.cls();
  forEachSlot(valueSlots(original) & ~(cls.holdingSlots | cls.referringSlots), [&](unsigned slot) {
    const bool isText = (cls.textSlots >> slot & 1) != 0;
    const bool isOther = isText && &original.model() != &mModel;
    if (!isList(cls, slot)) {
      const Word word = *original.find(slot);
      store(copy, slot, Prepared{isOther ? Word{.text = copyOf(word.text).get()} : word, false});
      return;
    }
    forEachWord(original, slot, [&](Word word, std::uint32_t position) {
      if (isText) {
        insertText(copy, slot, position, isOther ? copyOf(word.text).get() : word.text);
      } else {
        insertNumber(copy, slot, position, integerOf(word));
      }
    });
  });
}

/// Adds an element at the end of a list that will have `expected` elements.
void append(Instance& object, unsigned slot, Instance& element, std::uint32_t expected) {
  WordList* list = listOf(object, slot);
  insertElement(object, slot, list ? list->size() : 0, element);
  if (!list && expected > 1) listOf(object, slot)->reserve(expected - 1);
}

void Copier::hold(const Tree::Node& node, Instance& copy) const {
  if (node.parent == Tree::kNone) return;
  Instance& owner = *mCopies[node.parent];
  if (isList(owner.cls(), node.slot)) {
    append(owner, node.slot, copy, listOf(*mTree[node.parent].object, node.slot)->size());
  } else {
    store(owner, node.slot, Prepared{Word{.object = &copy}, false});
  }
}

void Copier::copyReferences(const Instance& original, Instance& copy, bool isOfLists) const {
  const ClassData& cls = original.cls();
  const std::uint64_t wanted = cls.referringSlots & (isOfLists ? cls.listSlots : ~cls.listSlots);
  forEachTarget(original, wanted, [&](Instance& target, unsigned slot, std::uint32_t /*position*/) {
    Instance* element = counterpart(cls, slot, target);
    if (!element) return;
    if (!isOfLists) {
      store(copy, slot, Prepared{Word{.object = element}, false});
    } else if (!containsElement(copy, slot, *element)) {
      append(copy, slot, *element, listOf(original, slot)->size());
    }
  });
}

/// Whether the opposite of the reference is single-valued. Then the target refers back to the original, and
/// cannot refer back to the copy as well.
bool isTaken(const ClassData& cls, unsigned slot) {
  if ((cls.oppositeSlots >> slot & 1) == 0) return false;
  return !cls.slotProperties[slot]->opposite()->isMany();
}

/// The object that the copy refers to where the original refers to `target`. Null if the copy gets no such
/// reference.
Instance* Copier::counterpart(const ClassData& cls, unsigned slot, Instance& target) const {
  const std::uint32_t node = mTree.find(target);
  if (node != Tree::kNone) return mCopies[node];
  return &target.model() == &mModel && !isTaken(cls, slot) ? &target : nullptr;
}

/// Raises if a reference leads out of the tree.
void requireClosed(const Tree& tree) {
  constexpr int kShown = 3;
  int count = 0;
  std::string first;
  const Paths paths(tree);
  for (const Tree::Node& node : tree.nodes()) {
    const ClassData& cls = node.object->cls();
    forEachTarget(*node.object, cls.referringSlots,
                  [&](const Instance& target, unsigned slot, std::uint32_t /*position*/) {
                    if (tree.find(target) != Tree::kNone || ++count > kShown) return;
                    first.append(count == 1 ? "" : ", ").append(paths.path(*node.object)).append(".");
                    first.append(cls.slotProperties[slot]->row().name).append(" -> ");
                    first.append(paths.path(target));
                  });
  }
  if (count == 0) return;
  throw K7Q::WrongValue("clone of " + std::string(shortName(tree[0].object->cls())) + " " +
                        paths.path(*tree[0].object) + " into another model: " + std::to_string(count) +
                        (count == 1 ? " reference leads" : " references lead") +
                        " outside the copy: " + first + (count > kShown ? ", ..." : "") +
                        "; copy an object that contains both ends, or leave such references out");
}

/// The object behind a handle. Raises K7Q::WrongType if it is not an object of a model. Raises K7Q::Exception
/// with the text kNullReference for a null handle and for a destroyed object.
Instance& requireObject(const K7Q::ObjectHandle& handle) {
  if (handle.isNull()) raiseNullReference();
  Instance* object = asInstance(handle.getInterface());
  if (!object) {
    throw K7Q::WrongType("clone: expected an object of a model, got " +
                         describe(K7Q::Object(handle.getInterface(), handle.getDeviant())) +
                         "; to copy a whole model, clone the model itself");
  }
  if (!object->isAlive()) raiseLost(*object);
  return *object;
}

/// The place where a copy goes.
struct Destination {
  NativeModel& model;
  Instance* owner;
  K7Q::Deviant deviant;
};

Destination destinationOf(const Instance& object, const K7Q::ObjectHandle& handle,
                          const K7Q::ObjectHandle& owner) {
  const K7Q::Deviant deviant = owner.isNull() ? handle.getDeviant() : owner.getDeviant();
  auto* model = owner.isNull() ? &object.model() : dynamic_cast<NativeModel*>(owner.getInterface());
  if (model) {
    if (!model->isValid(deviant)) raiseLost(*model);
    K7Q::DeviantAssertions::assertWritable(deviant, model);
    return {*model, nullptr, deviant};
  }
  Instance& holder = requireObject(owner);
  K7Q::DeviantAssertions::assertWritable(deviant, &holder);
  return {holder.model(), &holder, deviant};
}

void place(Instance& copy, Instance& owner, unsigned slot) {
  if (isList(owner.cls(), slot)) {
    const WordList* list = listOf(owner, slot);
    insertElement(owner, slot, list ? list->size() : 0, copy);
  } else {
    store(owner, slot, Prepared{Word{.object = &copy}, false});
  }
}

}  // namespace

}  // namespace Tarvelon::metamodel::native

namespace Tarvelon::metamodel {

K7Q::ClassObject clone(const K7Q::Object& object) { return clone(object, {}, Outside::Refused); }

K7Q::ClassObject clone(const K7Q::ObjectHandle& object, const K7Q::Object& owner, Outside outside) {
  return clone(object, owner, {}, outside);
}

K7Q::ClassObject clone(const K7Q::ObjectHandle& object, const K7Q::Object& owner, std::string_view property,
                       Outside outside) {
  using namespace native;  // NOLINT(google-build-using-namespace)
  Instance& original = requireObject(object);
  const Destination to = destinationOf(original, object, owner);
  if (!to.owner && !property.empty()) {
    throw K7Q::WrongValue("clone: the property " + ruvo::quotedName(property) +
                          " is given without an owner; give the owner as well");
  }
  const unsigned slot = to.owner ? placeFor(original, *to.owner, property) : 0;
  Tree tree(original);
  tree.index();
  if (&original.model() != &to.model && outside == Outside::Refused) requireClosed(tree);
  Copier copier(tree, to.model);
  copier.copyAll();
  Instance& copy = copier.root();
  if (to.owner) place(copy, *to.owner, slot);
  copier.keep();
  Batch::noteMade(copy);
  return {&copy, to.deviant};
}

K7Q::Model cloneModel(const K7Q::ImmutableModel& model) {
  using namespace native;  // NOLINT(google-build-using-namespace)
  const NativeModel& original = NativeModel::require({model.getModelInterface(), model.getDeviant()});
  K7Q::Model made = K7Q::Model::create();
  Tree tree(original);
  tree.index();
  Copier copier(tree, NativeModel::require(made));
  copier.copyAll();
  copier.keep();
  return made;
}

}  // namespace Tarvelon::metamodel
