"""Sequences: the host's methods, which count from 1, and Python's operators, which count from 0."""

import collections.abc
import gc

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant


@pytest.fixture
def texts(model):
    """A property's sequence of texts."""
    sequence = variant.PostBuildVariantCondition(model).ValueVariationPoint
    sequence += ["a", "b", "c", "d"]
    return sequence


@pytest.fixture
def bases(model, package):
    """A property's sequence of objects."""
    sequence = package.ReferenceBase
    sequence += [common.ReferenceBase(model, True, text, package) for text in "abcd"]
    return sequence


def labels(sequence):
    return "".join(base.ShortLabel for base in sequence)


def test_a_new_sequence_is_empty(package):
    assert len(package.ReferenceBase) == 0
    assert not package.ReferenceBase
    assert list(package.ReferenceBase) == []


def test_len_truth_and_the_hosts_size_agree(bases):
    assert len(bases) == bases.size() == 4
    assert bases and not bases.isEmpty()


def test_the_host_counts_from_1(bases):
    assert bases.at(1) is bases[0]
    assert bases.at(4) is bases[3] is bases.back()


@pytest.mark.parametrize("index, text", [(0, "a"), (3, "d"), (-1, "d"), (-4, "a"), (True, "b")])
def test_an_index_counts_from_0_and_back_from_the_end(texts, index, text):
    assert texts[index] == text


@pytest.mark.parametrize("index", [4, -5, 2**31, -2**31, 2**63, -2**63, 10**30])
def test_an_index_out_of_range_is_an_index_error(texts, index):
    with pytest.raises(IndexError) as raised:
        texts[index]
    assert isinstance(raised.value, K7Q.OutOfBounds)
    assert str(raised.value) == f"SequenceOfString[{index}]: the sequence has 4 elements"

    with pytest.raises(IndexError):
        texts[index] = "x"
    with pytest.raises(IndexError):
        del texts[index]
    with pytest.raises(IndexError):
        texts.pop(index)
    assert list(texts) == ["a", "b", "c", "d"]


@pytest.mark.parametrize("index", ["0", None, 1.0, (0, 1)])
def test_an_index_that_is_no_number_is_a_type_error(texts, index):
    with pytest.raises(TypeError, match="expected an int from 0 or a slice"):
        texts[index]
    with pytest.raises(TypeError):
        del texts[index]


@pytest.mark.parametrize("index", [0, -1, 5, 2**31 - 1, -2**31])
def test_the_hosts_index_out_of_range_has_the_hosts_text(texts, index):
    text = "sequence index must be positive" if index < 1 else "sequence index out of bounds"

    with pytest.raises(K7Q.Exception, match=text):
        texts.at(index)


SLICES = [slice(None), slice(1, 3), slice(None, None, -1), slice(-2, None), slice(0, 0), slice(3, 1),
          slice(0, 99, 2), slice(99, None), slice(-99, 2), slice(None, None, 3), slice(3, 0, -2)]


@pytest.mark.parametrize("part", SLICES)
def test_a_slice_is_a_list(texts, part):
    assert texts[part] == ["a", "b", "c", "d"][part]
    assert type(texts[part]) is list


@pytest.mark.parametrize("part", SLICES)
def test_a_slice_is_deleted(texts, part):
    expected = ["a", "b", "c", "d"]
    del expected[part]

    del texts[part]

    assert list(texts) == expected


def test_an_element_is_assigned_and_deleted(texts):
    texts[1] = "x"
    del texts[0], texts[-1]

    assert list(texts) == ["x", "c"]


def test_in_finds_by_equality(model, bases, texts):
    assert bases[2] in bases and bases[2].asImmutable() in bases
    assert common.ReferenceBase(model) not in bases
    assert "b" in texts and "x" not in texts
    assert None not in bases and 5 not in texts and "a" not in bases


def test_index_and_count_find_by_equality(bases, texts):
    assert bases.index(bases[2].asImmutable()) == 2
    assert texts.index("c") == 2 and texts.index("c", 1, 3) == 2 and texts.index("d", -2) == 3
    texts.append("a")
    assert texts.count("a") == 2 and texts.count("x") == 0 and texts.count(5) == 0


@pytest.mark.parametrize("use", [lambda texts: texts.index("x"), lambda texts: texts.index("c", 3),
                                 lambda texts: texts.index("c", 0, 2), lambda texts: texts.remove("x")])
def test_what_is_not_there_is_a_value_error(texts, use):
    with pytest.raises(ValueError, match="is not in the sequence"):
        use(texts)


def test_remove_takes_the_first_equal_element_out(bases, texts):
    third = bases[2]

    bases.remove(bases[1])
    texts.append("b")
    texts.remove("b")

    assert bases[1] is third and len(bases) == 3
    assert list(texts) == ["a", "c", "d", "b"]


def test_pop_takes_an_element_out_and_gives_it(texts):
    assert [texts.pop(), texts.pop(0), texts.pop(-2)] == ["d", "a", "b"]
    assert list(texts) == ["c"]


def test_an_object_that_was_popped_is_as_it_was(bases):
    base = bases.pop()

    assert base.isvalid() and base.ShortLabel == "d" and len(bases) == 3


def test_pop_of_an_empty_sequence_is_an_index_error(package):
    with pytest.raises(IndexError, match="SequenceOfReferenceBase.pop: the sequence is empty"):
        package.ReferenceBase.pop()


def test_extend_and_plus_assign_add_one_after_another(model, package):
    sequence = package.ReferenceBase
    one, two, three = (common.ReferenceBase(model) for _ in range(3))

    sequence.extend(iter([one]))
    sequence += (two, three)

    assert list(sequence) == [one, two, three]


def test_plus_assign_works_on_the_property_itself(model, package):
    package.ReferenceBase += [common.ReferenceBase(model)]
    package.ReferenceBase += []

    assert len(package.ReferenceBase) == 1


def test_a_sequence_is_extended_by_itself(texts):
    texts += texts

    assert "".join(texts) == "abcdabcd"


def test_extend_stops_at_what_is_refused_and_keeps_what_went_before(model, package, bases):
    with pytest.raises(TypeError):
        bases.extend([common.ReferenceBase(model, False, "e", package), common.AdminData(model)])

    assert labels(bases) == "abcde"


@pytest.mark.parametrize("elements", [5, None, object()])
def test_extend_wants_something_to_iterate(texts, elements):
    with pytest.raises(TypeError):
        texts.extend(elements)


def test_the_hosts_methods_change_the_sequence(texts):
    texts.push_back("e")
    texts.push_front("z")
    texts.insert(2, "y")
    texts.replace(3, "x")
    texts.erase(4)
    texts.pop_front()
    texts.pop_back()

    assert list(texts) == ["y", "x", "c", "d"]
    assert texts.removeAll("c") == 1 and texts.removeAll("c") == 0
    texts.clear()
    assert texts.isEmpty()


def test_reversed_walks_backwards(texts):
    assert list(reversed(texts)) == ["d", "c", "b", "a"]


def test_a_sequence_is_one_of_pythons_sequences(texts):
    assert isinstance(texts, collections.abc.Sequence)
    match texts:
        case [first, *rest]:
            assert (first, rest) == ("a", ["b", "c", "d"])
    assert max(texts) == "d" and "".join(sorted(texts, reverse=True)) == "dcba"


def test_iteration_ends_once_and_stays_ended(texts):
    walk = iter(texts)

    assert list(walk) == ["a", "b", "c", "d"]
    assert list(walk) == []
    texts.append("e")
    assert list(walk) == []


def test_an_iteration_keeps_its_sequence(model):
    walk = iter(variant.PostBuildVariantCondition(model).ValueVariationPoint)
    gc.collect()

    assert list(walk) == []


@pytest.mark.parametrize("change", [lambda bases: bases.pop(), lambda bases: bases.clear(),
                                    lambda bases: bases[0].destroy()])
def test_a_change_during_iteration_is_a_runtime_error(bases, change):
    walk = iter(bases)
    next(walk)
    change(bases)

    with pytest.raises(RuntimeError, match="changed while it was iterated: it had 4 elements and has"):
        next(walk)


def test_iteration_over_a_copy_may_change_the_sequence(bases):
    for base in list(bases):
        bases.remove(base)

    assert len(bases) == 0


def test_an_iteration_after_close_raises(model, bases):
    walk = iter(bases)
    next(walk)
    model.close()

    with pytest.raises(K7Q.Exception):
        next(walk)


@pytest.mark.parametrize("use", [
    lambda bases: bases.push_back(None), lambda bases: bases.append(None),
    lambda bases: bases.insert(1, None), lambda bases: bases.insert(None, bases[0]),
    lambda bases: bases.replace(1, None), lambda bases: bases.erase(None),
    lambda bases: bases.removeAll(None), lambda bases: bases.extend([None]), lambda bases: bases.at(None),
    lambda bases: bases.__setitem__(0, None),
])
def test_nothing_is_no_element_iterator_or_index(bases, use):
    with pytest.raises(TypeError):
        use(bases)

    assert labels(bases) == "abcd"


@pytest.mark.parametrize("element", [[], (1, 2), {}, object(), 5, "text"])
def test_an_element_of_another_kind_is_a_type_error(bases, element):
    with pytest.raises(TypeError):
        bases.append(element)

    assert len(bases) == 4


def test_an_element_of_another_class_is_a_type_error(model, bases):
    with pytest.raises(TypeError):
        bases.append(common.AdminData(model))
    with pytest.raises(TypeError):
        bases.append(common.ReferenceBase(model).asImmutable())


def test_an_element_of_another_model_is_a_value_error(bases):
    with K7Q.Model.create() as other:
        with pytest.raises(ValueError):
            bases.append(common.ReferenceBase(other))

    assert len(bases) == 4


@pytest.mark.parametrize("change", [
    lambda sequence: sequence.append, lambda sequence: sequence.clear, lambda sequence: sequence.erase,
])
def test_a_sequence_that_cannot_be_changed_has_no_method_for_it(package, change):
    with pytest.raises(AttributeError):
        change(package.asImmutable().ReferenceBase)


@pytest.mark.parametrize("change", [
    lambda sequence: sequence.pop(), lambda sequence: sequence.remove(sequence[0]),
    lambda sequence: sequence.extend([1]), lambda sequence: sequence.__iadd__([1]),
    lambda sequence: sequence.__delitem__(0), lambda sequence: sequence.__setitem__(0, sequence[0]),
    lambda sequence: sequence.__delitem__(slice(None)),
])
def test_a_sequence_that_cannot_be_changed_says_so(package, bases, change):
    view = package.asImmutable().ReferenceBase
    with pytest.raises(TypeError, match="common.ImmutableSequenceOfImmutableReferenceBase cannot be changed"):
        change(view)

    assert len(view) == 4


def test_elements_of_an_immutable_sequence_are_immutable(package, bases):
    element = package.asImmutable().ReferenceBase[0]

    assert type(element) is common.ImmutableReferenceBase
    assert element == bases[0]


def test_a_frozen_view_refuses_to_change_its_sequence(model, package, bases):
    frozen = package.asDeviant(model.frozen())

    with pytest.raises(K7Q.Exception, match="read-only"):
        frozen.ReferenceBase.clear()
    assert len(frozen.ReferenceBase) == 4


def test_a_property_holds_a_reference_once(model, package):
    constant = variant.PredefinedVariant(model, "v")
    included = variant.PredefinedVariant(model, "w")
    constant.IncludedVariant += [included, included]

    assert list(constant.IncludedVariant) == [included]


def test_make_keeps_duplicates_and_make_unique_does_not(model, package):
    many = common.SequenceOfPackage.make(model)
    once = common.SequenceOfPackage.makeUnique(model)
    many += [package, package]
    once += [package, package]

    assert list(many) == [package, package]
    assert list(once) == [package]


def test_a_made_sequence_keeps_its_elements_alive(model):
    sequence = common.SequenceOfPackage.make(model)
    sequence.append(common.Package(model, "kept"))
    gc.collect()

    assert sequence[0].Name == "kept"


def test_a_derived_sequence_cannot_be_changed(model, package):
    nested = common.Package(model, "nested")
    package.PackagedElement.append(nested)

    assert list(package.NestedPackage) == [nested]
    with pytest.raises(TypeError, match="cannot be changed"):
        package.NestedPackage.pop()


def test_a_view_sees_what_happens_to_the_list(model, package):
    view = package.asImmutable().PackagedElement
    assert len(view) == 0

    package.PackagedElement.append(common.Package(model, "later"))

    assert [element.Name for element in view] == ["later"]


def test_an_unknown_method_names_the_nearest(texts):
    with pytest.raises(AttributeError, match="has no property or method 'apend'; did you mean 'append'?"):
        texts.apend("x")


@pytest.mark.parametrize("call", [lambda texts: texts.index(), lambda texts: texts.index(1, 2, 3, 4),
                                  lambda texts: texts.pop(1, 2), lambda texts: texts.append("a", "b")])
def test_a_wrong_number_of_arguments_is_a_type_error(texts, call):
    with pytest.raises(K7Q.WrongType):
        call(texts)


def test_a_made_sequence_takes_valid_objects_of_its_model_alone(model, package):
    made = common.SequenceOfPackage.make(model)
    gone = common.Package(model, "Gone")
    gone.destroy()
    foreign = common.Package(K7Q.Model.create(), "Foreign")

    with pytest.raises(K7Q.WrongValue, match="got .*common.Package that was destroyed"):
        made.append(gone)
    with pytest.raises(K7Q.WrongValue, match="expected .* of the model that the sequence was made for"):
        made.append(foreign)
    made.append(package)
    with pytest.raises(K7Q.WrongValue):
        made[0] = foreign
    assert list(made) == [package]


def test_a_made_sequence_ends_with_its_model():
    model = K7Q.Model.create()
    made = common.SequenceOfPackage.make(model)
    made.append(common.Package(model, "P"))
    model.close()

    for use in (made.size, made.clear, made.begin, made.pop_back, lambda: made[0], lambda: len(made)):
        with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
            use()


def test_a_made_sequence_keeps_its_model():
    made = common.SequenceOfPackage.make(K7Q.Model.create())
    assert len(made) == 0
