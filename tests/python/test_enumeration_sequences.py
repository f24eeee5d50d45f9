"""Sequences of enumeration values that a script creates: the host's methods and Python's operators."""

import collections.abc

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import Factory, common, variant

Kind = variant.BindingTimeKind
Sequence = variant.SequenceOfBindingTimeKind
LITERALS = list(Kind)
ZERO, ONE, TWO, THREE = LITERALS


@pytest.fixture
def model():
    with Factory.createNewModel() as model:
        yield model


def test_a_new_sequence_is_empty(model, how):
    sequence = getattr(Sequence, how)(model)

    assert type(sequence) is Sequence and isinstance(sequence, variant.ImmutableSequenceOfBindingTimeKind)
    assert sequence.isEmpty() and sequence.size() == len(sequence) == 0 and not sequence
    assert list(sequence) == [] and sequence.begin() == sequence.end()
    assert repr(sequence) == "<variant.SequenceOfBindingTimeKind of 0>"


def test_make_takes_a_model_that_is_read_only_too(model, how):
    sequence = getattr(Sequence, how)(model.frozen())
    sequence.append(ONE)

    assert list(sequence) == [ONE]
    assert "immutable" not in repr(sequence)


@pytest.mark.parametrize("arguments", [(None,), (), (3,), ("untitled",), (ONE,)])
def test_a_sequence_is_made_with_a_model(model, how, arguments):
    with pytest.raises(TypeError) as raised:
        getattr(Sequence, how)(*arguments)
    assert isinstance(raised.value, K7Q.Exception)


def test_a_sequence_cannot_be_constructed(model):
    with pytest.raises(TypeError):
        Sequence(model)
    with pytest.raises(TypeError):
        variant.BindingTimeKindIterator()


def test_make_keeps_duplicates_and_makeUnique_does_not(model):
    many, once = Sequence.make(model), Sequence.makeUnique(model)
    for each in (many, once):
        each += [THREE, ONE, THREE]

    assert list(many) == [THREE, ONE, THREE] and list(once) == [THREE, ONE]
    once.push_front(ONE)
    assert list(once) == [THREE, ONE]
    assert many.removeAll(THREE) == 2 and once.removeAll(THREE) == 1 and once.removeAll(THREE) == 0


def test_elements_are_values_of_the_enumeration(sequence):
    assert type(sequence[0]) is Kind and sequence.at(1) == sequence.front() == ZERO
    assert sequence.back() == sequence[-1] == TWO
    assert [str(each) for each in sequence] == ["SystemDesignTime", "CodeGenerationTime", "PreCompileTime"]


def test_python_sees_one_of_its_sequences(sequence):
    assert isinstance(sequence, collections.abc.Sequence)
    assert ONE in sequence and THREE not in sequence and None not in sequence and 1 not in sequence
    assert common.ArxmlFilePackagingKind.SingleFile not in sequence
    assert sequence.index(TWO) == 2 and sequence.count(ONE) == 1 and sequence.count(THREE) == 0
    assert sequence[1:] == [ONE, TWO] and list(reversed(sequence)) == [TWO, ONE, ZERO]
    assert max(sequence) == TWO and sorted(sequence, reverse=True)[0] == TWO
    match sequence:
        case [first, *_]:
            assert first == ZERO


def test_python_changes_it_like_a_list(sequence):
    sequence[1] = THREE
    assert sequence.pop() == TWO and list(sequence) == [ZERO, THREE]
    sequence.extend([ONE])
    sequence.remove(THREE)
    del sequence[0]
    assert list(sequence) == [ONE]
    del sequence[:]
    assert not sequence


def test_the_hosts_methods_count_from_1(sequence):
    sequence.insert(4, THREE)
    sequence.erase(1)
    assert list(sequence) == [ONE, TWO, THREE]
    sequence.replace(1, ZERO)
    assert sequence.at(1) == ZERO


INDEXED = [lambda s, i: s.at(i), lambda s, i: s.erase(i), lambda s, i: s.insert(i, THREE),
           lambda s, i: s.replace(i, THREE)]


@pytest.mark.parametrize("index", [0, -1, -2**31])
@pytest.mark.parametrize("use", INDEXED)
def test_an_index_below_1_has_the_hosts_text(sequence, use, index):
    with pytest.raises(K7Q.Exception, match="^Assertion failed: sequence index must be positive at "):
        use(sequence, index)
    assert list(sequence) == [ZERO, ONE, TWO]


@pytest.mark.parametrize("index", [5, 2**31 - 1])
@pytest.mark.parametrize("use", INDEXED)
def test_an_index_beyond_the_size_has_the_hosts_text(sequence, use, index):
    with pytest.raises(K7Q.Exception, match="^Assertion failed: sequence index out of bounds at "):
        use(sequence, index)
    assert list(sequence) == [ZERO, ONE, TWO]


@pytest.mark.parametrize("index", [3, -4, 2**31, 10**30])
def test_an_index_of_pythons_beyond_the_size_is_an_index_error(sequence, index):
    for use in (lambda: sequence[index], lambda: sequence.pop(index), lambda: sequence.__delitem__(index),
                lambda: sequence.__setitem__(index, THREE)):
        with pytest.raises(IndexError):
            use()
    assert list(sequence) == [ZERO, ONE, TWO]


@pytest.mark.parametrize("method", ["front", "back", "pop_front", "pop_back"])
def test_an_empty_sequence_has_the_hosts_text(model, how, method):
    with pytest.raises(K7Q.Exception, match="^Assertion failed: sequence is empty at "):
        getattr(getattr(Sequence, how)(model), method)()


@pytest.mark.parametrize("value", [None, 0, "LinkTime", object(), Kind,
                                   common.ArxmlFilePackagingKind.SingleFile])
@pytest.mark.parametrize("use", [
    lambda s, v: s.append(v), lambda s, v: s.push_back(v), lambda s, v: s.push_front(v),
    lambda s, v: s.removeAll(v), lambda s, v: s.insert(1, v), lambda s, v: s.insert(s.begin(), v),
    lambda s, v: s.replace(1, v), lambda s, v: s.extend([v]), lambda s, v: s.__iadd__([v]),
    lambda s, v: s.__setitem__(0, v),
])
def test_what_is_no_value_of_the_enumeration_is_a_type_error(sequence, use, value):
    with pytest.raises(TypeError) as raised:
        use(sequence, value)
    assert isinstance(raised.value, K7Q.Exception)
    assert list(sequence) == [ZERO, ONE, TWO]


@pytest.mark.parametrize("use", [
    lambda s: s.erase(None), lambda s: s.erase(s.begin(), None), lambda s: s.erase(None, s.end()),
    lambda s: s.insert(None, ONE), lambda s: s.begin().eq(None), lambda s: s.begin().ne(None),
    lambda s: type(s.begin()).getNext(None), lambda s: type(s.begin()).getPrev(None),
    lambda s: type(s.begin()).item(None), lambda s: type(s.begin()).clone(None),
    lambda s: type(s.begin()).eq(None, s.begin()), lambda s: type(s).size(None),
    lambda s: type(s).at(None, 1),
    lambda s: type(s).begin(None),
])
def test_nothing_is_no_iterator_and_no_sequence(sequence, use):
    with pytest.raises(TypeError) as raised:
        use(sequence)
    assert isinstance(raised.value, K7Q.Exception)
    assert list(sequence) == [ZERO, ONE, TWO]


def test_a_sequence_outlives_its_model(model, sequence):
    place = sequence.begin()
    model.close()
    sequence.append(THREE)

    assert list(sequence) == [ZERO, ONE, TWO, THREE] and place.item() == ZERO


def test_a_change_during_iteration_is_a_runtime_error(sequence):
    walk = iter(sequence)
    next(walk)
    sequence.pop()

    with pytest.raises(RuntimeError, match="changed while it was iterated: it had 3 elements and has 2"):
        next(walk)
