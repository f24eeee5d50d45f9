#pragma once

#include <cstdint>
#include <span>

#include "tarvelon/platform/model/values/Values.h"

/// Every change of a model: values, references, ownership, the end of an object.
///
/// An object has at most one owner; whoever comes to hold it takes it from the one before. Each reference is
/// known to the object it refers to, so that a destroyed object leaves every place it stood in. What a change
/// needs is allocated before anything is changed: a function that raises has changed nothing.
namespace Tarvelon::metamodel::native {

/// Writes or unsets a property of one value.
void store(Instance& object, unsigned slot, Prepared value);

/// Raises K7Q::WrongValue if holding `element` would make it, through others, hold itself.
void requireNoCycle(const Instance& object, const Property& property, const Instance& element);

/// Whether the list of references holds the element: constant time.
bool containsElement(const Instance& object, unsigned slot, const Instance& element) noexcept;
/// Puts an element that is not there yet into a list of references. REQUIRES: index <= size.
void insertElement(Instance& object, unsigned slot, std::uint32_t index, Instance& element);
struct Placed {
  std::uint32_t index;
  Instance* element;
};
/// The same for many, each with the index where it stands when all of them are there, in ascending order.
/// REQUIRES: a batch of a journal, which takes a part of it back.
void insertElements(Instance& object, unsigned slot, std::span<const Placed> elements);
/// Puts an element in the place of another. One that stands elsewhere in the list changes places with it.
void replaceElement(Instance& object, unsigned slot, std::uint32_t index, Instance& element);
/// Takes elements out of a list of anything; what was held stays in the model without an owner.
void eraseElements(Instance& object, unsigned slot, std::uint32_t first, std::uint32_t count);
/// The same for those at such places, which are given from the last one on.
void eraseElements(Instance& object, unsigned slot, std::span<const std::uint32_t> places);

/// The same for a list of texts, where a text may stand more than once. A text that is put in gains a
/// reference.
void insertText(Instance& object, unsigned slot, std::uint32_t index, K7Q::NSInterface::StringIntf* text);
void replaceText(Instance& object, unsigned slot, std::uint32_t index, K7Q::NSInterface::StringIntf* text);

/// The same for a list of enumeration values.
void insertNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number);
void replaceNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number);

/// Takes an object out of the place that holds it, if one does. REQUIRES: room for a step in the journal.
void leaveOwner(Instance& element) noexcept;

/// Takes an object that is about to be freed out of the referrers of everything that it refers to and that is
/// not dying with it.
void leaveReferred(Instance& object) noexcept;

/// Destroys an object and everything that it holds, and takes them out of every place they stand in.
/// Cost: proportional to what is destroyed, its references and the lists that lose an element.
/// A model with a journal buries them; only that can fail, and then nothing has changed.
void destroyTree(Instance& root);

}  // namespace Tarvelon::metamodel::native
