"""Compares the built interfaces with those of earlier releases.

usage: compatibility.py check BUILD    print what was removed or changed since the kept releases of this series
       compatibility.py record BUILD   store the interfaces of BUILD as the promise of its version

BUILD is a folder such as build/release. tests/compatibility/VERSION/ contains the interfaces of a release as texts:
one for each package of the host (its classes with their records), one for each library (the names that it exports),
and python.txt for the members that Python code adds.

A line of a text is a fact: its subject, then " : ", then the statement about the subject. A new fact breaks no
program. A removed or changed fact may break a program. docs/compatibility.md explains what is promised for how long.
"""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
KEPT = ROOT / "tests" / "compatibility"
PACKAGES = ("Tarvelon.metamodel", "K7Q")
ENUMERATION = "An enumeration"
PROPERTY = ("id", "kind", "multiplicity", "mutability", "attributes")
MADE_BY_PYTHON = {"__doc__", "__module__", "__slots__", "__hash__"}
SHOWN = 40  # a check prints at most this number of broken facts, and counts the others


def relative(name, package):
    """A dotted name relative to a package, as in Python: .Own, ..sibling.Other."""
    parent = package.rpartition(".")[0]
    if name.startswith(f"{package}."):
        return name[len(package):]
    return f".{name[len(parent):]}" if parent and name.startswith(f"{parent}.") else name


def method(record, package):
    arguments = ", ".join(relative(each, package) for each in record["arguments"])
    said = [relative(record["result"], package)]
    if record["kind"] != "constructor":
        said.append(record["kind"])
    if record["flags"]:
        said.append(f"flags {record['flags']}")
    if record["parameterNames"]:
        said.append(f"names {record['parameterNames'].strip()}")
    return f"{relative(record['name'], package)}({arguments})", ", ".join(said)


def literals(record):
    """The names of an enumeration's literals in the order of their values; empty for other classes."""
    if record["description"] != ENUMERATION:
        return []
    return [each["name"] for each in record["methods"]
            if each["kind"] == "static" and not each["arguments"] and each["result"] == record["fullName"]]


def class_facts(record, package):
    yield "class", f"access {record['access']}"
    for base in record["superclasses"]:
        yield f"base {relative(base, package)}", ""
    for value, name in enumerate(literals(record)):
        yield f"literal {name}", str(value)
    constructors = 0
    for each in record["methods"]:
        what, said = method(each, package)
        if each["kind"] == "constructor":  # compiled programs call a constructor by its number
            said += f", constructor number {constructors}"
            constructors += 1
        yield what, said
    for each in record["properties"]:
        said = ", ".join(f"{key} {each[key]}" for key in PROPERTY)
        yield f"property {each['name']}", f"{relative(each['type'], package)}, {said}"
    for each in record["metaProperties"]:
        yield f"meta {each['name']}", f"{relative(each['owner'], package)}, id {each['id']}"


def package_facts(record, texts):
    """Adds the facts of a package and of all packages below it to `texts`, a dict from text names to
    facts."""
    name = record["name"]
    facts = texts[name] = {("", "package"): ""}
    for each in record["functions"]:
        what, said = method(each, name)
        facts["", what] = said
    for each in record["classes"]:
        for what, said in class_facts(each, name):
            key = each["name"], what
            if key in facts:
                sys.exit(f"{name}.{each['name']} has {what} twice: two records that no fact tells apart")
            facts[key] = said
    for each in record["packages"]:
        package_facts(each, texts)


def exported(library):
    """The names that a library promises. Weak names are left out, because each user of them has a copy."""
    command = ["nm", "--dynamic", "--defined-only", "--demangle", library]
    output = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    lines = (line.split(maxsplit=2) for line in output.splitlines())
    return {("", name): "" for _, kind, name in lines if kind in "TDRB"}


def error_facts(kernel):
    for name, error in vars(kernel).items():
        if isinstance(error, type) and error.__module__ == "K7Q" and issubclass(error, BaseException):
            for base in error.__mro__[1:-1]:
                yield (f"K7Q.{name}", f"base {base.__module__}.{base.__name__}"), ""


def added_facts(host, texts):
    """The members of the Python types that are not records: those that Python code adds, and names with an
    underscore appended because they are Python keywords."""
    for package, facts in texts.items():
        known = {(owner, re.sub(r"\(.*|^\w+ ", "", what)) for owner, what in facts}
        for owner in {owner for owner, what in facts if what == "class"}:
            for name in vars(host.member(package, owner)).keys() - MADE_BY_PYTHON:
                if (owner, name) not in known:
                    yield (f"{package}.{owner}", name), ""


def python_facts(host, texts):
    """The facts for python.txt: errors, functions, base types, and the members that Python adds to
    classes."""
    import K7Q

    # Names that are created on first use are only in dir().
    facts = {("K7Q", name): "" for name in {*vars(K7Q), *dir(K7Q)} if not name.startswith("_")}
    for base in (host.HostObject, host.Sequence, host.Iterator, host.Enumeration, host.MetaProperties):
        facts |= {(base.__name__, name): "" for name in vars(base).keys() - {"__doc__"}}
    return facts | dict(error_facts(K7Q)) | dict(added_facts(host, texts))


def gather(build):
    """The version of a build folder, and its facts by the name of the text."""
    sys.path.insert(0, str(build / "python"))
    import Tarvelon
    import _tarvelon_host as host

    texts = {}
    for name in PACKAGES:
        package_facts(host.describe(name), texts)
    texts["python"] = python_facts(host, texts)
    # The one that lets allocations fail belongs to the tests.
    for library in sorted({*(build / "lib").glob("*.so")} - {build / "lib" / "libtarvelon_failing_malloc.so"}):
        texts[library.name] = exported(library)
    return Tarvelon.__version__, texts


def write(facts):
    """The text for facts: first those of no class, then each class with its facts indented."""
    lines, last = [], ""
    for (owner, what), said in sorted(facts.items()):
        if owner != last:
            lines.append(f"{owner}:")
            last = owner
        lines.append(("  " if owner else "") + what + (f" : {said}" if said else ""))
    return "".join(line + "\n" for line in lines)


def read(text):
    facts, owner = {}, ""
    for line in text.splitlines():
        what, _, said = line.strip().partition(" : ")
        if line.endswith(":") and not line.startswith(" "):
            owner = line[:-1]
        else:
            facts[owner if line.startswith("  ") else "", what] = said
    return facts


def broken(promised, found):
    """One line for each fact that is missing or has changed."""
    for name, facts in sorted(promised.items()):
        there = found.get(name)
        if there is None:
            yield f"gone:    {name}"
            continue
        for (owner, what), said in facts.items():
            place = f"{name}.{owner}" if owner and name != "python" else owner or name
            if (owner, what) not in there:
                if what == "class" or (owner, "class") not in facts or (owner, "class") in there:
                    yield f"gone:    {place}: {what}"  # a missing class is reported once, without its records
            elif there[owner, what] != said:
                yield f"changed: {place}: {what}: was {said or 'without a value'}; is {there[owner, what]}"


def series(version):
    """The series of a version, in which versions are compatible: 0.1 for 0.1.2, 1 for 1.2.3."""
    major, minor, _ = version.split(".")
    return f"0.{minor}" if major == "0" else major


def next_series(version):
    """The first version that may break the promises of earlier releases."""
    major, minor, _ = map(int, version.split("."))
    return f"0.{minor + 1}.0" if major == 0 else f"{major + 1}.0.0"


def numbers(version):
    return [int(each) for each in version.split(".")]


def kept_releases(version):
    """The folders of the releases with which a version must be compatible."""
    return sorted((each for each in KEPT.iterdir() if re.fullmatch(r"\d+\.\d+\.\d+", each.name)
                   and series(each.name) == series(version) and numbers(each.name) <= numbers(version)),
                  key=lambda each: numbers(each.name))


def check(version, found, releases):
    """Prints the broken facts and what to do about them. Returns the number of broken facts."""
    count = 0
    for release in releases:
        promised = {each.stem: read(each.read_text(encoding="utf-8")) for each in release.glob("*.txt")}
        lines = list(broken(promised, found))
        facts = sum(map(len, promised.values()))
        print(f"{release.name}: {facts} facts, {len(lines)} broken by {version}")
        print("".join(f"  {line}\n" for line in lines[:SHOWN]), end="")
        if len(lines) > SHOWN:
            print(f"  and {len(lines) - SHOWN} more")
        count += len(lines)
    if not releases:
        print(f"no release of the series {series(version)} is kept yet: nothing to break")
    if count:
        print(f"Programs made for {series(version)} rely on these: bring them back. If one must go, raise the "
              f"version in\nCMakeLists.txt to {next_series(version)} and say so in CHANGELOG.md. A version that is "
              "not released yet is\nrecorded again: /usr/bin/python3 tools/compatibility.py record build/release")
    return count


def is_released(version):
    done = subprocess.run(["git", "-C", ROOT, "tag", "--list", f"v{version}"], capture_output=True, text=True)
    return bool(done.stdout.strip())


def record(version, found):
    if is_released(version):
        sys.exit(f"{version} is released (there is a tag v{version}), its promise stands: raise the version "
                 "in CMakeLists.txt first")
    if check(version, found, [each for each in kept_releases(version) if each.name != version]):
        sys.exit(1)
    folder = KEPT / version
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("*.txt"):
        old.unlink()
    for name, facts in found.items():
        (folder / f"{name}.txt").write_text(write(facts), encoding="utf-8")
    print(f"{folder.relative_to(ROOT)}: {sum(map(len, found.values()))} facts in {len(found)} texts")


def main(arguments):
    if len(arguments) != 2 or arguments[0] not in ("check", "record"):
        sys.exit(__doc__)
    command, build = arguments
    if not (Path(build) / "python" / "Tarvelon").is_dir():
        sys.exit(f"{build} holds no built host: expected a folder such as build/release, which "
                 "'./tarvelon build' makes")
    version, found = gather(Path(build).resolve())
    if command == "record":
        return record(version, found)
    return 1 if check(version, found, kept_releases(version)) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
