"""The result of MetaProperty(), used like a Python collection."""

import copy

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel import foundation, types
from Tarvelon.metamodel.arplatform import MetaPackage, behavior, common

LISTS = [each["fullName"]
         for root in ("Tarvelon.metamodel.foundation", "Tarvelon.metamodel.types",
                      *(f"Tarvelon.metamodel.arplatform.{each.name()}" for each in MetaPackage().subPackages()))
         for each in _tarvelon_host.describe(root)["classes"] if each["metaProperties"]]


def described(full_name):
    return [each["name"] for each in _tarvelon_host.describe(full_name)["metaProperties"]]


def list_of(full_name):
    package, _, short = full_name.rpartition(".")
    return getattr(_tarvelon_host.member(package, short.removesuffix("MetaProperty")), "MetaProperty")()


@pytest.fixture
def properties():
    return common.Package.MetaProperty()


def test_a_list_is_walked_in_the_order_in_which_describe_prints_it(properties):
    names = [each.name() for each in properties]
    assert names == described("Tarvelon.metamodel.arplatform.common.PackageMetaProperty")
    assert names[0] == "ReferenceBase" and "Category" in names and names[-1] == "OwnedMember"


def test_every_list_shows_as_many_properties_as_its_class_publishes():
    assert len(LISTS) == 337
    assert sum(len(list_of(each)) for each in LISTS) == sum(len(described(each)) for each in LISTS) == 6363


@pytest.mark.parametrize("full_name", LISTS)
def test_what_is_walked_is_what_the_methods_give(full_name):
    properties = list_of(full_name)
    for name, found in zip(described(full_name), properties, strict=True):
        assert found == getattr(properties, name)() == properties[name]
        assert found.name() == name and isinstance(found, K7Q.ImmutableProperty)


def test_a_property_is_found_by_its_name(properties):
    assert properties["Category"].owner().name() == "Identifiable"
    assert "Category" in properties and "category" not in properties and "Color" not in properties
    assert properties["Category"] in properties and behavior.Runnable.MetaProperty()["Symbol"] not in properties
    assert 3 not in properties and None not in properties


def test_a_name_that_there_is_not_offers_the_nearest(properties):
    with pytest.raises(K7Q.UnknownName) as raised:
        properties["Categry"]
    assert str(raised.value) == "common.PackageMetaProperty has no property 'Categry'; did you mean 'Category'?"
    assert raised.value.name == "Categry"


def test_what_is_no_name_is_a_type_error(properties):
    with pytest.raises(K7Q.WrongType) as raised:
        properties[0]
    assert str(raised.value) == (
        "common.PackageMetaProperty[]: expected the name of a property as str, got int 0")


def test_the_list_of_a_class_is_the_same_from_an_object(model):
    package = common.Package(model, "Brakes")
    names = [each.name() for each in package.MetaProperty()]
    assert names == [each.name() for each in common.Package.MetaProperty()]
    assert names == [each.name() for each in package.asImmutable().MetaProperty()]


def test_a_name_that_a_method_of_lists_has_is_no_property(properties):
    for name in ("__len__", "__doc__", "", "MetaProperty"):
        assert name not in properties
        with pytest.raises(K7Q.UnknownName):
            properties[name]


def test_a_list_is_neither_made_nor_copied(properties):
    with pytest.raises(K7Q.WrongType) as raised:
        type(properties)()
    assert str(raised.value) == (
        "common.PackageMetaProperty has no constructor: take it from MetaProperty() of the class")
    with pytest.raises(K7Q.WrongType) as raised:
        copy.copy(properties)
    assert str(raised.value) == (
        "common.PackageMetaProperty cannot be copied or pickled: MetaProperty() of the class returns it")


def test_only_lists_of_meta_properties_are_lists():
    kind = _tarvelon_host.MetaProperties
    assert isinstance(foundation.Element.MetaProperty(), kind) and isinstance(types.CompuMethod.MetaProperty(), kind)
    assert not issubclass(common.Package, kind) and not issubclass(common.SequenceOfPackage, kind)
