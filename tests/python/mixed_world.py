"""Programs that mix everything that a model can do, run on real models and on plain models in parallel.

A program is a list of (operation, numbers). The numbers choose among the existing things, so a program
stays valid when operations are removed.
"""

import contextlib
import gc
import random

from mixed_reads import Reads
from plain_model import FITTING, LISTS, REFERENCES, SINGLE, PlainModel, Refused

import K7Q
from Tarvelon.metamodel.arplatform import behavior, common, manifest, variant

MOST_OBJECTS = 40
MOST_MODELS = 3
NAMES = ["A", "B", "C", "bad", "\u00e4\u20ac\U0001f600"]
PROTOCOLS = list(manifest.TransportLayerProtocolEnum)
CLASSES = {each.__name__: each for each in (
    common.Package, variant.SystemConst, common.ModeDeclaration, common.Sdx, behavior.Runnable, behavior.TimingEvent,
    manifest.DdsEventDeployment, variant.PostBuildVariantCondition)}
VALUES = {"Name": NAMES, "category": ["x", "y", None], "Value": [-1, 0, 2 ** 31 - 1, None], "symbol": ["s", "t"],
          "Period": [0.5, -1.0, 0.0], "TopicName": ["T", None], "TransportProtocol": PROTOCOLS,
          "ValueVariationPoint": ["a", "b", "", "\u20ac"]}


class Pair:
    """A model and its plain model."""

    def __init__(self, model, plain=None):
        self.model, self.plain = model, plain or PlainModel()
        self.handles = {}  #: by key, also those of destroyed objects
        self.transactions = []
        self.listeners = []
        self.iterators = []


class Listener:
    """A listener that does what listeners may do, and counts the changes it was told."""

    def __init__(self, world, pair, mode, of=None):
        self.world, self.pair, self.mode, self.of = world, pair, mode, of
        self.told = []
        self.subscription = (pair.model if of is None else pair.handles[of]).listen(self)

    def __call__(self, changes):
        self.told.append(changes)
        if self.mode == "drops":
            self.pair.iterators.clear()
            gc.collect()
        elif self.mode == "leaves":
            self.subscription.close()
        elif self.mode == "comes" and len(self.pair.listeners) < 6:
            self.world.arrived.append((self.pair, Listener(self.world, self.pair, "quiet")))
        elif self.mode == "writes":
            self.try_to_write(changes)
        elif self.mode == "raises":
            raise ValueError("a listener")

    def try_to_write(self, changes):
        for write in (self.pair.model.undo, lambda: common.Package(self.pair.model, "late"), self.pair.model.close,
                      lambda: changes[0].object.destroy()):
            try:
                write()
            except K7Q.Exception:
                continue
            self.world.wrong.append("a listener has changed its model")


class World(Reads):
    def __init__(self, folder):
        self.folder = folder
        self.pairs, self.next_key, self.arrived, self.wrong = [], 0, [], []
        self.new_model()

    def new_model(self):
        self.pairs.append(Pair(K7Q.Model.create()))

    # One operation after another

    def run(self, program):
        for name, numbers in program:
            pair = self.pairs[numbers[0] % len(self.pairs)]
            getattr(self, f"do_{name}")(pair, *numbers[1:])
            self.settle()
            if pair in self.pairs:
                self.require_equal(pair)
            assert not self.wrong, self.wrong

    def settle(self):
        for pair, listener in self.arrived:
            pair.listeners.append(listener)
        self.arrived.clear()

    def key(self):
        self.next_key += 1
        return self.next_key

    @staticmethod
    def choose(options, number):
        options = list(options)
        return options[number % len(options)] if options else None

    def of_kinds(self, pair, kinds):
        return [key for key, values in pair.plain.objects.items() if values["kind"] in kinds]

    def both(self, pair, plain, real):
        """Makes the same change in both. Either both refuse it or none, and listeners are told of it."""
        listeners = [(each, len(each.told)) for each in pair.listeners if each.mode != "gone"]
        try:
            is_told = pair.plain.change(plain)
        except Refused:
            is_told = False
            try:
                real()
            except K7Q.Exception:
                pass
            else:
                raise AssertionError("a change was made that must be refused") from None
        else:
            real()
        self.require_told(listeners, is_told)

    def require_told(self, listeners, is_told):
        for listener, before in listeners:
            count = len(listener.told) - before
            if listener.of is None:
                assert count == (1 if is_told else 0), f"a listener was told {count} times, expected {is_told}"
            else:
                assert count <= is_told
            for change in listener.told[-1] if count else ():
                assert listener.of is None or change.object is listener.pair.handles[listener.of]
            if listener.mode == "leaves" and count:
                listener.mode = "gone"

    # Changes

    def do_make(self, pair, kind, name, other):
        kind = self.choose(CLASSES, kind)
        target = self.choose(self.of_kinds(pair, FITTING["sdx"]), other)
        if len(pair.plain.objects) >= MOST_OBJECTS or (kind == "Sdx" and target is None):
            return
        key, name = self.key(), self.choose(NAMES, name)
        arguments = {"Sdx": [("sdx", target)], "Runnable": [("symbol", "s"), ("Name", name)],
                     "TimingEvent": [("Period", 0.5), ("Name", name)], "PostBuildVariantCondition": [],
                     "ModeDeclaration": [], "DdsEventDeployment": []}.get(kind, [("Name", name)])

        def real():
            given = [pair.handles[value] if key == "sdx" else value for key, value in arguments]
            pair.handles[key] = CLASSES[kind](pair.model, *given)

        self.both(pair, lambda: pair.plain.make(key, kind, dict(arguments)), real)

    def do_set(self, pair, key, name, value):
        key = self.choose(pair.plain.objects, key)
        name = key and self.choose(SINGLE[pair.plain.objects[key]["kind"]], name)
        if not name:
            return
        if name in REFERENCES:
            options = self.of_kinds(pair, FITTING[name]) + ([None] if name != "sdx" else [])
            chosen = self.choose(options, value)
            if chosen is None and name == "sdx":
                return
            real = pair.handles.get(chosen)
        else:
            chosen = real = self.choose(VALUES[name], value)
        if name == "StartOnEvent" and chosen is None:
            return
        self.both(pair, lambda: pair.plain.set(key, name, chosen), lambda: setattr(pair.handles[key], name, real))

    def do_list(self, pair, key, name, method, index, value):
        key = self.choose([key for key, values in pair.plain.objects.items() if values["kind"] in LISTS], key)
        if key is None:
            return
        name = self.choose(LISTS[pair.plain.objects[key]["kind"]], name)
        elements, sequence = pair.plain.objects[key][name], getattr(pair.handles[key], name)
        if name in REFERENCES:
            chosen = self.choose(self.of_kinds(pair, FITTING[name]), value)
            real = pair.handles.get(chosen)
        else:
            chosen = real = self.choose(VALUES[name], value)
        if chosen is None:
            return
        self.edit(pair, key, name, elements, sequence, chosen, real, index, method)

    def edit(self, pair, key, name, elements, sequence, chosen, real, index, method):
        plain, size = pair.plain, len(elements)
        at, end = index % (size + 1), min(size, index % (size + 1) + method % 3)
        edits = [
            (lambda: plain.insert(key, name, None, chosen), lambda: sequence.append(real)),
            (lambda: plain.insert(key, name, None, chosen), lambda: sequence.extend([real])),
            (lambda: plain.insert(key, name, at, chosen), lambda: sequence.insert(at + 1, real)),
            (lambda: plain.remove_all(key, name, chosen), lambda: sequence.removeAll(real)),
            (lambda: plain.erase(key, name, 0, size), sequence.clear),
            (lambda: plain.erase(key, name, at, end), lambda: sequence.__delitem__(slice(at, end))
             if end - at < 2 else sequence.erase(*self.places(sequence, at, end))),
        ]
        if at < size:
            edits.append((lambda: plain.erase(key, name, at, at + 1), lambda: sequence.pop(at)))
            if name not in REFERENCES or chosen not in elements:
                edits.append((lambda: plain.replace(key, name, at, chosen), lambda: sequence.__setitem__(at, real)))
        if name not in REFERENCES or chosen not in elements:
            edits.append((lambda: plain.insert(key, name, 0, chosen), lambda: sequence.push_front(real)))
        self.both(pair, *edits[method % len(edits)])

    @staticmethod
    def places(sequence, first, last):
        places = sequence.begin(), sequence.begin()
        for place, count in zip(places, (first, last)):
            for _ in range(count):
                place.getNext()
        return places

    def do_destroy(self, pair, key):
        key = self.choose(pair.plain.objects, key)
        if key is not None:
            self.both(pair, lambda: pair.plain.destroy(key), pair.handles[key].destroy)

    # Transactions and history

    def do_begin(self, pair):
        if len(pair.transactions) < 4:
            pair.plain.begin()
            pair.transactions.append(pair.model.transaction())
            pair.transactions[-1].__enter__()

    def do_commit(self, pair):
        if pair.transactions:
            listeners = [(each, len(each.told)) for each in pair.listeners if each.mode != "gone"]
            is_told = pair.plain.commit()
            pair.transactions.pop().__exit__(None, None, None)
            self.require_told(listeners, is_told)

    def do_roll_back(self, pair, index, way):
        if not pair.transactions:
            return
        listeners = [(each, len(each.told)) for each in pair.listeners if each.mode != "gone"]
        index %= len(pair.transactions)
        pair.plain.roll_back(index)
        ended = pair.transactions[index:]
        del pair.transactions[index:]
        if way % 3 == 0:
            ended[0].rollback()
        elif way % 3 == 1:
            ended[0].__exit__(ValueError, ValueError(), None)
        ended.clear()  # a transaction without references is rolled back
        self.require_told(listeners, False)

    def do_history(self, pair, limit):
        limit %= 8
        self.stepped(pair, lambda: pair.plain.set_limit(limit), lambda: setattr(pair.model, "history", limit), True)

    def do_undo(self, pair):
        self.stepped(pair, pair.plain.undo, pair.model.undo)

    def do_redo(self, pair):
        self.stepped(pair, pair.plain.redo, pair.model.redo)

    def stepped(self, pair, plain, real, is_quiet=False):
        listeners = [(each, len(each.told)) for each in pair.listeners if each.mode != "gone"]
        try:
            expected = plain()
        except Refused:
            with contextlib.suppress(K7Q.Exception):
                real()
                raise AssertionError("a step was made inside a transaction") from None
            return
        found = real()
        if not is_quiet:
            assert found == expected, f"there was something: {found}, expected {expected}"
            self.require_told(listeners, found)

    # Listeners

    def do_listen(self, pair, mode, of):
        if len(pair.listeners) < 6:
            mode = self.choose(["quiet", "raises", "drops", "leaves", "comes", "writes"], mode)
            of = self.choose([None, None, *pair.plain.objects], of)
            pair.listeners.append(Listener(self, pair, mode, of))

    def do_unlisten(self, pair, index):
        if pair.listeners:
            listener = pair.listeners.pop(index % len(pair.listeners))
            listener.subscription.close()
            listener.mode = "gone"


OPERATIONS = {  # the numbers that each takes besides that of the model, and its frequency
    "make": (3, 14), "set": (3, 10), "list": (5, 16), "destroy": (1, 5), "begin": (0, 4), "commit": (0, 3),
    "roll_back": (2, 2), "history": (1, 2), "undo": (0, 8), "redo": (0, 5), "listen": (2, 2), "unlisten": (1, 1),
    "save": (1, 2), "failing_save": (1, 1), "load": (1, 1), "clone_model": (0, 1), "clone": (2, 1), "view": (2, 2),
    "hold_iterator": (3, 3), "read_iterators": (0, 3), "find": (1, 3), "validate": (0, 1), "threads": (0, 1),
    "collect": (1, 1), "new_model": (0, 1), "close": (0, 1), "drop": (0, 1),
}
WEIGHTS = [weight for _, weight in OPERATIONS.values()]


def make_program(seed, length):
    choose = random.Random(seed)
    return [(name, [choose.randrange(1 << 16) for _ in range(OPERATIONS[name][0] + 1)])
            for name in choose.choices(list(OPERATIONS), WEIGHTS, k=length)]
