"""The faults that tools/mutate plants, and the lines that it skips."""

import sys
from pathlib import Path

import pytest

sys.path.append(str(Path(__file__).resolve().parents[2] / "tools" / "mutate"))
from operators import changes, mutants_of, planted  # noqa: E402
from tree import Test, joined  # noqa: E402


def after(line):
    return {text.strip() for _, text in changes(line)}


@pytest.mark.parametrize("line, expected", [
    ("  return a < b;", "return a <= b;"),
    ("  return a >= b;", "return a > b;"),
    ("  return a == b && c;", "return a != b && c;"),
    ("  return a == b && c;", "return a == b || c;"),
    ("  if (isReady) return;", "if (!(isReady)) return;"),
    ("  while (!done(x)) {", "while (done(x)) {"),
    ("  return size + 1;", "return size - 1;"),
    ("  return size + 1;", "return size + 0;"),
    ("  return size + 1;", "return size + 2;"),
    ("  ++mChanges;", "--mChanges;"),
    ("  ++mChanges;", ";"),
    ("  mModel.expire(object);", ";"),
    ("  mSize = mSize + count;", ";"),
    ("  if (list.isEmpty()) list.dispose();", "if (list.isEmpty()) {\n}"),
    ("  return find(name, true);", "return find(name, false);"),
    ("  return std::max(a, b);", "return std::min(a, b);"),
])
def test_a_line_gets_the_fault(line, expected):
    assert expected in after(line)


@pytest.mark.parametrize("line", [
    "",
    "// if (a < b) return;",
    "#include <vector>",
    "  static_assert(sizeof(Word) == 8);",
    "using Steps = std::vector<Step>;",
    "}",
])
def test_what_is_no_code_gets_none(line):
    assert after(line) == set()


def test_a_template_is_no_comparison():
    assert after("  std::vector<Step> steps;") == set()


def test_nothing_is_planted_in_a_text():
    assert after('  raise("a < b && true, 1");  // x == 0') == {";"}


def test_a_declaration_is_never_left_out():
    assert ";" not in after("  Steps done = take(open);")
    assert ";" not in after("  return take(open);")


def test_only_the_wanted_lines_are_touched():
    text = "a = b == c;\n  d = e == f;\n"
    assert {mutant.line for mutant in mutants_of("x.cpp", text, {2})} == {2}


def test_two_statements_change_places():
    text = "{\n  first(x);\n  second(x);\n}\n"
    [mutant] = [each for each in mutants_of("x.cpp", text) if each.kind == "order"]
    assert planted(text, mutant) == "{\n  second(x);\n  first(x);\n}\n"


def test_a_planted_fault_changes_its_line_alone():
    text = "{\n  if (a < b) return;\n  second(x);\n}\n"
    for mutant in mutants_of("x.cpp", text):
        lines = planted(text, mutant).split("\n")
        assert lines[0] == "{" and lines[-2:] == ["}", ""]
        assert planted(text, mutant) != text


def test_a_fault_chosen_for_an_older_text_is_refused():
    [mutant, *_] = mutants_of("x.cpp", "  return a < b;\n")
    with pytest.raises(ValueError, match="has changed since"):
        planted("  return a < c;\n", mutant)


def test_a_suite_runs_in_one_process():
    def one(name, *arguments):
        return Test(name, arguments, {}, "")

    tests = [one("hx.Blocks.A", "test_hx", "--gtest_filter=Blocks.A"), one("python.files", "python3", "test_files.py"),
             one("hx.Blocks.B", "test_hx", "--gtest_filter=Blocks.B"), one("hx.Text.A", "test_hx", "--gtest_filter=T.A")]
    assert [(each.name, each.command) for each in joined(tests)] == [
        ("hx.Blocks", ("test_hx", "--gtest_filter=Blocks.A:Blocks.B", "--gtest_fail_fast")),
        ("python.files", ("python3", "test_files.py")),
        ("hx.Text", ("test_hx", "--gtest_filter=T.A", "--gtest_fail_fast"))]
