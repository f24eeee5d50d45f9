"""Conversion of Python values into values of the model and back."""

import fractions
import math

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, documentation, variant
from Tarvelon.metamodel.foundation import SwCalibrationAccessKind, VisibilityKind  # noqa: F401


@pytest.fixture
def base(model):
    return common.ReferenceBase(model)


@pytest.fixture
def mode(model):
    return common.ModeDeclaration(model)


@pytest.fixture
def error(model):
    return common.ApplicationError(model)


@pytest.fixture
def value(model):
    return variant.SystemConstValue(model)


@pytest.mark.parametrize("text", [
    "", "a", "plain", "Größe", "ÿ", "Ā", "車輪", "\U0001F697", "mixed Ö車\U0001F697", "line\nbreak", "\x7f",
    "�", "x" * 255, "x" * 256, "x" * 257, "ö" * 5000, "\U0001F697" * 5000,
])
def test_a_text_is_read_as_it_was_written(package, text):
    package.Name = text

    assert package.Name == text
    assert type(package.Name) is str


@pytest.mark.parametrize("text", ["\0", "a\0b", "Ā\0", "\U0001F697\0"])
def test_a_nul_is_refused(package, text):
    with pytest.raises(K7Q.WrongValue, match="a text must not contain a NUL character"):
        package.Name = text

    assert package.Name == "Brakes"


@pytest.mark.parametrize("text", ["\ud800", "a\udfff", "\ud83d\ude97", "\U0001F697\ud800"])
def test_half_of_a_surrogate_pair_is_refused(package, text):
    with pytest.raises(ValueError, match="a text must not contain half of a surrogate pair"):
        package.Name = text

    assert package.Name == "Brakes"


@pytest.mark.parametrize("call", [
    lambda model, text: common.Package(model, text),
    lambda model, text: variant.BindingTimeKind.fromString(text),
    lambda model, text: variant.PostBuildVariantCondition(model).ValueVariationPoint.append(text),
    lambda model, text: model.setUri(text),
])
@pytest.mark.parametrize("text", ["a\0b", "\udc00"])
def test_every_entry_refuses_such_texts(model, call, text):
    with pytest.raises(K7Q.WrongValue, match="a text must not contain"):
        call(model, text)


def test_the_place_in_a_refused_text_is_named(package):
    with pytest.raises(K7Q.WrongValue) as raised:
        package.Name = "ab\0c"

    text = "Package.Name: a text must not contain a NUL character (at position 2 of 'ab\\x00c'); remove it"
    assert str(raised.value) == text


def test_of_a_long_refused_text_what_stands_around_is_shown(package):
    with pytest.raises(K7Q.WrongValue) as raised:
        package.category = "x" * 100000 + "\0" + "y" * 100000

    shown = "..." + repr("x" * 20 + "\0" + "y" * 19) + "..."
    assert f"(at position 100000 of {shown})" in str(raised.value)


def test_the_argument_that_is_a_refused_text_is_named(model):
    with pytest.raises(K7Q.WrongValue, match="^Package, argument 2: a text must not contain"):
        common.Package(model, "\0")
    with pytest.raises(K7Q.WrongValue, match="^MetaPackage: a text must not contain"):
        common.MetaPackage("\0")


@pytest.mark.parametrize("given, stored", [
    (True, True), (False, False), (2, True), (0, False), (0.5, True), (0.0, False),
])
def test_a_truth_value_takes_any_number(base, given, stored):
    base.IsDefault = given

    assert base.IsDefault is stored


@pytest.mark.parametrize("given", [0, 1, -1, 2**31 - 1, -2**31, True, 7.0])
def test_a_whole_number_is_read_as_it_was_written(error, given):
    error.errorCode = given

    assert error.errorCode == given
    assert type(error.errorCode) is int


@pytest.mark.parametrize("given", [
    2**31, -2**31 - 1, 2**62, 2**63, -2**63 - 1, 10**30, 1.5, math.nan, math.inf, 1e300,
])
def test_a_number_that_is_no_int32_is_refused(error, given):
    error.errorCode = 5

    with pytest.raises(OverflowError) as raised:
        error.errorCode = given

    assert isinstance(raised.value, K7Q.OutOfRange)
    assert error.errorCode == 5


@pytest.mark.parametrize("given", [0.0, -0.0, 1.5, -1e308, 5e-324, math.inf, 3, True, 2**53])
def test_a_double_is_read_as_it_was_written(value, given):
    value.Value = given

    assert value.Value == given
    assert type(value.Value) is float


def test_a_double_keeps_nan(value):
    value.Value = math.nan

    assert math.isnan(value.Value)


def test_an_int_that_no_double_holds_exactly_is_refused(value):
    with pytest.raises(OverflowError):
        value.Value = 2**53 + 1


@pytest.mark.parametrize("given", [2**63, 2**64, -2**70, 2**1023])
def test_an_int_of_any_size_that_a_double_holds_exactly_is_taken(value, given):
    value.Value = given

    assert value.Value == given


@pytest.mark.parametrize("given", [2**70 + 1, 10**30, 10**400, -10**4000])
def test_an_int_of_any_size_that_no_double_holds_is_refused(value, given):
    value.Value = 1.5

    with pytest.raises(OverflowError, match="SystemConstValue.Value: expected double scalar, got int "):
        value.Value = given
    assert value.Value == 1.5


@pytest.mark.parametrize("given", [2**63, 10**30, -10**4000])
def test_an_int_of_any_size_is_true(base, given):
    base.IsDefault = given
    base.BaseIsThisPackage = given

    assert base.IsDefault is True and base.BaseIsThisPackage is True


class Index:
    def __index__(self):
        return 42


def test_a_number_of_another_library_counts_by_its_index(error):
    error.errorCode = Index()

    assert error.errorCode == 42


@pytest.mark.parametrize("given", [
    [1], (1,), {}, b"x", object(), fractions.Fraction(1, 2), 1j, len, int, common.Package,
])
def test_what_has_no_form_in_the_model_is_refused(error, given):
    with pytest.raises(TypeError, match="ApplicationError.errorCode: expected int32 scalar, got "):
        error.errorCode = given


def test_a_class_where_an_object_is_meant_is_named(package):
    with pytest.raises(TypeError, match="longName: .*, got the class documentation.MultiLanguageLongName$"):
        package.longName = documentation.MultiLanguageLongName


@pytest.mark.parametrize("given", ["5", "", b"5"])
def test_a_text_is_no_number(error, given):
    with pytest.raises(K7Q.WrongType):
        error.errorCode = given


@pytest.mark.parametrize("given", [5, 1.5, True])
def test_a_number_is_no_text(package, given):
    with pytest.raises(K7Q.WrongType, match="Package.Name: expected char vector, got"):
        package.Name = given


def test_an_unset_optional_text_reads_empty(package):
    assert package.category == ""


@pytest.mark.parametrize("name", ["introduction", "adminData", "desc", "longName"])
def test_an_unset_optional_object_reads_none(package, name):
    assert getattr(package, name) is None


def test_an_unset_optional_scalar_reads_none(mode, base):
    assert mode.Value is None
    assert base.BaseIsThisPackage is None


def test_an_unset_optional_enumeration_reads_none(model):
    assert common.SwAddrMethod(model).SectionType is None


def test_an_unset_required_property_reads_the_default(model):
    assert common.ReferenceBase(model).IsDefault is False
    assert common.ReferenceBase(model).ShortLabel == ""
    assert common.ReferenceBase(model).Package is None
    assert common.ApplicationError(model).errorCode == 0
    assert variant.SystemConstValue(model).Value == 0.0
    assert common.AUTOSAR(model).ArxmlFilePackaging == common.ArxmlFilePackagingKind.Modular


@pytest.mark.parametrize("unset", [lambda package: setattr(package, "category", None),
                                   lambda package: delattr(package, "category"),
                                   lambda package: setattr(package, "category", "")])
def test_none_del_and_the_empty_text_unset_an_optional_text(package, unset):
    package.category = "STANDARD"

    unset(package)

    assert package.category == ""


@pytest.mark.parametrize("unset", [
    lambda mode: setattr(mode, "Value", None), lambda mode: delattr(mode, "Value"),
])
def test_none_and_del_unset_an_optional_scalar(mode, unset):
    mode.Value = 3

    unset(mode)

    assert mode.Value is None


def test_none_and_del_unset_an_optional_object(model, package):
    package.adminData = common.AdminData(model)
    package.adminData = None
    assert package.adminData is None

    package.introduction = documentation.DocumentationBlock(model)
    del package.introduction
    assert package.introduction is None


@pytest.mark.parametrize("unset", [lambda base: setattr(base, "ShortLabel", None),
                                   lambda base: delattr(base, "ShortLabel"),
                                   lambda base: setattr(base, "IsDefault", None),
                                   lambda base: setattr(base, "Package", None)])
def test_a_required_property_cannot_be_unset(model, package, unset):
    base = common.ReferenceBase(model, True, "default", package)

    with pytest.raises(ValueError, match="required and cannot be unset"):
        unset(base)

    assert (base.IsDefault, base.ShortLabel, base.Package) == (True, "default", package)


def test_an_enumeration_value_is_written_and_read(model):
    condition = variant.ConditionByFormula(model)

    condition.BindingTime = variant.BindingTimeKind.PreCompileTime

    assert condition.BindingTime == variant.BindingTimeKind.PreCompileTime


def test_a_value_of_another_enumeration_is_refused(model):
    condition = variant.ConditionByFormula(model)

    with pytest.raises(K7Q.WrongType):
        condition.BindingTime = common.ArxmlFilePackagingKind.SingleFile


def test_an_object_is_written_and_read(model, package):
    data = common.AdminData(model)

    package.adminData = data

    assert package.adminData is data


def test_an_object_of_another_class_is_refused(model, package):
    with pytest.raises(TypeError, match="Package.adminData: expected Tarvelon.metamodel.arplatform.common"):
        package.adminData = common.Sdg(model)


def test_an_object_of_another_model_is_refused(package):
    with K7Q.Model.create() as other:
        with pytest.raises(ValueError) as raised:
            package.adminData = common.AdminData(other)

    assert isinstance(raised.value, K7Q.Exception)
    assert package.adminData is None


def test_a_property_whose_class_has_no_rows_yet_refuses_values(model):
    point = variant.VariationPoint(model)
    assert point.VariationPoint is None

    with pytest.raises(K7Q.Exception):
        point.VariationPoint = common.Package(model)
