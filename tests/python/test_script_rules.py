"""Validation rules that a script adds to those of the library."""

import gc
import threading

import pytest
from brake_faults import BEHAVIOR, build

import K7Q
import Tarvelon
from Tarvelon.metamodel.arplatform import Factory, behavior, common, variant


@pytest.fixture
def world():
    with Factory.createNewModel() as model:
        yield build(model)


@pytest.fixture
def add():
    """Adds a rule for the duration of the test."""
    ids = []

    def rule(id, *arguments, **names):
        ids.append(id)
        return K7Q.rule(id, *arguments, **names)

    yield rule
    for id in ids:
        if id in [each.id for each in K7Q.rules()]:
            K7Q.forget_rule(id)


def test_a_rule_of_a_script_runs_for_objects_of_its_class_and_below(world, add):
    @add("our-events", behavior.Event, severity="warning")
    def short(event):
        """names of events have at most 12 characters"""
        if len(event.Name) > 12:
            yield "Name", f"expected at most 12 characters, found {len(event.Name)}; shorten it"

    assert [str(each) for each in world.model.validate()] == []
    world.controller.Behavior.Events[0].Name = "StartOfTheController"
    (problem,) = world.model.validate()
    assert str(problem) == (f"warning: {BEHAVIOR}/StartOfTheController.Name: expected at most 12 characters, "
                            "found 20; shorten it [our-events]")
    assert problem.object == world.controller.Behavior.Events[0]
    assert world.pedal.validate() == []
    rule = [each for each in K7Q.rules() if each.id == "our-events"][0]
    assert (rule.severity, rule.title) == ("warning", "names of events have at most 12 characters")


@pytest.mark.parametrize("given, expected", [
    (None, []), ([], []), ("wrong", [("", "wrong")]), (("Name", "wrong"), [("Name", "wrong")]),
    (["one", ("Name", "two")], [("", "one"), ("Name", "two")])])
def test_a_rule_gives_nothing_a_message_a_pair_or_several(model, add, given, expected):
    package = common.Package(model, "Brakes")
    add("given", common.Package)(lambda element: given)

    assert [(each.property, each.message) for each in package.validate()] == expected


def test_a_rule_that_raises_is_a_problem_and_the_pass_goes_on(model, add):
    package = common.Package(model, "Brakes")

    @add("broken", common.Package)
    def broken(element):
        yield "Name", "said before it broke"
        raise RuntimeError("no idea")

    add("behind", common.Package)(lambda element: "still asked")
    add("numbers", common.Package)(lambda element: 7)
    assert [str(each) for each in package.validate()] == [
        "error: /Brakes.Name: said before it broke [broken]",
        "error: /Brakes: the rule 'broken' failed: RuntimeError: no idea; correct its function [rule-failed]",
        "error: /Brakes: still asked [behind]",
        "error: /Brakes: the rule 'numbers' failed: TypeError: expected messages or (property, message) pairs, got "
        "7; correct its function [rule-failed]"]


def test_a_rule_that_is_interrupted_ends_the_pass(model, add):
    common.Package(model, "Brakes")

    @add("endless", common.Package)
    def endless(element):
        raise KeyboardInterrupt

    with pytest.raises(KeyboardInterrupt):
        model.validate()


def test_a_rule_of_the_same_id_takes_the_place_of_the_one_before(model, add):
    package = common.Package(model, "Brakes")
    add("mine", common.Package)(lambda element: "first")
    add("mine", common.Package)(lambda element: "second")

    assert [each.message for each in package.validate()] == ["second"]
    K7Q.forget_rule("mine")
    assert package.validate() == []
    with pytest.raises(K7Q.UnknownName, match="no script has added a rule 'mine'; there are none"):
        K7Q.forget_rule("mine")


def test_a_rule_that_destroys_what_it_looks_at_crashes_nothing(model, add):
    root = common.Package(model, "Top")
    root.PackagedElement.extend([variant.SystemConst(model, name) for name in "abc"])
    add("greedy", common.Packageable)(lambda element: element.destroy() or "gone")
    add("behind", common.Packageable)(lambda element: "never asked")

    assert [(each.path, each.message) for each in root.validate()] == [
        ("/Top/a", "gone"), ("/Top/b", "gone"), ("/Top/c", "gone")]
    gc.collect()
    assert list(root.PackagedElement) == []


@pytest.mark.parametrize("arguments, names, message", [
    (("", common.Package), {}, "expected the rule's id, a text, got ''"),
    (("x", "common.Package"), {}, "expected a class of the metamodel, as in behavior.Runnable, got str"),
    (("x", behavior.DataAccessKind), {}, "expected a class of the metamodel, .*, got DataAccessKind"),
    (("x", K7Q.Model), {}, "expected a class of the metamodel, .*, got Model"),
    (("x", int), {}, "expected a class of the metamodel, .*, got int"),
    (("x", common.Package), {"severity": "fatal"}, "expected the severity 'error' or 'warning', got 'fatal'"),
    (("short-name", common.Package), {}, "the library has a rule 'short-name'; choose another id"),
])
def test_a_rule_that_cannot_be_is_refused(arguments, names, message):
    with pytest.raises(K7Q.Exception, match=message):
        K7Q.rule(*arguments, **names)


@pytest.mark.parametrize("call, message", [
    (lambda: K7Q.rule("x"), "K7Q.rule: missing a required argument: 'of'; write K7Q.rule(id, of, severity='error')"),
    (lambda: K7Q.rule("x", common.Package, sev="error"),
     "K7Q.rule: got an unexpected keyword argument 'sev'; write K7Q.rule(id, of, severity='error')"),
    (lambda: K7Q.forget_rule(), "K7Q.forget_rule: missing a required argument: 'id'; write K7Q.forget_rule(id)"),
    (lambda: K7Q.rules(1), "K7Q.rules: too many positional arguments; write K7Q.rules()"),
    (lambda: K7Q.models(1), "K7Q.models: too many positional arguments; write K7Q.models()"),
    (lambda: Tarvelon.diff(1), "Tarvelon.diff: missing a required argument: 'newer'; "
                               "write Tarvelon.diff(older, newer)"),
])
def test_functions_refuse_a_wrong_number_of_arguments_with_their_signature(call, message):
    with pytest.raises(K7Q.WrongType) as raised:
        call()
    assert str(raised.value) == message


def test_what_is_no_id_of_a_rule_is_not_forgotten():
    with pytest.raises(K7Q.UnknownName, match=r"no script has added a rule '\[\]'; there are none"):
        K7Q.forget_rule([])


def test_a_rule_that_validates_is_answered_by_the_rules_of_the_library(model, add):
    root = common.Package(model, "Top")
    root.PackagedElement.extend([common.Package(model, name) for name in ("A", "7")])
    calls = []

    @add("asks", common.Package)
    def asks(package):
        calls.append(package.Name)
        return [f"{len(package.validate())} problems below"]

    assert [(each.path, each.message) for each in model.validate() if each.rule == "asks"] == [
        ("/Top", "1 problems below"), ("/Top/A", "0 problems below"), ("/Top/7", "1 problems below")]
    assert calls == ["Top", "A", "7"]
    assert len([each for each in model.validate() if each.rule == "asks"]) == 3


def test_a_rule_gives_no_empty_message(model, add):
    package = common.Package(model, "Brakes")
    add("mute", common.Package)(lambda element: "")

    assert [str(each) for each in package.validate()] == [
        "error: /Brakes: the rule 'mute' failed: TypeError: expected a message or a (property, message) pair, got "
        "''; correct its function [rule-failed]"]


def test_a_rule_is_a_function():
    with pytest.raises(K7Q.WrongType, match="K7Q.rule 'x': expected a function of one object, got 7"):
        K7Q.rule("x", common.Package)(7)


def test_a_rule_that_runs_hides_none_from_other_threads(model, add):
    is_inside, may_leave, found = threading.Event(), threading.Event(), []

    @add("slow", common.Package)
    def slow(element):
        if threading.current_thread() is other:
            is_inside.set()
            assert may_leave.wait(60)
        return "wrong"

    def work():
        found.extend(common.Package(K7Q.Model.create(), "Wheels").validate())

    other = threading.Thread(target=work)
    other.start()
    assert is_inside.wait(60)
    assert [each.message for each in common.Package(model, "Brakes").validate()] == ["wrong"]
    may_leave.set()
    other.join()
    assert [each.message for each in found] == ["wrong"]


def test_eight_threads_find_what_is_wrong_with_eight_models(add):
    all_inside = threading.Barrier(8)
    found = [None] * 8

    @add("together", common.Package)
    def together(element):
        all_inside.wait(60)
        assert element.getModel().validate() == []
        return element.Name

    def work(index):
        model = K7Q.Model.create()
        common.Package(model, f"P{index}")
        found[index] = [each.message for each in model.validate()]

    threads = [threading.Thread(target=work, args=(index,)) for index in range(8)]
    for each in threads:
        each.start()
    for each in threads:
        each.join()
    assert found == [[f"P{index}"] for index in range(8)]
