"""Undo and redo, and the end of models with a history when the interpreter ends."""

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant


def test_a_history_takes_back_and_makes_again(model, package):
    model.history = 10
    package.Name = "x"
    with model.transaction():
        package.Name = "y"
        package.destroy()
    assert (model.undoable, model.redoable) == (2, 0)
    assert model.undo() and package.Name == "x"
    assert model.undo() and package.Name == "Brakes"
    assert not model.undo()
    assert (model.undoable, model.redoable) == (0, 2)
    assert model.redo() and model.redo() and not model.redo()
    assert not package.isvalid()


def test_a_label_names_each_place_once_and_counts_those_beyond_five(model, package):
    model.history = 10
    assert (model.undo_label, model.redo_label) == ("", "")
    with model.transaction():
        for number in range(8):
            common.Package(model, f"P{number}").category = "FUNCTION"
    package.Name = "x"
    package.Name = "y"
    model.undo()
    assert model.undo_label == "Name of common.Package 'x'"
    assert model.redo_label == "Name of common.Package 'x'"
    model.undo()
    made = ", ".join(f"made common.Package 'P{number}'" for number in range(5))
    assert model.undo_label == f"{made} and 3 more"
    model.undo()
    assert model.undo_label == ""
    assert model.redo_label.endswith(" and 3 more")


def test_a_label_names_what_is_destroyed(model, package):
    model.history = 10
    package.category = "FUNCTION"
    package.destroy()
    assert model.undo_label == "destroyed common.Package 'Brakes'"


def test_a_first_save_leaves_the_room_that_undo_needs(model, tmp_path):
    model.history = 1000
    made = [common.ModeDeclaration(model, f"M{number}") for number in range(200)]
    for number, each in enumerate(made):
        each.Value = number
    with model.transaction():
        for each in made:
            del each.Value
    model.save(tmp_path / "modes.xmi")
    assert model.undo()
    assert [each.Value for each in made] == list(range(200))


def test_an_object_that_undo_brings_back_has_its_id_for_itself(model, tmp_path):
    path = tmp_path / "values.xmi"
    values = variant.SystemConstValueSet(model)
    values.SysConstValue.append(variant.SystemConstValue(model))
    model.save(path)
    model.history = 100
    values.SysConstValue.append(variant.SystemConstValue(model))
    values.SysConstValue[0].destroy()
    model.save(path)
    model.undo()
    model.save(path)
    assert len(K7Q.Model.load(path).objects()) == 3


def test_a_model_keeps_no_history_at_first(model, package):
    package.Name = "x"
    assert (model.history, model.undoable, model.redoable) == (0, 0, 0)
    assert model.undo() is False and model.redo() is False
    assert package.Name == "x"


def test_a_history_has_a_bound(model, package):
    model.history = 3
    for number in range(10):
        package.Name = str(number)
    while model.undo():
        pass
    assert package.Name == "6"


@pytest.mark.parametrize("bound, error, text", [
    (-1, K7Q.OutOfRange, "a limit from 0 to 1000000, got int -1"),
    (1000001, K7Q.OutOfRange, "a limit from 0 to 1000000, got int 1000001"),
    (2**80, K7Q.OutOfRange, f"a limit from 0 to 1000000, got int {2**80}"),
    (-2**80, K7Q.OutOfRange, f"a limit from 0 to 1000000, got int {-2**80}"),
    pytest.param(10**5000, K7Q.OutOfRange, "a limit from 0 to 1000000, got int of more than 1000 bits", id="huge"),
    ("3", K7Q.WrongType, "a whole number, got str '3'"),
    (1.5, K7Q.WrongType, "a whole number, got float 1.5"),
    (None, K7Q.WrongType, "a whole number, got None"),
])
def test_a_bound_that_is_none_is_refused(model, package, bound, error, text):
    model.history = 2
    package.Name = "x"
    with pytest.raises(error) as refused:
        model.history = bound
    assert str(refused.value) == f"history: expected {text}"
    assert (model.history, model.undoable) == (2, 1)


def test_undo_waits_for_the_end_of_a_transaction(model, package):
    model.history = 2
    package.Name = "x"
    with model.transaction():
        for call in (model.undo, model.redo, lambda: setattr(model, "history", 5)):
            with pytest.raises(K7Q.Exception, match="while a transaction of the model is open"):
                call()
    assert model.undo()


def test_objects_that_came_back_are_the_same_ones(model, package):
    model.history = 2
    constant = variant.SystemConst(model, "C")
    package.PackagedElement.append(constant)
    package.destroy()
    assert not constant.isvalid()
    model.undo()
    assert package.PackagedElement[0] is constant
    assert model.find("/Brakes/C") is constant


def test_iterators_and_sequences_survive_undo(model, package):
    model.history = 10
    for name in "abc":
        package.PackagedElement.append(variant.SystemConst(model, name))
    elements = package.PackagedElement
    model.undo()
    assert [each.Name for each in elements] == ["a", "b"]
    model.redo()
    assert [each.Name for each in elements] == ["a", "b", "c"]


# The end of the interpreter.

START = """
import threading, time
import K7Q
from Tarvelon.metamodel.arplatform import Factory, common
model = Factory.createNewModel()
package = common.Package(model, "P")
"""


@pytest.mark.parametrize("code", [
    "transaction = model.transaction(); package.Name = 'x'; package.destroy()",
    "outer = model.transaction(); inner = model.transaction(); package.Name = 'x'",
    "model.transaction().__enter__(); package.Name = 'x'",
    "model.history = 5; package.destroy(); model.undo(); package.destroy()",
    "model.listen(lambda changes: print(len(changes))); package.Name = 'x'",
    "subscription = package.listen(lambda changes: model); transaction = model.transaction(); package.Name = 'x'",
    "class Last:\n  def __del__(self, model=model, package=package):\n    package.Name = 'x'\n"
    "model.listen(lambda changes: None); last = Last()",
    "def edit():\n  with model.transaction():\n    package.Name = 'x'\n    yield\nedit = edit(); next(edit)",
])
def test_the_interpreter_ends_with_all_of_it_open(python, code):
    python(START + code)


def test_the_interpreter_ends_while_a_listener_is_told_in_a_thread(python):
    code = START + """
model.listen(lambda changes: (started.set(), time.sleep(60)))
started = threading.Event()
threading.Thread(target=lambda: setattr(package, "Name", "x"), daemon=True).start()
started.wait()
"""
    python(code)
    # The thread wakes up while the interpreter is ending.
    python(code.replace("time.sleep(60)", "[time.sleep(0.0001) for _ in iter(int, 1)]"))
