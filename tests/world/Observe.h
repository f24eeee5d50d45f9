#pragma once

#include <string>
#include <unordered_map>

#include "tests/world/State.h"

/// What a model of the engine looks like, read through its public interface alone.
namespace world {

using ObjectPointer = K7Q::NSInterface::ClassObjectIntf*;
using Ids = std::unordered_map<const K7Q::NSInterface::ObjectIntf*, int>;

/// The value of a property as an item; an object that has no id raises Fault.
Item itemOf(const K7Q::Object& value, const PropertyRow& row, const Ids& ids);
/// The value that the engine takes for an item.
K7Q::Object valueOf(const Item& item, const PropertyRow& row, const std::vector<ObjectPointer>& pointers);
/// The same as an element of a list.
K7Q::Generic::Ref refOf(const Item& item, const PropertyRow& row, const std::vector<ObjectPointer>& pointers);
/// An element of a list as an item.
Item itemOf(const K7Q::Generic::Ref& ref, const Slot& slot, const Ids& ids);
/// The live list of a slot.
K7Q::SequenceHandle sequenceOf(ObjectPointer object, const Slot& slot, bool isImmutable = false,
                               K7Q::Deviant deviant = {});

/// Every stored value of every object, through the narrowest declaration of its slot.
State observe(const K7Q::Model& model, const Ids& ids);

/// Raises Fault where what the engine computes differs from what follows from the state: derived properties,
/// wider declarations, reads by kind, referrers, the lists of classes.
void checkComputed(const K7Q::Model& model, const State& state, const Ids& ids);
/// The same for names and what is found by them. Builds the model's index of names.
void checkNames(const K7Q::Model& model, const State& state, const Ids& ids);

/// The first difference between two states as text, empty for none.
std::string differenceOf(const State& expected, const State& found);
std::string shown(const Item& item, const PropertyRow& row);
std::string shown(const State& state);

}  // namespace world
