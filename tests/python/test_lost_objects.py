"""Errors name the destroyed object, the closed model or the wrong index that the script has used."""

import pytest

import K7Q
import Tarvelon
from Tarvelon.metamodel.arplatform import Factory, common, variant

NULL = "Assertion failed: Cannot access NULL ref. Use isValid() before calling methods at "

# Uses of an object, by the name that the note must contain.
OBJECT_USES = {
    "Package.Name": lambda p: p.Name,
    "Package.category": lambda p: p.category,
    "Package.PackagedElement": lambda p: p.PackagedElement,
    "Package.Owner": lambda p: p.Owner,
    "Package.Name ": lambda p: setattr(p, "Name", "x"),
    "Package.category ": lambda p: delattr(p, "category"),
    "Package.destroy": lambda p: p.destroy(),
    "Package.asImmutable": lambda p: p.asImmutable(),
    "Package.getContainer": lambda p: p.getContainer(),
    "Package.getModel": lambda p: p.getModel(),
    "Package.getMetaType": lambda p: p.getMetaType(),
    "": lambda p: p.qualifiedName,
    " ": lambda p: p.referrers(),
    "  ": lambda p: p.clone(),
    "   ": lambda p: p.to_json(),
    "    ": lambda p: p.validate(),
    "     ": lambda p: Tarvelon.diff(p, p),
}
MODEL_USES = {
    "Model.getUri": lambda m, f: m.getUri(),
    "Model.setUri": lambda m, f: m.setUri("x"),
    "Model.frozen": lambda m, f: m.frozen(),
    "Package": lambda m, f: common.Package(m, "x"),
    "Factory.createmetamodelarplatformcommonPackage": lambda m, f: f.create("common.Package", "x"),
    "": lambda m, f: m.find("/Brakes"),
    " ": lambda m, f: m.instances(common.Package),
    "  ": lambda m, f: m.objects(),
    "   ": lambda m, f: m.roots(),
    "    ": lambda m, f: m.transaction(),
    "     ": lambda m, f: m.undo(),
    "      ": lambda m, f: m.history,
    "       ": lambda m, f: m.listen(print),
    "        ": lambda m, f: m.clone(),
    "         ": lambda m, f: m.validate(),
    "          ": lambda m, f: m.to_json(),
    "           ": lambda m, f: m.save("unused.xmi"),
}
SEQUENCE_USES = {
    "SequenceOfPackageableElement": len,
    "SequenceOfPackageableElement.clear": lambda s: s.clear(),
    "SequenceOfPackageableElement.begin": lambda s: s.begin(),
    "SequenceOfPackageableElement.front": lambda s: s.front(),
}


def error_of(action):
    with pytest.raises(K7Q.Exception) as caught:
        action()
    return str(caught.value), " ".join(getattr(caught.value, "__notes__", []))


@pytest.mark.parametrize("use", OBJECT_USES)
def test_a_destroyed_object_is_named(package, use):
    package.destroy()
    text, note = error_of(lambda: OBJECT_USES[use](package))
    assert text.startswith(NULL)
    assert note.startswith(use.strip()) and "common.Package was destroyed; isvalid() tells" in note


@pytest.mark.parametrize("use", OBJECT_USES)
def test_an_object_of_a_closed_model_is_named_with_the_model(use):
    model = Factory.createNewModel()
    model.setUri("brakes.arxml")
    package = common.Package(model, "Brakes")
    model.close()
    text, note = error_of(lambda: OBJECT_USES[use](package))
    assert text.startswith(NULL)
    assert note.startswith(use.strip()) and "common.Package: the model 'brakes.arxml' is closed" in note


@pytest.mark.parametrize("use", OBJECT_USES)
def test_a_destroyed_object_that_may_come_back_has_its_name_still(model, package, use):
    with model.transaction() as transaction:
        package.destroy()
        _, note = error_of(lambda: OBJECT_USES[use](package))
        assert "common.Package 'Brakes' was destroyed" in note
        transaction.rollback()
    assert package.Name == "Brakes"


@pytest.mark.parametrize("use", MODEL_USES)
def test_a_closed_model_is_named(use):
    model = Factory.createNewModel()
    model.setUri("brakes.arxml")
    factory = Factory.createNewFactory(model)
    model.close()
    text, note = error_of(lambda: MODEL_USES[use](model, factory))
    assert note.startswith(use.strip()), note
    assert "the model 'brakes.arxml' is closed; isvalid() tells" in note


def test_a_model_without_a_uri_is_just_the_model():
    model = K7Q.Model.create()
    model.close()
    assert "the model is closed" in error_of(model.objects)[1]


@pytest.mark.parametrize("use", SEQUENCE_USES)
def test_the_object_of_a_sequence_is_named(package, use):
    sequence = package.PackagedElement
    package.destroy()
    text, note = error_of(lambda: SEQUENCE_USES[use](sequence))
    assert text.startswith(NULL)
    assert note.startswith(use + ": ") and "common.Package was destroyed" in note


def test_the_object_of_an_iterator_is_named(model, package):
    package.PackagedElement.append(common.Package(model, "x"))
    place = package.PackagedElement.begin()
    package.destroy()
    assert "was destroyed" in error_of(place.getNext)[0] or "common.Package was destroyed" in error_of(place.getNext)[1]


def test_an_argument_that_was_destroyed_is_named(model, package):
    other = common.Package(model, "Wheels")
    other.destroy()
    text, note = error_of(lambda: package.PackagedElement.append(other))
    assert "destroyed" in text + note and "Package" in text + note
    data = common.Sdx(model, package)
    text, note = error_of(lambda: setattr(data, "sdx", other))
    assert "Sdx.sdx" in text + note and "destroyed" in text + note


@pytest.mark.parametrize("index", [0, 5, 9, -1])
@pytest.mark.parametrize("call", ["at", "insert", "erase", "replace"])
def test_an_index_is_named_with_how_many_there_are(model, package, call, index):
    sequence = package.PackagedElement
    sequence += [common.Package(model, f"P{each}") for each in range(3)]
    other = common.Package(model, "Other")
    arguments = (index, other) if call in ("insert", "replace") else (index,)
    text, note = error_of(lambda: getattr(sequence, call)(*arguments))
    assert text.startswith("Assertion failed: sequence index ")
    assert note == f"SequenceOfPackageableElement.{call}({index}): the sequence has 3 elements, counted from 1"


def test_an_index_of_a_made_sequence_is_named(model):
    for make in (variant.SequenceOfBindingTimeKind.make, common.SequenceOfPackage.make):
        sequence = make(model)
        text, note = error_of(lambda: sequence.at(9))
        assert text.startswith("Assertion failed: sequence index ")
        assert note.endswith(".at(9): the sequence has 0 elements, counted from 1")


def test_an_element_of_an_empty_sequence_is_asked_of_what_is_shown(package):
    text, note = error_of(package.PackagedElement.front)
    assert text.startswith("Assertion failed: sequence is empty at ")
    assert note == "SequenceOfPackageableElement.front: on <foundation.SequenceOfPackageableElement of 0>"


def test_a_view_that_refuses_is_shown(model, package):
    frozen = package.asDeviant(model.frozen())
    _, note = error_of(frozen.destroy)
    assert note == "Package.destroy: on <common.Package 'Brakes' immutable>"


def test_a_note_stands_in_the_traceback(python):
    code = """
import traceback
import K7Q
from Tarvelon.metamodel.arplatform import common
package = common.Package(K7Q.Model.create(), "Brakes")
package.destroy()
try:
    package.Name
except K7Q.Exception:
    print(traceback.format_exc().splitlines()[-1])
"""
    assert python(code) == ("Package.Name: common.Package was destroyed; isvalid() tells whether an object can be "
                            "used\n")
