"""Checks .arxml files against the tables of the format, without any code of Tarvelon.

The tables (elements.tsv, values.tsv, releases.tsv) are not part of the repository; their README describes
them. TARVELON_ARXML_FACTS names their folder; without it, ../shared/arxml beside the repository is used.

    facts = load(folder())
    for fault in facts.check(Path("model.arxml").read_bytes()):
        print(fault.line, fault.column, fault.path, fault.text)

`python3 facts.py [--complete] FILE...` prints the faults of files; it ends with 1 if there are any, with 2 if
the tables or a file are missing.

A file is checked against its own release. One mistake gives one fault: the content of an element that may not
stand where it stands is not read. Not checked: relative references, formulas in mixed content, the checksums
in S, and anything that spans several files.
"""

import argparse
import functools
import os
import re
import sys
from collections import Counter, defaultdict
from dataclasses import dataclass, field
from pathlib import Path
from typing import NamedTuple
from xml.parsers import expat

TABLES = ("elements.tsv", "values.tsv", "releases.tsv")
NAMESPACE = "http://autosar.org/schema/r4.0"
SCHEMA_INSTANCE = "http://www.w3.org/2001/XMLSchema-instance"
SPACE = " \t\r\n"
ENCODINGS = ("utf-8", "utf-16", "iso-8859-1", "us-ascii")  # those that the XML parser knows by itself
OLD_SPELLINGS = {
    "autosar_4-3-1": "autosar_00044", "autosar_4-4-0": "autosar_00046", "autosar_4-5-0": "autosar_00048"}
NEWEST = "autosar"  # autosar.xsd names no release
BASES_OF_ALL = frozenset({"REFERRABLE", "MULTILANGUAGE-REFERRABLE", "IDENTIFIABLE"})
PLAIN_KINDS = {
    "unsigned": r"\+?[0-9]+",
    "float": r"[+-]?([0-9]+(\.[0-9]*)?|\.[0-9]+)([eE][+-]?[0-9]+)?|-?INF|NaN"}


class Fault(NamedTuple):
    """One mistake. Line and column count from 1 and show the start tag of the element (for text between
    elements: the text). The path is made of the SHORT-NAMEs around it; "/" outside all named objects."""

    line: int
    column: int
    path: str
    text: str


class Attribute(NamedTuple):
    """An A line; releases is a bit mask."""

    value: str
    required: bool
    releases: int


class Place(NamedTuple):
    """An E line. The path is a tuple of numbers, releases a bit mask."""

    path: tuple
    name: str
    type: str
    multiplicity: str
    releases: int


@dataclass
class Type:
    """A T line, with the A, G and E lines of the type."""

    id: str
    content: str
    value: str
    denoted_by: frozenset
    attributes: dict = field(default_factory=dict)  # name -> Attribute
    groups: dict = field(default_factory=dict)  # path -> content
    places: list = field(default_factory=list)


@dataclass
class Value:
    """A V line, with the I lines of the value."""

    id: str
    kind: str
    greatest: int | None  # bytes
    pattern: re.Pattern | None
    items: dict = field(default_factory=dict)  # item -> releases


@dataclass
class View:
    """A type as it is in one release."""

    type: Type
    places: dict  # element name -> Place
    attributes: dict  # name -> Attribute
    contents: dict  # path of a group, () for the whole -> sequence, choice or bag
    needed: list  # tuples of names, of each of which one must stand

    @property
    def is_text(self):
        return self.type.content == "characters"

    def may_repeat(self, place):
        return place.multiplicity == "0..*" or self.contents[place.path[:-1]] == "bag"


@functools.cache
def bits(ranges):
    """`3,5-22` as a bit mask; bit 0 is release 1. 0 for `-`."""
    mask = 0
    for part in ranges.split(",") if ranges != "-" else ():
        first, _, last = part.partition("-")
        mask |= (1 << int(last or first)) - (1 << (int(first) - 1))
    return mask


def quoted(text):
    """A text in one line, cut to 60 characters, in quotes."""
    text = " ".join(text.split())
    return f'"{text}"' if len(text) <= 60 else f'"{text[:57]}..."'


def rows(path):
    """The lines of a table as lists of fields, without the comments."""
    with path.open(encoding="utf-8") as lines:
        for line in lines:
            if not line.startswith("#"):
                yield line.rstrip("\n").split("\t")


def read_types(path):
    """The types by id, and the names of all elements."""
    types, names = {}, {"AUTOSAR"}
    for kind, id_, *rest in rows(path):
        if kind == "T":
            types[id_] = Type(id_, rest[0], rest[1], frozenset(rest[4].split(",")) - {"-"})
        elif kind == "A":
            types[id_].attributes[rest[0]] = Attribute(rest[1], rest[2] == "required", bits(rest[3]))
        elif kind == "G":
            types[id_].groups[number_path(rest[0])] = rest[1]
        elif kind == "E":
            types[id_].places.append(Place(number_path(rest[0]), *rest[1:4], bits(rest[4])))
            names.add(rest[1])
    return types, names


@functools.cache
def number_path(text):
    return tuple(map(int, text.split(".")))


def read_values(path):
    """The kinds of text by id."""
    values = {}
    for kind, id_, *rest in rows(path):
        if kind == "V":
            pattern = PLAIN_KINDS.get(rest[0], rest[2] if rest[0] == "pattern" else None)
            compiled = re.compile(pattern, re.ASCII) if pattern else None
            values[id_] = Value(id_, rest[0], None if rest[1] == "-" else int(rest[1]), compiled)
        else:
            values[id_].items[rest[0]] = bits(rest[1])
    return values


def contents_in(type_, release):
    """What the whole and each group are in one release: {path: sequence, choice or bag}.

    The tables tell the newest content of a type that was of another kind before. A choice that has
    attributes in some of its releases only was a sequence in those. A sequence that requires more than a
    SHORT-NAME was a bag.
    """
    contents = {(): type_.content, **type_.groups}
    here = [each for each in type_.places if each.releases & release]
    if type_.content == "choice" and "S" in type_.attributes:
        object_in = type_.attributes["S"].releases
        if object_in & release and any(each.releases & ~object_in for each in type_.places):
            contents[()] = "sequence"
    if type_.content == "sequence":
        needed = {each.name for each in here if len(each.path) == 1 and each.multiplicity == "1"}
        if needed - {"SHORT-NAME"}:
            contents[()] = "bag"
    if type_.content == "mixed":
        contents[()] = "bag"
    return contents


def needed_in(places, contents):
    """The names that must stand, as tuples of alternatives: the places `1` of a sequence, and each choice
    all of whose places are `1`."""
    needed = []
    by_group = defaultdict(list)
    for place in places:
        by_group[place.path[:-1]].append(place)
    for path, members in by_group.items():
        if contents[path] == "sequence" and not path:
            needed += [(each.name,) for each in members if each.multiplicity == "1"]
        elif contents[path] == "choice" and all(each.multiplicity == "1" for each in members):
            needed.append(tuple(each.name for each in members))
    return needed


class Facts:
    """The tables."""

    def __init__(self, folder):
        """Raises OSError if a table cannot be read."""
        self.types, self.names = read_types(folder / "elements.tsv")
        self.values = read_values(folder / "values.tsv")
        self.releases = []  # (schema file without .xsd in small letters, name)
        for _, _, schema, name in rows(folder / "releases.tsv"):
            self.releases.append((schema.lower().removesuffix(".xsd"), name.partition(" (")[0]))
        self._views = {}

    def check(self, data, complete=False):
        """The faults of a whole file (bytes), a list of Fault in the order of the file. If complete, each
        absolute reference must have its target in the file. Reading ends at a fault that leaves the rest
        without meaning: not XML, another root or namespace, an unknown release."""
        return Reading(self, complete).faults_of(data)

    def elements(self, data):
        """How often each element name stands in a file (bytes). Raises expat.ExpatError if it is not XML,
        LookupError or ValueError if its encoding is not supported."""
        counter = Counter()
        parser = expat.ParserCreate()
        parser.StartElementHandler = lambda name, _: counter.update((name,))
        parser.Parse(data, True)
        return counter

    def release_of(self, location):
        """The bit of the release that an xsi:schemaLocation names, or None. autosar.xsd is the newest one."""
        words = location.split()
        file = re.split(r"[/\\]", words[-1])[-1].lower() if words else ""
        stem = file.removesuffix(".xsd").removesuffix("_strict")
        stem = OLD_SPELLINGS.get(stem, stem)
        schemas = [schema for schema, _ in self.releases]
        if stem == NEWEST:
            return 1 << (len(schemas) - 1)
        return 1 << schemas.index(stem) if stem in schemas else None

    def view(self, id_, release):
        """The type in the release (a bit)."""
        key = id_, release
        if key not in self._views:
            type_ = self.types[id_]
            places = {each.name: each for each in type_.places if each.releases & release}
            attributes = {name: each for name, each in type_.attributes.items() if each.releases & release}
            contents = contents_in(type_, release)
            needed = needed_in(places.values(), contents)
            self._views[key] = View(type_, places, attributes, contents, needed)
        return self._views[key]

    def complaint(self, value_id, text, release):
        """What is wrong with a text of this kind in the release, or ""."""
        value = self.values[value_id]
        if value.kind in ("enum", "dest"):
            if text not in value.items:
                return f"{quoted(text)} is not in {value.id}"
            releases = value.items[text]
            if not releases & release:
                return f"{quoted(text)} is in {value.id} {self.only_in(releases, release)}"
            return ""
        if value.pattern and not value.pattern.fullmatch(text):
            return f"{quoted(text)} is not of the kind {value.id}"
        size = len(text.encode())
        if value.greatest is not None and size > value.greatest:
            return f"{quoted(text)} has {size} bytes, but {value.id} has at most {value.greatest}"
        return ""

    def only_in(self, releases, release):
        """`only in 4.0.1 to 4.2.2, not in 4.3.0`, for masks."""
        spans, first = [], None
        for index in range(len(self.releases) + 1):
            if releases >> index & 1 and index < len(self.releases):
                first = index if first is None else first
            elif first is not None:
                names = [self.releases[each][1] for each in sorted({first, index - 1})]
                spans.append(" to ".join(names))
                first = None
        return f"only in {', '.join(spans) or 'no release'}, not in {self.name_of(release)}"

    def name_of(self, release):
        return self.releases[release.bit_length() - 1][1]


class Element:
    """An open or named element of the file that is read."""

    __slots__ = ("parent", "view", "name", "line", "column", "seen", "furthest", "text", "dest",
                 "short_name", "has_variation_point")

    def __init__(self, parent, view, name, line, column):
        self.parent, self.view, self.name, self.line, self.column = parent, view, name, line, column
        self.seen = set()  # names of the children
        self.furthest = None  # Place
        self.text = []
        self.dest = self.short_name = None
        self.has_variation_point = False

    def named_ancestor(self):
        """The nearest element around this one that has a SHORT-NAME, or None."""
        above = self.parent
        while above is not None and above.short_name is None:
            above = above.parent
        return above

    def path(self):
        """The path of this element, or of the nearest named one around it; "/" if there is none."""
        names = []
        element = self if self.short_name is not None else self.named_ancestor()
        while element is not None:
            names.append(element.short_name)
            element = element.named_ancestor()
        return "/" + "/".join(reversed(names))


class Stop(Exception):
    """The rest of the file has no meaning."""


class Reading:
    """One run through one file."""

    def __init__(self, facts, complete):
        self.facts, self.complete = facts, complete
        self.release = None
        self.top = None  # the innermost open Element
        self.skipped = 0  # open elements inside a misplaced one, and that one
        self.found = []  # (line, column, Element or None, text)
        self.named = []
        self.references = []  # Elements with an absolute path as text and a right DEST
        self.parser = expat.ParserCreate()
        self.parser.XmlDeclHandler = self.declaration
        self.parser.StartElementHandler = self.start
        self.parser.EndElementHandler = self.end
        self.parser.CharacterDataHandler = self.characters

    def faults_of(self, data):
        try:
            self.parser.Parse(data, True)
            self.check_names()
            self.check_references()
        except Stop:
            pass
        except expat.ExpatError as error:
            text = f"not well-formed XML: {expat.ErrorString(error.code)}"
            self.found.append((error.lineno, error.offset + 1, self.top, text))
        self.found.sort(key=lambda fault: fault[:2])
        return [Fault(line, column, element.path() if element else "/", text)
                for line, column, element, text in self.found]

    def position(self):
        return self.parser.CurrentLineNumber, self.parser.CurrentColumnNumber + 1

    def complain(self, element, text):
        self.found.append((element.line, element.column, element, text))

    def declaration(self, _version, encoding, _standalone):
        if encoding is not None and encoding.lower() not in ENCODINGS:
            self.found.append((*self.position(), None, f"the encoding {quoted(encoding)} is not supported"))
            raise Stop

    def start(self, name, attributes):
        if self.skipped:
            self.skipped += 1
            return
        if self.top is None:
            self.start_root(name, attributes)
            return
        place = self.top.view.places.get(name)
        if place is None:
            self.found.append((*self.position(), self.top, self.misplaced(name)))
            self.skipped = 1
            return
        view = self.facts.view(place.type, self.release)
        element = Element(self.top, view, name, *self.position())
        self.check_place(self.top, element, place)
        self.top = element
        self.check_attributes(element, attributes)

    def start_root(self, name, attributes):
        """Finds the release; raises Stop if nothing can be checked against it."""
        root = Element(None, None, name, *self.position())
        namespace = attributes.get("xmlns", "")
        location = attributes.get("xsi:schemaLocation", "")
        self.release = self.facts.release_of(location)
        if name != "AUTOSAR":
            self.complain(root, f"the root must be AUTOSAR, not {name}")
        elif namespace != NAMESPACE:
            self.complain(root, f"the namespace must be {NAMESPACE}, not {quoted(namespace)}")
        elif self.release is None:
            self.complain(root, f"xsi:schemaLocation {quoted(location)} names no known release")
        if self.found:
            raise Stop
        if attributes.get("xmlns:xsi", SCHEMA_INSTANCE) != SCHEMA_INSTANCE:
            self.complain(root, f"xmlns:xsi must be {SCHEMA_INSTANCE}")
        root.view = self.facts.view("AUTOSAR", self.release)
        self.top = root
        self.check_attributes(root, attributes)

    def misplaced(self, name):
        """Why the name may not stand in the open element."""
        if name not in self.facts.names:
            return f"{name} is not an element of the format"
        releases = 0
        for place in self.top.view.type.places:
            releases |= place.releases if place.name == name else 0
        when = f" {self.facts.only_in(releases, self.release)}" if releases else ""
        return f"{name} may {'' if when else 'not '}stand in {self.top.name}{when}"

    def check_place(self, parent, element, place):
        """Multiplicity, order and choices, against the sibling whose place is the furthest so far."""
        view, furthest = parent.view, parent.furthest
        if place.name == "VARIATION-POINT":
            parent.has_variation_point = True
        if place.name in parent.seen:
            if not view.may_repeat(place):
                self.complain(element, f"{place.name} stands more than once in {parent.name}")
                return
        parent.seen.add(place.name)
        if furthest is None or place.path > furthest.path:
            parent.furthest = place
        if furthest is None or furthest.path == place.path:
            return
        depth = next(i for i, (new, old) in enumerate(zip(place.path, furthest.path)) if new != old)
        content = view.contents[place.path[:depth]]
        if content == "choice":
            self.complain(element, f"{place.name} and {furthest.name} may not both stand in {parent.name}")
        elif content == "sequence" and place.path < furthest.path:
            self.complain(element, f"{place.name} must stand before {furthest.name} in {parent.name}")

    def check_attributes(self, element, attributes):
        view = element.view
        for name, text in attributes.items():
            attribute = view.attributes.get(name)
            if attribute is None:
                self.check_unknown_attribute(element, name, text)
                continue
            wrong = self.facts.complaint(attribute.value, text, self.release)
            if wrong:
                self.complain(element, f"{element.name}, attribute {name}: {wrong}")
            elif name == "DEST":
                element.dest = text
        for name, attribute in view.attributes.items():
            if attribute.required and name not in attributes:
                self.complain(element, f"{element.name} lacks the attribute {name}")

    def check_unknown_attribute(self, element, name, text):
        """Declarations of namespaces may stand anywhere."""
        if name.startswith("xmlns:") or (name, text) == ("xmlns", NAMESPACE):
            return
        known = element.view.type.attributes.get(name)
        if known:
            when = self.facts.only_in(known.releases, self.release)
            self.complain(element, f"{element.name} has the attribute {name} {when}")
        else:
            self.complain(element, f"{element.name} has no attribute {name}")

    def characters(self, text):
        if self.skipped:
            return
        element = self.top
        if element.view.is_text:
            element.text.append(text)
        elif element.view.type.content != "mixed" and not element.text and text.strip(SPACE):
            element.text.append(text)  # one fault for each element is enough
            line, column = self.position()
            column += len(text) - len(text.lstrip(SPACE))
            wrong = f"text in {element.name}, which holds elements only: {quoted(text)}"
            self.found.append((line, column, element, wrong))

    def end(self, _):
        if self.skipped:
            self.skipped -= 1
            return
        element = self.top
        if element.view.is_text:
            self.check_text(element)
        else:
            for names in element.view.needed:
                if not element.seen.intersection(names):
                    self.complain(element, missing(names, element.name))
        self.top = element.parent

    def check_text(self, element):
        value_id = element.view.type.value
        text = "".join(element.text)
        if value_id != "verbatim":
            text = text.strip(SPACE)
        wrong = self.facts.complaint(value_id, text, self.release)
        if wrong:
            self.complain(element, f"{element.name}: {wrong}")
        elif value_id == "reference" and text.startswith("/") and element.dest:
            element.text = text
            self.references.append(element)
        if element.name == "SHORT-NAME" and element.parent.short_name is None:
            element.parent.short_name = text
            self.named.append(element.parent)

    def check_names(self):
        """Objects of the same name in the same named object need a VARIATION-POINT each."""
        first, variants_only = {}, {}
        for element in self.named:
            key = element.named_ancestor(), element.short_name
            if key not in first:
                first[key], variants_only[key] = element, element.has_variation_point
                continue
            variants_only[key] &= element.has_variation_point
            if not variants_only[key]:
                other = first[key]
                self.complain(element, f"the {other.name} in line {other.line} has the same path")

    def check_references(self):
        targets = defaultdict(list)
        for element in self.named:
            targets[element.path()].append(element)
        for reference in self.references:
            found = targets.get(reference.text)
            if found:
                if not any(reference.dest in BASES_OF_ALL | each.view.type.denoted_by for each in found):
                    wrong = f"{quoted(reference.dest)} does not denote {reference.text}"
                    kind = f"which is {found[0].name}"
                    self.complain(reference, f"{reference.name}, attribute DEST: {wrong}, {kind}")
            elif self.complete:
                self.complain(reference, f"{reference.name}: no target {reference.text} in the file")


def missing(names, parent):
    """What to say if none of the names stands in the parent."""
    if len(names) == 1:
        return f"{parent} lacks {names[0]}"
    return f"{parent} lacks one of {', '.join(names[:3])}{' ...' if len(names) > 3 else ''}"


def folder():
    """The folder of the tables, or None if a table is missing there."""
    given = os.environ.get("TARVELON_ARXML_FACTS")
    place = Path(given) if given else Path(__file__).resolve().parents[3] / "shared" / "arxml"
    return place if all((place / table).is_file() for table in TABLES) else None


@functools.cache
def load(place):
    """The tables of a folder, read once in each process. Raises OSError if a table cannot be read."""
    return Facts(Path(place))


def main(arguments):
    parser = argparse.ArgumentParser(description="Checks .arxml files against the tables of the format.")
    parser.add_argument("files", nargs="+", type=Path, metavar="FILE")
    parser.add_argument("--complete", action="store_true",
                        help="each absolute reference must have its target in the file")
    options = parser.parse_args(arguments)
    place = folder()
    if place is None:
        parser.error("the tables are missing; TARVELON_ARXML_FACTS names their folder")
    count = 0
    for file in options.files:
        try:
            faults = load(place).check(file.read_bytes(), options.complete)
        except OSError as error:
            parser.error(str(error))
        for fault in faults:
            print(f"{file}:{fault.line}:{fault.column}: {fault.path}: {fault.text}")
        count += len(faults)
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
