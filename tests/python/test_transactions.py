"""Transactions: all changes are made, or none."""

import gc
import threading

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, variant

ENDED = "the transaction has ended already; begin a new one"


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
    with pytest.raises(K7Q.Exception, match="a nested transaction is still open"):
        outer.commit()
    del outer
    assert package.Name == "Brakes"
    with pytest.raises(K7Q.Exception, match=ENDED):
        inner.commit()


def test_a_block_whose_work_another_one_has_taken_back_says_so(model, package):
    outer = model.transaction()
    with pytest.raises(K7Q.Exception, match="rolled back with an outer transaction: all changes of the block are lost"):
        with model.transaction():
            package.Name = "x"
            outer.rollback()
    with pytest.raises(ZeroDivisionError):
        outer = model.transaction()
        with model.transaction():
            outer.rollback()
            1 / 0
    assert package.Name == "Brakes"


def test_a_block_says_so_when_its_work_is_lost_to_another_thread(model, package):
    isBegun, isOver = threading.Event(), threading.Event()
    errors = []

    def edit():
        try:
            with model.transaction():
                package.category = "y"
                isBegun.set()
                isOver.wait(60)
        except K7Q.Exception as error:
            errors.append(str(error))

    thread = threading.Thread(target=edit)
    with pytest.raises(K7Q.Exception, match="a nested transaction is still open"):
        with model.transaction():
            package.Name = "x"
            thread.start()
            isBegun.wait(60)
    isOver.set()
    thread.join()
    assert (package.Name, package.category) == ("Brakes", "")
    assert [each.partition(":")[0] for each in errors] == [
        "the transaction was rolled back with an outer transaction"]


def test_a_block_that_leaves_one_open_takes_all_back_and_says_so(model, package):
    with pytest.raises(K7Q.Exception, match="a nested transaction is still open"):
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
    other = model.transaction()  # begun inside the generator's transaction
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
