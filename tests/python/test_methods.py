"""Methods: binding, calling, help and docstrings."""

import inspect
import pydoc

import pytest
from catalog import host_classes, metamodel_classes

import K7Q
import _tarvelon_host
from Tarvelon.metamodel.arplatform import behavior, common, manifest, port, variant


def test_a_method_is_called_on_an_object_or_through_its_class(package):
    assert package.isvalid() is True
    assert common.Package.isvalid(package) is True
    assert common.Identifiable.isvalid(package) is True


def test_a_method_that_takes_its_object_as_an_argument_is_called_both_ways(model, package):
    package.ReferenceBase.append(common.ReferenceBase(model))

    assert package.ReferenceBase.at(1) is common.SequenceOfReferenceBase.at(package.ReferenceBase, 1)


def test_a_bound_method_keeps_its_object(model):
    bound = common.Package(model, "kept").isvalid

    assert bound() is True
    assert bound.__self__.Name == "kept" and bound.__name__ == "isvalid"


def test_a_static_method_is_called_on_class_and_object(package):
    assert common.Package.MetaClass().name() == "Package"
    assert package.MetaClass() == common.Package.MetaClass()


@pytest.mark.parametrize("arguments", [(), (None,), (5,), ("x",)])
def test_a_method_of_a_class_wants_an_object_of_it(arguments):
    with pytest.raises(TypeError, match="Package.isvalid: expected an object of class"):
        common.Package.isvalid(*arguments)


def test_a_method_of_a_class_refuses_an_object_of_another(model):
    with pytest.raises(TypeError, match="Package.isvalid: expected an object of class"):
        common.Package.isvalid(common.AdminData(model))


def test_cast_gives_the_object_or_nothing(package):
    assert common.Package.cast(package) is package
    assert variant.SystemConst.cast(package) is None
    assert common.Package.cast(None) is None


def test_a_method_without_result_gives_none(package):
    assert package.destroy() is None


def test_as_deviant_of_nothing_is_the_object(package):
    assert package.asDeviant(None) is package


def test_meta_properties_are_read_by_name():
    entry = common.Package.MetaProperty().ReferenceBase()

    assert type(entry) is K7Q.ImmutableProperty
    assert entry.name() == "ReferenceBase"


def test_dir_lists_what_an_object_has(package):
    assert {"Name", "category", "ReferenceBase", "isvalid", "asImmutable"} <= set(dir(package))


def test_a_docstring_of_a_class_lists_constructors_and_properties():
    text = common.Package.__doc__

    assert text.startswith("A package, which groups elements and gives them a namespace. ")
    assert "\n\nPackage(model: K7Q.Model)\nPackage(model: K7Q.Model, name: char vector)\n\n" in text
    assert "\n    category: char, 0..1, writable\n" in text
    assert "\n    NestingPackage: foundation.Package, 0..1, read-only\n" in text
    assert "\n    ReferenceBase: common.ReferenceBase, 0..*, writable\n" in text
    assert "\n    Name: char, 1, writable\n" in text


@pytest.mark.parametrize("class_, line", [
    (variant.SystemConstValue, "ValueVariationPoint: char, 0..*, writable"),
    (manifest.Process, "LogTraceLogMode: manifest.LogTraceLogModeEnum, 0..*, writable"),
    (port.DataFilter, "mask: int32 scalar, 0..1, writable"),
    (behavior.ImmutableRunnable, "symbol: char, 1, writable"),
])
def test_a_docstring_of_a_class_shows_plain_types(class_, line):
    assert f"\n    {line}\n" in class_.__doc__


def test_a_docstring_of_a_package_begins_with_its_purpose():
    assert behavior.__doc__.startswith("What goes on inside a component: ")
    assert behavior.__doc__.endswith("\n\nThe package Tarvelon.metamodel.arplatform.behavior: dir() lists its "
                                     "contents.")


def test_a_docstring_of_a_property_tells_type_multiplicity_and_mutability():
    assert common.Package.category.__doc__ == "char, 0..1, writable"
    assert common.Package.Owner.__doc__ == "foundation.Element, 0..1, read-only"


def test_a_docstring_of_a_method_lists_every_signature(package):
    assert package.isvalid.__doc__ == "isvalid() -> logical scalar"
    assert common.SequenceOfPackage.erase.__doc__ == (
        "erase(common.PackageIterator) -> common.PackageIterator\n"
        "erase(common.PackageIterator, common.PackageIterator) -> common.PackageIterator\n"
        "erase(int32 scalar) -> void")


def test_help_shows_classes_properties_methods_and_packages(package):
    text = pydoc.plain(pydoc.render_doc(common.Package))
    assert "class Package(ImmutablePackage, Identifiable, Tarvelon.metamodel.foundation.Package)" in text
    assert "char, 0..1, writable" in text and "isvalid() -> logical scalar" in text
    assert " |  Package(model: K7Q.Model)\n |  Package(model: K7Q.Model, name: char vector)\n" in text
    assert " |      NestingPackage: foundation.Package, 0..1, read-only\n" in text
    assert "The base of" in pydoc.plain(pydoc.render_doc(_tarvelon_host.Sequence))
    assert "The type of the host's classes." == _tarvelon_host.HostClass.__doc__
    text = pydoc.plain(pydoc.render_doc(variant.BindingTimeKind))
    assert "LinkTime = variant.BindingTimeKind.LinkTime" in text
    assert "isvalid() -> logical scalar" in pydoc.plain(pydoc.render_doc(package.isvalid))
    assert "class ReferenceBase" in pydoc.plain(pydoc.render_doc(common))


def test_inspection_of_a_class_finds_members(package):
    members = dict(inspect.getmembers(common.Package))

    assert inspect.isdatadescriptor(members["Name"])
    assert inspect.isroutine(members["isvalid"])
    assert inspect.getdoc(package).startswith("A package, which groups elements")


def test_descriptors_show_what_they_are(package):
    assert repr(common.Package.Name) == "<property Name of foundation.ImmutableNamedElement>"
    assert repr(common.Package.isvalid) == "<method common.Package.isvalid>"
    assert repr(package.isvalid) == "<method common.Package.isvalid>"
    assert repr(common.Package) == "<class 'Tarvelon.metamodel.arplatform.common.Package'>"


def test_bound_methods_are_equal_as_pythons_are(model, package):
    other = common.Package(model)

    assert package.isvalid == package.isvalid and hash(package.isvalid) == hash(package.isvalid)
    assert package.isvalid != other.isvalid and package.isvalid != package.destroy
    assert package.isvalid != 1 and {package.isvalid, package.isvalid, other.isvalid} == {
        other.isvalid, package.isvalid}


def test_many_methods_can_be_held_at_once(package):
    held = [package.isvalid for _ in range(50)]

    assert all(method() for method in held)


# Members that Python adds to objects, and entries of JSON besides the properties.
ADDED = {"clone", "file", "foreign", "listen", "qualifiedName", "referrers", "to_dict", "to_json", "unresolved", "validate"}
IN_JSON = {"class", "id"}


def test_no_property_or_method_of_a_class_hides_what_all_objects_have():
    both = (K7Q.ClassObject, K7Q.ImmutableClassObject)
    there = {name for cls in both for name in vars(cls) if not name.startswith("__")}
    own = {each["name"] for cls in both for each in _tarvelon_host.describe(f"K7Q.{cls.__name__}")["methods"]}
    assert there - own == ADDED

    records = host_classes() + [each for package in ("foundation", "types")
                                for each in _tarvelon_host.describe(f"Tarvelon.metamodel.{package}")["classes"]]
    # Properties are published by the immutable class.
    classes = metamodel_classes()
    pairs = {name for cls in classes for name in (cls["fullName"], cls["superclasses"][0])}
    assert len(classes) == 284 and len(pairs) == 568 and pairs <= {each["fullName"] for each in records}
    properties = {(each["name"], cls["fullName"]) for cls in records for each in cls["properties"]}
    methods = {(each["name"], cls["fullName"]) for cls in records if cls["fullName"] in pairs
               for each in cls["methods"]}
    assert len({name for name, _ in properties}) > 290
    assert [pair for pair in properties if pair[0] in there | IN_JSON] == []
    assert [pair for pair in methods if pair[0] in ADDED] == []
