"""Random editing, compared after each step with a model in plain Python."""

import copy
import tempfile
from pathlib import Path

import pytest

import K7Q
import Tarvelon
from Tarvelon.metamodel.arplatform import behavior, common, variant

hypothesis = pytest.importorskip(
    "hypothesis", reason="python3-hypothesis is missing: './tarvelon install test' installs it")
from hypothesis import settings  # noqa: E402
from hypothesis import strategies as st  # noqa: E402
from hypothesis.stateful import RuleBasedStateMachine, initialize, invariant, precondition, rule  # noqa: E402

NAMES = st.sampled_from(["a", "b", "c", ""])
PICK = st.integers(0, 10**6)
HISTORY = 4

MAKERS = {
    "package": lambda model, name: common.Package(model, name),
    "constant": lambda model, name: variant.SystemConst(model, name),
    "runnable": lambda model, name: behavior.Runnable(model, name, name),
    "event": lambda model, name: behavior.InitEvent(model, name),
    "formula": lambda model, name: variant.SystemConstDependentFormula(model, name),
}
CLASSES = {
    "package": common.Package,
    "constant": variant.SystemConst,
    "runnable": behavior.Runnable,
    "event": behavior.InitEvent,
    "formula": variant.SystemConstDependentFormula,
}


class Plain:
    """The expected contents of an object. Other objects are represented by their keys."""

    def __init__(self, kind, name):
        self.kind = kind
        self.name = name
        self.owner = None
        self.elements = []  # of a package: the objects that it contains
        self.refers = []  # of a formula: its references; of a runnable: its events
        self.starts = None  # of an event: the runnable


class State:
    """All existing objects by key. The keys are in the order of creation."""

    def __init__(self):
        self.objects = {}

    def of(self, *kinds):
        return [key for key, each in self.objects.items() if each.kind in kinds]

    def holds(self, above, below):
        while below is not None:
            if below == above:
                return True
            below = self.objects[below].owner
        return False

    def leave(self, key):
        owner = self.objects[key].owner
        if owner is not None:
            self.objects[owner].elements.remove(key)
            self.objects[key].owner = None

    def start(self, event, runnable):
        former = self.objects[event].starts
        if former == runnable:
            return
        if former is not None:
            self.objects[former].refers.remove(event)
        self.objects[event].starts = runnable
        if runnable is not None:
            self.objects[runnable].refers.append(event)

    def tree(self, key):
        return [key] + [each for element in self.objects[key].elements for each in self.tree(element)]

    def destroy(self, key):
        self.leave(key)
        gone = set(self.tree(key))
        for each in gone:
            del self.objects[each]
        for each in self.objects.values():
            each.refers = [other for other in each.refers if other not in gone]
            if each.starts in gone:
                each.starts = None

    def path(self, key):
        each = self.objects[key]
        above = self.path(each.owner) if each.owner is not None else ""
        return above + "/" + each.name if each.name else above


def has(*kinds):
    """Runs a rule only if there are objects of these kinds, because other steps would test nothing."""
    return precondition(lambda self: all(self.state.of(each) for each in kinds))


class Editing(RuleBasedStateMachine):
    @initialize()
    def begin(self):
        self.model = K7Q.Model.create()
        self.model.history = HISTORY
        self.state = State()
        self.handles = {}
        self.past = []
        self.future = []
        self.open = []  # the open transactions, each with the state before it
        self.batches = 0
        self.told = 0
        self.model.listen(self.note)
        for kind in (*MAKERS, *MAKERS):
            self.create(kind, "a")
        for into, element in ((0, 1), (0, 2), (1, 3)):
            self.move(into, element, 0)
        self.refer(0, 1)
        self.start(1, 0, True)

    def note(self, changes):
        assert changes
        self.told += 1

    def teardown(self):
        if hasattr(self, "model"):
            self.model.close()
            assert not any(each.isvalid() for each in self.handles.values())

    # Batches

    def change(self, edit):
        """Makes the same edit in both. The former state is kept for undo, if the edit is a batch of its
        own."""
        before = copy.deepcopy(self.state)
        told = self.told
        edit()
        if self.open:
            assert self.told == told
        elif self.told != told:
            self.remember(before)

    def remember(self, before):
        self.past = (self.past + [before])[-HISTORY:]
        self.future = []

    def pick(self, number, *kinds):
        keys = self.state.of(*kinds)
        return keys[number % len(keys)] if keys else None

    @precondition(lambda self: len(self.state.objects) < 20)
    @rule(kind=st.sampled_from(sorted(MAKERS)), name=NAMES)
    def create(self, kind, name):

        def edit():
            key = len(self.handles)
            self.handles[key] = MAKERS[kind](self.model, name)
            self.state.objects[key] = Plain(kind, name)

        self.change(edit)

    @rule(number=PICK, name=NAMES)
    def rename(self, number, name):
        key = self.pick(number, "package", "constant", "runnable", "event")
        if key is None:
            return

        def edit():
            self.handles[key].Name = name
            self.state.objects[key].name = name

        self.change(edit)

    @has("package")
    @rule(first=PICK, second=PICK, place=PICK, isWithin=st.booleans())
    def move(self, first, second, place, isWithin=False):
        into, key = self.pick(first, "package"), self.pick(second, "package", "constant")
        held = self.state.objects[into].elements
        if isWithin and held:
            key = held[second % len(held)]
        elements = self.handles[into].PackagedElement
        place = place % (len(elements) + 1)
        if self.state.holds(key, into):
            with pytest.raises(K7Q.WrongValue):
                elements.insert(place + 1, self.handles[key])
            return

        def edit():
            elements.insert(place + 1, self.handles[key])
            listed = self.state.objects[into].elements
            shift = 1 if key in listed and listed.index(key) < place else 0
            self.state.leave(key)
            self.state.objects[into].elements.insert(place - shift, key)
            self.state.objects[key].owner = into

        self.change(edit)

    @has("package")
    @rule(number=PICK, place=PICK)
    def release(self, number, place):
        full = [key for key in self.state.of("package") if self.state.objects[key].elements]
        if not full:
            return
        key = full[number % len(full)]
        place = place % len(self.state.objects[key].elements)

        def edit():
            del self.handles[key].PackagedElement[place]
            self.state.leave(self.state.objects[key].elements[place])

        self.change(edit)

    @has("formula", "constant")
    @rule(first=PICK, second=PICK)
    def refer(self, first, second):
        formula, constant = self.pick(first, "formula"), self.pick(second, "constant")

        def edit():
            self.handles[formula].SysConst.append(self.handles[constant])
            if constant not in self.state.objects[formula].refers:
                self.state.objects[formula].refers.append(constant)

        self.change(edit)

    @rule(number=PICK)
    def clear(self, number):
        key = self.pick(number, "formula", "runnable")
        if key is None:
            return

        def edit():
            each = self.state.objects[key]
            if each.kind == "formula":
                self.handles[key].SysConst.clear()
                each.refers = []
            else:
                self.handles[key].Events.clear()
                for event in list(each.refers):
                    self.state.start(event, None)

        self.change(edit)

    @has("event", "runnable")
    @rule(first=PICK, second=PICK, isByEvent=st.booleans())
    def start(self, first, second, isByEvent):
        event, runnable = self.pick(first, "event"), self.pick(second, "runnable")

        def edit():
            if isByEvent:
                self.handles[event].StartOnEvent = self.handles[runnable]
            else:
                self.handles[runnable].Events.append(self.handles[event])
            self.state.start(event, runnable)

        self.change(edit)

    @has("event")
    @rule(number=PICK)
    def unset(self, number):
        event = self.pick(number, "event")

        def edit():
            self.handles[event].StartOnEvent = None
            self.state.start(event, None)

        self.change(edit)

    @rule(number=PICK)
    def destroy(self, number):
        key = self.pick(number, *MAKERS)
        if key is None:
            return

        def edit():
            self.handles[key].destroy()
            self.state.destroy(key)

        self.change(edit)

    # Transactions, undo, redo.

    @precondition(lambda self: len(self.open) < 3)
    @rule()
    def beginTransaction(self):
        self.open.append((self.model.transaction(), copy.deepcopy(self.state), self.told))

    @precondition(lambda self: self.open)
    @rule()
    def commit(self):
        transaction, before, told = self.open.pop()
        transaction.commit()
        if not self.open and self.told != told:
            self.remember(before)

    @precondition(lambda self: self.open)
    @rule(depth=PICK)
    def rollBack(self, depth):
        depth = depth % len(self.open)
        transaction, self.state, told = self.open[depth]
        del self.open[depth:]
        transaction.rollback()
        assert self.told == told

    @rule()
    def undo(self):
        if self.open:
            with pytest.raises(K7Q.Exception, match="while a transaction of the model is open"):
                self.model.undo()
            return
        assert self.model.undo() == bool(self.past)
        if self.past:
            self.future.append(self.state)
            self.state = self.past.pop()

    @precondition(lambda self: not self.open)
    @rule(times=st.integers(1, 3))
    def redo(self, times):
        """Redoes what was undone. If there is nothing, undoes something first."""
        for _ in range(0 if self.future else times):
            self.undo()
        for _ in range(times):
            assert self.model.redo() == bool(self.future)
            if self.future:
                self.past.append(self.state)
                self.state = self.future.pop()

    # Files.

    @precondition(lambda self: not self.open)
    @rule()
    def saveAndLoad(self):
        """Continues with the loaded model. It has no history, and its objects are in the order of the
        file."""
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder) / "model.xmi"
            self.model.save(file)
            loaded = K7Q.Model.load(file)
        assert not Tarvelon.diff(self.model, loaded)
        handles = {}
        roots = self.found(self.model.roots())
        assert sorted(roots) == sorted(key for key, each in self.state.objects.items() if each.owner is None)
        self.meet(roots, loaded.roots(), handles)
        assert len(handles) == len(self.state.objects) == len(loaded.objects())
        self.state.objects = {key: self.state.objects[key] for key in handles}
        self.model.close()
        assert not any(each.isvalid() for each in self.handles.values())
        self.handles.update(handles)
        self.model, self.past, self.future = loaded, [], []
        self.model.history = HISTORY
        self.model.listen(self.note)

    def meet(self, keys, objects, handles):
        """Gives the loaded objects the keys of the saved objects, depth first."""
        for key, each in zip(keys, objects, strict=True):
            handles[key] = each
            assert type(each) is type(self.handles[key])
            self.meet(self.state.objects[key].elements, getattr(each, "PackagedElement", ()), handles)

    # What must hold.

    def found(self, objects):
        keys = {each: key for key, each in self.handles.items()}
        return [keys[each] for each in objects]

    @invariant()
    def agreesWithThePlainModel(self):
        if not hasattr(self, "model"):
            return
        model, state = self.model, self.state
        assert {key for key, each in self.handles.items() if each.isvalid()} == set(state.objects)
        objects = self.found(model.objects())
        assert sorted(objects) == sorted(state.objects)
        if not self.open:
            assert (model.undoable, model.redoable) == (len(self.past), len(self.future))
        for key, each in state.objects.items():
            self.compare(key, each)
        for kind, cls in CLASSES.items():
            assert self.found(model.instances(cls)) == state.of(kind)

    def compare(self, key, each):
        handle, state = self.handles[key], self.state
        assert handle.Owner is (None if each.owner is None else self.handles[each.owner])
        mentions = []
        if each.kind == "package":
            assert self.found(handle.PackagedElement) == each.elements
        if each.kind == "formula":
            assert self.found(handle.SysConst) == each.refers
            assert handle.qualifiedName == ""
        else:
            assert handle.Name == each.name and handle.qualifiedName == (state.path(key) if each.name else "")
        if each.kind == "runnable":
            assert self.found(handle.Events) == each.refers
            mentions = [(event, "StartOnEvent") for event in each.refers]
        if each.kind == "event":
            assert handle.StartOnEvent is (None if each.starts is None else self.handles[each.starts])
            mentions = [] if each.starts is None else [(each.starts, "Events")]
        if each.kind == "constant":
            mentions = [(other, "SysConst") for other in state.of("formula") if key in state.objects[other].refers]
        referrers = handle.referrers()
        assert sorted((self.found([each.object])[0], each.property) for each in referrers) == sorted(mentions)

    @invariant()
    def findsEveryName(self):
        if not hasattr(self, "model"):
            return
        paths = {}
        for key, each in self.state.objects.items():
            if each.kind != "formula" and each.name:
                paths.setdefault(self.state.path(key), []).append(key)
        for path, keys in paths.items():
            found = self.found(self.model.find_all(path))
            assert sorted(found) == sorted(keys)
            assert self.model.find(path) is (self.handles[found[0]] if found else None)
            for left, right in zip(found, found[1:]):
                owner = self.state.objects[left].owner
                if owner is not None and owner == self.state.objects[right].owner:
                    elements = self.state.objects[owner].elements
                    assert elements.index(left) < elements.index(right)


TestEditing = Editing.TestCase
TestEditing.settings = settings(max_examples=40, stateful_step_count=60, deadline=None)
