"""Identity and equality of objects."""

import gc
import weakref

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant


def test_the_same_native_object_is_the_same_python_object(model, package):
    base = common.ReferenceBase(model)
    package.ReferenceBase.append(base)

    assert package.ReferenceBase[0] is base
    assert package.ReferenceBase.at(1) is package.ReferenceBase.front()


def test_an_object_is_met_again_after_it_was_dropped(model, package):
    package.adminData = common.AdminData(model)
    package.adminData.language = "EN"
    gc.collect()

    assert package.adminData.language == "EN"


def test_an_object_and_its_immutable_view_are_two_that_are_equal(package):
    view = package.asImmutable()

    assert view is not package
    assert view == package and package == view
    assert not view != package
    assert hash(view) == hash(package)
    assert len({view, package}) == 1
    assert type(view) is common.ImmutablePackage


def test_the_immutable_view_is_one_object(package):
    assert package.asImmutable() is package.asImmutable()


def test_back_from_the_immutable_view_is_the_object_itself(package):
    assert package.asImmutable().asMutable() is package


def test_a_frozen_view_equals_the_object(model, package):
    frozen = package.asDeviant(model.frozen())

    assert frozen is not package
    assert frozen == package and hash(frozen) == hash(package)
    assert frozen.asDeviant(model) is package
    assert package.asDeviant(None) is package


def test_two_objects_differ_even_with_equal_values(model):
    one, other = common.Package(model, "same"), common.Package(model, "same")

    assert one != other
    assert not one == other


@pytest.mark.parametrize("other", [None, 1, "Brakes", object(), common.Package])
def test_an_object_differs_from_what_is_none(package, other):
    assert package != other
    assert not package == other


def test_objects_have_no_order(model, package):
    with pytest.raises(TypeError):
        package < common.Package(model)


def test_a_sequence_of_a_property_is_one_object_while_it_is_held(package):
    sequence = package.ReferenceBase

    assert package.ReferenceBase is sequence
    assert package.PackagedElement is not sequence


def test_the_sequence_follows_object_property_and_mutability(model, package):
    view = package.asImmutable()
    other = common.Package(model)

    assert view.ReferenceBase is view.ReferenceBase
    assert view.ReferenceBase is not package.ReferenceBase
    assert other.ReferenceBase is not package.ReferenceBase
    assert type(view.ReferenceBase) is common.ImmutableSequenceOfImmutableReferenceBase
    assert type(package.ReferenceBase) is common.SequenceOfReferenceBase


def test_a_held_sequence_keeps_its_owner_as_the_object_it_is(model):
    sequence = common.Package(model, "kept").ReferenceBase
    gc.collect()

    sequence.append(common.ReferenceBase(model))

    assert len(sequence) == 1


def test_several_sequences_of_one_object_come_and_go_in_any_order(package):
    held = [package.ReferenceBase, package.PackagedElement, package.PackageImport, package.ElementImport]
    for index in (2, 0, 1):
        held[index] = None

    assert package.ElementImport is held[3]
    assert len(package.PackageImport) == 0


def test_a_sequence_equals_itself_alone(model, package):
    assert package.ReferenceBase == package.ReferenceBase
    assert package.ReferenceBase != []
    assert package.ReferenceBase != common.Package(model).ReferenceBase


def test_enumeration_values_are_new_objects_that_are_equal():
    one, other = variant.BindingTimeKind.LinkTime, variant.BindingTimeKind.LinkTime

    assert one is not other
    assert one == other and hash(one) == hash(other)


def test_iterators_are_new_objects_that_are_equal(package):
    assert package.ReferenceBase.begin() is not package.ReferenceBase.begin()
    assert package.ReferenceBase.begin() == package.ReferenceBase.begin()


def test_a_model_is_met_as_itself(model, package):
    assert package.getModel() is model


def test_a_cast_gives_an_object_of_its_own_class_at_once(package):
    cast = common.ImmutableIdentifiable.cast(package)

    assert type(cast) is common.ImmutablePackage
    assert package.asImmutable() is cast
    assert cast.Name == "Brakes"


def test_objects_can_be_referred_to_weakly(model):
    package = common.Package(model)
    dropped = []
    reference = weakref.ref(package, dropped.append)
    assert reference() is package

    del package

    assert reference() is None
    assert dropped == [reference]


def test_an_object_that_is_dropped_may_be_met_in_the_callback(model, package):
    package.adminData = common.AdminData(model)
    met = []
    data = package.adminData
    reference = weakref.ref(data, lambda _: met.append(package.adminData))

    del data

    assert reference() is None
    assert met[0] is package.adminData
    assert type(met[0]) is common.AdminData


def test_the_host_is_not_searched_for_cycles(package):
    # The objects cannot be part of a reference cycle, so the garbage collector must not track them.
    gc.collect()
    sequence = package.ReferenceBase
    objects = [package, sequence, sequence.begin(), variant.BindingTimeKind.LinkTime]
    nested = objects
    for _ in range(100):
        nested = [nested]
    gc.collect()

    assert not any(map(gc.is_tracked, objects))
    assert K7Q.Model.__flags__ & (1 << 14) == 0


def test_an_object_is_in_no_sequence_of_texts(model, package):
    texts = variant.PostBuildVariantCondition(model).ValueVariationPoint
    texts += ["a", "b"]

    for other in (package, model, package.MetaClass(), common.Package.MetaProperty().Name(), texts):
        assert other not in texts


def test_repr_of_a_sequence_tells_its_size_and_whether_it_only_reads(model, package):
    assert repr(package.ReferenceBase) == "<common.SequenceOfReferenceBase of 0>"
    frozen = package.asDeviant(model.frozen())
    assert repr(frozen.ReferenceBase) == "<common.SequenceOfReferenceBase of 0 immutable>"
    assert repr(package.OwnedElement) == "<foundation.ImmutableSequenceOfElement of 0 immutable>"


@pytest.mark.parametrize("make", ["make", "makeUnique"])
def test_a_sequence_of_its_own_wants_a_model(make):
    with pytest.raises(K7Q.WrongType, match=f"{make}, argument 1: expected a model, got None"):
        getattr(common.SequenceOfPackage, make)(None)
