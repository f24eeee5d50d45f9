"""Transactions, undo and listeners."""

import contextlib
import gc
import sys
import threading
import weakref

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant

ENDED = "the transaction has ended already; begin a new one"


@pytest.fixture
def told(model):
    """The batches that a listener of the model was told of."""
    batches = []
    with model.listen(batches.append):
        yield batches


@contextlib.contextmanager
def unraisable():
    """What comes to sys.unraisablehook in the block: the fixtures of pytest have one for themselves."""
    caught = []
    with pytest.MonkeyPatch.context() as patch:
        patch.setattr(sys, "unraisablehook", lambda each: caught.append(each.exc_value))
        yield caught


# Transactions.


def test_a_transaction_that_ends_keeps_what_it_did(model, package):
    with model.transaction():
        package.Name = "x"
    assert package.Name == "x"


def test_an_exception_takes_back_everything_and_goes_on(model, package):
    sdx = common.Sdx(model, package)
    with pytest.raises(ZeroDivisionError):
        with model.transaction():
            package.Name = "x"
            made = variant.SystemConst(model, "C")
            package.PackagedElement.append(made)
            package.destroy()
            1 / 0
    assert package.isvalid() and package.Name == "Brakes"
    assert sdx.sdx is package
    assert len(package.PackagedElement) == 0
    assert not made.isvalid()
    assert model.objects() == [package, sdx]


def test_transactions_nest(model, package):
    with model.transaction():
        package.Name = "outer"
        with pytest.raises(ZeroDivisionError):
            with model.transaction():
                package.Name = "inner"
                1 / 0
        assert package.Name == "outer"
    assert package.Name == "outer"


def test_a_transaction_can_be_ended_inside_its_block(model, package):
    with model.transaction() as transaction:
        package.Name = "x"
        transaction.rollback()
        package.Name += "y"
    assert package.Name == "Brakesy"
    with model.transaction() as transaction:
        package.Name = "z"
        transaction.commit()
    assert package.Name == "z"


def test_a_transaction_is_used_once(model, package):
    transaction = model.transaction()
    with transaction:
        package.Name = "x"
    for call in (transaction.__enter__, transaction.commit, transaction.rollback):
        with pytest.raises(K7Q.Exception, match=ENDED):
            call()
    package.Name = "y"
    assert package.Name == "y"


def test_a_transaction_that_is_entered_twice_ends_with_the_inner_block(model, package):
    transaction = model.transaction()
    with transaction:
        with transaction:
            package.Name = "x"
        package.Name = "y"
    assert package.Name == "y"


def test_a_transaction_that_nobody_holds_is_taken_back(model, package):
    model.transaction()
    transaction = model.transaction()
    package.Name = "x"
    del transaction
    gc.collect()
    assert package.Name == "Brakes"


def test_an_outer_transaction_ends_the_ones_in_it(model, package):
    outer = model.transaction()
    inner = model.transaction()
    package.Name = "x"
    with pytest.raises(K7Q.Exception, match="a transaction that was begun later is still open"):
        outer.commit()
    del outer
    assert package.Name == "Brakes"
    with pytest.raises(K7Q.Exception, match=ENDED):
        inner.commit()


def test_a_block_that_leaves_one_open_takes_all_back_and_says_so(model, package):
    with pytest.raises(K7Q.Exception, match="a transaction that was begun later is still open"):
        with model.transaction():
            package.Name = "x"
            forgotten = model.transaction()
            package.Name = "y"
    assert package.Name == "Brakes"
    with pytest.raises(K7Q.Exception, match=ENDED):
        forgotten.rollback()


def test_the_error_of_a_block_is_not_hidden_by_one_left_open(model, package):
    with pytest.raises(ZeroDivisionError):
        with model.transaction():
            forgotten = model.transaction()
            package.Name = "y"
            1 / 0
    assert package.Name == "Brakes"
    del forgotten


def test_a_generator_may_be_left_in_a_transaction(model, package):
    def edit():
        with model.transaction():
            package.Name = "x"
            yield
            package.Name = "y"

    generator = edit()
    next(generator)
    assert package.Name == "x"
    generator.close()
    assert package.Name == "Brakes"

    generator = edit()
    next(generator)
    other = model.transaction()  # begun in the one of the generator
    package.Name = "z"
    del generator
    gc.collect()
    assert package.Name == "Brakes"
    with pytest.raises(K7Q.Exception, match=ENDED):
        other.commit()


def test_a_transaction_ends_with_its_model(package):
    model = package.getModel()
    with model.transaction() as transaction:
        package.Name = "x"
        model.close()
    with pytest.raises(K7Q.Exception):
        transaction.commit()
    with pytest.raises(K7Q.Exception):
        transaction.rollback()
    with pytest.raises(K7Q.Exception):
        model.transaction()


def test_views_that_cannot_change_have_no_transactions(model, package):
    for view in (package.asImmutable().getModel(), model.frozen()):
        for name in ("transaction", "undo", "redo", "history", "undoable", "redoable"):
            with pytest.raises((AttributeError, K7Q.Exception)):
                each = getattr(view, name)
                each()


# Undo and redo.


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


@pytest.mark.parametrize("bound, error", [
    (-1, K7Q.OutOfRange), (1000001, K7Q.OutOfRange), (2**80, (K7Q.OutOfRange, OverflowError)),
    ("3", TypeError), (1.5, TypeError), (None, TypeError),
])
def test_a_bound_that_is_none_is_refused(model, package, bound, error):
    model.history = 2
    package.Name = "x"
    with pytest.raises(error):
        model.history = bound
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


# Listeners.


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
            with pytest.raises(K7Q.Exception, match="a listener is told of a change and may not change the model"):
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
    # The thread wakes up while the interpreter ends.
    python(code.replace("time.sleep(60)", "[time.sleep(0.0001) for _ in iter(int, 1)]"))
