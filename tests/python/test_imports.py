"""Finding packages and classes, and the cost of an import."""

import os
import pydoc
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

import K7Q
import Tarvelon
import _tarvelon_host
from Tarvelon.metamodel.arplatform import common, variant

HOST = Path(_tarvelon_host.__file__)
LIBRARIES = HOST.parent.parent / "lib"
MODULE = "mm_arplatform_mi.so"


def test_a_class_is_reached_by_its_dotted_name():
    assert common.Package.__module__ == "Tarvelon.metamodel.arplatform.common"
    assert common.Package.__name__ == "Package"
    assert common.Package is sys.modules["Tarvelon.metamodel.arplatform.common"].Package


def test_a_class_is_imported_by_name():
    from Tarvelon.metamodel.arplatform.variant import SystemConst

    assert SystemConst is variant.SystemConst


def test_the_packages_are_reached_as_attributes():
    assert Tarvelon.metamodel.arplatform.common is common


def test_a_star_import_gives_what_the_package_lists():
    names = {}
    exec("from Tarvelon.metamodel.arplatform.variant import *", names)

    assert names["SystemConst"] is variant.SystemConst
    assert names["BindingTimeKind"] is variant.BindingTimeKind


def test_a_star_import_of_k7q_leaves_the_built_in_exception_alone():
    names = {}
    exec("from K7Q import *", names)

    assert names["Model"] is K7Q.Model and names["WrongType"] is K7Q.WrongType
    assert {"Exception", "sys", "Tarvelon"} & set(names) == set()


def test_dir_lists_packages_functions_and_classes():
    assert {"common", "documentation", "variant", "MetaPackage"} <= set(dir(Tarvelon.metamodel.arplatform))
    assert {"Package", "ImmutablePackage", "PackageMetaProperty", "SequenceOfPackage"} <= set(dir(common))


def test_a_package_function_is_called_as_an_attribute():
    package = Tarvelon.metamodel.arplatform.common.MetaPackage()

    assert type(package) is K7Q.ImmutablePackage
    assert package.fullName() == "Tarvelon.metamodel.arplatform.common"


def test_the_bases_of_a_type_are_the_superclasses():
    bases = common.Package.__bases__

    assert [base.__name__ for base in bases] == ["ImmutablePackage", "Identifiable", "Package"]
    assert bases[2].__module__ == "Tarvelon.metamodel.foundation"


def test_k7q_can_be_imported_first(python):
    assert python("import K7Q; print(K7Q.Model.create())") == "<K7Q.Model>\n"


def test_the_import_makes_no_type_and_no_object(python):
    counts = python("import Tarvelon, _tarvelon_host as host; print(host.statistics())")

    assert counts == "{'types': 0, 'bindings': 0, 'arrays': 0, 'objects': 0}\n"


def test_the_import_brings_no_modules_but_its_own(python):
    code = """
import sys
before = {*sys.modules, "__future__"}
import Tarvelon
print(sorted({each.partition(".")[0] for each in set(sys.modules) - before}))
"""
    assert python(code) == "['K7Q', 'Tarvelon', '_tarvelon_host']\n"


def test_what_is_made_when_it_is_first_asked_for_is_there_as_everything_else_is(python):
    code = """
import sys, K7Q, Tarvelon
print({"Change", "Rule"} <= set(dir(K7Q)), {"Diff", "diff"} <= set(dir(Tarvelon)), "K7Q._records" in sys.modules)
for call in (lambda: K7Q.Mentoin, lambda: Tarvelon.Renmaed):
    try:
        call()
    except AttributeError as error:
        print(error)
from K7Q import *
from Tarvelon import *
print(Change is K7Q.Change, Change.__module__, diff is Tarvelon.diff, K7Q is sys.modules["K7Q"])
"""
    assert python(code).splitlines() == [
        "True True False",
        "package 'K7Q' has no package or class 'Mentoin'; did you mean 'Mention'?",
        "package 'Tarvelon' has no package or class 'Renmaed'; did you mean 'Renamed'?",
        "True K7Q True True"]


def test_only_what_is_touched_gets_a_type(python):
    code = """
import _tarvelon_host as host
from Tarvelon.metamodel.arplatform import common, variant, documentation
before = host.statistics()["types"]
variant.BindingTimeKind
print(before, host.statistics()["types"])
"""
    assert python(code) == "0 1\n"


def test_an_unknown_package_is_an_attribute_error_with_the_nearest_name():
    with pytest.raises(AttributeError) as raised:
        Tarvelon.metamodel.arplatform.comon

    assert isinstance(raised.value, K7Q.UnknownName)
    assert str(raised.value) == (
        "package 'Tarvelon.metamodel.arplatform' has no package or class 'comon'; did you mean 'common'?")


def test_an_unknown_class_is_an_attribute_error_with_the_nearest_name():
    with pytest.raises(K7Q.UnknownName, match="has no package or class 'Pakage'; did you mean 'Package'?"):
        common.Pakage


def test_a_class_of_another_package_is_named():
    nearest = "did you mean 'Tarvelon.metamodel.arplatform.variant.SystemConst'"
    with pytest.raises(AttributeError, match=nearest):
        common.SystemConst
    with pytest.raises(ImportError, match=nearest):
        from Tarvelon.metamodel.arplatform.common import SystemConst  # noqa: F401


def test_an_unknown_name_in_k7q_is_an_attribute_error():
    with pytest.raises(K7Q.UnknownName, match="package 'K7Q' has no .* 'Modle'; did you mean 'Model'?"):
        K7Q.Modle


@pytest.mark.parametrize("statement", [
    "import Tarvelon.metamodel.arplatform.comon",
    "from Tarvelon.metamodel.arplatform import comon",
])
def test_an_unknown_import_is_an_import_error_with_the_nearest_name(statement):
    with pytest.raises(ImportError, match="did you mean 'common'?") as raised:
        exec(statement)

    assert isinstance(raised.value, K7Q.Exception)


def test_importing_a_class_as_a_module_says_how_to_write_it():
    with pytest.raises(ImportError) as raised:
        exec("import Tarvelon.metamodel.arplatform.common.Package")

    assert str(raised.value) == ("Tarvelon.metamodel.arplatform.common.Package is not a package; "
                                 "write: from Tarvelon.metamodel.arplatform.common import Package")


def test_help_finds_a_class_by_its_dotted_name():
    assert pydoc.locate("K7Q.Model") is K7Q.Model
    assert pydoc.locate("Tarvelon.metamodel.arplatform.common.Package") is common.Package


def test_hasattr_asks_without_an_error():
    assert not hasattr(common, "Nothing")
    assert hasattr(common, "Sdg")


def test_a_second_interpreter_is_refused(python):
    code = """
import _xxsubinterpreters as interpreters
import Tarvelon
other = interpreters.create()
interpreters.run_string(other, '''
try:
    import Tarvelon
except ImportError as refused:
    print(refused, flush=True)
''')
interpreters.destroy(other)
"""
    assert "works only in the main interpreter of a process" in python(code)


def test_the_host_can_be_imported_again(python):
    code = """
import sys, K7Q
first = K7Q.Model.create()
del sys.modules["_tarvelon_host"]
import _tarvelon_host
print(type(first) is _tarvelon_host.member("K7Q", "Model"), _tarvelon_host.Exception is K7Q.Exception)
"""
    assert python(code) == "True True\n"


def test_a_reload_leaves_one_finder(python):
    code = """
import importlib, sys, Tarvelon
importlib.reload(Tarvelon)
del sys.modules["Tarvelon"]
import Tarvelon
print(sum(getattr(each, "__module__", "") == "Tarvelon" for each in sys.meta_path))
from Tarvelon.metamodel.arplatform import common
"""
    assert python(code) == "1\n"


def test_what_a_module_registered_outlives_its_unloading(python):
    code = f"""
import _ctypes, ctypes
platform = ctypes.CDLL({str(LIBRARIES / "libtarvelon_native.so")!r}, ctypes.RTLD_GLOBAL)
module = ctypes.CDLL({str(LIBRARIES / MODULE)!r})
module.ZtInitialize_mm_arplatform_mi()
module.ZtTerminate_mm_arplatform_mi()
_ctypes.dlclose(module._handle)
import K7Q
from Tarvelon.metamodel.arplatform import common
print(common.Package(K7Q.Model.create(), "Brakes").Name)
"""
    assert python(code) == "Brakes\n"


@pytest.fixture
def copied(tmp_path):
    """A copy of the built host, in which a test may break something."""
    for folder in (LIBRARIES, HOST.parent):
        (tmp_path / folder.name).mkdir()
    for library in LIBRARIES.glob("*.so*"):
        shutil.copy(library, tmp_path / LIBRARIES.name)
    shutil.copy(HOST, tmp_path / HOST.parent.name)
    for name in ("Tarvelon", "K7Q"):
        shutil.copytree((HOST.parent / name).resolve(), tmp_path / HOST.parent.name / name)
    return tmp_path


def import_error(root):
    """The error text of `import Tarvelon` in a copied tree."""
    code = """
try:
    import Tarvelon
except ImportError as error:
    print(error)
else:
    print("imported")
"""
    environment = {**os.environ, "PYTHONPATH": str(root / HOST.parent.name)}
    command = [sys.executable, "-c", code]
    done = subprocess.run(command, capture_output=True, text=True, env=environment, timeout=120)
    assert done.returncode == 0, done.stderr
    return done.stdout.strip()


def test_a_moved_tree_is_found_from_where_it_is(copied):
    assert import_error(copied) == "imported"


def test_a_missing_module_names_the_file_and_the_cure(copied):
    module = copied / LIBRARIES.name / MODULE
    module.unlink()

    error = import_error(copied)

    assert error.startswith(os.path.join(copied, HOST.parent.name, "..", LIBRARIES.name, MODULE))
    assert error.endswith("the library of the metamodel is missing; expected it beside the libraries of the "
                          "platform; build it with './tarvelon build', or install Tarvelon again")


def test_a_module_of_another_architecture_says_what_was_expected(copied):
    module = copied / LIBRARIES.name / MODULE
    content = bytearray(module.read_bytes())
    content[18] = 0xB7  # another machine in the header
    module.write_bytes(content)

    error = import_error(copied)

    assert "expected a 64-bit ELF file for machine" in error
    assert ("got a 64-bit ELF file for machine 183; build it with './tarvelon build', or install Tarvelon again, "
            "on this machine") in error


def test_a_module_that_is_no_library_says_so(copied):
    (copied / LIBRARIES.name / MODULE).write_text("what is this?")

    assert "got a file that is not a library" in import_error(copied)


def test_a_tree_without_the_extension_says_how_to_build_it(copied):
    (copied / HOST.parent.name / HOST.name).unlink()

    assert "the extension module _tarvelon_host is not on the path" in import_error(copied)
    assert import_error(copied).endswith(
        f"made for Python {sys.version_info.major}.{sys.version_info.minor}; build it with './tarvelon build' or "
        "install Tarvelon again, run scripts with 'tarvelon run'")
