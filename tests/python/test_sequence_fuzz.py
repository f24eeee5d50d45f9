"""Random changes of all kinds of sequences, compared with a plain list."""

import os
import random

import pytest

import K7Q
from sequence_kinds import KINDS

RUNS = int(os.environ.get("TARVELON_SEQUENCE_RUNS", "60"))
STEPS = 60


class Run:
    """A sequence and its plain list, with iterators, and sometimes with a history and a listener."""

    def __init__(self, name, seed):
        self.kind = KINDS[name]
        self.random = random.Random(f"{name} {seed}")
        self.model = K7Q.Model.create()
        self.pool = self.kind.pool(self.model)
        self.owner, self.sequence = self.kind.make(self.model)
        self.others = self.kind.make(self.model)[1]
        self.plain = self.kind.plain()
        self.held = []
        self.version = 0
        self.mirror = None
        if self.owner is not None:
            if self.random.random() < 0.6:
                self.model.history = 10_000
            if self.random.random() < 0.5:
                self.mirror = []
                self.model.listen(self.follow)
        for value in self.random.sample(self.pool, self.random.randrange(len(self.pool))):
            self.sequence.append(value)
            self.plain.add(len(self.plain.cells), value)

    def follow(self, changes):
        """Applies to the mirror the changes that a listener is told."""
        for change in changes:
            if (change.object, change.property) != (self.owner, self.kind.property):
                continue
            if change.kind == "moved":
                self.mirror.insert(change.index, self.mirror.pop(change.index_before))
            elif change.kind == "added":
                self.mirror.insert(change.index, change.after)
            elif change.kind == "removed":
                assert self.mirror.pop(change.index) == change.before
            else:
                assert change.kind == "replaced" and self.mirror[change.index] == change.before
                self.mirror[change.index] = change.after

    # Random arguments.

    def value(self):
        return self.random.choice(self.pool)

    def some(self):
        return [self.value() for _ in range(self.random.randrange(5))]

    def place(self):
        return self.random.randrange(-1, len(self.plain.cells) + 2)

    def index(self):
        size = len(self.plain.cells)
        return self.random.randrange(-size - 1, size + 1)

    def part(self):
        ends = [None, *range(-7, 8)]
        return slice(self.random.choice(ends), self.random.choice(ends), self.random.choice([None, None, 1, 2, -1, -2]))

    def at(self, place):
        iterator = self.sequence.begin()
        for _ in range(place):
            iterator.getNext()
        return iterator

    def own(self, index):
        """Converts an index into the position in a list."""
        size = len(self.plain.cells)
        if not -size <= index < size:
            raise IndexError
        return index % size

    # The operations, on the sequence and on the plain list.

    def add(self):
        value, how = self.value(), self.random.choice(["append", "push_back", "push_front"])
        return (lambda: getattr(self.sequence, how)(value),
                lambda: self.plain.add(0 if how == "push_front" else len(self.plain.cells), value))

    def insert(self):
        place, value = self.place(), self.value()
        return lambda: self.sequence.insert(place + 1, value), lambda: self.plain.insert(place, value)

    def insert_at_iterator(self):
        place, value = self.random.randrange(len(self.plain.cells) + 1), self.value()

        def insert():
            assert self.sequence.insert(self.at(place), value).item() == value

        return insert, lambda: self.plain.insert(place, value)

    def replace(self):
        place, value = self.place(), self.value()
        return lambda: self.sequence.replace(place + 1, value), lambda: self.plain.replace(place, value)

    def assign(self):
        index, value = self.index(), self.value()
        return (lambda: self.sequence.__setitem__(index, value),
                lambda: self.plain.assign(self.own(index), value))

    def swap(self):
        if not self.plain.cells:
            return self.clear()
        left, right = (self.random.randrange(len(self.plain.cells)) for _ in range(2))

        def exchange():
            self.sequence[left], self.sequence[right] = self.sequence[right], self.sequence[left]

        def expected():
            cells = self.plain.cells
            cells[left].value, cells[right].value = cells[right].value, cells[left].value

        return exchange, expected

    def erase(self):
        index, how = self.index(), self.random.choice(["erase", "del", "pop", "iterator"])
        if how == "iterator" and self.plain.cells:
            index %= len(self.plain.cells)
            return (lambda: self.sequence.erase(self.at(index)), lambda: self.plain.erase([index]))
        if how == "erase":
            place = self.place()
            return (lambda: self.sequence.erase(place + 1),
                    lambda: self.plain.erase([self.own(place) if place >= 0 else self.own(10**6)]))
        if how == "pop":
            return lambda: self.sequence.pop(index), lambda: self.plain.erase([self.own(index)])
        return lambda: self.sequence.__delitem__(index), lambda: self.plain.erase([self.own(index)])

    def erase_range(self):
        first, last = sorted(self.random.randrange(len(self.plain.cells) + 1) for _ in range(2))
        return (lambda: self.sequence.erase(self.at(first), self.at(last)),
                lambda: self.plain.erase(range(first, last)))

    def pop_end(self):
        is_front = self.random.random() < 0.5
        return (self.sequence.pop_front if is_front else self.sequence.pop_back,
                lambda: self.plain.erase([self.own(0 if is_front else -1)]))

    def clear(self):
        return self.sequence.clear, lambda: self.plain.erase(range(len(self.plain.cells)))

    def remove(self):
        value = self.value()
        return lambda: self.sequence.remove(value), lambda: self.plain.erase([self.plain.list().index(value)])

    def remove_all(self):
        value, values = self.value(), self.plain.list()

        def remove():
            assert self.sequence.removeAll(value) == values.count(value)

        return remove, lambda: self.plain.erase([place for place, each in enumerate(values) if each == value])

    def assign_slice(self):
        part, values = self.part(), self.some()
        if self.random.random() < 0.5:
            values = (values + self.pool)[:len(self.plain.list()[part])]
        return (lambda: self.sequence.__setitem__(part, values), lambda: self.plain.assign_slice(part, values))

    def delete_slice(self):
        part = self.part()
        return (lambda: self.sequence.__delitem__(part),
                lambda: self.plain.erase(range(len(self.plain.cells))[part]))

    def sort(self):
        key, reverse = self.random.choice([None, len, str]), self.random.random() < 0.5
        if key is None or not isinstance(self.pool[0], str):
            key = self.pool.index
        return (lambda: self.sequence.sort(key=key, reverse=reverse),
                lambda: self.plain.write(sorted(self.plain.list(), key=key, reverse=reverse)))

    def reverse(self):
        return self.sequence.reverse, lambda: self.plain.write(self.plain.list()[::-1])

    def extend(self):
        values, how = self.some(), self.random.choice(["extend", "__iadd__"])

        def expected():
            for value in values:
                self.plain.add(len(self.plain.cells), value)

        return lambda: getattr(self.sequence, how)(values), expected

    def shuffle(self):
        seed = self.random.random()

        def expected():
            values = self.plain.list()
            random.Random(seed).shuffle(values)
            for place, value in enumerate(values):
                self.plain.cells[place].value = value

        return lambda: random.Random(seed).shuffle(self.sequence), expected

    def lose(self):
        """Moves an element to another sequence, or destroys it."""
        if not hasattr(self.pool[0], "destroy"):
            return self.clear()
        which = self.random.randrange(len(self.pool))
        value, values = self.pool[which], self.plain.list()

        def destroy():
            value.destroy()
            self.pool[which] = type(value)(self.model, "new")

        leave = (lambda: self.others.append(value)) if self.kind.moves_away and self.random.random() < 0.5 else destroy
        return leave, lambda: self.plain.erase([place for place, each in enumerate(values) if each == value])

    SEVERAL = {"swap", "extend", "shuffle", "lose"}
    OPERATIONS = [add, add, insert, insert, insert_at_iterator, replace, assign, swap, erase, erase_range, pop_end, clear,
                  remove, remove_all, assign_slice, assign_slice, delete_slice, sort, reverse, extend, extend, shuffle,
                  lose]

    # Checks.

    def step(self):
        operation = self.random.choice(self.OPERATIONS)
        before, steps = self.plain.list(), self.model.undoable
        real, expected = operation(self)
        refusal = None
        try:
            expected()
        except (IndexError, ValueError) as error:
            refusal = type(error)
        if refusal:
            with pytest.raises(K7Q.Exception):
                real()
            assert self.model.undoable == steps
        else:
            real()
        self.version += self.plain.list() != before
        self.check()
        if self.model.history:
            self.go_back_and_forth(before, self.model.undoable - steps, operation.__name__)
        self.hold()

    def go_back_and_forth(self, before, steps, operation):
        after = self.plain.list()
        if operation not in self.SEVERAL:
            assert steps <= 1 and (steps == 1 or after == before), operation
        if operation == "lose" or self.random.random() < 0.5:
            return
        for _ in range(steps):
            assert self.model.undo()
        self.compare(before)
        for _ in range(steps):
            assert self.model.redo()
        self.compare(after)
        self.version += steps > 0

    def compare(self, expected):
        assert list(self.sequence) == expected
        assert self.mirror is None or self.mirror == expected

    def check(self):
        expected = self.plain.list()
        self.compare(expected)
        assert len(self.sequence) == self.sequence.size() == len(expected)
        assert [self.sequence.at(place + 1) for place in range(len(expected))] == expected
        assert list(reversed(self.sequence)) == expected[::-1]
        value, part = self.value(), self.part()
        assert (value in self.sequence) == (value in expected)
        assert self.sequence.count(value) == expected.count(value)
        assert self.sequence[part] == expected[part]
        if self.kind.ties:
            for each in self.pool:
                assert self.kind.ties(self.owner, each) == (each in expected)
        for iterator, place, version in self.held:
            self.check_iterator(iterator, place, version, expected)

    def check_iterator(self, iterator, place, version, expected):
        if self.kind.keeps_iterators:
            is_there = any(cell is place for cell in self.plain.cells)
            if is_there:
                assert iterator.item() == place.value
            else:
                with pytest.raises(K7Q.StaleIterator):
                    iterator.item()
        elif version != self.version:
            with pytest.raises(K7Q.StaleIterator):
                iterator.item()
        else:
            # Replacing a text with an equal one is a change without a visible effect.
            try:
                assert iterator.item() == expected[place]
            except K7Q.StaleIterator:
                assert not self.kind.is_unique

    def hold(self):
        self.held = self.held[-3:]
        if self.plain.cells:
            place = self.random.randrange(len(self.plain.cells))
            kept = self.plain.cells[place] if self.kind.keeps_iterators else place
            self.held.append((self.at(place), kept, self.version))


@pytest.mark.parametrize("name", KINDS)
def test_a_sequence_holds_what_a_list_would_hold(name):
    for seed in range(RUNS):
        run = Run(name, seed)
        try:
            for _ in range(STEPS):
                run.step()
        except BaseException as error:
            error.add_note(f"sequence of kind {name!r}, seed {seed}")
            raise
        finally:
            run.model.close()
