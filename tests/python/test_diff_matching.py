"""Matching of objects in two models: several objects with one name, and sequences in another order."""

import random

import Tarvelon
from Tarvelon import Changed, Moved, Removed, Renamed
from Tarvelon.metamodel.arplatform import common, variant


def test_what_has_kept_its_place_is_told_as_moved_last(model, package):
    package.PackagedElement += [variant.SystemConst(model, name) for name in ("Gone", "Stays", "Goes")]
    before = model.clone()

    gone, _, goes = package.PackagedElement
    gone.destroy()
    package.PackagedElement.remove(goes)
    package.PackagedElement.push_front(goes)

    path, cls, sequence = "/Brakes/Goes", "variant.SystemConst", "/Brakes.PackagedElement"
    assert Tarvelon.diff(before, model).moved == [Moved(path, path, cls, f"{sequence}[2]", f"{sequence}[0]")]


def test_of_a_random_order_the_fewest_are_told_as_moved(model, package):
    generator = random.Random(1)
    names = [f"C{number}" for number in range(40)]
    package.PackagedElement += [variant.SystemConst(model, name) for name in names]
    for _ in range(20):
        before = model.clone()
        for each in generator.sample(list(package.PackagedElement), 30):
            package.PackagedElement.remove(each)
            package.PackagedElement.insert(generator.randint(1, len(package.PackagedElement)), each)
        order = [[each.Name for each in there.find("/Brakes").PackagedElement] for there in (before, model)]
        moved = Tarvelon.diff(before, model).moved

        assert len(moved) == len(names) - longest([order[1].index(name) for name in order[0]])
        kept = [name for name in order[0] if f"/Brakes/{name}" not in {each.path for each in moved}]
        assert kept == [name for name in order[1] if name in kept]


def longest(numbers):
    """The length of the longest ascending subsequence, found by trying all."""
    best = []
    for index, number in enumerate(numbers):
        best.append(1 + max((best[each] for each in range(index) if numbers[each] < number), default=0))
    return max(best)


def test_of_equal_names_the_equal_ones_match(model, package):
    for category in ("first", "second", "third"):
        package.PackagedElement.append(common.Package(model, "Same"))
        package.PackagedElement[-1].category = category
    before = model.clone()

    package.PackagedElement[0].destroy()

    assert list(Tarvelon.diff(before, model)) == [Removed("/Brakes/Same", "common.Package", 1)]


def test_what_objects_of_one_name_hold_stays_apart(model, package):
    for category in ("first", "second", "third"):
        package.PackagedElement.append(common.Package(model, "Same"))
        inner = variant.SystemConst(model, "Inner")
        inner.category = category
        package.PackagedElement[-1].PackagedElement += [variant.SystemConst(model, "Alike"), inner]
    before = model.clone()

    package.PackagedElement[0].PackagedElement[1].category = "new"
    assert list(Tarvelon.diff(before, model)) == [
        Changed("/Brakes/Same/Inner", "variant.SystemConst", "category", "first", "new")]

    package.PackagedElement[1].PackagedElement[0].Name = "Other"
    assert list(Tarvelon.diff(before, model)) == [
        Renamed("/Brakes/Same/Alike", "/Brakes/Same/Other", "variant.SystemConst"),
        Changed("/Brakes/Same/Inner", "variant.SystemConst", "category", "first", "new")]


def test_of_many_with_one_name_those_that_changed_are_told(model, package):
    package.PackagedElement += [variant.SystemConst(model, "Same") for _ in range(2000)]
    for number, each in enumerate(package.PackagedElement):
        each.category = str(number % 7)
    before = model.clone()

    for each in list(package.PackagedElement)[::3]:
        each.category = "new"

    difference = Tarvelon.diff(before, model)
    assert len(difference) == len(difference.changed) == 667


def test_a_move_between_owners_of_one_name_tells_them_apart(model, package):
    package.PackagedElement += [common.Package(model, "Same") for _ in range(2)]
    first, second = package.PackagedElement
    first.PackagedElement.append(variant.SystemConst(model, "Inner"))
    first.category, second.category = "a", "b"
    before = model.clone()

    second.PackagedElement.append(first.PackagedElement[0])

    assert list(Tarvelon.diff(before, model)) == [
        Moved("/Brakes/Same/Inner", "/Brakes/Same/Inner", "variant.SystemConst",
              "/Brakes.PackagedElement[0].PackagedElement[0]", "/Brakes.PackagedElement[1].PackagedElement[0]")]


def test_two_packages_that_were_renamed_keep_their_contents_apart(model, package):
    for name in "AB":
        package.PackagedElement.append(common.Package(model, name))
        package.PackagedElement[-1].PackagedElement.append(variant.SystemConst(model, "Same"))
        package.PackagedElement[-1].category = name
    before = model.clone()

    for each in package.PackagedElement:
        each.Name += "2"

    assert list(Tarvelon.diff(before, model)) == [
        Renamed("/Brakes/A", "/Brakes/A2", "common.Package"),
        Renamed("/Brakes/B", "/Brakes/B2", "common.Package")]
