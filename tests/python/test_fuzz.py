"""Random use: every call returns or raises a K7Q.Exception, and sequences behave like lists."""

import collections
import contextlib
import functools
import inspect
import random
import types

import pytest
from hypothesis import HealthCheck, given, settings, strategies
from hypothesis.stateful import RuleBasedStateMachine, initialize, invariant, rule

import K7Q
from _tarvelon_host import HostObject
from catalog import class_named, constructors_of, host_classes, metamodel_classes, reflection
from Tarvelon.metamodel.arplatform import Factory, common, variant

BOUNDED = settings(max_examples=60, deadline=None, derandomize=True, database=None)
# Characters that XML cannot contain.
REFUSED = {chr(code) for code in range(0x20)} - {"\t", "\n", "\r"} | {"\ufffe", "\uffff"}
STORABLE = strategies.characters(blacklist_characters=sorted(REFUSED), blacklist_categories=["Cs"])
TEXTS = strategies.text(alphabet=STORABLE)


@BOUNDED
@given(text=TEXTS)
def test_any_text_comes_back(text):
    with K7Q.Model.create() as model:
        package = common.Package(model, text)
        package.category = text

        assert (package.Name, package.category) == (text, text)


@BOUNDED
@given(text=strategies.text(alphabet=strategies.characters()))
def test_any_str_is_stored_or_refused(text):
    with K7Q.Model.create() as model:
        package = common.Package(model)
        storable = REFUSED.isdisjoint(text) and not any(0xD800 <= ord(each) <= 0xDFFF for each in text)
        try:
            package.Name = text
        except K7Q.WrongValue:
            assert not storable
        else:
            assert storable and package.Name == text


@BOUNDED
@given(number=strategies.one_of(strategies.integers(), strategies.floats(), strategies.booleans()))
def test_any_number_is_stored_exactly_or_refused(number):
    with K7Q.Model.create() as model:
        error, value = common.ApplicationError(model), variant.SystemConstValue(model)
        is_int32 = number == number and abs(number) != float("inf") and int(number) == number
        is_int32 = is_int32 and -2**31 <= number < 2**31
        try:
            error.errorCode = number
        except K7Q.OutOfRange:
            assert not is_int32
        else:
            assert is_int32 and error.errorCode == number
        try:
            value.Value = number
        except K7Q.OutOfRange:
            assert isinstance(number, int)
        else:
            assert value.Value == number or number != number


class TextSequence(RuleBasedStateMachine):
    """A sequence of texts and a list: the same operations must have the same results and raise the same
    errors."""

    @initialize()
    def start(self):
        self.model = K7Q.Model.create()
        self.sequence = variant.PostBuildVariantCondition(self.model).ValueVariationPoint
        self.list = []

    def both(self, operation):
        """Does the same to both. They must return the same result or raise the same built-in exception."""
        try:
            expected = operation(self.list)
        except (IndexError, ValueError) as error:
            with pytest.raises(type(error)) as raised:
                operation(self.sequence)
            assert isinstance(raised.value, K7Q.Exception)
        else:
            assert operation(self.sequence) == expected

    @rule(text=TEXTS)
    def append(self, text):
        self.both(lambda each: each.append(text))

    @rule(texts=strategies.lists(TEXTS, max_size=4))
    def extend(self, texts):
        self.both(lambda each: each.extend(texts))

    @rule(index=strategies.integers(-6, 6), text=TEXTS)
    def assign(self, index, text):
        self.both(lambda each: each.__setitem__(index, text))

    @rule(index=strategies.integers(-6, 6))
    def read(self, index):
        self.both(lambda each: each[index])

    @rule(index=strategies.integers(-6, 6))
    def delete(self, index):
        self.both(lambda each: each.__delitem__(index))

    @rule(index=strategies.integers(-6, 6))
    def pop(self, index):
        self.both(lambda each: each.pop(index))

    @rule(part=strategies.slices(8))
    def read_slice(self, part):
        self.both(lambda each: each[part])

    @rule(part=strategies.slices(8))
    def delete_slice(self, part):
        self.both(lambda each: each.__delitem__(part))

    @rule(text=TEXTS)
    def remove(self, text):
        self.both(lambda each: each.remove(text))

    @rule(text=TEXTS)
    def count(self, text):
        self.both(lambda each: (each.count(text), text in each))

    @rule(at=strategies.integers(0, 8), text=TEXTS)
    def insert(self, at, text):
        if at <= len(self.list):
            self.list.insert(at, text)
            self.sequence.insert(at + 1, text)
        else:
            with pytest.raises(K7Q.Exception, match="sequence index out of bounds"):
                self.sequence.insert(at + 1, text)

    @rule(text=TEXTS)
    def remove_all(self, text):
        assert self.sequence.removeAll(text) == self.list.count(text)
        self.list = [each for each in self.list if each != text]

    @rule()
    def double(self):
        if len(self.list) < 50:
            self.both(lambda each: each.extend(each))

    @rule()
    def walk(self):
        place, end, seen = self.sequence.begin(), self.sequence.end(), []
        while place != end:
            seen.append(place.item())
            place.getNext()
        assert seen == self.list

    @invariant()
    def same(self):
        if hasattr(self, "sequence"):
            assert len(self.sequence) == len(self.list) and list(self.sequence) == self.list

    def teardown(self):
        if hasattr(self, "model"):
            self.model.close()


TextSequence.TestCase.settings = settings(BOUNDED, max_examples=40, stateful_step_count=40)
TestTextSequence = TextSequence.TestCase


class Explorer:
    """Makes random calls with random arguments, in all packages."""

    RECORDS = [each for each in metamodel_classes() if constructors_of(each)]
    OTHERS = [each["fullName"] for each in host_classes() if not constructors_of(each)]
    PACKAGES = reflection.packages()

    def __init__(self, random):
        self.random = random
        self.model = K7Q.Model.create()
        self.other = K7Q.Model.create()
        self.maker = reflection.Maker(self.model)
        self.known = [self.model, self.model.frozen(), Factory.createNewFactory(self.model), self.other]
        self.calls = collections.Counter()

    def value(self):
        plain = [None, True, 0, 1, -1, 2, 2**31, -2**63, 2**70, 0.5, float("nan"), "", "Name", "ö\U0001F697",
                 "a\0b", "\ud800", [], (1, 2), object(), common.Package, len, self.model]
        return self.random.choice(plain if self.random.random() < 0.4 else self.known)

    def fitting(self, type_name):
        """A value that usually has that type."""
        if type_name == "K7Q.Model" or self.random.random() < 0.1:
            return self.model if type_name == "K7Q.Model" else self.value()
        if "." in type_name and self.random.random() < 0.7:
            wanted = class_named(type_name)
            known = [each for each in self.known if isinstance(each, wanted)]
            if known:
                return self.random.choice(known)
        return self.maker.value(type_name)

    def arguments(self):
        return [self.value() for _ in range(self.random.choice([0, 0, 1, 1, 2, 3]))]

    def step(self):
        action = self.random.choice([self.construct, self.construct, self.call, self.call, self.call, self.create,
                                     self.call_class, self.read, self.read, self.write, self.write, self.add,
                                     self.add, self.operate])
        try:
            self.keep(action())
            self.calls[action.__name__] += 1
        except K7Q.Exception as refusal:
            assert str(refusal)
            self.calls["refused"] += 1

    def keep(self, result):
        if isinstance(result, HostObject):
            self.known.append(result)
        if len(self.known) > 60:
            del self.known[self.random.randrange(4, len(self.known))]

    def name(self, thing):
        return self.random.choice([name for name in dir(thing) if not name.startswith("__")] + ["nothing"])

    def construct(self):
        record = self.random.choice(self.RECORDS)
        kinds = self.random.choice(constructors_of(record))["arguments"]
        return class_named(record["fullName"])(*map(self.fitting, kinds))

    def create(self):
        record = self.random.choice(self.RECORDS)
        kinds = self.random.choice(constructors_of(record))["arguments"][1:]
        return self.known[2].create(class_named(record["fullName"]), *map(self.fitting, kinds))

    def call(self):
        target = self.random.choice(self.known)
        name = self.name(target)
        method = getattr(target, name)
        is_meant = callable(method) and not (name == "close" and target in (self.model, self.other))
        return self.called(method) if is_meant else method

    def called(self, method):
        arguments = self.arguments()
        # For a function written in Python, the interpreter itself checks the number of arguments.
        if isinstance(method, (types.FunctionType, types.MethodType)):
            try:
                inspect.signature(method).bind(*arguments)
            except TypeError:
                return None
        return method(*arguments)

    def call_class(self):
        record = self.random.choice(self.RECORDS)
        name = self.random.choice([record["fullName"], self.random.choice(self.OTHERS)])
        cls = class_named(name)
        method = getattr(cls, self.name(cls))
        # For additions of Python (extend, ...), the interpreter itself checks the object they are called on.
        is_ours = callable(method) and not isinstance(method, types.MethodDescriptorType)
        return self.called(method) if is_ours else method

    def read(self):
        target = self.random.choice(self.known)
        return getattr(target, self.name(target))

    def described(self):
        """An object of a model and one of its properties: the attribute and its description."""
        targets = [each for each in self.known if hasattr(type(each), "MetaProperty")]
        target = self.random.choice(targets) if targets else self.construct()
        name, description = self.random.choice(descriptions_of(type(target)))
        return target, reflection.attribute_of(type(target), description), description

    def write(self):
        target, attribute, description = self.described()
        value = self.value() if self.random.random() < 0.2 else self.fitting(description.type())
        setattr(target, attribute or self.name(target), value)

    def add(self):
        target, attribute, description = self.described()
        sequence = getattr(target, attribute or "OwnedElement")
        if hasattr(sequence, "append"):
            self.random.choice([sequence.append, sequence.push_front, lambda value: sequence.insert(1, value)])(
                self.fitting(description.type()))
        return sequence

    def operate(self):
        target, other = self.random.choice(self.known), self.value()
        try:
            return self.random.choice([
                lambda: target == other, lambda: target < other, lambda: hash(target), lambda: repr(target),
                lambda: target[other], lambda: target[-1], lambda: list(target), lambda: other in target,
                lambda: target.__delitem__(other), lambda: target.__setitem__(0, other), lambda: len(target),
                lambda: target.__iadd__([other]), lambda: str(target), lambda: dir(target),
                lambda: bool(target),
            ])()
        except (TypeError, AttributeError):  # the interpreter raises these for an object without the operator
            return None

    def end(self):
        self.model.close()
        self.other.close()
        for thing in self.known:
            repr(thing)


@functools.lru_cache(maxsize=None)
def descriptions_of(cls):
    return [(each.name(), each) for each in cls.MetaProperty()]


@pytest.mark.parametrize("seed", range(12))
def test_random_use_never_does_worse_than_a_k7q_exception(seed, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)  # a model may be saved
    explorer = Explorer(random.Random(seed))
    for _ in range(1500):
        explorer.step()
    explorer.end()
    # If nearly all calls were refused, the run would test little.
    assert explorer.calls["refused"] < 900
    for action in ("construct", "create", "write", "add"):
        assert explorer.calls[action] > 20


def test_it_makes_objects_in_every_package():
    explorer, made = Explorer(random.Random(0)), set()
    for _ in range(600):
        with contextlib.suppress(K7Q.Exception):
            made.add(type(explorer.construct()).__module__)
    explorer.end()
    concrete = {class_named(each["fullName"]).__module__ for each in Explorer.RECORDS}
    assert made == concrete and len(concrete) == 13


@settings(BOUNDED, max_examples=100, suppress_health_check=list(HealthCheck))
@given(random=strategies.randoms(use_true_random=False))
def test_the_shortest_use_that_does_worse_is_found(random):
    """The same with choices made by hypothesis, which shrinks a failing program."""
    explorer = Explorer(random)
    for _ in range(30):
        explorer.step()
    explorer.end()
