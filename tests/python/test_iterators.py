"""The host's iterators: positions in a sequence that detect its beginning and end."""

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant


@pytest.fixture(params=["texts of a property", "objects of a property", "objects of a made sequence"])
def sequence(request, model, package):
    if request.param.startswith("texts"):
        sequence = variant.PostBuildVariantCondition(model).ValueVariationPoint
        sequence += ["a", "b", "c"]
        return sequence
    is_made = request.param.endswith("made sequence")
    sequence = common.SequenceOfReferenceBase.make(model) if is_made else package.ReferenceBase
    sequence += [common.ReferenceBase(model, True, text, package) for text in "abc"]
    return sequence


def test_a_walk_from_begin_to_end_visits_every_element(sequence):
    place, end, seen = sequence.begin(), sequence.end(), []
    while place.ne(end):
        seen.append(place.item())
        place.getNext()

    assert seen == list(sequence)


def test_begin_is_end_in_an_empty_sequence(package):
    assert package.ReferenceBase.begin() == package.ReferenceBase.end()


def test_get_prev_steps_back(sequence):
    place = sequence.end()
    place.getPrev()

    assert place.item() == sequence[-1]


def test_a_clone_stays_where_it_was(sequence):
    place = sequence.begin()
    clone = place.clone()
    place.getNext()

    assert clone != place and clone == sequence.begin()
    assert clone.item() == sequence[0]


def test_stepping_gives_nothing(sequence):
    assert sequence.begin().getNext() is None


@pytest.mark.parametrize("step, edge", [
    (lambda sequence: sequence.end().item(), "end"), (lambda sequence: sequence.end().getNext(), "end"),
    (lambda sequence: sequence.begin().getPrev(), "beginning"),
])
def test_an_iterator_does_not_leave_its_sequence(sequence, step, edge):
    text = f"the iterator is at the {edge} of its sequence"
    with pytest.raises(K7Q.StaleIterator, match=text) as raised:
        step(sequence)

    assert isinstance(raised.value, TypeError) and isinstance(raised.value, IndexError)


def test_an_iterator_whose_element_is_gone_raises(sequence):
    place = sequence.begin()
    place.getNext()
    sequence.clear()

    for step in (place.item, place.getNext, place.getPrev):
        with pytest.raises(K7Q.StaleIterator, match="the element of the iterator was removed"):
            step()
    for use in (lambda: sequence.erase(place), lambda: sequence.erase(sequence.begin(), place)):
        with pytest.raises(K7Q.StaleIterator, match=r"erase, argument \d: .* got one whose element was removed"):
            use()


def test_an_iterator_is_stale_once_its_sequence_has_changed(sequence):
    place, end = sequence.begin(), sequence.end()
    elements = list(sequence)
    sequence.clear()
    sequence += elements

    assert place != sequence.begin() and end != sequence.end()
    for use in (place.item, place.getNext, place.getPrev, end.getPrev):
        with pytest.raises(K7Q.StaleIterator, match="or the sequence has changed"):
            use()


def test_an_iterator_that_a_change_gives_is_fresh(sequence):
    place = sequence.erase(sequence.begin())

    assert place.item() == sequence[0] and place == sequence.begin()


def test_an_iterator_of_a_destroyed_object_says_what_the_model_says(package):
    place = package.ReferenceBase.begin()
    package.destroy()

    for step in (place.item, place.getNext, place.getPrev):
        with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
            step()


def test_erase_at_an_iterator_gives_the_next_place(sequence):
    kept = sequence[1]
    place = sequence.erase(sequence.begin())

    assert place.item() == kept and sequence[0] == kept and len(sequence) == 2


def test_erase_of_a_range_takes_all_between_out(sequence):
    last = sequence.end()
    last.getPrev()
    kept = sequence[2]

    sequence.erase(sequence.begin(), last)

    assert list(sequence) == [kept]


def test_insert_at_an_iterator_puts_before_it(sequence):
    moved = sequence.pop()

    place = sequence.insert(sequence.begin(), moved)

    assert sequence[0] == moved and place.item() == moved


def test_an_iterator_of_another_sequence_is_refused(model, sequence):
    foreign = type(sequence).make(model).begin()

    with pytest.raises(ValueError, match="expected an iterator of this sequence"):
        sequence.erase(foreign)
    assert len(sequence) == 3


@pytest.mark.parametrize("use", [
    lambda sequence: sequence.begin().eq(None), lambda sequence: sequence.begin().ne(None),
    lambda sequence: sequence.erase(None), lambda sequence: sequence.erase(sequence.begin(), None),
    lambda sequence: sequence.insert(None, sequence[0]),
    lambda sequence: type(sequence.begin()).getNext(None),
    lambda sequence: type(sequence.begin()).item(None), lambda sequence: type(sequence.begin()).clone(None),
])
def test_nothing_is_no_iterator(sequence, use):
    with pytest.raises(TypeError):
        use(sequence)

    assert len(sequence) == 3


def test_iterators_of_different_kinds_are_not_equal(sequence, package):
    assert sequence.begin() != package.PackagedElement.begin()
    assert sequence.begin() != 1


def test_an_iterator_of_a_changeable_sequence_compares_with_one_of_its_view(model, package):
    package.ReferenceBase.append(common.ReferenceBase(model))
    view = package.asImmutable().ReferenceBase

    assert isinstance(package.ReferenceBase.begin().eq, object)
    assert view.begin() == view.begin()
    assert (package.ReferenceBase.begin() == view.end()) is False


def test_repr_tells_when_the_sequence_is_gone(model, package):
    place = package.ReferenceBase.begin()
    assert repr(place) == "<common.ReferenceBaseIterator>"

    package.destroy()
    assert repr(place) == "<common.ReferenceBaseIterator destroyed>"


def test_iterators_cannot_be_hashed(sequence):
    with pytest.raises(TypeError):
        hash(sequence.begin())


def test_iterators_of_immutable_sequences_give_immutable_elements(model, package):
    package.ReferenceBase.append(common.ReferenceBase(model))
    place = package.asImmutable().ReferenceBase.begin()

    assert type(place.item()) is common.ImmutableReferenceBase
