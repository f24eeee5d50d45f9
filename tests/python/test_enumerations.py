"""Enumerations: literals as attributes, values that compare, hash and print."""

import keyword
import subprocess
import sys

import pytest

import K7Q
import _tarvelon_host
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import common, variant

BindingTimeKind = variant.BindingTimeKind
LITERALS = ["SystemDesignTime", "CodeGenerationTime", "PreCompileTime", "LinkTime"]


def test_a_literal_is_a_class_attribute_that_holds_the_value():
    assert type(BindingTimeKind.LinkTime) is BindingTimeKind
    assert BindingTimeKind.LinkTime.toString() == "LinkTime"
    assert getattr(BindingTimeKind, "LinkTime") == BindingTimeKind.LinkTime


def test_a_literal_can_be_read_from_a_value():
    assert BindingTimeKind.LinkTime.PreCompileTime == BindingTimeKind.PreCompileTime


def test_the_class_lists_its_literals_in_order_of_value():
    assert [str(value) for value in BindingTimeKind] == LITERALS
    assert sorted(BindingTimeKind, reverse=True)[0] == BindingTimeKind.LinkTime


def test_a_class_that_is_no_enumeration_cannot_be_listed():
    with pytest.raises(TypeError, match="common.Package is not an enumeration"):
        list(common.Package)


@pytest.mark.parametrize("text", LITERALS)
def test_str_is_the_literal_and_repr_how_it_is_written(text):
    value = BindingTimeKind.fromString(text)

    assert str(value) == text
    assert f"{value}" == text
    assert repr(value) == f"variant.BindingTimeKind.{text}"
    assert eval(repr(value)) == value


def test_a_value_is_formatted_as_its_literal():
    LinkTime = variant.BindingTimeKind.LinkTime

    assert f"{LinkTime}" == "LinkTime" and f"{LinkTime:>10}|{LinkTime:.4}" == "  LinkTime|Link"
    with pytest.raises(ValueError):
        format(LinkTime, "d")


def test_an_unknown_literal_is_refused_with_those_there_are():
    text = "has no literal 'linktime'; did you mean 'LinkTime'\\?; there are 'SystemDesignTime', "
    with pytest.raises(K7Q.Exception, match=text):
        BindingTimeKind.fromString("linktime")


def test_values_compare_and_order():
    first, second = BindingTimeKind.CodeGenerationTime, BindingTimeKind.LinkTime

    assert first == BindingTimeKind.CodeGenerationTime and first != second
    assert first < second and first <= second and first <= first
    assert second > first and second >= first and second >= second
    assert not first > second and not second < first


def test_the_comparison_methods_are_there_too():
    first, second = BindingTimeKind.CodeGenerationTime, BindingTimeKind.LinkTime

    assert first.lt(second) and BindingTimeKind.lt(first, second)
    assert not first.eq(second) and first.ne(second)


def test_values_hash_by_what_they_are():
    assert len({BindingTimeKind.LinkTime, BindingTimeKind.LinkTime, BindingTimeKind.PreCompileTime}) == 2
    assert {BindingTimeKind.LinkTime: 1}[BindingTimeKind.fromString("LinkTime")] == 1


@pytest.mark.parametrize("other", [common.ArxmlFilePackagingKind.Modular, 0, "SystemDesignTime", None])
def test_equality_with_anything_else_is_false(other):
    assert (BindingTimeKind.SystemDesignTime == other) is False
    assert (BindingTimeKind.SystemDesignTime != other) is True


@pytest.mark.parametrize("other", [common.ArxmlFilePackagingKind.SingleFile, 1, "LinkTime", None])
def test_ordering_with_anything_else_is_a_type_error(other):
    with pytest.raises(TypeError):
        BindingTimeKind.SystemDesignTime < other
    with pytest.raises(TypeError):
        BindingTimeKind.SystemDesignTime >= other


def test_membership_in_the_class_follows_equality():
    assert BindingTimeKind.LinkTime in BindingTimeKind
    assert common.ArxmlFilePackagingKind.Modular not in BindingTimeKind


@pytest.mark.parametrize("use", [lambda: BindingTimeKind.eq(BindingTimeKind.LinkTime, None),
                                 lambda: BindingTimeKind.eq(None, BindingTimeKind.LinkTime),
                                 lambda: BindingTimeKind.LinkTime.lt(None),
                                 lambda: BindingTimeKind.toString(None),
                                 lambda: BindingTimeKind.isvalid(None)])
def test_nothing_is_no_value(use):
    with pytest.raises(TypeError):
        use()


def test_nothing_is_no_argument_of_a_constructor_that_wants_a_value(model):
    with pytest.raises(TypeError, match="ConditionByFormula"):
        variant.ConditionByFormula(model, None, "x")


def test_disp_prints_through_sys_stdout(capsys):
    BindingTimeKind.LinkTime.disp()

    assert capsys.readouterr().out == "LinkTime\n"


def test_an_error_of_sys_stdout_comes_out_of_disp(monkeypatch):
    class Broken:
        def write(self, text):
            raise ZeroDivisionError

    monkeypatch.setattr(sys, "stdout", Broken())
    with pytest.raises(ZeroDivisionError):
        BindingTimeKind.LinkTime.disp()
    monkeypatch.undo()

    assert BindingTimeKind.LinkTime.isvalid()


def test_disp_without_sys_stdout_prints_nothing():
    code = "import sys; sys.stdout = None; from Tarvelon.metamodel.arplatform import variant\n" \
           "variant.BindingTimeKind.LinkTime.disp()"
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, timeout=60)

    assert (done.returncode, done.stdout, done.stderr) == (0, b"", b"")


def test_a_keyword_carries_an_underscore_as_an_attribute():
    assert {name: _tarvelon_host.attributeName(name) for name in keyword.kwlist} == {
        name: name + "_" for name in keyword.kwlist}
    assert _tarvelon_host.attributeName("LinkTime") == "LinkTime"


def test_enumerations_of_the_foundation_are_there_too():
    assert list(map(str, foundation.VisibilityKind)) == ["Public", "Private", "Protected", "Package"]
    assert list(map(str, foundation.SwCalibrationAccessKind)) == ["ReadOnly", "ReadWrite", "NotAccessible"]


def test_the_data_type_of_an_enumeration_names_its_literals():
    assert list(BindingTimeKind.MetaDataType().literals()) == LITERALS
    assert BindingTimeKind.LinkTime.getMetaDataType().name() == "BindingTimeKind"
