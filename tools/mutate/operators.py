"""The faults that can be planted in a line of C++: each is a small change of a kind that programmers make by
mistake.

A fault is planted in the text, not in a syntax tree. clang-format puts blanks around binary operators but not
around template brackets, so the text is enough. A fault that does not compile is skipped.
"""

import re
from typing import NamedTuple


class Mutant(NamedTuple):
    """A planted fault: a line of a file and its replacement. `line` counts from 1."""

    file: str
    line: int
    kind: str
    before: str
    after: str

    def __str__(self):
        return f"{self.file}:{self.line}: {self.kind}\n  - {self.before.strip()}\n  + {self.after.strip()}"


# Operators with blanks around them, and their replacements.
OPERATORS = [
    ("bound", "<", ["<="]),
    ("bound", "<=", ["<"]),
    ("bound", ">", [">="]),
    ("bound", ">=", [">"]),
    ("condition", "==", ["!="]),
    ("condition", "!=", ["=="]),
    ("condition", "&&", ["||"]),
    ("condition", "||", ["&&"]),
    ("arithmetic", "+", ["-"]),
    ("arithmetic", "-", ["+"]),
    ("arithmetic", "+=", ["-="]),
    ("arithmetic", "-=", ["+="]),
    ("arithmetic", "|", ["&"]),
    ("arithmetic", "&", ["|"]),
]

# Patterns within a line, and their replacements.
PATTERNS = [
    ("condition", re.compile(r"\b(if|while) \((?!constexpr)(.*)\) (\{|return|continue|break|throw)"), r"\1 (!(\2)) \3"),
    ("condition", re.compile(r"(?<![\w!=&])!(?=[\w(])"), ""),
    ("condition", re.compile(r"\btrue\b"), "false"),
    ("condition", re.compile(r"\bfalse\b"), "true"),
    ("bound", re.compile(r"(?<![\w.'])0(?![\w.'])"), "1"),
    ("bound", re.compile(r"(?<![\w.'])1(?![\w.'])"), "0"),
    ("bound", re.compile(r"(?<![\w.'])1(?![\w.'])"), "2"),
    ("count", re.compile(r"\+\+"), "--"),
    ("count", re.compile(r"--(?=\w)"), "++"),
    ("order", re.compile(r"\bstd::max\("), "std::min("),
    ("order", re.compile(r"\bstd::min\("), "std::max("),
]

# A statement on one line that can be removed: a call, an increment or decrement, an assignment to an existing
# variable.
STATEMENT = re.compile(
    r"^\s+(?:[\w:]+(?:(?:\.|->|::)\w+|\[[^\]]*\])*(?:\(.*\))+|\+\+[\w.>-]+|--[\w.>-]+"
    r"|\*?[\w]+(?:(?:\.|->)\w+|\[[^\]]*\]|\(\))* [|&+-]?= .*);$"
)
# `if (...) statement;`: only the statement can be removed.
GUARDED = re.compile(r"^(\s+(?:\} )?(?:else )?if \(.*\)) ((?:[\w.:>-]+\(.*\)|\+\+[\w.]+|--[\w.]+|[\w.>-]+ = [^;]*);)$")
# Lines without code, and lines in which the compiler finds every fault.
PASSED_OVER = re.compile(r"^\s*(//|/\*|\*|#|static_assert|using |template|namespace|friend |typedef |extern |constexpr |requires )")
NO_CALL = re.compile(r"^\s*(return|throw|delete|case|default|else|co_return|goto|break|continue)\b")


def code_of(line):
    """The line with the contents of strings, characters and comments replaced by blanks, so that nothing is
    planted there."""
    blank = lambda match: match[0][0] + " " * (len(match[0]) - 2) + match[0][-1]  # noqa: E731
    line = re.sub(r'"(?:[^"\\]|\\.)*"', blank, line)
    line = re.sub(r"'(?:[^'\\]|\\.)+'", blank, line)
    return re.sub(r"//.*", lambda match: " " * len(match[0]), line)


def changes(line):
    """All faults that can be planted in one line, as (kind, changed line)."""
    code = code_of(line)
    if not code.strip() or PASSED_OVER.match(code) or "static_assert" in code:
        return
    for kind, operator, others in OPERATORS:
        for match in re.finditer(rf"(?<=[\w\])\"]) {re.escape(operator)} (?=\S)", code):
            for other in others:
                yield kind, f"{line[: match.start()]} {other} {line[match.end() :]}"
    for kind, pattern, replacement in PATTERNS:
        for match in pattern.finditer(code):
            # The search uses the blanked line, so the groups are taken from the original line.
            groups = {f"\\{i}": line[match.start(i) : match.end(i)] for i in range(1, pattern.groups + 1)}
            text = re.sub(r"\\\d", lambda found: groups[found[0]], replacement)
            yield kind, line[: match.start()] + text + line[match.end() :]
    if STATEMENT.match(code.rstrip()) and not NO_CALL.match(code):
        yield "missing statement", re.match(r"\s*", line)[0] + ";"
    guarded = GUARDED.match(code.rstrip())
    if guarded and not NO_CALL.match(guarded[2]):
        yield "missing statement", line[: guarded.end(1)] + " {\n}"


def mutants_of(file, text, lines=None):
    """All faults that can be planted in the given lines of a file's text; in all lines if `lines` is None."""
    all_lines = text.split("\n")
    for number, line in enumerate(all_lines, 1):
        if lines is not None and number not in lines:
            continue
        seen = {line}
        for kind, after in changes(line):
            if after not in seen:
                seen.add(after)
                yield Mutant(file, number, kind, line, after)
        following = all_lines[number] if number < len(all_lines) else ""
        if is_statement(line) and is_statement(following) and indent(line) == indent(following):
            yield Mutant(file, number, "order", line, f"{following}\n{line}")


def is_statement(line):
    code = code_of(line).rstrip()
    return bool(STATEMENT.match(code)) and not NO_CALL.match(code)


def indent(line):
    return len(line) - len(line.lstrip())


def planted(text, mutant):
    """The file's text with the fault."""
    lines = text.split("\n")
    at = mutant.line - 1
    if lines[at] != mutant.before:
        raise ValueError(f"{mutant.file}:{mutant.line} has changed since the fault was chosen; choose anew")
    count = 2 if mutant.kind == "order" and "\n" in mutant.after else 1
    return "\n".join([*lines[:at], mutant.after, *lines[at + count :]])
