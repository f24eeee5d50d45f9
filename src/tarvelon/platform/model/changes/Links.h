#pragma once

#include <cstdint>
#include <span>

#include "tarvelon/platform/model/values/Values.h"

/// All changes of a model: values, references, containment and the destruction of objects.
///
/// An object has at most one owner. Moving an object into another owner removes it from its previous owner.
/// Each object knows the references that lead to it; so a destroyed object can be removed from every place
/// that refers to it.
///
/// Failure: Memory is allocated before anything is changed. So a function that raises has changed nothing.
namespace Tarvelon::metamodel::native {

/// Sets or unsets a single-valued property.
void store(Instance& object, unsigned slot, Prepared value);

/// Raises K7Q::WrongValue if `element` contains `object`, directly or not: then `element` cannot be contained
/// in `object`.
void requireNoCycle(const Instance& object, const Property& property, const Instance& element);

/// Whether the list of references contains the element. Constant time.
bool containsElement(const Instance& object, unsigned slot, const Instance& element) noexcept;
/// Inserts an element into a list of references. REQUIRES: index <= size; the element is not in the list.
void insertElement(Instance& object, unsigned slot, std::uint32_t index, Instance& element);
struct Placed {
  std::uint32_t index;
  Instance* element;
};
/// Inserts many elements. Each has the index at which it will be in the final list; indices are in ascending
/// order. REQUIRES: a Batch with a journal, which undoes the insertions if one of them fails.
void insertElements(Instance& object, unsigned slot, std::span<const Placed> elements);
/// Replaces the element at `index`. If the new element is elsewhere in the list, the two elements are
/// swapped.
void replaceElement(Instance& object, unsigned slot, std::uint32_t index, Instance& element);
/// Removes elements from a list of any type. Objects that were contained stay in the model without an owner.
void eraseElements(Instance& object, unsigned slot, std::uint32_t first, std::uint32_t count);
/// Removes the elements at the given indices. REQUIRES: the indices are in descending order.
void eraseElements(Instance& object, unsigned slot, std::span<const std::uint32_t> places);

/// Inserts and replaces a text in a list of texts. A text may occur several times. The list keeps a reference
/// to the text or a copy of it (TextCell::keptOf()).
void insertText(Instance& object, unsigned slot, std::uint32_t index, K7Q::NSInterface::StringIntf* text);
void replaceText(Instance& object, unsigned slot, std::uint32_t index, K7Q::NSInterface::StringIntf* text);

/// Inserts and replaces a value in a list of enumeration values.
void insertNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number);
void replaceNumber(Instance& object, unsigned slot, std::uint32_t index, std::int32_t number);

/// Removes an object from its owner, if it has one. REQUIRES: room for one step in the journal.
void removeFromOwner(Instance& element) noexcept;

/// Removes an object that is about to be freed from the referrer sets of the objects that it refers to.
void removeFromReferred(Instance& object) noexcept;

/// Destroys an object and everything it contains, and removes all references to these objects.
/// Cost: Proportional to the number of destroyed objects, their references and the length of the lists that
///       lose an element.
/// Failure: Cannot fail in a model without a journal. A model with a journal keeps the deleted objects, which
///          needs memory; if the function raises, nothing has changed.
void destroyTree(Instance& root);

}  // namespace Tarvelon::metamodel::native
