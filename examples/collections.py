"""Sequences and iterators: an independent sequence of binding times, and the elements of a package.

    ./tarvelon run examples/collections.py
"""

from collections.abc import Iterable

import K7Q
from Tarvelon.metamodel.arplatform import Factory, variant

BindingTimeKind = variant.BindingTimeKind


def shown(sequence: Iterable[BindingTimeKind]) -> str:
    return ", ".join(str(value) for value in sequence) or "nothing"


def binding_times(model: K7Q.Model) -> variant.SequenceOfBindingTimeKind:
    """A sequence of enumeration values that does not belong to a property."""
    times = variant.SequenceOfBindingTimeKind.make(model)
    times += [BindingTimeKind.LinkTime, BindingTimeKind.PreCompileTime, BindingTimeKind.LinkTime]
    print("made:", shown(times))

    # Indices of Python's operators start at 0, those of the host's methods at 1.
    print("first:", times[0], "=", times.at(1), "- last:", times[-1], "=", times.back())
    times.insert(1, BindingTimeKind.SystemDesignTime)
    times[1] = BindingTimeKind.CodeGenerationTime
    print("changed:", shown(times), "- sorted:", shown(sorted(times)))
    print("LinkTime taken out:", times.removeAll(BindingTimeKind.LinkTime), "- left:", shown(times))

    # A unique sequence contains each value once, in the order in which the values were added.
    once = variant.SequenceOfBindingTimeKind.makeUnique(model)
    once += [BindingTimeKind.LinkTime, *times, BindingTimeKind.LinkTime]
    print("each once:", shown(once))
    return times


def walk(times: variant.SequenceOfBindingTimeKind) -> None:
    """An iterator of such a sequence stays on its element when other elements are added or removed."""
    place, end = times.begin(), times.end()
    while place != end:
        print("at", place.item())
        place.getNext()

    place = times.begin()
    times.push_front(BindingTimeKind.LinkTime)
    print("still at", place.item(), "- now number", times.index(place.item()) + 1)

    # insert and erase take an iterator and return one: on the new element, and after the removed element.
    new = times.insert(place, BindingTimeKind.PreCompileTime)
    behind = times.erase(place)
    print("new:", new.item(), "- behind the one taken out:", behind.item(), "- all:", shown(times))

    # The element of `place` was removed, so the iterator is stale.
    try:
        place.item()
    except K7Q.StaleIterator as refused:
        print("refused:", refused)


def package_elements(factory: Factory) -> None:
    """A many-valued property returns a live sequence: changing the sequence changes the object."""
    package = factory.create("common.Package", "Variants")
    elements = package.PackagedElement
    for name in ("Wheels", "Doors", "Seats"):
        elements.append(factory.create("variant.SystemConst", name))
    print("holds:", ", ".join(element.Name for element in elements))

    # Appending an element that is already contained changes nothing. A slice is a list, so the property may change
    # during the loop.
    elements.append(elements[0])
    for element in elements[1:]:
        if element.Name.startswith("D"):
            elements.remove(element)
    print("holds:", ", ".join(element.Name for element in package.PackagedElement))

    # The sequence of an immutable object can only be read.
    view = package.asImmutable().PackagedElement
    elements.insert(1, factory.create("variant.SystemConst", "Engine"))
    print("the view sees", len(view), "elements, first", view[0].Name)
    try:
        view.pop()  # type: ignore[misc]  # mypy refuses it as well
    except TypeError as refused:
        print("refused:", refused)

    # An iterator of a property's sequence is valid until the property changes for any reason.
    place = elements.begin()
    elements[0].destroy()
    print("after destroy:", ", ".join(element.Name for element in elements))
    try:
        place.item()
    except K7Q.StaleIterator as refused:
        print("refused:", refused)


def main() -> None:
    with Factory.createNewModel() as model:
        times = binding_times(model)
        walk(times)
        package_elements(Factory.createNewFactory(model))


if __name__ == "__main__":
    main()
