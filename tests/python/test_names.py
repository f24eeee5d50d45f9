"""Wherever a name can be misspelt, the error suggests the most similar name, and nothing if none is
similar."""

import importlib

import pytest

import K7Q
import Tarvelon
from Tarvelon.metamodel import arplatform, foundation
from Tarvelon.metamodel.arplatform import Factory, common, variant


def imported(statement):
    return lambda model: exec(statement, {})


def factory(call):
    return lambda model: call(Factory.createNewFactory(model))


def package(call):
    return lambda model: call(common.Package(model))


MAKER = "createmetamodelarplatformcommonPackage"
DOORS = {
    "import of a package": (lambda model: importlib.import_module("Tarvelon.metamodel.arplatform.comon"), "common"),
    "import past a package": (lambda model: importlib.import_module("Tarvelon.metamdel.x"), "metamodel"),
    "import from a package": (imported("from Tarvelon.metamodel.arplatform import comon"), "common"),
    "import of a class": (imported("from Tarvelon.metamodel.arplatform.common import Pakage"), "Package"),
    "import of a K7Q class": (imported("from K7Q import Modl"), "Model"),
    "import of a K7Q error": (imported("from K7Q import WrongTyp"), "WrongType"),
    "root": (lambda model: Tarvelon.metamodle, "metamodel"),
    "package": (lambda model: arplatform.comon, "common"),
    "class": (lambda model: common.Pakage, "Package"),
    "class of another package": (lambda model: common.Runnable, "Tarvelon.metamodel.arplatform.behavior.Runnable"),
    "class of a package below": (lambda model: arplatform.Package, "Tarvelon.metamodel.arplatform.common.Package"),
    "class of foundation": (lambda model: foundation.Domian, "Domain"),
    "sequence class": (lambda model: common.SequenceOfPakage, "SequenceOfPackage"),
    "K7Q class": (lambda model: K7Q.Modl, "Model"),
    "K7Q error": (lambda model: K7Q.WrongTyp, "WrongType"),
    "K7Q function": (lambda model: K7Q.modls, "models"),
    "package function": (lambda model: common.MetaPackge(), "MetaPackage"),
    "property read": (package(lambda each: each.Nmae), "Name"),
    "property in another case": (package(lambda each: each.name), "Name"),
    "property written": (package(lambda each: setattr(each, "Nmae", "x")), "Name"),
    "property deleted": (package(lambda each: delattr(each, "Nmae")), "Name"),
    "method": (package(lambda each: each.destory()), "destroy"),
    "class method": (lambda model: common.Package.MetaProprty(), "MetaProperty"),
    "model method": (lambda model: model.clse(), "close"),
    "class method of a sequence": (lambda model: common.SequenceOfPackage.makeUniqe(model), "makeUnique"),
    "sequence method": (package(lambda each: each.ReferenceBase.apend(None)), "append"),
    "sequence method of Python's": (package(lambda each: each.ReferenceBase.extnd([])), "extend"),
    "iterator method": (package(lambda each: each.ReferenceBase.begin().getNxt()), "getNext"),
    "literal": (lambda model: variant.BindingTimeKind.LinkTme, "LinkTime"),
    "fromString": (lambda model: variant.BindingTimeKind.fromString("LinkTme"), "LinkTime"),
    "meta property": (lambda model: common.Package.MetaProperty().Nmae(), "Name"),
    "meta property in another case": (lambda model: common.Package.MetaProperty().category(), "Category"),
    "description": (lambda model: common.Package.MetaProperty().Name().uperBound(), "upperBound"),
    "factory.create": (factory(lambda each: each.create("common.Pakage")), "common.Package"),
    "factory.create, package": (factory(lambda each: each.create("comon.Package")), "common.Package"),
    "factory.create, short": (factory(lambda each: each.create("Pakage")), "common.Package"),
    "factory.create, whole": (factory(lambda each: each.create("Tarvelon.metamodel.arplatform.common.Pakage")),
                              "common.Package"),
    "factory.create, foundation": (factory(lambda each: each.create("Tarvelon.metamodel.foundation.Domian")),
                                   "Domain"),
    "createFromString": (factory(lambda each: each.createFromString("common.Pakage")), "common.Package"),
    "createFromString, short": (factory(lambda each: each.createFromString("Package")), "common.Package"),
    "createFromString, whole": (
        factory(lambda each: each.createFromString("Tarvelon.metamodel.arplatform.common.Pakage")),
        "common.Package"),
    "the factory's own name": (factory(lambda each: getattr(each, MAKER.replace("Package", "Pakage"))()), MAKER),
    "factory method": (factory(lambda each: each.creat("common.Package")), "create"),
    "factory class": (lambda model: Factory.createNewModl(), "createNewModel"),
}
FAR = {
    "import": lambda model: importlib.import_module("Tarvelon.metamodel.arplatform.Qqqqqqqq"),
    "package": lambda model: arplatform.Qqqqqqqq,
    "class": lambda model: common.Qqqqqqqq,
    "K7Q": lambda model: K7Q.Qqqqqqqq,
    "property": package(lambda each: each.Qqqqqqqq),
    "property written": package(lambda each: setattr(each, "Qqqqqqqq", 1)),
    "class member": lambda model: common.Package.Qqqqqqqq,
    "sequence": package(lambda each: each.ReferenceBase.Qqqqqqqq),
    "literal": lambda model: variant.BindingTimeKind.Qqqqqqqq,
    "fromString": lambda model: variant.BindingTimeKind.fromString("Qqqqqqqq"),
    "meta property": lambda model: common.Package.MetaProperty().Qqqqqqqq,
    "factory.create": factory(lambda each: each.create("Qqqqqqqq")),
    "factory.create, dotted": factory(lambda each: each.create("Qqqqqqqq.Qqqqqqqq")),
    "factory.create, foundation": factory(lambda each: each.create("Tarvelon.metamodel.foundation.Qqqqqqqq")),
    "createFromString": factory(lambda each: each.createFromString("Qqqqqqqq")),
    "factory method": factory(lambda each: each.Qqqqqqqq),
}


@pytest.mark.parametrize("door", DOORS)
def test_a_misspelt_name_is_answered_with_the_nearest(model, door):
    call, meant = DOORS[door]
    with pytest.raises(K7Q.Exception) as raised:
        call(model)
    assert f"; did you mean '{meant}'?" in str(raised.value)
    assert str(raised.value).count("did you mean") == 1


@pytest.mark.parametrize("door", FAR)
def test_a_name_that_is_near_none_is_answered_without_a_guess(model, door):
    with pytest.raises(K7Q.Exception) as raised:
        FAR[door](model)
    assert "Qqqqqqqq" in str(raised.value) and "did you mean" not in str(raised.value)


def test_an_unknown_name_of_a_package_is_kept_beside_the_text():
    with pytest.raises(AttributeError) as raised:
        K7Q.WrongTyp
    assert raised.value.name == "WrongTyp"


def test_a_uri_that_no_model_has_is_no_error():
    assert K7Q.Model.find("untitld") is None
