"""List operations on sequences: swaps, shuffles, sorts, slices."""

import random

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant
from sequence_kinds import KINDS

UNIQUE = [name for name, kind in KINDS.items() if kind.is_unique]
OF_A_MODEL = [name for name, kind in KINDS.items() if kind.property]


@pytest.fixture
def of_kind(model):
    """A sequence of that kind with its first elements: the given number, or all if there are fewer."""

    def make(name, count=4):
        kind = KINDS[name]
        _, sequence = kind.make(model)
        elements = kind.pool(model)[:count]
        sequence += elements
        return sequence, elements

    return make


@pytest.fixture
def constants(model):
    """A sequence of references, shown by the names of its elements."""
    formula = variant.SystemConstDependentFormula(model, "f")
    formula.SysConst += [variant.SystemConst(model, name) for name in "abcde"]
    return formula.SysConst


def names(sequence):
    return "".join(each.Name for each in sequence)


@pytest.mark.parametrize("name", KINDS)
@pytest.mark.parametrize("left, right", [(0, 1), (1, 0), (0, -1), (-1, -2), (1, 1)])
def test_two_elements_are_swapped(of_kind, name, left, right):
    sequence, expected = of_kind(name)

    sequence[left], sequence[right] = sequence[right], sequence[left]

    expected[left], expected[right] = expected[right], expected[left]
    assert list(sequence) == expected


@pytest.mark.parametrize("name", KINDS)
def test_a_shuffle_loses_nothing(of_kind, name):
    sequence, expected = of_kind(name, 6)
    for seed in range(1000):
        random.Random(seed).shuffle(sequence)
        random.Random(seed).shuffle(expected)
        assert list(sequence) == expected, seed


@pytest.mark.parametrize("name", UNIQUE)
def test_an_element_that_is_assigned_again_exchanges_places(of_kind, name):
    sequence, (first, second, third, *rest) = of_kind(name)

    sequence[0] = third

    assert list(sequence) == [third, second, first, *rest]


def test_the_hosts_replace_exchanges_as_well(constants):
    constants.replace(1, constants[3])

    assert names(constants) == "dbcae"


def test_an_element_that_is_inserted_again_moves_before_what_stands_there(constants):
    for index, expected in [(4, "bcade"), (1, "abcde"), (6, "bcdea"), (6, "bcdea"), (5, "bcdea"), (4, "bcdae")]:
        first = next(each for each in constants if each.Name == "a")
        constants.insert(index, first)
        assert names(constants) == expected


def test_what_is_appended_again_stays(constants):
    constants.append(constants[0])
    constants.push_front(constants[2])
    constants.extend(constants)

    assert names(constants) == "abcde"


SLICES = [slice(None), slice(1, 3), slice(0, 0), slice(2, 1), slice(-2, None), slice(99, None), slice(None, 99),
          slice(1, 3, 1)]


@pytest.mark.parametrize("part", SLICES)
@pytest.mark.parametrize("given", ["", "x", "xy", "xyzzy", "ab"])
@pytest.mark.parametrize("name", ["texts", "made texts"])
def test_a_slice_of_texts_is_assigned_as_in_a_list(of_kind, name, part, given):
    sequence, expected = of_kind(name)
    expected[part] = given

    sequence[part] = given

    assert list(sequence) == expected


@pytest.mark.parametrize("part, given, expected", [
    (slice(1, 3), "x", "axde"),  # the elements of the slice were removed
    (slice(1, 3), "cb", "acbde"),
    (slice(1, 3), "e", "aed"),  # an element from outside the slice moves into it
    (slice(3, 5), "ax", "bcax"),
    (slice(0, 0), "e", "eabcd"),
    (slice(5, 5), "ab", "cdeab"),
    (slice(1, 2), "xaxa", "xacde"),  # an element that is given twice occurs once
    (slice(None), "edcba", "edcba"),
    (slice(None), "", ""),
    (slice(None, None, 2), "ecx", "ebcdx"),  # one index after another, like s[i] = x
    (slice(None, None, -1), "abcde", "edcba"),
    (slice(0, 3, 2), "db", "dcbae"),
])
def test_a_slice_of_references_is_assigned(model, constants, part, given, expected):
    known = {each.Name: each for each in constants} | {"x": variant.SystemConst(model, "x")}

    constants[part] = [known[name] for name in given]

    assert names(constants) == expected


@pytest.mark.parametrize("given, expected", [
    (5, "expected elements to iterate for a slice, got int 5"),
    (["x"], r"element 0 of a slice: expected \S*\.SystemConst, got str 'x'"),
    ([None], r"element 0 of a slice: expected \S*\.SystemConst, got None"),
    ([common], "element 0 of a slice: expected"),
])
def test_a_slice_refuses_what_is_no_element_and_stays(constants, given, expected):
    with pytest.raises(TypeError, match="^SequenceOfSystemConst: " + expected):
        constants[1:2] = given
    assert names(constants) == "abcde"


def test_a_slice_with_a_step_wants_an_element_for_each_place(constants):
    with pytest.raises(ValueError, match="^SequenceOfSystemConst: a slice with a step of 2 has 3 elements here, got "
                                         "1"):
        constants[::2] = [constants[0]]
    assert names(constants) == "abcde"


def test_a_slice_with_one_refused_element_changes_nothing(model, constants):
    with K7Q.Model.create() as other:
        with pytest.raises(K7Q.WrongValue, match="of another model"):
            constants[:] = [constants[1], variant.SystemConst(other, "x")]
    assert names(constants) == "abcde"


@pytest.mark.parametrize("name", KINDS)
def test_a_sequence_is_sorted_as_a_list(of_kind, name):
    sequence, expected = of_kind(name, 6)
    for options in ({"key": repr}, {"key": repr, "reverse": True}, {"key": lambda each: len(repr(each)) % 3}):
        sequence.sort(**options)
        expected.sort(**options)
        assert list(sequence) == expected


@pytest.mark.parametrize("name", KINDS)
def test_a_sequence_is_reversed(of_kind, name):
    sequence, expected = of_kind(name, 5)

    sequence.reverse()

    assert list(sequence) == expected[::-1]


def test_texts_and_enumeration_values_have_an_order_of_their_own(of_kind):
    for name in ("texts", "made texts once", "values", "values once"):
        sequence, elements = of_kind(name)
        sequence.sort(reverse=True)
        assert list(sequence) == sorted(elements, reverse=True)


def test_objects_have_none(constants):
    with pytest.raises(TypeError, match="not supported between instances"):
        constants.sort()
    with pytest.raises(K7Q.WrongType, match="expected only key= and reverse=, given by name, got builtin_function_or_method"):
        constants.sort(repr)
    with pytest.raises(K7Q.WrongType, match="got 'cmp'"):
        constants.sort(cmp=repr)
    assert names(constants) == "abcde"


def test_a_key_that_changes_the_sequence_is_refused(constants):
    def key(each):
        constants.pop()
        return each.Name

    with pytest.raises(K7Q.ChangedDuringIteration, match="changed while it was sorted"):
        constants.sort(key=key)
    assert names(constants) == ""


def test_a_key_that_raises_leaves_the_order(constants):
    with pytest.raises(ZeroDivisionError):
        constants.sort(key=lambda each: 1 / 0)
    assert names(constants) == "abcde"


def test_a_view_that_only_reads_refuses_each(constants, model):
    formula = next(each.object for each in constants[0].referrers())
    frozen = formula.asDeviant(model.frozen()).SysConst
    for sequence in (formula.asImmutable().SysConst, frozen):
        for change in (lambda: sequence.sort(key=repr), sequence.reverse, lambda: sequence.__setitem__(slice(1), [])):
            with pytest.raises(K7Q.Exception, match="cannot be changed|the view is read-only"):
                change()
    assert names(constants) == "abcde"


ORDERS = {
    "swap": lambda sequence: sequence.__setitem__(0, sequence[-1]),
    "sort": lambda sequence: sequence.sort(key=repr, reverse=True),
    "reverse": lambda sequence: sequence.reverse(),
    "slice": lambda sequence: sequence.__setitem__(slice(1, 3), [sequence[0], sequence[2]]),
    "deleted slice": lambda sequence: sequence.__delitem__(slice(None, None, 2)),
}


@pytest.mark.parametrize("order", ORDERS)
@pytest.mark.parametrize("name", OF_A_MODEL)
def test_each_is_one_change_which_is_undone(model, of_kind, name, order):
    sequence, before = of_kind(name)
    model.history = 10
    told = []
    with model.listen(told.append):
        ORDERS[order](sequence)
    after = list(sequence)

    assert after != before and model.undoable == len(told) == 1
    assert model.undo() and list(sequence) == before
    assert model.redo() and list(sequence) == after


def test_a_listener_sees_elements_that_stay_move_and_no_more(model, constants):
    told = []
    with model.listen(told.append):
        constants[0], constants[3] = constants[3], constants[0]
        constants[0:0] = [constants[4]]
        constants.reverse()

    assert {change.kind for batch in told for change in batch} == {"moved"}
    assert [(change.index_before, change.index) for batch in told[:2] for change in batch] == [(3, 0), (1, 3), (4, 0)]


@pytest.mark.parametrize("call", [
    lambda sequence: sequence.at(9), lambda sequence: sequence.insert(9, sequence[0]),
    lambda sequence: sequence.erase(9), lambda sequence: sequence.replace(9, sequence[0]),
    lambda sequence: sequence.at(0), lambda sequence: sequence.erase(-1),
])
@pytest.mark.parametrize("name", KINDS)
def test_an_index_that_there_is_not_is_named_with_the_size(of_kind, name, call):
    sequence, elements = of_kind(name, 3)
    with pytest.raises(K7Q.Exception, match="sequence index (out of bounds|must be positive)") as raised:
        call(sequence)
    told = "\n".join([str(raised.value), *getattr(raised.value, "__notes__", [])])
    assert "has 3 elements" in told
    assert "9 counted from 1" in told or "(9)" in told or "0 counted from 1" in told or "(0)" in told or "-1" in told


@pytest.mark.parametrize("call", [lambda sequence: sequence.front(), lambda sequence: sequence.pop_back()])
def test_an_empty_sequence_says_which_it_is(of_kind, call):
    expected = {"references": "SystemConstDependentFormula.SysConst", "made": "variant.SystemConst",
                "texts": "PostBuildVariantCondition.ValueVariationPoint", "values": "SequenceOfBindingTimeKind"}
    for name, text in expected.items():
        sequence, _ = of_kind(name, 0)
        with pytest.raises(K7Q.Exception, match="sequence is empty") as raised:
            call(sequence)
        assert text in "\n".join([str(raised.value), *getattr(raised.value, "__notes__", [])])


def test_a_stale_iterator_that_is_held_hinders_no_change(model):
    from Tarvelon.metamodel.arplatform import manifest

    modes = manifest.Process(model).LogTraceLogMode
    modes += list(manifest.LogTraceLogModeEnum)[:2]
    held = modes.begin()
    modes.push_front(modes[1])

    assert modes.removeAll(modes[0]) == 2 and modes.size() == 1
    with pytest.raises(K7Q.StaleIterator):
        held.item()
