"""Deeply nested objects: no function is recursive, so everything works in a thread with a small stack."""

import json
import threading

import pytest

import K7Q
import Tarvelon
from Tarvelon import show
from Tarvelon._output import to_json
from Tarvelon.metamodel.arplatform import Factory, common

LEVELS = 100_000
IN_A_FILE = 1000


def on_a_small_stack(work):
    """Runs the work in a thread with a stack of 256 KiB; returns its result or raises its exception."""
    result = []

    def run():
        try:
            result.append((work(), None))
        except BaseException as error:
            result.append((None, error))

    before = threading.stack_size(262144)
    try:
        thread = threading.Thread(target=run)
        thread.start()
    finally:
        threading.stack_size(before)
    thread.join()
    given, error = result[0]
    if error is not None:
        raise error
    return given


def nested(model, levels):
    """Nested packages: the outermost and the innermost."""
    top = above = common.Package(model, "p")
    for _ in range(levels - 1):
        below = common.Package(model, "p")
        above.PackagedElement.append(below)
        above = below
    return top, above


def depth_of(record):
    """The depth of nested objects."""
    count = 1
    while "PackagedElement" in record:
        record, = record["PackagedElement"]
        count += 1
    return count


@pytest.fixture(scope="module")
def deep():
    with K7Q.Model.create() as model:
        yield model, *nested(model, LEVELS)


def test_a_deep_model_is_given_as_dicts(deep):
    model, top, bottom = deep
    assert depth_of(on_a_small_stack(top.to_dict)) == LEVELS
    whole = on_a_small_stack(model.to_dict)
    assert list(whole) == ["objects"] and depth_of(whole["objects"][0]) == LEVELS


def test_a_deep_model_is_given_as_json(deep):
    model, top, bottom = deep
    assert on_a_small_stack(lambda: model.to_json(indent=None)).count('"common.Package"') == LEVELS
    indented = on_a_small_stack(lambda: top.to_json(indent=16))
    assert indented.count('"common.Package"') == LEVELS
    assert max(len(line) - len(line.lstrip()) for line in indented.splitlines()) == 128 * 16


def test_a_deep_model_is_copied_compared_validated_searched_and_destroyed(deep):
    model, top, bottom = deep

    def work():
        with model.clone() as copied:
            assert not Tarvelon.diff(model, copied)
            assert copied.validate() == []
            root, = copied.roots()
            assert len(copied.objects()) == LEVELS
            assert copied.find(bottom.qualifiedName).qualifiedName == bottom.qualifiedName
            copied.history = 1
            root.destroy()
            assert copied.objects() == []
            copied.undo()
            assert len(copied.objects()) == LEVELS
        return True

    assert on_a_small_stack(work)


def test_a_fault_on_each_level_is_told_by_the_end_of_a_path():
    with K7Q.Model.create() as model:
        top, bottom = nested(model, 3000)
        for each in model.objects():
            each.Name = "1"
        found = model.validate()
        assert len(found) == 3000
        assert found[0].path == "/1" and found[999].path == "/1" * 1000
        assert found[1000].path == found[-1].path == "..." + "/1" * 24


def test_a_deep_model_is_saved_loaded_and_shown(tmp_path):
    path = tmp_path / "deep.xmi"

    def work():
        with K7Q.Model.create() as model:
            nested(model, IN_A_FILE)
            model.save(path)
            return model.to_json()

    text = on_a_small_stack(work)
    assert on_a_small_stack(lambda: K7Q.Model.load(path).to_json()) == text


def test_a_deep_file_is_shown(tmp_path, capsys):
    path = tmp_path / "deep.xmi"
    with K7Q.Model.create() as model:
        nested(model, IN_A_FILE)
        model.save(path)
        text = model.to_json()
    assert on_a_small_stack(lambda: show.main(["--json", str(path)])) == 0
    assert capsys.readouterr().out == text + "\n"
    assert on_a_small_stack(lambda: show.main(["--json", str(path), "/p" * IN_A_FILE])) == 0
    assert json.loads(capsys.readouterr().out) == {"class": "common.Package", "Name": "p"}
    assert on_a_small_stack(lambda: show.main(["--depth", "-1", str(path)])) == 0
    assert capsys.readouterr().out.count("p (common.Package)") == IN_A_FILE


@pytest.mark.parametrize("value", [
    None, 1.5, "ä", [], {}, [[]], {"a": {}}, {"a": [1, {"b": [], "c": [2, 3]}, "x"], "d": None}, [[1], [2, [3]], {}]])
def test_the_commands_print_json_as_json_does(value):
    assert json.loads(to_json(value)) == value
    assert to_json(value).replace("\\u00e4", "ä") == json.dumps(value, indent=1, ensure_ascii=False)


def test_a_dotted_name_of_any_depth_is_refused(model):
    factory = Factory.createNewFactory(model)
    for name in ("Tarvelon.metamodel." + "a." * 40000, "a." * 40000 + "B", "common." + "P" * 100000, "x" * 100000):
        for refuse in (factory.create, factory.createFromString):
            with pytest.raises(K7Q.UnknownName) as raised:
                on_a_small_stack(lambda: refuse(name))
            assert len(str(raised.value)) < 1000


GIANT = "N" * 100000


@pytest.mark.parametrize("door", [
    lambda model: getattr(Tarvelon.metamodel, GIANT),
    lambda model: getattr(common, GIANT),
    lambda model: getattr(common.Package, GIANT),
    lambda model: getattr(common.Package(model), GIANT),
    lambda model: setattr(common.Package(model), GIANT, 1),
    lambda model: setattr(common.Package, GIANT, 1),
    lambda model: common.Package.MetaProperty()[GIANT],
    lambda model: common.Package(model).clone(common.Package(model), property=GIANT),
    lambda model: getattr(K7Q, GIANT),
])
def test_a_giant_name_is_refused_with_its_beginning(model, door):
    with pytest.raises(K7Q.Exception) as raised:
        door(model)
    assert GIANT[:80] in str(raised.value) and len(str(raised.value)) < 2000
