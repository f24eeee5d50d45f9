"""Listeners."""

import contextlib
import gc
import signal
import sys
import threading
import weakref

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, documentation, variant


@pytest.fixture
def told(model):
    """The batches that a listener of the model was told."""
    batches = []
    with model.listen(batches.append):
        yield batches


@contextlib.contextmanager
def unraisable():
    """Collects what is passed to sys.unraisablehook in the block. The fixtures of pytest use the hook for
    themselves."""
    caught = []
    with pytest.MonkeyPatch.context() as patch:
        patch.setattr(sys, "unraisablehook", lambda each: caught.append(each.exc_value))
        yield caught


def test_a_listener_is_told_of_each_change(model, package, told):
    package.Name = "x"
    package.category = "y"
    constant = variant.SystemConst(model, "C")
    package.PackagedElement.append(constant)
    package.PackagedElement.clear()
    constant.destroy()
    shown = [[(each.kind, each.object, each.property, each.before, each.after) for each in batch] for batch in told]
    assert shown == [
        [("set", package, "Name", "Brakes", "x")],
        [("set", package, "category", None, "y")],
        [("made", constant, None, None, None), ("set", constant, "Name", None, "C")],
        [("added", package, "PackagedElement", None, constant)],
        [("removed", package, "PackagedElement", constant, None)],
        [("destroyed", constant, None, None, None)],
    ]


def test_listeners_are_told_of_both_holders_of_an_object_that_goes_to_another(model, told):
    paragraph = documentation.MultiLanguageOverviewParagraph(model)
    first = documentation.Modification(model, paragraph)
    second = documentation.Modification(model)
    model.history = 5
    told.clear()
    told_first, told_second = [], []
    with first.listen(told_first.extend), second.listen(told_second.extend):
        second.change = paragraph
        model.undo()

    def shown(changes):
        return [(each.kind, each.object, each.property, each.before, each.after) for each in changes]

    left, came = ("set", first, "change", paragraph, None), ("set", second, "change", None, paragraph)
    went, back = ("set", second, "change", paragraph, None), ("set", first, "change", None, paragraph)
    assert [shown(batch) for batch in told] == [[left, came], [went, back]]
    assert shown(told_first) == [left, back]
    assert shown(told_second) == [came, went]


def test_a_listener_is_told_once_of_a_transaction(model, package, told):
    with model.transaction():
        package.Name = "x"
        package.Name = "y"
    assert [[each.after for each in batch] for batch in told] == [["x", "y"]]


def test_an_object_is_the_same_for_a_listener_and_for_who_makes_it(model):
    made = []
    with model.listen(lambda changes: made.append(changes[0].object)):
        constant = variant.SystemConst(model, "C")
        with model.transaction():
            other = variant.SystemConst(model, "D")
            assert len(made) == 1
    assert made[0] is constant and made[1] is other


def test_an_object_that_cannot_be_made_is_not_told_of(model, told):
    for arguments in ((3,), (object(),), ("a", "b", "c")):
        with pytest.raises(K7Q.Exception):
            variant.SystemConst(model, *arguments)
    assert told == [] and model.objects() == []


def test_a_listener_of_an_object_is_told_of_that_alone(model, package):
    batches = []
    with package.listen(batches.append):
        variant.SystemConst(model, "C").Name = "x"
        package.Name = "y"
    package.Name = "z"
    assert [[each.after for each in batch] for batch in batches] == [["y"]]


def test_what_a_listener_raises_goes_to_the_hook(model, package):
    def raising(changes):
        raise ValueError("mine")

    with unraisable() as caught, model.listen(raising):
        package.Name = "x"
        with pytest.raises(ZeroDivisionError):
            with model.transaction():
                package.Name = "y"
                1 / 0
    assert package.Name == "x"
    assert [str(each) for each in caught] == ["mine"]


def test_an_interrupt_in_a_listener_reaches_the_program(model, package):
    with unraisable() as caught, model.listen(lambda changes: signal.raise_signal(signal.SIGINT)):
        with pytest.raises(KeyboardInterrupt):
            package.Name = "x"
            for _ in range(1000):
                pass
    assert package.Name == "x" and not caught


def test_an_interrupt_in_a_listener_hinders_no_other_one(model, package):
    def interrupted(changes):
        raise KeyboardInterrupt

    heard = []
    with model.listen(interrupted), model.listen(lambda changes: heard.append([each.property for each in changes])):
        with pytest.raises(KeyboardInterrupt):
            package.Name = "x"
            for _ in range(1000):
                pass
    assert heard == [["Name"]]


def test_an_error_on_its_way_out_is_not_lost_by_a_listener(model, package, told):
    with pytest.raises(K7Q.WrongType):
        with model.transaction():
            package.Name = "x"
            package.Name = 3
    assert package.Name == "Brakes" and told == []


def test_a_listener_may_not_change_the_model(model, package):
    model.history = 5
    package.Name = "0"

    def changing(changes):
        for call in (lambda: setattr(package, "Name", "z"), package.destroy, model.undo, model.redo, model.close,
                     model.transaction, lambda: common.Package(model, "Q"), lambda: setattr(model, "history", 0)):
            with pytest.raises(K7Q.Exception, match="a listener must not change the model"):
                call()

    with unraisable() as caught, model.listen(changing):
        package.Name = "x"
        model.undo()
        model.redo()
    assert package.Name == "x" and not caught


def test_a_listener_may_leave_while_it_is_told(model, package):
    batches = []

    def once(changes):
        batches.append(changes)
        subscription.close()
        other.close()

    subscription = model.listen(once)
    other = model.listen(batches.append)
    package.Name = "x"
    package.Name = "y"
    assert len(batches) == 1


def test_a_subscription_may_be_closed_twice(model, package):
    batches = []
    first = model.listen(lambda changes: None)
    first.close()
    with model.listen(batches.append) as second:
        first.close()
        package.Name = "x"
    second.close()
    assert len(batches) == 1


def test_a_subscription_may_be_closed_behind_its_model(package):
    model = package.getModel()
    subscription = model.listen(lambda changes: None)
    ofObject = package.listen(lambda changes: None)
    model.close()
    subscription.close()
    ofObject.close()


def test_the_listener_is_let_go_with_the_subscription(model, package):
    class Held:
        def tell(self, changes):
            pass

    held = Held()
    gone = weakref.ref(held)
    subscription = model.listen(held.tell)
    del held
    assert gone() is not None
    subscription.close()
    del subscription
    gc.collect()
    assert gone() is None


@pytest.mark.parametrize("listener", [None, 3, "listener"])
def test_a_listener_that_cannot_be_called_is_refused(model, package, listener):
    with pytest.raises(K7Q.WrongType, match="listen: expected a function, got"):
        model.listen(listener)
    with pytest.raises(K7Q.WrongType, match="listen: expected a function, got"):
        package.listen(listener)


def test_nobody_listens_to_what_is_gone(model, package):
    package.destroy()
    with pytest.raises(K7Q.Exception):
        package.listen(print)
    model.close()
    with pytest.raises(K7Q.Exception):
        model.listen(print)


def test_changes_outlive_their_model(model, package, told):
    package.destroy()
    model.close()
    change = told[0][-1]
    assert change.kind == "destroyed" and not change.object.isvalid()


def test_threads_may_edit_in_transactions_of_their_own_models():
    errors = []

    def edit():
        try:
            with K7Q.Model.create() as model:
                model.history = 3
                batches = []
                model.listen(batches.append)
                for number in range(100):
                    with model.transaction():
                        common.Package(model, str(number))
                    if number % 2:
                        model.undo()
                assert len(batches) == 150
        except BaseException as error:
            errors.append(error)

    threads = [threading.Thread(target=edit) for _ in range(4)]
    for each in threads:
        each.start()
    for each in threads:
        each.join()
    assert not errors
