"""Iterators of enumeration sequences: they stay on their element, and detect that it was removed."""

import ctypes
import gc
import random
import weakref

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import Factory, common, variant

Kind = variant.BindingTimeKind
Sequence = variant.SequenceOfBindingTimeKind
LITERALS = list(Kind)
ZERO, ONE, TWO, THREE = LITERALS
GONE = "whose element was removed|the element of the iterator was removed"


@pytest.fixture
def model():
    with Factory.createNewModel() as model:
        yield model


def at(sequence, index):
    """An iterator at an index from 0; the end if there is no such element."""
    place = sequence.begin()
    for _ in range(index):
        place.getNext()
    return place


def test_a_walk_by_iterators_visits_every_element(sequence):
    place, end, seen = sequence.begin(), sequence.end(), []
    while place.ne(end):
        seen.append(place.item())
        assert place.getNext() is None

    assert seen == list(sequence)


def test_a_clone_stays_where_it_was(sequence):
    place = sequence.begin()
    clone = place.clone()
    place.getNext()

    assert not place.eq(clone) and place.ne(clone) and clone.item() == ZERO
    place.getPrev()
    assert place == clone and place is not clone


def test_an_iterator_stays_on_its_element(sequence):
    place = at(sequence, 1)
    sequence.push_front(THREE)
    assert place.item() == ONE
    sequence.pop_front()
    sequence.pop_front()
    sequence.pop_back()
    sequence.insert(1, THREE)
    assert place.item() == ONE and place == at(sequence, 1)
    sequence.erase(1)
    sequence[0] = TWO
    assert place.item() == TWO


def test_an_iterator_does_not_leave_its_sequence(sequence):
    for step, edge in ((sequence.end().item, "end"), (sequence.end().getNext, "end"),
                       (sequence.begin().getPrev, "beginning")):
        with pytest.raises(K7Q.StaleIterator, match=f"the iterator is at the {edge} of its sequence"):
            step()


def test_the_end_is_no_element_to_erase(sequence):
    with pytest.raises(K7Q.StaleIterator, match="is at the end"):
        sequence.erase(sequence.end())
    assert len(sequence) == 3


def test_a_call_does_not_move_its_iterators(sequence):
    first, last = at(sequence, 1), sequence.end()
    new = sequence.insert(first, THREE)
    assert new.item() == THREE and first.item() == ONE

    behind = sequence.erase(first, last)
    assert behind == last == sequence.end() and list(sequence) == [ZERO, THREE]


REMOVALS = {
    "erase at it": lambda s: s.erase(at(s, 1)), "erase a range": lambda s: s.erase(at(s, 1), at(s, 2)),
    "erase": lambda s: s.erase(2), "clear": lambda s: s.clear(), "removeAll": lambda s: s.removeAll(ONE),
    "del": lambda s: s.__delitem__(1), "pop": lambda s: s.pop(1), "remove": lambda s: s.remove(ONE),
    "del a slice": lambda s: s.__delitem__(slice(1, 2)),
    "del backwards": lambda s: s.__delitem__(slice(1, 0, -1)),
    "class erase": lambda s: type(s).erase(s, 2), "class clear": lambda s: type(s).clear(s),
    "class removeAll": lambda s: type(s).removeAll(s, ONE), "erase a float": lambda s: s.erase(2.0),
    "class erase at it": lambda s: type(s).erase(s, at(s, 1)),
    "pop_front": lambda s: (s.pop_front(), s.pop_front()), "pop_back": lambda s: (s.pop_back(), s.pop_back()),
}


@pytest.mark.parametrize("remove", REMOVALS.values(), ids=REMOVALS.keys())
def test_an_iterator_whose_element_is_taken_out_is_stale(sequence, remove):
    place, copy = at(sequence, 1), at(sequence, 1).clone()
    remove(sequence)
    sequence += [ONE, ONE, ONE]

    for each in (place, copy):
        for step in (each.item, each.getNext, each.getPrev, each.clone):
            with pytest.raises(K7Q.StaleIterator, match=GONE):
                step()
        for use in (lambda: sequence.erase(each), lambda: sequence.insert(each, TWO),
                    lambda: sequence.erase(each, sequence.end()), lambda: sequence.begin().eq(each),
                    lambda: each.eq(sequence.begin()), lambda: each.ne(each)):
            with pytest.raises(K7Q.StaleIterator, match=GONE):
                use()
        assert each == each and each != sequence.begin() and each != sequence.end()
    assert place != copy
    repr(place)


@pytest.mark.parametrize("remove", [
    lambda s: s.erase(4), lambda s: s.erase(0), lambda s: s.erase(2.5), lambda s: s.erase("2"),
    lambda s: s.erase(2**40), lambda s: s.erase(float("nan")), lambda s: s.erase(s.end()),
    lambda s: s.erase(at(s, 2), at(s, 1)), lambda s: s.clear(1), lambda s: s.pop_back(1),
    lambda s: s.removeAll(), lambda s: s.removeAll(None), lambda s: s.removeAll(1),
    lambda s: s.erase(), lambda s: s.erase(2, 3), lambda s: s.erase(at(s, 1), 3),
    lambda s: s.erase(at(s, 1), at(s, 2), at(s, 2)), lambda s: s.replace(2, None), lambda s: s.pop(7),
])
def test_a_call_that_is_refused_leaves_iterators_as_they_are(sequence, remove):
    places = [at(sequence, index) for index in range(3)]
    with pytest.raises(K7Q.Exception):
        remove(sequence)

    assert [place.item() for place in places] == list(sequence) == [ZERO, ONE, TWO]


def test_swapped_iterators_are_a_value_error(sequence):
    first, last = at(sequence, 1), at(sequence, 2)
    for swapped in ((last, first), (sequence.end(), first), (sequence.end(), sequence.begin())):
        with pytest.raises(ValueError, match="the last one is before the first"):
            sequence.erase(*swapped)
    assert list(sequence) == [ZERO, ONE, TWO]
    sequence.erase(first, last)
    assert list(sequence) == [ZERO, TWO]


def test_an_iterator_of_another_sequence_is_a_value_error(model, sequence, how):
    others = [getattr(Sequence, how)(model), Sequence.make(model), Sequence.makeUnique(model)]
    for other in others:
        other.append(ONE)
        for foreign in (other.begin(), other.end()):
            for use in (lambda: sequence.erase(foreign), lambda: sequence.insert(foreign, TWO),
                        lambda: sequence.erase(sequence.begin(), foreign),
                        lambda: sequence.erase(foreign, sequence.end())):
                with pytest.raises(ValueError, match="expected an iterator of this sequence"):
                    use()
        assert other.begin() != sequence.begin() and not sequence.begin().eq(other.begin())
    assert list(sequence) == [ZERO, ONE, TWO]


def test_an_iterator_of_another_class_is_refused(model, sequence):
    others = [common.SequenceOfArxmlFilePackagingKind.make(model), common.SequenceOfPackage.make(model)]
    for other in others:
        with pytest.raises((TypeError, ValueError)) as raised:
            sequence.erase(other.begin())
        assert isinstance(raised.value, K7Q.Exception) and other.begin() != sequence.begin()


def test_an_iterator_keeps_its_sequence(model):
    sequence = Sequence.make(model)
    sequence.append(TWO)
    place, watched = sequence.begin(), weakref.ref(sequence)
    clone = place.clone()
    del sequence, place
    gc.collect()

    assert watched() is not None and clone.item() == TWO
    del clone
    gc.collect()
    assert watched() is None


def test_an_iterator_that_is_dropped_is_forgotten(sequence):
    for _ in range(1000):
        places = [sequence.begin(), sequence.end(), sequence.begin().clone()]
        del places[random.Random(1).randrange(3)]
    sequence.clear()
    assert sequence.begin() == sequence.end()


def test_the_end_stays_the_end(sequence):
    end = sequence.end()
    sequence.clear()
    assert end == sequence.end() == sequence.begin()
    sequence += [THREE]
    end.getPrev()
    assert end.item() == THREE


def test_insert_gives_the_element_that_has_the_value(model):
    once = Sequence.makeUnique(model)
    once += [THREE, ONE]
    place = once.insert(once.begin(), ONE)

    assert place.item() == ONE and place == at(once, 1) and list(once) == [THREE, ONE]
    once.replace(1, ONE)
    assert list(once) == [THREE, ONE] and place.item() == ONE
    once.erase(2)
    with pytest.raises(K7Q.StaleIterator):
        place.item()


def test_iterators_of_the_immutable_class_are_watched_too(sequence):
    place = variant.ImmutableSequenceOfBindingTimeKind.begin(sequence)
    assert place.item() == ZERO
    sequence.clear()
    with pytest.raises(K7Q.StaleIterator):
        place.item()


@pytest.fixture
def fail_allocation():
    """Makes the n-th allocation of the host's memory fail; 0 disarms."""
    # The library is already loaded into this process; it is found by the name of its file.
    names = {line.split()[-1] for line in open("/proc/self/maps") if "libtarvelon_hx.so" in line}
    fail = ctypes.CDLL(names.pop())["_Z16utFailAllocationm"]
    fail.argtypes = [ctypes.c_ulong]
    yield fail
    fail(0)


@pytest.mark.parametrize("change", [
    lambda s: s.erase(at(s, 1)), lambda s: s.erase(at(s, 1), s.end()), lambda s: s.erase(2),
    lambda s: s.pop(1), lambda s: s.clear(), lambda s: s.removeAll(ONE),
    lambda s: s.insert(at(s, 1), THREE), lambda s: s.remove(ONE), lambda s: s.__delitem__(slice(None)),
])
def test_an_iterator_is_right_when_memory_runs_out_in_a_call(model, how, change, fail_allocation):
    for countdown in range(1, 200):
        sequence = getattr(Sequence, how)(model)
        sequence += [ZERO, ONE, TWO]
        place = at(sequence, 1)
        try:
            fail_allocation(countdown)
            change(sequence)
        except MemoryError:
            pass
        else:
            return
        finally:
            fail_allocation(0)
        if ONE in sequence:
            assert place.item() == ONE
        else:
            with pytest.raises(K7Q.StaleIterator):
                place.item()
    pytest.fail("the call fails for good")


def test_a_long_sequence_is_walked_and_cleared(model):
    sequence = Sequence.make(model)
    sequence += LITERALS * 2500
    places = [sequence.begin() for _ in range(100)]
    assert len(sequence) == 10_000 and list(sequence) == LITERALS * 2500
    assert sequence.removeAll(ZERO) == 2500
    for place in places:
        with pytest.raises(K7Q.StaleIterator):
            place.item()
