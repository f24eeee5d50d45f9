"""Models of several ARXML files: loading, what stands in which file, saving each back."""

import random

import K7Q
import pytest
from Tarvelon.metamodel import types
from Tarvelon.metamodel.arplatform import common, interface

HEAD = """\
<?xml version="1.0" encoding="UTF-8"?>
<AUTOSAR xmlns="http://autosar.org/schema/r4.0" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" \
xsi:schemaLocation="http://autosar.org/schema/r4.0 AUTOSAR_00051.xsd">
  <AR-PACKAGES>
"""
TAIL = """\
  </AR-PACKAGES>
</AUTOSAR>
"""


def package(name, *elements):
    lines = [f"<AR-PACKAGE>\n  <SHORT-NAME>{name}</SHORT-NAME>\n  <ELEMENTS>\n"]
    lines += ["".join(f"    {line}\n" for line in each.splitlines()) for each in elements]
    text = "".join(lines) + "  </ELEMENTS>\n</AR-PACKAGE>\n"
    return "".join(f"    {line}\n" for line in text.splitlines())


TYPE = "<IMPLEMENTATION-DATA-TYPE>\n  <SHORT-NAME>uint16</SHORT-NAME>\n</IMPLEMENTATION-DATA-TYPE>"
FRAME = "<CAN-FRAME>\n  <SHORT-NAME>F</SHORT-NAME>\n</CAN-FRAME>"
INTERFACE = """\
<SENDER-RECEIVER-INTERFACE>
  <SHORT-NAME>Speed</SHORT-NAME>
  <DATA-ELEMENTS>
    <VARIABLE-DATA-PROTOTYPE>
      <SHORT-NAME>Front</SHORT-NAME>
      <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">/Demo/uint16</TYPE-TREF>
    </VARIABLE-DATA-PROTOTYPE>
  </DATA-ELEMENTS>
</SENDER-RECEIVER-INTERFACE>"""


@pytest.fixture
def folder(tmp_path):
    """Two files that divide the package /Demo, and one with the package /Other."""
    files = {"a_ports.arxml": package("Demo", INTERFACE), "b_types.arxml": package("Demo", TYPE, FRAME),
             "c_other.arxml": package("Other", TYPE.replace("uint16", "uint8"))}
    for name, text in files.items():
        (tmp_path / name).write_text(HEAD + text + TAIL)
    return tmp_path


def texts(folder):
    return {each.name: each.read_text() for each in folder.iterdir()}


def written(paths):
    return [path.rpartition("/")[2] for path in paths]


def test_a_folder_is_one_model_of_its_files(folder):
    model = K7Q.Model.load(folder)
    assert len(model.roots()) == 1
    assert written(model.files) == ["a_ports.arxml", "b_types.arxml", "c_other.arxml"]
    assert len(model.find_all("/Demo")) == 1
    assert model.find("/Demo/Speed/Front").Type == model.find("/Demo/uint16")


def test_files_below_a_folder_belong_to_it(folder):
    (folder / "below").mkdir()
    (folder / "c_other.arxml").rename(folder / "below" / "c.arxml")
    assert K7Q.Model.load(folder).find("/Other/uint8") is not None


def test_a_list_of_files_is_one_model(folder):
    model = K7Q.Model.load([folder / "b_types.arxml", folder / "c_other.arxml"])
    assert {each.Name for each in model.roots()[0].PackagedElement} == {"Demo", "Other"}


def test_an_empty_folder_and_an_empty_list_are_refused(tmp_path):
    with pytest.raises(K7Q.WrongValue, match="the folder has no file with the suffix .arxml"):
        K7Q.Model.load(tmp_path)
    with pytest.raises(K7Q.WrongValue, match="expected at least one file, got none"):
        K7Q.Model.load([])


def test_a_file_in_another_format_is_not_loaded_with_others(folder):
    model = K7Q.Model.create()
    model.save(folder / "d.xmi")
    with pytest.raises(K7Q.WrongValue, match="expected ARXML, got another format; load it alone"):
        K7Q.Model.load([folder / "a_ports.arxml", folder / "d.xmi"])


def test_a_problem_says_in_which_file_it_is(folder):
    (folder / "b_types.arxml").write_text(HEAD + package("Demo", TYPE.replace("SHORT-NAME", "LONG-NAME")) + TAIL)
    with pytest.raises(K7Q.WrongFile, match=r"b_types\.arxml: .*has no SHORT-NAME"):
        K7Q.Model.load(folder)


def test_an_object_knows_its_file(folder):
    model = K7Q.Model.load(folder)
    assert written([model.find(path).file for path in ("/Demo/Speed/Front", "/Demo/uint16", "/Other/uint8")]) == [
        "a_ports.arxml", "b_types.arxml", "c_other.arxml"]


def test_foreign_content_of_a_divided_package_belongs_to_it(folder):
    found, = K7Q.Model.load(folder).find("/Demo").foreign
    assert (found.tag, found.path, found.line, written([found.file])) == ("CAN-FRAME", "/Demo/F", 10, ["b_types.arxml"])


def test_what_did_not_change_is_not_written(folder):
    before = {each: each.stat().st_mtime_ns for each in folder.iterdir()}
    assert K7Q.Model.load(folder).save() == []
    assert {each: each.stat().st_mtime_ns for each in folder.iterdir()} == before


def test_the_files_of_a_change_are_written(folder):
    before = texts(folder)
    model = K7Q.Model.load(folder)
    model.find("/Demo/uint16").Name = "u16"
    assert written(model.save()) == ["a_ports.arxml", "b_types.arxml"]
    assert texts(folder) == {name: text.replace("uint16", "u16") for name, text in before.items()}
    assert model.save() == []


def test_a_divided_package_is_renamed_in_each_file(folder):
    before = texts(folder)
    model = K7Q.Model.load(folder)
    model.find("/Demo").Name = "New"
    model.save()
    assert texts(folder) == {name: text.replace("Demo", "New") for name, text in before.items()}


def test_a_new_object_stands_in_the_file_of_its_owner(folder):
    model = K7Q.Model.load(folder)
    new = interface.SenderReceiverInterface(model)
    new.Name = "New"
    model.find("/Other").PackagedElement.append(new)
    assert written([new.file]) == ["c_other.arxml"]
    assert written(model.save()) == ["c_other.arxml"]


def test_an_object_moves_to_the_file_of_its_new_owner(folder):
    before = texts(folder)
    model = K7Q.Model.load(folder)
    model.find("/Other").PackagedElement.append(model.find("/Demo/Speed"))
    assert written([model.find("/Other/Speed/Front").file]) == ["c_other.arxml"]
    assert written(model.save()) == ["a_ports.arxml", "c_other.arxml"]
    again = K7Q.Model.load(folder)
    assert again.find("/Demo/Speed") is None
    assert again.find("/Other/Speed/Front").Type == again.find("/Demo/uint16")
    assert texts(folder)["b_types.arxml"] == before["b_types.arxml"]


def test_an_undone_change_is_written_back(folder):
    before = texts(folder)
    model = K7Q.Model.load(folder)
    model.history = 10
    model.find("/Other/uint8").destroy()
    assert written(model.save()) == ["c_other.arxml"]
    model.undo()
    assert written(model.save()) == ["c_other.arxml"]
    assert texts(folder) == before


def test_a_file_that_another_program_changed_is_not_overwritten(folder):
    model = K7Q.Model.load(folder)
    model.find("/Demo/uint16").Name = "u16"
    changed = folder / "b_types.arxml"
    changed.write_text(changed.read_text() + "<!-- mine -->\n")
    before = texts(folder)
    with pytest.raises(K7Q.WrongValue, match="was changed by another program since it was loaded"):
        model.save()
    assert texts(folder) == before


def test_none_is_written_if_one_cannot_be(folder):
    model = K7Q.Model.load(folder)
    model.find("/Demo").Name = "New"
    model.find("/Other").Name = "Newer"
    (folder / "c_other.arxml").unlink()
    (folder / "c_other.arxml").mkdir()
    before = (folder / "a_ports.arxml").read_text()
    with pytest.raises((K7Q.Exception, OSError)):
        model.save()
    assert (folder / "a_ports.arxml").read_text() == before


def test_a_copy_of_a_model_is_not_saved_to_the_files_of_the_model(folder):
    copy = K7Q.Model.load(folder).clone()
    assert copy.files == []
    with pytest.raises(K7Q.WrongValue, match="the model was not loaded from an ARXML file"):
        copy.save()


def test_a_model_without_files_is_not_saved_without_a_path():
    with pytest.raises(K7Q.WrongValue, match="cannot save without a path"):
        K7Q.Model.create().save()


def test_the_files_become_one_if_it_can_hold_all(folder, tmp_path):
    (folder / "b_types.arxml").write_text(HEAD + package("Demo", TYPE) + TAIL)
    model = K7Q.Model.load(folder)
    target = tmp_path / "one.xml.arxml"
    model.save(target)
    again = K7Q.Model.load(target)
    assert again.find("/Demo/Speed/Front").Type == again.find("/Demo/uint16")
    assert again.find("/Other/uint8") is not None


def test_foreign_content_of_a_divided_package_is_not_lost_in_one_file(folder, tmp_path):
    with pytest.raises(K7Q.WrongValue, match="'/Demo' in .*b_types.arxml has content without a class"):
        K7Q.Model.load(folder).save(tmp_path / "one.arxml")


def test_a_reference_without_a_target_is_listed_until_it_is_set(folder):
    model = K7Q.Model.load(folder / "a_ports.arxml")
    open_one, = model.unresolved()
    assert (open_one.tag, open_one.target, open_one.dest, open_one.path, open_one.line) == (
        "TYPE-TREF", "/Demo/uint16", "IMPLEMENTATION-DATA-TYPE", "/Demo/Speed/Front", 12)
    front = model.find("/Demo/Speed/Front")
    assert front.unresolved() == [open_one]
    front.Type = types.ImplementationDataType(model, "New")
    assert model.unresolved() == []


def test_a_divided_package_moves_with_all_its_elements(folder):
    model = K7Q.Model.load(folder)
    model.find("/Other").PackagedElement.append(model.find("/Demo"))
    model.save()
    again = K7Q.Model.load(folder)
    assert again.find("/Demo") is None
    assert again.find("/Other/Demo/Speed/Front").Type == again.find("/Other/Demo/uint16")


def test_a_copy_of_a_divided_package_has_all_its_elements(folder):
    model = K7Q.Model.load(folder)
    copy = model.find("/Demo").clone(model.roots()[0])
    copy.Name = "Copy"
    model.save()
    again = K7Q.Model.load(folder)
    assert again.find("/Copy/uint16") is not None and again.find("/Copy/Speed/Front") is not None
    assert again.find("/Demo/uint16") is not None and again.find("/Demo/Speed/Front") is not None


def test_a_model_that_changes_while_it_is_saved_is_not_saved(folder):
    before = texts(folder)
    model = K7Q.Model.load(folder)
    model.find("/Demo").Name = "New"

    def change(done):
        model.find("/New").Name = "Newer"
        model.find("/Newer").Name = "New"

    with pytest.raises(K7Q.Exception, match="the model was changed or closed while it was saved"):
        model.save(progress=change)
    assert texts(folder) == before


def test_another_current_folder_changes_nothing(folder, tmp_path_factory, monkeypatch):
    monkeypatch.chdir(folder)
    model = K7Q.Model.load(".")
    elsewhere = tmp_path_factory.mktemp("elsewhere")
    monkeypatch.chdir(elsewhere)
    model.find("/Other").Name = "New"
    model.save()
    assert list(elsewhere.iterdir()) == []
    assert "New" in texts(folder)["c_other.arxml"]


def test_a_file_that_was_saved_by_its_path_can_be_saved_back(folder):
    path = folder / "c_other.arxml"
    model = K7Q.Model.load(path)
    model.find("/Other").Name = "New"
    model.save(path)
    model.find("/New").Name = "Newer"
    assert written(model.save()) == ["c_other.arxml"]


def test_a_file_is_not_loaded_twice(folder):
    with pytest.raises(K7Q.WrongValue, match="the file was given twice; give it once"):
        K7Q.Model.load([folder / "a_ports.arxml", folder / ".." / folder.name / "a_ports.arxml"])


class Editor:
    """Random edits of a model of several files: renames, moves, new and destroyed objects, undo."""

    def __init__(self, model, seed):
        self.model, self.random, self.made = model, random.Random(seed), 0

    def packages(self):
        return self.model.instances(common.Package)

    def elements(self):
        return [each for each in self.model.instances(common.Packageable) if each.Name]

    def new_name(self):
        self.made += 1
        return f"New{self.made}"

    def rename(self):
        self.random.choice(self.packages() + self.elements()).Name = self.new_name()

    def add(self):
        made = interface.SenderReceiverInterface(self.model)
        made.Name = self.new_name()
        self.random.choice(self.packages()).PackagedElement.append(made)

    def add_package(self):
        owner = self.random.choice(self.packages() + self.model.roots())
        owner.PackagedElement.append(common.Package(self.model, self.new_name()))

    def move(self):
        if self.elements():
            moved = self.random.choice(self.elements())
            moved.Name = self.new_name()  # no two of one name
            self.random.choice(self.packages()).PackagedElement.append(moved)

    def destroy(self):
        if len(self.elements()) > 3:
            self.random.choice(self.elements()).destroy()

    def edit(self):
        if self.model.undoable and self.random.randrange(6) == 0:
            return self.model.undo()
        with self.model.transaction():
            self.random.choice([self.rename, self.add, self.add_package, self.move, self.destroy])()


def shown(model):
    """All objects by path with their types; a file does not keep packages between elements."""
    found = {}
    for each in model.objects():
        if each.qualifiedName:
            types_of = [f.Type.qualifiedName for f in each.DataElements if f.Type] if hasattr(each, "DataElements") else []
            found[each.qualifiedName] = (type(each).__name__, types_of)
    return found


@pytest.mark.parametrize("seed", range(40))
def test_random_edits_are_what_the_files_have(folder, seed):
    for number in range(3):
        divided = package("Demo", INTERFACE.replace("Speed", f"Speed{number}"), TYPE.replace("uint16", f"T{number}"))
        (folder / f"d{number}.arxml").write_text(HEAD + divided + package(f"Own{number}", TYPE) + TAIL)
    model = K7Q.Model.load(folder)
    model.history = 100
    editor = Editor(model, seed)
    for _ in range(6):
        for _ in range(editor.random.randrange(1, 8)):
            editor.edit()
        model.save()
        assert model.save() == []
        again = K7Q.Model.load(folder)
        assert shown(again) == shown(model)
        assert again.foreign() == model.foreign() == {"CAN-FRAME": 1}
        if editor.random.randrange(2):
            model = again
            model.history = 100
            editor.model = model
