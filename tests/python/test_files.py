"""Models in files: what is saved, what is refused, and the messages for users."""

import difflib
import gc
import importlib.util
import io
import os
import re
import signal
import stat
import subprocess
import sys
from pathlib import Path

import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

import K7Q
from Tarvelon.metamodel.arplatform import Factory, behavior, common, variant

ROOT = Path(__file__).resolve().parents[2]
BROKEN = Path(__file__).resolve().parents[1] / "files" / "broken"


def example(name):
    sys.path.append(str(ROOT / "examples"))
    try:
        spec = importlib.util.spec_from_file_location(name, ROOT / "examples" / f"{name}.py")
        module = importlib.util.module_from_spec(spec)
        spec.loader.exec_module(module)
        return module
    finally:
        sys.path.pop()


reflection = example("every_class")


def walk(model):
    """All objects; an object comes after its owner."""
    waiting = list(reversed(model.roots()))
    while waiting:
        yield (each := waiting.pop())
        waiting += reversed([held for _, held, is_held in values(each) if is_held])


def values(each):
    """All values of all stored properties: the name of the property, the value, and whether the object
    contains the value."""
    for description in type(each).MetaProperty():
        attribute = reflection.attribute_of(type(each), description)
        if attribute is None or description.isReadOnly():
            continue
        value = getattr(each, attribute)
        for one in (value if hasattr(value, "append") else [value]):
            if one is not None:
                yield description.name(), one, description.isContainment()


def picture(model):
    """The whole model as plain data: the classes and values of all objects. References are numbers of
    objects."""
    objects = list(walk(model))
    numbers = {each: f"object {number}" for number, each in enumerate(objects)}
    return [(type(each).__module__, type(each).__name__,
             [(name, numbers[value] if hasattr(value, "getModel") else repr(value))
              for name, value, _ in values(each)])
            for each in objects]


@pytest.fixture
def again(tmp_path):
    """Saves a model and loads it."""

    def run(model):
        path = tmp_path / "model.xmi"
        model.save(path)
        loaded = K7Q.Model.load(path)
        loaded.save(tmp_path / "again.xmi")
        assert (tmp_path / "again.xmi").read_bytes() == path.read_bytes()
        return loaded

    return run


def test_the_braking_function_is_the_same_when_loaded(again):
    by_wire, brake = example("brake_by_wire"), example("brake_components")
    with Factory.createNewModel() as model:
        by_wire.build(brake.maker(model))
        before = picture(model)
        assert len(before) == 451
        assert picture(again(model)) == before


def test_every_property_of_every_class_is_the_same_when_loaded(again):
    with Factory.createNewModel() as model:
        maker = reflection.Maker(model)
        for cls in maker.classes:
            target = cls(model)
            for description in cls.MetaProperty():
                attribute = reflection.attribute_of(cls, description)
                if attribute is not None and not description.isReadOnly():
                    reflection.write_and_read(target, attribute, description, maker)
        before = picture(model)
        assert {name for _, name, _ in before} >= {cls.__name__ for cls in maker.classes}
        assert picture(again(model)) == before


TEXTS = st.text(st.characters(blacklist_categories=("Cs",), blacklist_characters="\ufffe\uffff") |
                st.sampled_from("\t\n\r <>&\"']"))


def is_kept(text):
    return all(each >= " " or each in "\t\n\r" for each in text)


@settings(deadline=None, suppress_health_check=[HealthCheck.function_scoped_fixture])
@given(st.lists(TEXTS.filter(is_kept), min_size=1, max_size=5))
def test_every_text_is_the_same_when_loaded(again, texts):
    with K7Q.Model.create() as model:
        package = common.Package(model, texts[0])
        package.category = texts[0]
        value = variant.SystemConstValue(model)
        value.ValueVariationPoint.extend(texts)
        package_again, value_again = again(model).roots()
        assert package_again.Name == texts[0]
        assert package_again.category == texts[0]
        assert list(value_again.ValueVariationPoint) == texts


@settings(deadline=None, suppress_health_check=[HealthCheck.function_scoped_fixture])
@given(st.floats(allow_nan=False))
def test_every_number_is_the_same_when_loaded(again, number):
    with K7Q.Model.create() as model:
        behavior.TimingEvent(model, number, "Event")
        assert again(model).roots()[0].Period.hex() == number.hex()


@pytest.mark.parametrize("text", ["\0", "a\x01", "\x0b", "\x1f", "\ufffe", "\uffff", "\ud800"])
def test_a_text_that_no_file_can_hold_is_refused_when_it_is_set(package, text):
    with pytest.raises(K7Q.WrongValue):
        package.Name = text
    assert package.Name == "Brakes"


def changes(before, after):
    """The lines that were removed and those that were added."""
    lines = [line for line in difflib.ndiff(before.read_text().splitlines(), after.read_text().splitlines())]
    return [[line[2:].strip() for line in lines if line[0] == mark] for mark in "-+"]


def test_a_change_changes_its_own_lines_alone(model, tmp_path):
    before, after = tmp_path / "before.xmi", tmp_path / "after.xmi"
    packages = [common.Package(model, f"P{number}") for number in range(100)]
    model.save(before)

    packages[50].Name = "Renamed"
    packages[55].category = "STANDARD"
    model.save(after)
    assert changes(before, after) == [['Name="P50"'], ['Name="Renamed"', 'category="STANDARD"']]

    model.save(before)
    packages[70].destroy()
    packages[50].Name = "P50"
    model.save(after)
    gone, new = changes(before, after)
    assert (len(gone), gone[0], gone[2]) == (4, 'Name="Renamed"', 'Name="P70"')
    assert new == ['Name="P50"']

    packages[60].PackagedElement.append(variant.SystemConst(model, "First"))
    model.save(before)
    packages[60].PackagedElement.append(variant.SystemConst(model, "Second"))
    model.save(after)
    gone, new = changes(before, after)
    assert (gone, len(new), new[1]) == ([], 3, 'Name="Second"')


def test_a_reference_more_or_less_changes_its_own_line_alone(model, tmp_path):
    before, after = tmp_path / "before.xmi", tmp_path / "after.xmi"
    step = behavior.Runnable(model, "step", "Step")
    events = [behavior.TimingEvent(model, 0.01, f"Event{number}") for number in range(4)]
    model.save(before)
    line = {re.search('Name="(.*)"', text)[1]: text[:12]
            for text in before.read_text().split('xmi:id="') if "Name=" in text}
    step.Events.append(events[0])
    model.save(before)
    for event in events[1:]:
        step.Events.append(event)
        model.save(after)
        gone, new = changes(before, after)
        assert gone == []
        assert new[0] == line[event.Name]
        assert len(new) == 2 and new[1].startswith("StartOnEvent=")
        model.save(before)
    step.Events.remove(events[3])
    model.save(after)
    gone, new = changes(before, after)
    assert (gone[0], len(gone), new) == (line["Event3"], 2, [])


def test_a_path_may_be_text_bytes_or_a_path(model, package, tmp_path):
    for path in (tmp_path / "a.xmi", str(tmp_path / "b.xmi"), os.fsencode(tmp_path / "ü.xmi")):
        model.save(path)
        assert [each.Name for each in K7Q.Model.load(path).roots()] == ["Brakes"]
    for wrong in (None, 7, model):
        with pytest.raises(K7Q.WrongType, match="save: expected a path, got "):
            model.save(wrong)
        with pytest.raises(K7Q.WrongType, match="load: expected a path, got "):
            K7Q.Model.load(wrong)
    for wrong in ("nul\0byte", b"nul\0byte", "\ud800"):
        with pytest.raises(K7Q.WrongValue, match="save: expected a path that the file system accepts, got "):
            model.save(wrong)


def test_a_frozen_model_can_be_saved(model, package, tmp_path):
    model.frozen().save(tmp_path / "a.xmi")
    assert [each.Name for each in model.frozen().roots()] == ["Brakes"]
    with pytest.raises(K7Q.Exception):
        model.frozen().roots()[0].Name = "Wheels"


def test_a_loaded_model_is_bound_to_no_uri(model, tmp_path):
    model.save(tmp_path / "a.xmi")
    before = list(K7Q.Model.uris())
    loaded = K7Q.Model.load(tmp_path / "a.xmi")
    assert list(K7Q.Model.uris()) == before
    assert loaded.problems == ()


def test_what_the_system_refuses_is_an_os_error(model, tmp_path):
    with pytest.raises(K7Q.FileError) as caught:
        model.save(tmp_path / "gone" / "a.xmi")
    assert isinstance(caught.value, OSError)
    assert (caught.value.errno, caught.value.filename) == (2, str(tmp_path / "gone" / "a.xmi"))
    assert str(caught.value) == (f"cannot save '{tmp_path}/gone/a.xmi': no temporary file can be created in its "
                                 "folder (No such file or directory); an existing file is unchanged")
    with pytest.raises(K7Q.FileError, match="cannot load '.*b.xmi': No such file or directory"):
        K7Q.Model.load(tmp_path / "b.xmi")


def test_a_file_keeps_its_mode(model, tmp_path):
    path = tmp_path / "a.xmi"
    path.write_text("old")
    path.chmod(0o640)
    model.save(path)
    assert stat.S_IMODE(path.stat().st_mode) == 0o640
    assert [each.name for each in tmp_path.iterdir()] == ["a.xmi"]


def broken(tmp_path, model, package):
    package.category = "STANDARD"
    path = tmp_path / "broken.xmi"
    model.save(path)
    path.write_text(path.read_text().replace("category", "categry"))
    return path


def test_a_file_with_problems_is_refused_with_all_of_them(model, package, tmp_path):
    path = broken(tmp_path, model, package)
    with pytest.raises(K7Q.WrongFile) as caught:
        K7Q.Model.load(path)
    problem, = caught.value.problems
    assert problem.text == "common:Package has no property 'categry'; did you mean 'category'?"
    assert path.read_text().splitlines()[problem.line - 1][problem.column - 1:].startswith("categry=")
    assert caught.value.count == 1
    assert str(caught.value) == f"cannot load '{path}': 1 problem, so nothing was loaded\n  {problem}"
    assert str(problem) == f"line {problem.line}, column {problem.column}: {problem.text}"


def test_a_lenient_load_keeps_what_is_right(model, package, tmp_path):
    loaded = K7Q.Model.load(broken(tmp_path, model, package), lenient=True)
    assert [(each.Name, each.category) for each in loaded.roots()] == [("Brakes", "")]
    assert [each.text for each in loaded.problems] == [
        "common:Package has no property 'categry'; did you mean 'category'?"]
    assert model.problems == ()


def test_a_lenient_load_says_how_many_problems_it_does_not_show(model, tmp_path):
    path = tmp_path / "many.xmi"
    model.save(path)
    path.write_text(path.read_text().replace("</xmi:XMI>", "<common:Package nme=''/>\n" * 1234 + "</xmi:XMI>"))
    loaded = K7Q.Model.load(path, lenient=True)
    assert len(loaded.roots()) == 1234
    assert len(loaded.problems) == 1001
    assert loaded.problems[-1] == (*loaded.problems[-2][:2], "and 234 more problems, which are not shown")


@pytest.mark.parametrize("path", sorted(BROKEN.iterdir()), ids=lambda path: path.name)
def test_a_broken_file_is_refused_with_a_place(path):
    lines = path.read_bytes().decode("utf-8", "replace").split("\n")
    with pytest.raises(K7Q.WrongFile) as caught:
        K7Q.Model.load(path)
    assert caught.value.problems
    for problem in caught.value.problems:
        assert 1 <= problem.line <= len(lines)
        assert problem.column >= 1
    try:
        K7Q.Model.load(path, lenient=True).close()
    except K7Q.WrongFile as refusal:
        assert refusal.count


def test_truncated_and_changed_files_never_do_worse_than_be_refused(model, package, tmp_path):
    variant.SystemConstValue(model).ValueVariationPoint.extend(["a", "b"])
    path = tmp_path / "a.xmi"
    model.save(path)
    whole = path.read_bytes()
    for place in range(0, len(whole), 7):
        for content in (whole[:place], whole[:place] + bytes([whole[place] ^ 1 << place % 8]) + whole[place + 1:]):
            path.write_bytes(content)
            try:
                K7Q.Model.load(path)
            except K7Q.WrongFile as refusal:
                assert all(each.line and each.column and each.text for each in refusal.problems)


class Terminal(io.StringIO):
    def isatty(self):
        return True


def test_progress_is_told_and_can_cancel(model, package, tmp_path):
    told = []
    model.save(tmp_path / "a.xmi", progress=told.append)
    K7Q.Model.load(tmp_path / "a.xmi", progress=told.append)
    assert told == [1, 1]

    class Cancelled(Exception):
        pass

    def cancel(done):
        raise Cancelled

    old = (tmp_path / "a.xmi").read_bytes()
    package.Name = "Other"
    with pytest.raises(Cancelled):
        model.save(tmp_path / "a.xmi", progress=cancel)
    with pytest.raises(Cancelled):
        K7Q.Model.load(tmp_path / "a.xmi", progress=cancel)
    assert (tmp_path / "a.xmi").read_bytes() == old
    assert [each.name for each in tmp_path.iterdir()] == ["a.xmi"]
    with pytest.raises(K7Q.WrongType, match="saving: expected progress to be callable, got int"):
        model.save(tmp_path / "a.xmi", progress=7)


def test_a_pipe_that_says_nothing_can_be_left(model, package, tmp_path):
    os.mkfifo(tmp_path / "pipe")
    held = os.open(tmp_path / "pipe", os.O_RDWR)

    class Enough(Exception):
        pass

    def leave(number, frame):
        raise Enough

    before = signal.signal(signal.SIGALRM, leave)
    # If nothing else ends the test, the pipe is closed after a minute.
    close = subprocess.Popen([sys.executable, "-c", f"import os, time; time.sleep(60); os.write({held}, b'x' * 9)"],
                             pass_fds=[held])
    os.close(held)
    try:
        with pytest.raises(Enough):
            signal.setitimer(signal.ITIMER_REAL, 0.2)
            K7Q.Model.load(tmp_path / "pipe")
        assert close.poll() is None
    finally:
        signal.signal(signal.SIGALRM, before)
        close.kill()
        close.wait()


def test_a_model_comes_through_a_pipe(model, package, tmp_path):
    model.save(tmp_path / "a.xmi")
    os.mkfifo(tmp_path / "pipe")
    with subprocess.Popen(["cp", "a.xmi", "pipe"], cwd=tmp_path):
        assert [each.Name for each in K7Q.Model.load(tmp_path / "pipe").roots()] == ["Brakes"]


def test_a_long_text_comes_through_a_pipe(model, package, tmp_path):
    package.Name = "x" * 3_000_000
    model.save(tmp_path / "a.xmi")
    os.mkfifo(tmp_path / "pipe")
    with subprocess.Popen(["cp", "a.xmi", "pipe"], cwd=tmp_path):
        assert [len(each.Name) for each in K7Q.Model.load(tmp_path / "pipe").roots()] == [3_000_000]


def test_a_signal_does_not_end_the_wait_for_a_pipe(model, package, tmp_path):
    model.save(tmp_path / "a.xmi")
    os.mkfifo(tmp_path / "pipe")
    feeders = []
    before = signal.signal(signal.SIGALRM, lambda number, frame: feeders.append(
        subprocess.Popen(["cp", "a.xmi", "pipe"], cwd=tmp_path)))
    try:
        signal.setitimer(signal.ITIMER_REAL, 0.2)
        assert [each.Name for each in K7Q.Model.load(tmp_path / "pipe").roots()] == ["Brakes"]
    finally:
        signal.signal(signal.SIGALRM, before)
        for each in feeders:
            each.wait()


def test_a_chain_of_too_many_links_is_refused(model, package, tmp_path):
    for number in range(45):
        os.symlink(f"link{number}", tmp_path / f"link{number + 1}")
    with pytest.raises(K7Q.FileError, match="the path leads through too many symbolic links"):
        model.save(tmp_path / "link45")
    assert all(each.is_symlink() for each in tmp_path.iterdir())


def test_a_terminal_shows_a_bar_when_it_takes_long(model, tmp_path, monkeypatch):
    terminal = Terminal()
    monkeypatch.setattr(sys, "stderr", terminal)
    model.save(tmp_path / "a.xmi")
    assert terminal.getvalue() == ""
    monkeypatch.setattr("time.monotonic", iter(range(0, 100, 2)).__next__)
    model.save(tmp_path / "a.xmi")
    drawn = terminal.getvalue()
    assert drawn.startswith("\rsaving a.xmi [##############################] 100 %")
    assert drawn.endswith("\r" + " " * 51 + "\r")


def test_a_bar_keeps_to_one_line_however_long_the_name(model, tmp_path, monkeypatch):
    terminal = Terminal()
    monkeypatch.setattr(sys, "stderr", terminal)
    monkeypatch.setattr("time.monotonic", iter(range(0, 100, 2)).__next__)
    model.save(tmp_path / ("n" * 200 + ".xmi"))
    assert max(map(len, terminal.getvalue().split("\r"))) < 80


class ClosedTerminal(Terminal):
    def write(self, text):
        raise OSError(5, "Input/output error")


def closed():
    stream = io.StringIO()
    stream.close()
    return stream


@pytest.mark.parametrize("stream", [None, object(), closed(), ClosedTerminal()])
def test_a_model_is_saved_and_loaded_whatever_stderr_is(model, package, tmp_path, monkeypatch, stream):
    monkeypatch.setattr(sys, "stderr", stream)
    monkeypatch.setattr("time.monotonic", iter(range(0, 100, 2)).__next__)
    model.save(tmp_path / "a.xmi")
    assert [each.Name for each in K7Q.Model.load(tmp_path / "a.xmi").roots()] == ["Brakes"]


def test_no_property_of_the_metamodel_hides_what_files_put_on_objects():
    names = {name for cls in reflection.concrete_classes() for name in dir(cls)}
    assert names.isdisjoint({"save", "load", "roots", "problems"})


def test_the_problems_of_a_lenient_load_are_the_models(package, model, tmp_path):
    path = tmp_path / "broken.xmi"
    model.save(path)
    path.write_text(path.read_text().replace("Name=", "Nam="))

    # Only an object is kept, so the model gets another Python object later.
    root, = K7Q.Model.load(path, lenient=True).roots()
    gc.collect()
    found = root.getModel()
    problem, = found.problems
    assert problem.text == "common:Package has no property 'Nam'; did you mean 'Name'?"
    assert found.problems == (problem,)
    found.close()
    assert found.problems == (problem,)
    assert model.problems == ()


def test_a_suffix_of_another_format_is_refused(model, tmp_path):
    for name in ("x.xmi.gz", "x.json"):
        with pytest.raises(K7Q.WrongValue, match=r"name the file '.*\.xmi', or give it no suffix"):
            model.save(tmp_path / name)
    assert list(tmp_path.iterdir()) == []
    model.save(tmp_path / "x")
    assert K7Q.Model.load(tmp_path / "x").roots() == []


def test_another_current_folder_during_a_save_changes_nothing(model, tmp_path, monkeypatch):
    for _ in range(20000):
        common.Package(model)
    elsewhere = tmp_path / "elsewhere"
    elsewhere.mkdir()
    monkeypatch.chdir(tmp_path)
    model.save("x.xmi", progress=lambda done: os.chdir(elsewhere))
    os.chdir(tmp_path)

    def end(done):
        os.chdir(elsewhere)
        raise KeyboardInterrupt

    with pytest.raises(KeyboardInterrupt):
        model.save("x.xmi", progress=end)
    assert sorted(each.name for each in tmp_path.iterdir()) == ["elsewhere", "x.xmi"]
    assert list(elsewhere.iterdir()) == []
