"""Random models: a copy is equal to its original, and the difference after one edit is that edit."""

import json

from hypothesis import given, settings
from hypothesis import strategies as st

import K7Q
import Tarvelon
from Tarvelon import Added, Changed, Moved, Removed, Renamed
from Tarvelon.metamodel.arplatform import behavior, common, variant

NAMES = "abcdef"


class Model:
    """A model with packages, constants, and sets of values without names, which refer to constants."""

    def __init__(self, draw):
        self.model = K7Q.Model.create()
        self.packages = [common.Package(self.model, "Top")]
        self.constants, self.sets, self.values, self.behaviors, self.runnables = [], [], [], [], []
        for kind in draw(st.lists(st.sampled_from("ppccvvrr"), max_size=14)):
            self.add(kind, draw)
        for value in self.values:
            if self.constants and draw(st.booleans()):
                value.SysConst = draw(st.sampled_from(self.constants))

    def add(self, kind, draw):
        owner = draw(st.sampled_from(self.packages))
        name = draw(st.sampled_from([*NAMES]))
        if name in taken(owner):
            return
        if kind == "p":
            self.packages.append(common.Package(self.model, name))
            owner.PackagedElement.append(self.packages[-1])
        elif kind == "c":
            self.constants.append(variant.SystemConst(self.model, name))
            self.constants[-1].category = draw(st.sampled_from(["", "x", "y"]))
            owner.PackagedElement.append(self.constants[-1])
        elif kind == "v":
            self.sets.append(variant.SystemConstValueSet(self.model, name))
            owner.PackagedElement.append(self.sets[-1])
            for number in draw(st.lists(st.integers(0, 3), max_size=4)):
                self.values.append(variant.SystemConstValue(self.model))
                self.values[-1].Value = number
                self.sets[-1].SysConstValue.append(self.values[-1])
        else:
            self.runnables.append(behavior.Runnable(self.model, "s", name))  # nothing holds it

    @property
    def held(self):
        """The named objects that are contained in a package."""
        return self.packages[1:] + self.constants + self.sets


def taken(owner):
    return [each.Name for each in owner.PackagedElement]


def path(element):
    above = "" if element.Owner is None else path(element.Owner)
    return f"{above}/{element.Name}" if hasattr(type(element), "Name") else above


def size(element):
    return 1 + sum(map(size, element.OwnedElement))


def kind(element):
    return f"{type(element).__module__.rpartition('.')[2]}.{type(element).__name__}"


@st.composite
def models(draw):
    return Model(draw)


@settings(max_examples=150, deadline=None)
@given(models())
def test_a_copy_equals_its_original(built):
    with built.model as model, model.clone() as copied:
        assert not Tarvelon.diff(model, copied) and not Tarvelon.diff(copied, model)
        assert copied.to_json() == model.to_json()
        assert json.dumps(model.to_dict(), indent=1, ensure_ascii=False) == model.to_json()
        for element in built.packages:
            for owner in [None] + [each for each in built.packages if not is_inside(each, element)]:
                assert not Tarvelon.diff(element, element.clone(owner))
            with K7Q.Model.create() as other:
                one, another = [element.clone(other, leave_out=True) for _ in range(2)]
                assert not Tarvelon.diff(one, another)


def is_inside(element, other):
    return element == other or (element.Owner is not None and is_inside(element.Owner, other))


def edit(built, data):
    """Makes one edit. Returns the expected difference without its references, or None for no edit."""
    choose = lambda those: data.draw(st.sampled_from(those))  # noqa: E731
    what = choose(["set", "rename", "add", "remove", "move", "value", "refer", "drop"])
    if what != "add" and not (built.values if what in ("value", "refer", "drop") else built.held):
        return None
    if what == "set":
        target = choose(built.held)
        old = target.category or None
        target.category = "new"
        return Changed(path(target), kind(target), "category", old, "new")
    if what == "rename":
        target = choose(built.held)
        before = path(target)
        target.Name = "new"
        return Renamed(before, path(target), kind(target))
    if what == "add":
        owner = choose(built.packages)
        owner.PackagedElement.append(common.Package(built.model, "new"))
        return Added(f"{path(owner)}/new", "common.Package", 1)
    if what == "remove":
        target = choose(built.held)
        expected = Removed(path(target), kind(target), size(target))
        target.destroy()
        return expected
    if what == "move":
        return move(choose(built.held), built, choose)
    target = choose(built.values)
    owner = target.Owner
    place = f"{path(owner)}.SysConstValue[{list(owner.SysConstValue).index(target)}]"
    if what == "value":
        old = target.Value
        target.Value = 9
        return Changed(place, kind(target), "Value", old, 9)
    if what == "drop":
        same = lambda each: (each.Value, each.SysConst) == (target.Value, target.SysConst)  # noqa: E731
        alike = [index for index, each in enumerate(owner.SysConstValue) if same(each)]
        target.destroy()  # if there are equal objects, diff may report any of them as removed
        return [Removed(f"{path(owner)}.SysConstValue[{index}]", "variant.SystemConstValue", 1)
                for index in alike]
    if not built.constants:
        return None
    old, new = target.SysConst, choose(built.constants)
    if old == new:
        return None
    target.SysConst = new
    return Changed(place, kind(target), "SysConst", old and path(old), path(new))


def move(target, built, choose):
    owners = [each for each in built.packages if not is_inside(each, target) and each != target.Owner
              and target.Name not in taken(each)]
    if not owners:
        return None
    owner = choose(owners)
    before = path(target)
    place = f"{path(target.Owner)}.PackagedElement[{list(target.Owner.PackagedElement).index(target)}]"
    owner.PackagedElement.append(target)
    return Moved(before, path(target), kind(target), place,
                 f"{path(owner)}.PackagedElement[{len(owner.PackagedElement) - 1}]")


@settings(max_examples=400, deadline=None)
@given(models(), st.data())
def test_the_difference_of_one_edit_is_that_edit(built, data):
    with built.model as model, model.clone() as before:
        expected = edit(built, data)
        difference = list(Tarvelon.diff(before, model))

        if expected is None:
            assert difference == []
            return
        lost = [each for each in difference if type(each) is Changed and each.new is None
                and each.property == "SysConst"]  # references to the removed object
        if type(expected) is Removed:
            difference = [each for each in difference if each not in lost]
        if isinstance(expected, list):
            assert difference[0] in expected and len(difference) == 1
        else:
            assert difference == [expected]
