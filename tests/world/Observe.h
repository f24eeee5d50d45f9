#pragma once

#include <string>
#include <unordered_map>

#include "tests/world/State.h"

/// Reads a model of the engine through its public interface.
namespace world {

using ObjectPointer = K7Q::NSInterface::ClassObjectIntf*;
using Ids = std::unordered_map<const K7Q::NSInterface::ObjectIntf*, int>;

/// Converts the value of a property into an item. Raises Fault for an object without an id.
Item itemOf(const K7Q::Object& value, const PropertyRow& row, const Ids& ids);
/// Converts an item into a value for the engine.
K7Q::Object valueOf(const Item& item, const PropertyRow& row, const std::vector<ObjectPointer>& pointers);
/// Converts an item into an element of a list.
K7Q::Generic::Ref refOf(const Item& item, const PropertyRow& row, const std::vector<ObjectPointer>& pointers);
/// Converts an element of a list into an item.
Item itemOf(const K7Q::Generic::Ref& ref, const Slot& slot, const Ids& ids);
/// The live list of a slot.
K7Q::SequenceHandle sequenceOf(ObjectPointer object, const Slot& slot, bool isImmutable = false,
                               K7Q::Deviant deviant = {});

/// Reads all stored values of all objects, through the narrowest declaration of each slot.
State observe(const K7Q::Model& model, const Ids& ids);

/// Compares everything that the engine computes with the state: derived properties, wider declarations, reads
/// by kind, referrers, instances of classes. Raises Fault if they differ.
void checkComputed(const K7Q::Model& model, const State& state, const Ids& ids);
/// The same for names and for searches by name. Builds the model's index of names.
void checkNames(const K7Q::Model& model, const State& state, const Ids& ids);

/// Describes the first difference between two states; empty if they are equal.
std::string differenceOf(const State& expected, const State& found);
std::string shown(const Item& item, const PropertyRow& row);
std::string shown(const State& state);

}  // namespace world
