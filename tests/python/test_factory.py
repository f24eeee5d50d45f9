"""The factory: creating models that can be found again, and creating objects in a model."""

import gc
import pydoc
import re
import weakref

import pytest

import K7Q
from Tarvelon.metamodel import arplatform, foundation, types
from Tarvelon.metamodel.arplatform import Factory, ImmutableFactory, common, documentation, variant

PREFIX = "createmetamodelarplatform"
PACKAGES = ["documentation", "common", "variant", "interface", "port", "component", "behavior", "instance",
            "composition", "ecuc", "manifest", "timingExtension", "system"]
MAKERS = sorted(name for name in dir(Factory) if name.startswith(PREFIX))


@pytest.fixture
def model():
    with Factory.createNewModel() as model:
        yield model


@pytest.fixture
def factory(model):
    return Factory.createNewFactory(model)


def uris():
    return list(K7Q.Model.uris())


def class_of(maker):
    package = next(name for name in PACKAGES if maker.removeprefix(PREFIX).startswith(name))
    return f"{package}.{maker.removeprefix(PREFIX + package)}"


def test_each_model_has_a_uri_of_its_own():
    with Factory.createNewModel() as one, Factory.createNewModel() as two:
        assert one is not two
        assert one.getUri() != two.getUri()
        assert two.getUri().startswith("untitled")


def test_a_bound_model_is_found_by_its_uri(model):
    assert K7Q.Model.find(model.getUri()) is model
    assert model.getUri() in uris()


def test_a_bound_model_lives_without_a_script_that_holds_it():
    uri = Factory.createNewModel().getUri()
    gc.collect()

    found = K7Q.Model.find(uri)
    assert found.isvalid()
    found.close()
    assert K7Q.Model.find(uri) is None


def test_a_closed_model_gives_its_uri_back():
    model = Factory.createNewModel()
    uri = model.getUri()
    model.close()

    assert K7Q.Model.find(uri) is None and uri not in uris()
    with Factory.createNewModel() as next_one:
        assert next_one.getUri() == uri


def test_models_lists_those_that_are_bound_and_open_in_their_order(model):
    with Factory.createNewModel() as second, K7Q.Model.create() as unbound:
        listed = K7Q.models()

        assert type(listed) is list
        assert listed[-2:] == [model, second] and unbound not in listed
    assert K7Q.models()[-1] is model


def test_a_model_is_bound_under_the_uri_that_a_script_gives(model):
    old = model.getUri()
    model.setUri("brakes.arxml")

    assert K7Q.Model.find("brakes.arxml") is model
    assert K7Q.Model.find(old) is None


def test_the_uri_of_another_open_model_is_a_value_error(model):
    with Factory.createNewModel() as other:
        kept = other.getUri()
        with pytest.raises(ValueError, match="is taken by another open model"):
            other.setUri(model.getUri())

        assert other.getUri() == kept and K7Q.Model.find(kept) is other
        assert K7Q.Model.find(model.getUri()) is model


@pytest.mark.parametrize("uri", ["", "nobody", "Untitled", "ö\U0001F697", "x" * 100_000])
def test_an_unknown_uri_finds_nothing(uri):
    assert K7Q.Model.find(uri) is None


@pytest.mark.parametrize("uri", [None, 3, b"untitled", "a\0b", "\ud800"])
def test_what_is_no_uri_is_refused(uri):
    with pytest.raises((TypeError, ValueError)) as raised:
        K7Q.Model.find(uri)
    assert isinstance(raised.value, K7Q.Exception)


def test_createNewModel_is_called_at_the_class_and_at_an_object(factory):
    with factory.createNewModel() as model:
        assert model.isvalid()
    with pytest.raises(TypeError):
        Factory.createNewModel("name")


def test_no_model_gives_no_factory():
    assert Factory.createNewFactory(None) is None


@pytest.mark.parametrize("arguments", [(), (3,), ("untitled",)])
def test_what_is_no_model_gives_no_factory(arguments):
    with pytest.raises(TypeError):
        Factory.createNewFactory(*arguments)


def test_a_read_only_model_gives_no_factory(model):
    with pytest.raises(TypeError):
        Factory.createNewFactory(model.frozen())


def test_a_factory_cannot_be_constructed(model):
    with pytest.raises(TypeError):
        Factory(model)


def test_a_factory_is_one_of_the_kernels_factory_objects(factory):
    assert isinstance(factory, K7Q.FactoryObject) and isinstance(factory, K7Q.Object)
    assert type(factory) is Factory
    assert repr(factory) == "<arplatform.Factory>"


def test_a_factory_knows_its_model(model, factory):
    assert factory.getModel() is model and factory.isvalid()


def test_a_factory_holds_its_model():
    factory = Factory.createNewFactory(K7Q.Model.create())
    gc.collect()

    assert factory.create("common.Package", "kept").Name == "kept"


def test_a_factory_of_a_closed_model_makes_nothing(model, factory):
    model.close()

    assert not factory.isvalid()
    for make in (lambda: factory.create("common.Package"), lambda: factory.createFromString("common.Package"),
                 lambda: Factory.createNewFactory(model), factory.getModel,
                 factory.createmetamodelarplatformcommonPackage):
        with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
            make()
    assert "closed" in repr(factory) or "destroyed" in repr(factory)


@pytest.mark.parametrize("maker", MAKERS)
def test_every_class_is_made_in_three_ways(model, factory, maker):
    name = class_of(maker)
    package, short = name.split(".")
    cls = getattr(getattr(arplatform, package), short)

    made = [getattr(factory, maker)(), factory.create(name), factory.create(cls),
            factory.createFromString(name)]

    assert [type(each) for each in made] == [cls] * 4
    assert all(each.getModel() is model for each in made) and len(set(made)) == 4


def test_there_is_a_maker_for_each_concrete_class():
    assert len(MAKERS) == 223


def test_create_passes_its_arguments_on(factory):
    sd = factory.create("common.Sd", "key", "value")
    package = factory.create(common.Package, "Brakes")
    base = factory.create("common.ReferenceBase", True, "default", package)

    assert (sd.gid, sd.Value, package.Name) == ("key", "value", "Brakes")
    assert (base.IsDefault, base.ShortLabel, base.Package) == (True, "default", package)


class Name(str):
    __hash__ = None


@pytest.mark.parametrize("cls", ["common.Package", common.Package, Name("common.Package")])
def test_create_does_the_second_time_what_it_did_the_first_time(model, factory, cls):
    other = Factory.createNewFactory(K7Q.Model.create())
    for maker in (factory, other, factory):
        made = maker.create(cls, "Brakes")
        assert (type(made), made.Name, made.getModel()) == (common.Package, "Brakes", maker.getModel())
        with pytest.raises(K7Q.WrongType, match="by position"):
            maker.create(cls, aName="Brakes")
        with pytest.raises(K7Q.WrongType, match="there are"):
            maker.create(cls, 1)
        with pytest.raises(K7Q.WrongType, match="Factory.create: expected a factory to be called on, got Package"):
            type(maker).create(made, cls)
        with pytest.raises(K7Q.Exception):
            maker.asDeviant(model.frozen()).create(cls, "Brakes")


def test_create_takes_a_full_name(factory):
    assert type(factory.create("Tarvelon.metamodel.arplatform.common.Package")) is common.Package


def test_create_lists_the_signatures_when_none_fits(factory):
    with pytest.raises(TypeError, match=r"createmetamodelarplatformcommonPackage\(char vector"):
        factory.create("common.Package", 3)
    with pytest.raises(TypeError):
        factory.create("common.Package", "a", "b")


@pytest.mark.parametrize("name, near", [("common.Pakage", "common.Package"), ("Package", "common.Package"),
                                        ("commn.Package", "common.Package")])
def test_create_names_the_nearest_of_an_unknown_class(factory, name, near):
    text = f"the factory cannot create '{name}'; did you mean '{near}'?"
    with pytest.raises(AttributeError, match=text) as raised:
        factory.create(name)
    assert isinstance(raised.value, K7Q.UnknownName)


@pytest.mark.parametrize("name", ["", ".", "common", "common.", ".Package", "common.package",
                                  "comm.onPackage", "commonPa.ckage", "commonPackage", "common.Package.",
                                  " common.Package",
                                  "common.Sdg.Sd", "K7Q.Model", "common.Package\0", "common.\ud800",
                                  "common.ö", "common.SequenceOfPackage", "common.ImmutablePackage",
                                  "variant.BindingTimeKind", "Factory", "x" * 10_000,
                                  "__class__", "common.__class__", "component.Component"])
def test_what_is_no_name_of_a_class_is_refused(factory, name):
    with pytest.raises(K7Q.Exception):
        factory.create(name)


def test_create_says_of_an_abstract_class_what_it_is(factory):
    for cls in (common.Identifiable, "common.Identifiable"):
        with pytest.raises(TypeError, match="create: class 'Tarv.*common.Identifiable' is abstract: .* one of its subclasses"):
            factory.create(cls)


@pytest.mark.parametrize("cls", [None, 3, int, b"common.Package", ["common.Package"], object()])
def test_what_is_no_class_is_a_type_error(factory, cls):
    text = "expected a class or its name, as in 'common.Package', got "
    with pytest.raises(TypeError, match=text) as raised:
        factory.create(cls)
    assert isinstance(raised.value, K7Q.Exception)


@pytest.mark.parametrize("cls", [K7Q.Model, K7Q.Object, Factory, common.ImmutablePackage,
                                 common.SequenceOfPackage, variant.BindingTimeKind, foundation.Domain,
                                 types.CompuMethod, "Tarvelon.metamodel.types.CompuMethod"])
def test_a_class_that_is_not_made_is_refused(factory, cls):
    with pytest.raises(K7Q.Exception) as raised:
        factory.create(cls)
    assert "Factory.create: " in str(raised.value)


def test_create_takes_its_arguments_by_position(factory):
    for call in (lambda: factory.create(), lambda: factory.create("common.Package", aName="Brakes")):
        with pytest.raises(K7Q.WrongType, match="by position"):
            call()


def test_an_object_of_another_model_is_a_value_error(factory):
    with Factory.createNewModel() as other:
        foreign = Factory.createNewFactory(other).create("common.Package")
        with pytest.raises(ValueError):
            factory.create("common.ReferenceBase", True, "base", foreign)


@pytest.mark.parametrize("make", [lambda factory: factory.createFromString("common.Package", "Brakes"),
                                  lambda factory: factory.createFromString(
                                      "Tarvelon.metamodel.arplatform.common.Package", "Brakes")])
def test_createFromString_sets_the_name(factory, make):
    package = make(factory)

    assert type(package) is common.Package and package.Name == "Brakes"


@pytest.mark.parametrize("arguments, error, text", [
    (("common.Pakage",), AttributeError, "there is no class 'common.Pakage'; did you mean 'common.Package'?"),
    (("common.Identifiable",), K7Q.Exception, "Identifiable.*abstract|abstract.*Identifiable"),
    (("documentation.DocRevision", "first"), ValueError, "'documentation.DocRevision' have no name"),
    (("common.Package", "a\0b"), ValueError, "NUL"),
    ((None,), TypeError, ""), ((3,), TypeError, ""), ((), TypeError, ""),
])
def test_createFromString_refuses_with_a_reason(factory, arguments, error, text):
    with pytest.raises(error, match=text) as raised:
        factory.createFromString(*arguments)
    assert isinstance(raised.value, K7Q.Exception)


def test_a_factory_on_a_frozen_view_makes_nothing_but_from_a_string(model, factory):
    frozen = factory.asDeviant(model.frozen())

    assert type(frozen) is Factory and frozen is not factory and frozen == factory
    for make in (lambda: frozen.create("common.Package"), frozen.createmetamodelarplatformcommonPackage):
        with pytest.raises(K7Q.Exception, match="the view is read-only"):
            make()
    package = frozen.createFromString("common.Package", "made")
    assert package.Name == "made"
    with pytest.raises(K7Q.Exception, match="read-only"):
        package.Name = "changed"


def test_immutable_factories_compare_by_object_and_view(model, factory):
    one = ImmutableFactory.cast(factory)
    other = ImmutableFactory.cast(Factory.createNewFactory(model))
    frozen = ImmutableFactory.cast(factory.asDeviant(model.frozen()))

    assert one.eq(one) and one.le(one) and one.ge(one) and not one.ne(one)
    assert one.ne(other) and one.lt(other) != one.gt(other)
    assert one.lt(frozen) and frozen.gt(one)
    assert one == factory and one != other


@pytest.mark.parametrize("compare", ["eq", "ne", "lt", "le", "gt", "ge"])
def test_a_factory_compares_with_factories_alone(factory, compare):
    one = ImmutableFactory.cast(factory)
    with pytest.raises(TypeError):
        getattr(one, compare)(3)
    with pytest.raises(TypeError):
        getattr(ImmutableFactory, compare)(None, one)


def test_cast_gives_the_factory_or_nothing(model, factory):
    assert Factory.cast(factory) is factory
    assert Factory.cast(factory.create("common.Package")) is None
    assert Factory.cast(model) is None and ImmutableFactory.cast(model) is None
    assert factory.toK7QObject() is factory and factory.toK7QFactoryObject() is factory
    immutable = ImmutableFactory.cast(factory)
    assert type(immutable) is ImmutableFactory
    assert immutable.toK7QImmutableObject() is immutable
    assert immutable.toK7QImmutableFactoryObject() is immutable
    assert not hasattr(immutable, "create")


def test_factories_hash_and_are_weakly_held(factory):
    assert {factory: 1}[Factory.cast(factory)] == 1
    assert weakref.ref(factory)() is factory


def test_help_groups_what_the_factory_makes_by_package():
    text = pydoc.plain(pydoc.render_doc(Factory))
    listed = Factory.__doc__.partition("Creates, by package")[2]
    packages = re.findall(r"^  (\w+):$", listed, re.MULTILINE)

    assert packages == PACKAGES
    assert "Package(name: char vector)" in listed and "    Package()" in listed
    assert "Package(name: char vector)" in text and "create(" in text
    blocks = dict(zip(packages, re.split(r"^  \w+:$", listed, flags=re.MULTILINE)[1:]))
    for maker in MAKERS:
        package, short = class_of(maker).split(".")
        assert f"    {short}()" in blocks[package].splitlines()
    assert len(re.findall(r"^    \w+\(", listed, re.MULTILINE)) == 408


def test_the_factory_shows_where_names_are_listed(factory):
    assert {"create", "createFromString", "createNewModel", "createNewFactory"} <= set(dir(factory))
    assert "common.Package" in Factory.create.__doc__
    assert "createFromString(char vector, char vector)" in Factory.createFromString.__doc__


def test_create_is_no_attribute_to_be_changed(factory):
    with pytest.raises((AttributeError, TypeError)):
        factory.create = None
    with pytest.raises((AttributeError, TypeError)):
        Factory.create = None


@pytest.mark.parametrize("given", [3, None, "common.Package", K7Q.Model])
def test_create_is_called_on_a_factory(given):
    with pytest.raises(TypeError, match="Factory.create: expected a factory to be called on, got "):
        Factory.create(given, "common.Package")


def test_a_name_that_is_a_subclass_of_str_will_do(factory):
    class Name(str):
        pass

    assert factory.create(Name("common.Package"), "x").Name == "x"
