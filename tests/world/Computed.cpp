// Compares what the engine computes with what follows from the naive state.

#include <algorithm>
#include <map>
#include <set>

#include "tarvelon/platform/model/api/Search.h"
#include "tests/world/Fault.h"
#include "tests/world/Observe.h"

namespace world {

namespace {

namespace api = Tarvelon::model;
using K7Q::NSInterface::ObjectIntf;
using Tarvelon::metamodel::Derivation;

/// Checks one model.
class Checker {
 public:
  Checker(const K7Q::Model& model, const State& state, const Ids& ids)
      : mModel(model), mState(state), mIds(ids) {}

  void checkAll() {
    for (const auto& object : api::objects(mModel)) {
      const int id = mIds.at(object.getInterface());
      for (const Property& property : mState.at(id).cls->derived) checkDerived(object, id, property);
      for (const Slot& slot : mState.at(id).cls->slots) checkWider(object.getClassObject(), slot);
      checkReads(object.getClassObject(), id);
      checkReferrers(object, id);
    }
    checkInstances();
  }

 private:
  [[noreturn]] void fail(int id, const std::string& what) const {
    throw Fault("#" + std::to_string(id) + " " + std::string(mState.at(id).cls->shortName()) + ": " + what);
  }

  bool fits(int id, const Property& property) const {
    const auto* type = property.row->type->cls;
    return mState.at(id).cls->isKindOf(classNamed(*type));
  }

  std::vector<int> ownedOf(int id, const Property& property) const {
    std::vector<int> owned;
    if (property.row->derivation == Derivation::Nothing) return owned;
    for (const auto& [slot, items] : mState.at(id).values) {
      const Slot& place = mState.slotAt(id, slot);
      if (!place.holds()) continue;
      const bool isPackaged = std::string_view(place.all[0].row->name) == "PackagedElement";
      if (property.row->derivation == Derivation::OwnedPackaged && !isPackaged) continue;
      for (const Item& item : items) {
        if (fits(item.object, property)) owned.push_back(item.object);
      }
    }
    return owned;
  }

  int upwards(int id, const Property& property) const {
    int above = mState.at(id).owner;
    switch (property.row->derivation) {
      case Derivation::Root:
        for (above = id; mState.at(above).owner >= 0;) above = mState.at(above).owner;
        return above;
      case Derivation::Owned: {
        const auto owned = ownedOf(id, property);
        return owned.empty() ? -1 : owned[0];
      }
      case Derivation::NearestOwner:
        while (above >= 0 && !fits(above, property)) above = mState.at(above).owner;
        return above;
      default:
        return above >= 0 && fits(above, property) ? above : -1;
    }
  }

  void checkDerived(const K7Q::ClassObject& object, int id, const Property& property) const {
    const auto& methods = *property.owner->methods;
    if (property.row->isMany()) {
      const auto expected = ownedOf(id, property);
      const K7Q::SequenceHandle sequence(
          methods.getSequence(object.getClassObject(), {}, property.row->id, true), {});
      std::vector<int> found;
      for (int index = 0; index < sequence.get().generic_size({}); ++index)
        found.push_back(mIds.at(static_cast<ObjectIntf*>(sequence.get().generic_at({}, index).value())));
      if (found != expected) fail(id, std::string(property.row->name) + " is not what the object holds");
      return;
    }
    K7Q::Object value;
    methods.get(value, object.getClassObject(), {}, property.row->id);
    if (property.row->derivation == Derivation::Model) {
      if (value.getInterface() != mModel.getInterface()) fail(id, "stands in another model");
      return;
    }
    const int found = value.isNull() ? -1 : mIds.at(value.getInterface());
    if (found != upwards(id, property))
      fail(id, std::string(property.row->name) + " is " + std::to_string(found));
  }

  /// A redefinition shares the slot of the redefined property: the wider declaration must return the same
  /// value.
  void checkWider(ObjectPointer object, const Slot& slot) const {
    const Property& narrow = slot.narrowest;
    for (const Property& wide : slot.all) {
      const bool isThere = wide.owner->methods->has(object, {}, wide.row->id);
      if (isThere != narrow.owner->methods->has(object, {}, narrow.row->id))
        throw Fault(std::string(wide.row->name) + " is and is not there");
      if (slot.isMany() || !isThere) continue;
      K7Q::Object left;
      K7Q::Object right;
      wide.owner->methods->get(left, object, {}, wide.row->id);
      narrow.owner->methods->get(right, object, {}, narrow.row->id);
      if (itemOf(left, *wide.row, mIds) != itemOf(right, *narrow.row, mIds))
        throw Fault(std::string(wide.row->name) + " has two values");
    }
  }

  void checkReads(ObjectPointer object, int id) const {
    for (const Class* cls : mState.at(id).cls->ancestors) {
      for (unsigned index = 0; index < cls->table->reads.size(); ++index) {
        const auto& row = cls->table->reads[index];
        std::vector<int> expected;
        for (const Item& item : mState.items(id, mState.at(id).cls->slotOf(*cls->find(row.property)->row))) {
          const Class& element = *mState.at(item.object).cls;
          const auto& kind = mState.items(item.object, element.slotOf(*element.find("Kind")->row));
          if (static_cast<std::int32_t>(kind.empty() ? 0 : kind[0].bits) == row.kind)
            expected.push_back(item.object);
        }
        const K7Q::SequenceHandle sequence(cls->methods->read(object, {}, index), {});
        std::vector<int> found;
        for (int at = 0; at < sequence.get().generic_size({}); ++at)
          found.push_back(mIds.at(static_cast<ObjectIntf*>(sequence.get().generic_at({}, at).value())));
        if (found != expected) fail(id, std::string(row.name) + " reads something else");
      }
    }
  }

  void checkReferrers(const K7Q::ClassObject& object, int id) const {
    std::vector<std::pair<int, unsigned>> found;
    for (const auto& mention : api::referrers(object)) {
      const int from = mIds.at(mention.object.getInterface());
      found.emplace_back(from, mState.at(from).cls->slotOf(api::rowOf(*mention.property)));
    }
    std::ranges::sort(found);
    if (found != mState.referrers(id)) fail(id, "is referred to by others than referrers() says");
  }

  void checkInstances() const {
    std::map<const Class*, std::set<int>> expected;
    for (const auto& [id, object] : mState.objects) {
      for (const Class* above : object.cls->ancestors) expected[above].insert(id);
    }
    for (const auto& [cls, ids] : expected) {
      std::set<int> found;
      const auto instances = api::instances(mModel, *cls->methods);
      for (const auto& each : instances) found.insert(mIds.at(each.getInterface()));
      if (found != ids || instances.size() != ids.size())
        throw Fault("instances() of " + std::string(cls->shortName()) + " are others");
    }
  }

  const K7Q::Model& mModel;
  const State& mState;
  const Ids& mIds;
};

}  // namespace

void checkComputed(const K7Q::Model& model, const State& state, const Ids& ids) {
  Checker(model, state, ids).checkAll();
}

void checkNames(const K7Q::Model& model, const State& state, const Ids& ids) {
  std::map<std::u16string, std::set<int>> named;
  for (const auto& object : api::objects(model)) {
    const int id = ids.at(object.getInterface());
    const auto name = state.qualifiedName(id);
    if (api::qualifiedName(object) != name) throw Fault("#" + std::to_string(id) + " has another name");
    // A name with a slash cannot be found by its qualified name.
    const bool hasSlash = name.find(u"//") != name.npos || (!name.empty() && name.back() == u'/');
    if (!name.empty() && !hasSlash) named[name].insert(id);
  }
  for (const auto& [name, expected] : named) {
    std::set<int> found;
    const auto all = api::findAll(model, name);
    for (const auto& each : all) found.insert(ids.at(each.getInterface()));
    if (found != expected || all.size() != expected.size())
      throw Fault("findAll() of '" + K7Q::String::to_string(std::u16string_view(name)) + "' gives others");
    if (!(api::find(model, name) == all[0])) throw Fault("find() gives another one than the first");
  }
}

}  // namespace world
