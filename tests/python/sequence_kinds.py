"""All kinds of sequences, each with a plain list of the expected contents."""

import K7Q
from Tarvelon.metamodel.arplatform import behavior, common, manifest, variant


class Cell:
    """An element of a sequence of enumeration values. An iterator stays on it when its value changes."""

    def __init__(self, value):
        self.value = value


class Plain:
    """The expected contents of a sequence and its changes. Elements are cells, so that iterators can be
    followed."""

    def __init__(self, is_unique=False, keeps_what_is_there=False):
        self.cells = []
        self.is_unique = is_unique
        # The host's methods ignore a value that a unique sequence of enumeration values already contains.
        self.keeps_what_is_there = keeps_what_is_there

    def __iter__(self):
        return (cell.value for cell in self.cells)

    def list(self):
        return [cell.value for cell in self.cells]

    def place(self, value):
        """The index of the value in a unique sequence; None if the value is to be added."""
        values = self.list()
        return values.index(value) if self.is_unique and value in values else None

    def add(self, place, value):
        if self.place(value) is None:
            self.cells.insert(place, Cell(value))

    def insert(self, place, value):
        if not 0 <= place <= len(self.cells):
            raise IndexError
        there = self.place(value)
        if there is None:
            self.cells.insert(place, Cell(value))
        elif not self.keeps_what_is_there:
            self.cells.insert(place - (there < place), self.cells.pop(there))

    def replace(self, place, value):
        if not 0 <= place < len(self.cells):
            raise IndexError
        if not self.keeps_what_is_there or self.place(value) is None:
            self.assign(place, value)

    def assign(self, place, value):
        there = self.place(value)
        cell = self.cells[place]
        if there is not None:
            self.cells[there].value = cell.value
        cell.value = value

    def erase(self, places):
        self.cells = [cell for place, cell in enumerate(self.cells) if place not in places]

    def write(self, values):
        """Replaces the contents: equal elements at both ends stay, the elements between them get new
        values."""
        values, before = list(values), self.list()
        least = min(len(before), len(values))
        head = tail = 0
        while head < least and before[head] == values[head]:
            head += 1
        while tail < least - head and before[-1 - tail] == values[-1 - tail]:
            tail += 1
        for place in range(head, least - tail):
            self.cells[place].value = values[place]
        more = [Cell(value) for value in values[least - tail:len(values) - tail]]
        self.cells[least - tail:len(before) - tail] = more

    def assign_slice(self, part, values):
        values, before = list(values), self.list()
        if not self.is_unique:
            before[part] = values
            self.write(before)
        elif part.step in (None, 1):
            start, stop, _ = part.indices(len(before))
            given = list(dict.fromkeys(values))
            rest = [value for value in before[max(start, stop):] if value not in given]
            self.write([value for value in before[:start] if value not in given] + given + rest)
        else:
            places = range(len(before))[part]
            if len(places) != len(values):
                raise ValueError
            after = Plain(True)
            after.write(before)
            for place, value in zip(places, values):
                after.assign(place, value)
            self.write(after)


class Kind:
    """A kind of sequence: how to create one, and which elements it can contain."""

    def __init__(self, make, pool, *, is_unique, property=None, ties=None, moves_away=False):
        # Creates a sequence. Also returns the object of the property; None for a sequence that a script
        # creates.
        self.make = make
        self.pool = pool
        self.is_unique = is_unique
        # For a property: changes of the sequence are changes of the model, for undo and listeners.
        self.property = property
        # Whether an element refers back to the object of the sequence.
        self.ties = ties
        # Whether adding an element to another sequence removes it from this one.
        self.moves_away = moves_away
        self.holds_values = pool is values or pool is modes
        # Whether iterators stay on their elements when others are added or removed.
        self.keeps_iterators = self.holds_values and property is None

    def plain(self):
        return Plain(self.is_unique, self.is_unique and self.holds_values)


def constants(model):
    return [variant.SystemConst(model, name) for name in "abcdef"]


def events(model):
    return [behavior.InitEvent(model, name) for name in "abcdef"]


def texts(model):
    return ["a", "b", "", "\u00e4", "\U0001f600"]


def values(model):
    return list(variant.BindingTimeKind)


def modes(model):
    return list(manifest.LogTraceLogModeEnum)


def of(owner, property, pool, **options):
    def make(model):
        made = owner(model)
        return made, getattr(made, property)

    return Kind(make, pool, property=property, **options)


def made(cls, how, pool):
    return Kind(lambda model: (None, getattr(cls, how)(model)), pool, is_unique=how == "makeUnique")


KINDS = {
    "references": of(lambda model: variant.SystemConstDependentFormula(model, "f"), "SysConst", constants,
                     is_unique=True, ties=lambda owner, each: any(other == owner for other, _ in each.referrers())),
    "held": of(lambda model: common.Package(model, "p"), "PackagedElement", constants, is_unique=True,
               ties=lambda owner, each: each.Owner == owner, moves_away=True),
    "opposites": of(lambda model: behavior.Runnable(model, "r", "r"), "Events", events, is_unique=True,
                    ties=lambda owner, each: each.StartOnEvent == owner, moves_away=True),
    "texts": of(variant.PostBuildVariantCondition, "ValueVariationPoint", texts, is_unique=False),
    "modes": of(manifest.Process, "LogTraceLogMode", modes, is_unique=False),
    "made": made(variant.SequenceOfSystemConst, "make", constants),
    "made once": made(variant.SequenceOfSystemConst, "makeUnique", constants),
    "made texts": made(K7Q.SequenceOfString, "make", texts),
    "made texts once": made(K7Q.SequenceOfString, "makeUnique", texts),
    "values": made(variant.SequenceOfBindingTimeKind, "make", values),
    "values once": made(variant.SequenceOfBindingTimeKind, "makeUnique", values),
}
