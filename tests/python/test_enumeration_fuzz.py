"""Random use of enumeration sequences and iterators, compared with a plain model."""

import random

import pytest
from hypothesis import settings, strategies
from hypothesis.stateful import RuleBasedStateMachine, initialize, invariant, precondition, rule

import K7Q
from Tarvelon.metamodel.arplatform import common, variant

Kind = variant.BindingTimeKind
Sequence = variant.SequenceOfBindingTimeKind
LITERALS = list(Kind)
ONE = LITERALS[1]
GONE = "whose element was removed|the element of the iterator was removed"


def at(sequence, index):
    """An iterator at an index from 0; the end if there is no such element."""
    place = sequence.begin()
    for _ in range(index):
        place.getNext()
    return place


class Node:
    """An element of the plain model, to which an iterator refers."""

    def __init__(self, value):
        self.value = value


END = Node(None)


class Sequences(RuleBasedStateMachine):
    """A sequence and a list of nodes. Each iterator of the script refers to a node, and is stale when the
    node is no longer in the list."""

    how = "make"
    values = strategies.sampled_from(LITERALS)
    places = strategies.integers(0, 30)
    indices = strategies.integers(-7, 7)

    @initialize()
    def start(self):
        self.model = K7Q.Model.create()
        self.sequence = getattr(Sequence, self.how)(self.model)
        self.other = getattr(Sequence, self.how)(self.model)
        self.other.append(ONE)
        self.nodes = []
        self.held = []

    # The plain model.

    def is_unique(self):
        return self.how == "makeUnique"

    def found(self, value):
        return next((node for node in self.nodes if node.value == value), None)

    def insert_node(self, index, value):
        existing = self.found(value) if self.is_unique() else None
        if existing:
            return existing
        node = Node(value)
        self.nodes.insert(index, node)
        return node

    def replace_node(self, index, value):
        if not self.is_unique() or self.found(value) is None:
            self.nodes[index].value = value

    def index_of(self, node):
        return len(self.nodes) if node is END else self.nodes.index(node)

    def node_at(self, index):
        return self.nodes[index] if index < len(self.nodes) else END

    def is_stale(self, node):
        return node is not END and node not in self.nodes

    def hold(self, place, node):
        self.held.append([place, node])
        if len(self.held) > 12:
            self.held.pop(0)

    def pick(self, number):
        return self.held[number % len(self.held)]

    def refuses(self, kind, action, *text):
        with pytest.raises(kind, match=text[0] if text else None) as raised:
            action()
        assert isinstance(raised.value, K7Q.Exception)

    # Without iterators.

    @rule(value=values, method=strategies.sampled_from(["append", "push_back"]))
    def append(self, value, method):
        getattr(self.sequence, method)(value)
        self.insert_node(len(self.nodes), value)

    @rule(value=values)
    def push_front(self, value):
        self.sequence.push_front(value)
        self.insert_node(0, value)

    @rule(values=strategies.lists(values, max_size=5))
    def extend(self, values):
        self.sequence += values
        for value in values:
            self.insert_node(len(self.nodes), value)

    @rule(index=indices, value=values)
    def insert(self, index, value):
        if 1 <= index <= len(self.nodes) + 1:
            self.sequence.insert(index, value)
            self.insert_node(index - 1, value)
        else:
            text = "sequence index must be positive" if index < 1 else "sequence index out of bounds"
            self.refuses(K7Q.Exception, lambda: self.sequence.insert(index, value), text)

    @rule(index=indices, value=values)
    def replace(self, index, value):
        if 1 <= index <= len(self.nodes):
            self.sequence.replace(index, value)
            self.replace_node(index - 1, value)
        else:
            self.refuses(K7Q.Exception, lambda: self.sequence.replace(index, value), "sequence index")

    @rule(index=indices, value=values)
    def assign(self, index, value):
        if -len(self.nodes) <= index < len(self.nodes):
            self.sequence[index] = value
            node = self.nodes[index]
            if self.is_unique() and self.found(value) is not None:
                self.found(value).value = node.value
            node.value = value
        else:
            self.refuses(IndexError, lambda: self.sequence.__setitem__(index, value))

    @rule(index=indices)
    def erase(self, index):
        if 1 <= index <= len(self.nodes):
            self.sequence.erase(index)
            del self.nodes[index - 1]
        else:
            self.refuses(K7Q.Exception, lambda: self.sequence.erase(index), "sequence index")

    @rule(index=indices, use=strategies.sampled_from(["del", "pop"]))
    def delete(self, index, use):
        action = {"del": lambda: self.sequence.__delitem__(index),
                  "pop": lambda: self.sequence.pop(index)}[use]
        if -len(self.nodes) <= index < len(self.nodes):
            value = self.nodes.pop(index).value
            assert action() == (None if use == "del" else value)
        else:
            self.refuses(IndexError, action)

    @rule(part=strategies.slices(6))
    def delete_slice(self, part):
        del self.sequence[part]
        del self.nodes[part]

    @rule(last=strategies.booleans())
    def pop_edge(self, last):
        action = self.sequence.pop_back if last else self.sequence.pop_front
        if self.nodes:
            action()
            self.nodes.pop(-1 if last else 0)
        else:
            self.refuses(K7Q.Exception, action, "sequence is empty")

    @rule(value=values)
    def remove(self, value):
        node = self.found(value)
        if node:
            self.sequence.remove(value)
            self.nodes.remove(node)
        else:
            self.refuses(ValueError, lambda: self.sequence.remove(value))

    @rule(value=values)
    def remove_all(self, value):
        kept = [node for node in self.nodes if node.value != value]
        assert self.sequence.removeAll(value) == len(self.nodes) - len(kept)
        self.nodes = kept

    @rule(rarely=strategies.integers(0, 4))
    def clear(self, rarely):
        if rarely == 0:
            self.sequence.clear()
            self.nodes = []

    @rule()
    def double(self):
        if len(self.nodes) < 20:
            self.sequence.extend(self.sequence)
            for node in list(self.nodes):
                self.insert_node(len(self.nodes), node.value)

    # With iterators.

    @rule()
    def begin(self):
        self.hold(self.sequence.begin(), self.node_at(0))

    @rule()
    def end(self):
        self.hold(self.sequence.end(), END)

    @rule(steps=strategies.integers(1, 6))
    def walk_to(self, steps):
        steps = min(steps, len(self.nodes))
        self.hold(at(self.sequence, steps), self.node_at(steps))

    @precondition(lambda self: self.held)
    @rule(number=places)
    def drop(self, number):
        del self.held[number % len(self.held)]

    @precondition(lambda self: self.held)
    @rule(number=places)
    def clone(self, number):
        place, node = self.pick(number)
        if self.is_stale(node):
            self.refuses(K7Q.StaleIterator, place.clone, GONE)
        else:
            self.hold(place.clone(), node)

    @precondition(lambda self: self.held)
    @rule(number=places)
    def read(self, number):
        place, node = self.pick(number)
        if node is END:
            self.refuses(K7Q.StaleIterator, place.item, "at the end")
        elif self.is_stale(node):
            self.refuses(K7Q.StaleIterator, place.item, GONE)
        else:
            assert place.item() == node.value

    @precondition(lambda self: self.held)
    @rule(number=places)
    def step_forward(self, number):
        entry = self.pick(number)
        place, node = entry
        if node is END:
            self.refuses(K7Q.StaleIterator, place.getNext, "at the end")
        elif self.is_stale(node):
            self.refuses(K7Q.StaleIterator, place.getNext, GONE)
        else:
            place.getNext()
            entry[1] = self.node_at(self.index_of(node) + 1)

    @precondition(lambda self: self.held)
    @rule(number=places)
    def step_back(self, number):
        entry = self.pick(number)
        place, node = entry
        if self.is_stale(node):
            self.refuses(K7Q.StaleIterator, place.getPrev, GONE)
        elif self.index_of(node) == 0:
            self.refuses(K7Q.StaleIterator, place.getPrev, "at the beginning")
        else:
            place.getPrev()
            entry[1] = self.node_at(self.index_of(node) - 1)

    @precondition(lambda self: self.held)
    @rule(first=places, second=places)
    def compare(self, first, second):
        place, node = self.pick(first)
        other, its_node = self.pick(second)
        if self.is_stale(node) or self.is_stale(its_node):
            assert (place == other) == (place is other)
            self.refuses(K7Q.StaleIterator, lambda: place.eq(other), GONE)
            self.refuses(K7Q.StaleIterator, lambda: place.ne(other), GONE)
        else:
            assert (place == other) == place.eq(other) == (not place.ne(other)) == (node is its_node)

    @precondition(lambda self: self.held)
    @rule(number=places)
    def erase_at(self, number):
        place, node = self.pick(number)
        if node is END or self.is_stale(node):
            self.refuses(K7Q.StaleIterator, lambda: self.sequence.erase(place))
        else:
            index = self.index_of(node)
            del self.nodes[index]
            self.hold(self.sequence.erase(place), self.node_at(index))

    @precondition(lambda self: self.held)
    @rule(first=places, second=places)
    def erase_range(self, first, second):
        place, node = self.pick(first)
        last, last_node = self.pick(second)
        if self.is_stale(node) or self.is_stale(last_node):
            self.refuses(K7Q.StaleIterator, lambda: self.sequence.erase(place, last), GONE)
        elif self.index_of(node) > self.index_of(last_node):
            self.refuses(K7Q.WrongValue, lambda: self.sequence.erase(place, last), "is before the first")
        else:
            end = self.index_of(last_node)
            del self.nodes[self.index_of(node):end]
            self.hold(self.sequence.erase(place, last), last_node)

    @precondition(lambda self: self.held)
    @rule(number=places, value=values)
    def insert_at(self, number, value):
        place, node = self.pick(number)
        if self.is_stale(node):
            self.refuses(K7Q.StaleIterator, lambda: self.sequence.insert(place, value), GONE)
        else:
            new = self.insert_node(self.index_of(node), value)
            self.hold(self.sequence.insert(place, value), new)

    @precondition(lambda self: self.held)
    @rule(number=places, value=values)
    def give_to_another(self, number, value):
        place, _ = self.pick(number)
        for use in (lambda: self.other.erase(place), lambda: self.other.insert(place, value),
                    lambda: self.other.erase(self.other.begin(), place),
                    lambda: self.other.erase(place, self.other.end())):
            self.refuses((K7Q.WrongValue, K7Q.StaleIterator), use)
        assert list(self.other) == [ONE]

    @invariant()
    def same(self):
        if hasattr(self, "nodes"):
            expected = [node.value for node in self.nodes]
            assert list(self.sequence) == expected and len(self.sequence) == len(expected)

    @invariant()
    def iterators_stand_where_they_should(self):
        for place, node in getattr(self, "held", []):
            if node is END:
                assert place == self.sequence.end()
            elif self.is_stale(node):
                self.refuses(K7Q.StaleIterator, place.item, GONE)
            else:
                assert place.item() == node.value and place == at(self.sequence, self.index_of(node))

    def teardown(self):
        if hasattr(self, "model"):
            self.model.close()


class UniqueSequences(Sequences):
    how = "makeUnique"


BOUNDED = settings(max_examples=40, stateful_step_count=40, deadline=None, derandomize=True, database=None)
Sequences.TestCase.settings = BOUNDED
UniqueSequences.TestCase.settings = BOUNDED
TestSequences = Sequences.TestCase
TestUniqueSequences = UniqueSequences.TestCase


@pytest.mark.parametrize("seed", range(8))
def test_random_calls_with_any_iterators_never_do_worse_than_a_k7q_exception(seed):
    random_source = random.Random(seed)
    model = K7Q.Model.create()
    sequences = [maker(model) for maker in (Sequence.make, Sequence.makeUnique, Sequence.make,
                                            common.SequenceOfArxmlFilePackagingKind.make)]
    held = []
    values = [*LITERALS, *common.ArxmlFilePackagingKind, None, 0, 1, 2, -1, 2**31, 1.5, "1", model]
    methods = ["append", "push_front", "pop_back", "pop_front", "clear", "removeAll", "erase", "insert",
               "replace", "begin", "end", "at", "front", "back", "size", "item", "getNext", "getPrev",
               "clone", "eq", "ne", "pop", "remove", "extend", "index"]
    for _ in range(2500):
        target = random_source.choice(sequences + held)
        method = random_source.choice([name for name in methods if hasattr(target, name)])
        pool = held if held and random_source.random() < 0.5 else values + sequences
        arguments = [random_source.choice(pool)
                     for _ in range(random_source.choice([0, 0, 1, 1, 2, 2, 3]))]
        if random_source.random() < 0.2:
            target, arguments = type(target), [target, *arguments]
        try:
            result = getattr(target, method)(*arguments)
        except K7Q.Exception:
            continue
        except (TypeError, AttributeError) as error:
            # Python's own error for a method called through the class with a foreign object.
            assert isinstance(target, type), error
            continue
        if hasattr(result, "getNext"):
            held.append(result)
        if len(held) > 20:
            del held[random_source.randrange(20)]
    for each in held + sequences:
        repr(each)
