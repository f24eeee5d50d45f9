"""Sequences and iterators: a list of binding times that stands alone, and the elements that a package holds.

    ./tarvelon run examples/collections.py
"""

from collections.abc import Iterable

import K7Q
from Tarvelon.metamodel.arplatform import Factory, variant

BindingTimeKind = variant.BindingTimeKind


def shown(sequence: Iterable[BindingTimeKind]) -> str:
    return ", ".join(str(value) for value in sequence) or "nothing"


def binding_times(model: K7Q.Model) -> variant.SequenceOfBindingTimeKind:
    """A sequence of enumeration values that a script makes for itself."""
    times = variant.SequenceOfBindingTimeKind.make(model)
    times += [BindingTimeKind.LinkTime, BindingTimeKind.PreCompileTime, BindingTimeKind.LinkTime]
    print("made:", shown(times))

    # Python's operators count from 0, the host's methods from 1.
    print("first:", times[0], "=", times.at(1), "- last:", times[-1], "=", times.back())
    times.insert(1, BindingTimeKind.SystemDesignTime)
    times[1] = BindingTimeKind.CodeGenerationTime
    print("changed:", shown(times), "- sorted:", shown(sorted(times)))
    print("LinkTime taken out:", times.removeAll(BindingTimeKind.LinkTime), "- left:", shown(times))

    # A unique sequence takes each value once and keeps the order in which they came.
    once = variant.SequenceOfBindingTimeKind.makeUnique(model)
    once += [BindingTimeKind.LinkTime, *times, BindingTimeKind.LinkTime]
    print("each once:", shown(once))
    return times


def walk(times: variant.SequenceOfBindingTimeKind) -> None:
    """An iterator is a place in a sequence: it stays on its element while others come and go."""
    place, end = times.begin(), times.end()
    while place != end:
        print("at", place.item())
        place.getNext()

    place = times.begin()
    times.push_front(BindingTimeKind.LinkTime)
    print("still at", place.item(), "- now number", times.index(place.item()) + 1)

    # insert and erase take an iterator and give one: on the new element, behind the one taken out.
    new = times.insert(place, BindingTimeKind.PreCompileTime)
    behind = times.erase(place)
    print("new:", new.item(), "- behind the one taken out:", behind.item(), "- all:", shown(times))

    # The element that `place` stood on is gone, and it says so.
    try:
        place.item()
    except K7Q.StaleIterator as refused:
        print("refused:", refused)


def package_elements(factory: Factory) -> None:
    """A many-valued property is a live sequence: to change it is to change the object."""
    package = factory.create("common.Package", "Variants")
    elements = package.PackagedElement
    for name in ("Wheels", "Doors", "Seats"):
        elements.append(factory.create("variant.SystemConst", name))
    print("holds:", ", ".join(element.Name for element in elements))

    # The same element again changes nothing. A slice is a list: walk it while the property changes.
    elements.append(elements[0])
    for element in elements[1:]:
        if element.Name.startswith("D"):
            elements.remove(element)
    print("holds:", ", ".join(element.Name for element in package.PackagedElement))

    # Through an immutable object it can be read alone.
    view = package.asImmutable().PackagedElement
    elements.insert(1, factory.create("variant.SystemConst", "Engine"))
    print("the view sees", len(view), "elements, first", view[0].Name)
    try:
        view.pop()  # type: ignore[misc]  # mypy refuses it as well
    except TypeError as refused:
        print("refused:", refused)

    # An iterator of a property's sequence is good until the property changes, whoever changes it.
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
