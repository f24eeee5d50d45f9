// Random editing, compared after each step with a very simple model.

#include <algorithm>
#include <random>
#include <vector>

#include "tests/native/Support.h"

namespace {

using Rng = std::mt19937;

/// The expected contents of an object. All objects are packages or variants, contained in packages.
struct Expected {
  K7Q::ClassObject object;
  bool isPackage = false;
  bool isAlive = true;
  int owner = -1;
  std::vector<int> elements;  ///< the objects that a package contains
  std::vector<int> included;  ///< the objects that a variant refers to
  int target = -1;            ///< the object that `data` refers to
  common::Sdx data;
};

class RandomEditing : public testing::TestWithParam<unsigned> {
 protected:
  int pick(std::size_t count) { return static_cast<int>(mRandom() % count); }
  int pickAny() { return pick(mExpected.size()); }
  Expected& at(int index) { return mExpected[static_cast<std::size_t>(index)]; }

  static K7Q::SequenceHandle elementsOf(const Expected& object) {
    return Access<foundation::Package>(object.object, "PackagedElement").sequence();
  }
  static K7Q::SequenceHandle includedOf(const Expected& object) {
    return Access<variant::PredefinedVariant>(object.object, "IncludedVariant").sequence();
  }

  void create() {
    Expected made;
    made.isPackage = mRandom() % 2 == 0;
    made.object = made.isPackage ? K7Q::ClassObject(common::Package::create(mModel, u"P"))
                                 : K7Q::ClassObject(variant::PredefinedVariant::create(mModel, u"V"));
    made.data = common::Sdx::create(mModel);
    mExpected.push_back(made);
  }

  bool holds(int above, int below) {
    for (int index = below; index >= 0; index = at(index).owner) {
      if (index == above) return true;
    }
    return false;
  }

  static void put(std::vector<int>& list, std::size_t place, int value) {
    const auto old = std::ranges::find(list, value);
    if (old != list.end()) {
      if (static_cast<std::size_t>(old - list.begin()) < place) --place;
      list.erase(old);
    }
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(place), value);
  }

  void insertElement(int package, int element) {
    const auto place = static_cast<std::size_t>(pick(at(package).elements.size() + 1));
    if (holds(element, package)) {
      EXPECT_THROW(elementsOf(at(package))
                       .get()
                       .generic_insert({}, static_cast<int>(place), refOf(at(element).object)),
                   K7Q::WrongValue);
      return;
    }
    elementsOf(at(package)).get().generic_insert({}, static_cast<int>(place), refOf(at(element).object));
    if (at(element).owner >= 0 && at(element).owner != package)
      std::erase(at(at(element).owner).elements, element);
    put(at(package).elements, place, element);
    at(element).owner = package;
  }

  void insertIncluded(int from, int to) {
    const auto place = static_cast<std::size_t>(pick(at(from).included.size() + 1));
    includedOf(at(from)).get().generic_insert({}, static_cast<int>(place), refOf(at(to).object));
    put(at(from).included, place, to);
  }

  void replaceIncluded(int from, int to) {
    auto& included = at(from).included;
    if (included.empty()) return;
    const int place = pick(included.size());
    includedOf(at(from)).get().generic_replace({}, place, refOf(at(to).object));
    const auto old = std::ranges::find(included, to);
    if (old != included.end()) std::iter_swap(old, included.begin() + place);
    included[static_cast<std::size_t>(place)] = to;
  }

  void erase(int index) {
    auto& object = at(index);
    auto& list = object.isPackage ? object.elements : object.included;
    if (list.empty()) return;
    const int place = pick(list.size());
    (object.isPackage ? elementsOf(object) : includedOf(object)).get().generic_erase({}, place);
    if (object.isPackage) at(list[static_cast<std::size_t>(place)]).owner = -1;
    list.erase(list.begin() + place);
  }

  void refer(int from, int to) {
    at(from).data.set<"sdx">(common::Referrable::cast(at(to).object));
    at(from).target = to;
  }

  void forget(int index) {
    for (const int element : at(index).elements) forget(element);
    at(index).isAlive = false;
    for (auto& other : mExpected) {
      std::erase(other.included, index);
      if (other.target == index) other.target = -1;
    }
  }

  void destroy(int index) {
    at(index).object.getClassObject()->destroy({});
    if (at(index).owner >= 0) std::erase(at(at(index).owner).elements, index);
    forget(index);
    for (auto& other : mExpected) {
      if (!other.isAlive && other.object.isValid())
        ADD_FAILURE() << "an object that is held outlives its owner";
    }
  }

  void step() {
    if (mExpected.size() < 4 || mRandom() % 4 == 0) {
      create();
      return;
    }
    const int first = pickAny();
    const int second = pickAny();
    if (!at(first).isAlive || !at(second).isAlive) return;
    switch (mRandom() % 8) {
      case 0:
        refer(first, second);
        break;
      case 1:
        erase(first);
        break;
      case 2:
        if (mRandom() % 4 == 0) destroy(first);
        break;
      case 3:
        if (!at(first).isPackage && !at(second).isPackage) replaceIncluded(first, second);
        break;
      default:
        if (at(first).isPackage) {
          insertElement(first, second);
        } else if (!at(second).isPackage) {
          insertIncluded(first, second);
        }
    }
  }

  void compareList(const K7Q::SequenceHandle& sequence, const std::vector<int>& expected) {
    ASSERT_EQ(sequence.get().generic_size({}), static_cast<int>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_TRUE(sequence.get().generic_at({}, static_cast<int>(i)).equals(refOf(at(expected[i]).object)));
    }
  }

  void compare() {
    for (auto& object : mExpected) {
      ASSERT_EQ(object.object.isValid(), object.isAlive);
      const auto target = object.data.get<"sdx">();
      ASSERT_TRUE(object.target < 0 ? target.isNull() : target == at(object.target).object);
      if (!object.isAlive) continue;
      if (object.isPackage) {
        compareList(elementsOf(object), object.elements);
        compareList(Access<foundation::Element>(object.object, "OwnedElement").sequence(), object.elements);
      } else {
        compareList(includedOf(object), object.included);
      }
      const auto owner = Access<foundation::Element>(object.object, "Owner").get();
      ASSERT_TRUE(object.owner < 0 ? owner.isNull() : owner == at(object.owner).object);
    }
  }

  K7Q::Model mModel = K7Q::Model::create();
  Rng mRandom{GetParam()};
  std::vector<Expected> mExpected;
};

}  // namespace

TEST_P(RandomEditing, KeepsOwnersReferencesAndOrder) {
  for (int i = 0; i < 400; ++i) {
    step();
    ASSERT_NO_FATAL_FAILURE(compare()) << "step " << i;
  }
  const auto objects = mExpected;
  mModel.getModelInterface()->close();
  for (const auto& object : objects) EXPECT_FALSE(object.object.isValid());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEditing, testing::Range(1U, 21U));
