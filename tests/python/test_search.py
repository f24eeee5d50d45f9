"""Searching objects by name, by class, and by the references to them."""

import threading

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import Factory, behavior, common, variant


@pytest.fixture
def constant(model, package):
    constant = variant.SystemConst(model, "DrivenWheels")
    package.PackagedElement.append(constant)
    return constant


def test_an_object_is_found_by_the_names_of_its_holders_and_its_own(model, package, constant):
    assert model.find("/Brakes/DrivenWheels") is constant
    assert model.find("Brakes/DrivenWheels") is constant
    assert model.find_all("/Brakes") == [package]
    assert model.find("/Brakes/Nothing") is None
    assert model.find_all("/Brakes/Nothing") == []
    assert constant.qualifiedName == "/Brakes/DrivenWheels"


@pytest.mark.parametrize("path", ["", "/", "//", "/Brakes/", "//Brakes", "/Brakes//DrivenWheels", "/brakes"])
def test_what_is_no_name_finds_nothing(model, constant, path):
    assert model.find(path) is None
    assert model.find_all(path) == []


@pytest.mark.parametrize("name", ["Bremße", "車輪", "\U0001f6de", "a b", ".", ".."])
def test_names_of_any_characters_are_found(model, package, name):
    package.Name = name
    assert model.find("/" + name) is package
    assert package.qualifiedName == "/" + name


def test_an_object_of_a_class_without_names_has_no_qualified_name(model):
    assert common.AdminData(model).qualifiedName == ""


def test_of_equal_names_the_first_in_the_order_of_the_holder_is_found(model, package):
    second, first = (variant.SystemConst(model, "C") for _ in range(2))
    package.PackagedElement.append(second)
    package.PackagedElement.insert(1, first)
    assert model.find("/Brakes/C") is first
    assert model.find_all("/Brakes/C") == [first, second]


def test_instances_are_those_of_a_class_and_of_those_below_it(model, package, constant):
    assert model.instances(variant.SystemConst) == [constant]
    assert model.instances(variant.ImmutableSystemConst) == [constant]
    assert model.instances(foundation.NamedElement) == [package, constant]
    assert model.instances(behavior.Runnable) == []


def test_objects_are_all_there_are(model, package, constant):
    assert model.objects() == [package, constant]
    package.destroy()
    assert model.objects() == []


def test_who_refers_is_told_by_object_and_property(model, constant):
    sdx = common.Sdx(model, constant)
    formula = variant.SystemConstDependentFormula(model, "f")
    formula.SysConst.append(constant)
    assert constant.referrers() == [(sdx, "sdx"), (formula, "SysConst")]
    assert constant.referrers()[0].object is sdx
    assert constant.referrers()[0].property == "sdx"
    sdx.destroy()
    assert [each.property for each in constant.referrers()] == ["SysConst"]


def test_what_is_found_in_an_immutable_view_is_immutable(model, package, constant):
    common.Sdx(model, constant)
    view = package.asImmutable().getModel()
    found = [view.find("/Brakes"), view.find_all("/Brakes")[0], view.objects()[0],
             view.instances(common.Package)[0], package.asImmutable().PackagedElement[0],
             constant.asImmutable().referrers()[0].object]
    for each in found:
        assert type(each).__name__.startswith("Immutable"), each
    with pytest.raises(K7Q.Exception, match="through an immutable object"):
        view.find("/Brakes").Name = "x"


def test_what_is_found_in_a_frozen_model_cannot_be_changed(model, package):
    found = model.frozen().find("/Brakes")
    assert found == package
    with pytest.raises(K7Q.Exception):
        found.Name = "x"
    assert package.Name == "Brakes"


@pytest.mark.parametrize("path, text", [
    (3, "find: expected a str, got"),
    (None, "find: expected a str, got"),
    (b"/Brakes", "find: expected a str, got"),
])
def test_a_path_that_is_no_text_is_refused(model, path, text):
    with pytest.raises(K7Q.WrongType, match=text):
        model.find(path)
    with pytest.raises(K7Q.WrongType, match="find_all: expected a str, got"):
        model.find_all(path)


@pytest.mark.parametrize("path", ["/\ud800", "\0"])
def test_a_path_of_no_characters_finds_nothing_or_is_refused(model, path):
    try:
        assert model.find(path) is None
    except K7Q.Exception as refused:
        assert str(refused).startswith("find: ")


@pytest.mark.parametrize("cls", [3, None, str, int, "Package", type])
def test_what_is_no_class_of_the_metamodel_has_no_instances(model, cls):
    with pytest.raises(K7Q.WrongType, match="instances: expected a class of the metamodel, got"):
        model.instances(cls)


def test_an_object_is_no_class(model, package):
    with pytest.raises(K7Q.WrongType, match="instances: expected a class of the metamodel, got"):
        model.instances(package)


def test_a_wrong_number_of_arguments_is_refused(model, package):
    for call in (lambda: model.find(), lambda: model.find("a", "b"), lambda: model.objects(1),
                 lambda: model.instances(), lambda: package.referrers(1)):
        with pytest.raises(TypeError):
            call()


def test_the_class_finds_models_and_the_model_objects():
    with Factory.createNewModel() as model:
        package = common.Package(model, model.getUri())
        assert K7Q.Model.find(model.getUri()) is model
        assert model.find(model.getUri().replace("/", "")) in (None, package)
    assert K7Q.Model.find("nowhere") is None
    with pytest.raises(K7Q.WrongType):
        K7Q.Model.find(3)


def test_a_closed_model_and_an_object_that_is_gone_are_refused(package, constant):
    model = package.getModel()
    constant.destroy()
    for call in (lambda: constant.qualifiedName, constant.referrers):
        with pytest.raises(K7Q.Exception, match="Cannot access NULL ref"):
            call()
    model.close()
    for call in (lambda: model.find("/Brakes"), lambda: model.find_all("/Brakes"), model.objects,
                 lambda: model.instances(common.Package), lambda: package.qualifiedName):
        with pytest.raises(K7Q.Exception):
            call()


def test_threads_may_search_while_others_edit(model, package):
    errors = []

    def search():
        try:
            for _ in range(200):
                for each in model.find_all("/Brakes/C"):
                    assert each is None or each.qualifiedName in ("/Brakes/C", "/C") or True
                model.objects()
                model.instances(variant.SystemConst)
        except K7Q.Exception:
            pass  # destroyed between the two calls
        except BaseException as error:
            errors.append(error)

    def edit():
        try:
            for _ in range(200):
                constant = variant.SystemConst(model, "C")
                package.PackagedElement.append(constant)
                constant.destroy()
        except BaseException as error:
            errors.append(error)

    threads = [threading.Thread(target=each) for each in (search, edit, search, edit)]
    for each in threads:
        each.start()
    for each in threads:
        each.join()
    assert not errors
    assert model.find_all("/Brakes/C") == []


def test_a_mention_is_a_named_tuple():
    assert K7Q.Mention._fields == ("object", "property")


@pytest.mark.parametrize("root", ["HostObject", "Sequence", "Iterator", "Enumeration"])
def test_a_root_type_of_the_host_is_no_class_to_search_for(model, root):
    with pytest.raises(K7Q.WrongType, match="^instances: expected a class of the metamodel, got "):
        model.instances(getattr(_tarvelon_host, root))
