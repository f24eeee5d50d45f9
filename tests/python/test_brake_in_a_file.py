"""The brake example in a file: it loads back equal and without problems. With one fault for each rule, the
command describes the fault."""

import re

import brake_faults as faults
import pytest

import K7Q
import Tarvelon
from Tarvelon import validate
from Tarvelon.metamodel.arplatform import Factory


@pytest.fixture
def world():
    with Factory.createNewModel() as model:
        yield faults.build(model)


@pytest.fixture
def path(world, tmp_path):
    path = tmp_path / "brakes.xmi"
    world.model.save(path)
    return path


def test_it_saves_loads_compares_equal_and_validates_clean(world, path, capsys):
    with K7Q.Model.load(path) as loaded:
        assert len(loaded.objects()) == len(world.model.objects()) == 451
        assert list(Tarvelon.diff(world.model, loaded)) == []
        assert loaded.validate() == []
    assert validate.main([str(path)]) == 0
    assert capsys.readouterr().out == f"{path}: no problems\n"


@pytest.mark.parametrize("rule, where, message, severity, also, change", faults.FAULTS)
def test_a_fault_of_an_editor_is_said_of_the_file(rule, where, message, severity, also, change, tmp_path, capsys):
    path = tmp_path / "brakes.xmi"
    with Factory.createNewModel() as model:
        world = faults.build(model)
        change(world)
        model.save(path)

    is_error = any(each.severity == "error" for each in K7Q.rules() if each.id in {rule, *also})
    assert validate.main([str(path)]) == (1 if is_error else 0)
    *lines, total = capsys.readouterr().out.splitlines()
    found = [line for line in lines if line.endswith(f" [{rule}]")]
    holder, _, name = where.rpartition(".")
    whole, part = (where, "") if where in lines else (holder, f"{name}: ")
    assert f"  {severity}: {part}{message} [{rule}]" in found
    assert whole in lines
    assert {re.search(r"\[([a-z-]+)\]$", each)[1] for each in lines if each.startswith(" ")} <= {rule, *also}
    assert total.startswith(f"{path}: ") and "no problems" not in total


# Faults that only editing the file can cause: the rule, the replaced text, its replacement, the error for the
# file, and the rules that the rest of the model breaks. {Control} is the id of the first object with that
# name.
EDITED = [
    ("dangling-reference", 'StartOnEvent="{Control}"', 'StartOnEvent="_gone"',
     "TimingEvent.StartOnEvent: no object has the id '_gone'", set()),
    ("foreign-reference", 'StartOnEvent="{Sample}"\n                Period="0.005"\n            />',
     'Period="0.005"><StartOnEvent href="pedal.xmi#_A1"/></Events>',
     "TimingEvent.StartOnEvent: expected the id of an object, got the reference 'pedal.xmi#_A1' to another file; "
     "write the id as the attribute's value", set()),
    ("wrong-class", 'Type="{PedalTravel}"', 'Type="{SelfTest}"',
     "DataSenderPort.Type: expected interface:SenderReceiverInterface, got interface:ClientServerInterface "
     "with the id '{SelfTest}'", {"required-reference"}),
    ("ownership", 'Name="Types"', 'Name="Types" PackagedElement="{PedalTravel}"',
     "Package.PackagedElement: expected contained objects as elements, got the text '{PedalTravel}'; nest the "
     "elements of the objects here", set()),
    ("multiplicity", 'runInsideExclusiveArea="\n                    {TorqueAccess}\n',
     'runInsideExclusiveArea="{TorqueAccess} {TorqueAccess}\n',
     "Runnable.runInsideExclusiveArea: the list contains the id twice: '{TorqueAccess}'",
     set()),
    ("unknown-literal", 'activation="OnEntry"', 'activation="OnEntri"',
     "ModeSwitchEvent.activation: expected Tarvelon.metamodel.arplatform.behavior.ModeActivationKind, "
     "got 'OnEntri'; write one of 'OnEntry', 'OnExit', 'OnTransition'", set()),
]


@pytest.mark.parametrize("rule, old, new, message, left", EDITED, ids=[each[0] for each in EDITED])
def test_a_fault_that_no_editor_makes_is_said_with_its_place(rule, old, new, message, left, path, capsys):
    text = path.read_text()
    ids = {name: id for id, name in reversed(re.findall(r'xmi:id="([^"]+)"\s+Name="([^"]+)"', text))}
    old, new, message = (each.format(**ids) for each in (old, new, message))
    assert old in text
    path.write_text(text.replace(old, new, 1))

    with pytest.raises(K7Q.WrongFile):
        K7Q.Model.load(path)
    with K7Q.Model.load(path, lenient=True) as loaded:
        assert [each.text for each in loaded.problems] == [message]
        assert len(loaded.objects()) == 451
        assert {each.rule for each in loaded.validate()} == left
        line = loaded.problems[0].line
    assert abs(line - text[:text.index(old)].count("\n")) <= 3  # at the attribute, or at its element's beginning
    assert validate.main([str(path)]) == 1
    assert capsys.readouterr().out.startswith(f"{path}: error: line {line}, column ")


def test_a_rule_of_a_script_that_fails_is_said_with_what_it_looked_at(path, tmp_path, capsys):
    script = tmp_path / "rules.py"
    script.write_text("import K7Q\nfrom Tarvelon.metamodel.arplatform import composition\n"
                      "K7Q.rule('ours', composition.CompositionComponent)(lambda whole: whole.Portt)\n")
    try:
        assert validate.main(["--rules", str(script), str(path)]) == 1
    finally:
        K7Q.forget_rule("ours")
    where, line, total = capsys.readouterr().out.splitlines()
    assert (where, total) == (faults.WHOLE, f"{path}: 1 error, 0 warnings")
    assert line.startswith("  error: the rule 'ours' failed: ") and "did you mean 'Port'?" in line
    assert line.endswith("; correct its function [rule-failed]")


def test_every_rule_of_the_library_has_a_fault_here():
    edited = {each[0] for each in EDITED}

    assert edited | {each.values[0] for each in faults.FAULTS} | {"rule-failed"} == {each.id for each in K7Q.rules()}
