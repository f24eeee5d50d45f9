"""The rows of the project against the tables of the format: Content.h, the releases, and the Shapes.h of each package.

The rows are read with small regular expressions, and not with code of Tarvelon.
"""

import re
import sys
from collections import defaultdict
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parent))
import facts  # noqa: E402

SOURCE = Path(__file__).resolve().parents[2] / "src" / "tarvelon"
ARGUMENTS = r"\((?:[^()]|\((?:[^()]|\([^()]*\))*\))*\)"  # with calls in calls
FORMS = "text|attribute|body|role|inside|reference|inlined|chosen|nowhere"


def source(path):
    """A file without its comments."""
    return re.sub(r"//[^\n]*", "", path.read_text(encoding="utf-8"))


def joined(literals):
    """C++ string literals that stand beside each other as one text."""
    return "".join(re.findall(r'"([^"]*)"', literals))


# ---- the rows ----------------------------------------------------------------------------------------------

CONTENT = r'\{\s*"([^"]+)"\s*,\s*(true|false)\s*,((?:\s*"[^"]*")+)\s*\}'
ITEM = r"([^ =*]+)(?:=([^ *]+))?(\*?) ([0-9,-]+)"


def content_rows():
    """{type: (is ordered, [(name, kind or "", may repeat, releases)])} of Content.h. Fails at an item that is none."""
    rows = {}
    for type_, ordered, items in re.findall(CONTENT, source(SOURCE / "arplatform" / "Content.h")):
        found = [re.fullmatch(ITEM, item) or pytest.fail(f'{type_}: "{item}" is no item')
                 for item in joined(items).split("; ")]
        assert type_ not in rows, f"two rows {type_}"
        rows[type_] = ordered == "true", [(name, kind or "", many == "*", facts.bits(releases))
                                          for name, kind, many, releases in map(re.Match.groups, found)]
    return rows


def release_rows():
    """[(number, name, schema, other names)] of Shapes.h, and the number of the usual release."""
    text = source(SOURCE / "arplatform" / "Shapes.h")
    rows = re.findall(r'\{\s*(\d+),\s*"([^"]*)",\s*"([^"]*)",\s*"([^"]*)"\}', text)
    usual = re.search(r"kUsualRelease = (\d+)", text)[1]
    return [(int(number), name, schema, others.split()) for number, name, schema, others in rows], int(usual)


class Class:
    """What Table.h and Shapes.h say about a class."""

    def __init__(self, bases, properties, is_abstract):
        self.bases, self.properties, self.is_abstract = bases, properties, is_abstract
        self.elements = []  # (name, path of a reference, its DEST)
        self.places = []  # (property, form, path)


def in_namespaces(path):
    """(package, text) of each namespace in a file."""
    parts = re.split(r"namespace Tarvelon::metamodel::(?:arplatform::)?(\w+) \{", source(path))
    return zip(parts[1::2], parts[2::2], strict=True)


def functions(kind, path):
    """(package, class, body) of each shape(Is<X>), row(Is<X>) or items(Is<X>) in a file."""
    for package, text in in_namespaces(path):
        for name, body in re.findall(rf"constexpr auto {kind}\(Is<(\w+)>\) \{{(.*?)\n\}}", text, re.S):
            yield package, name, body


def qualified(package, name):
    return name if "::" in name else f"{package}::{name}"


def table_files(name):
    return sorted(SOURCE.glob(f"*/{name}")) + sorted(SOURCE.glob(f"arplatform/*/{name}"))


def classes():
    """All classes by name: behavior::Runnable."""
    found = {}
    for path in table_files("Table.h"):
        for package, name, body in functions("row", path):
            bases = re.search(r"bases<([^>]*)>", body)
            bases = [qualified(package, base.strip()) for base in bases[1].split(",")] if bases else []
            properties = {each[1][0].upper() + each[1][1:]: qualified(package, each[0]) for each in re.findall(
                r'(?:one|optional|many)<([\w:]+)>\s*\(\s*\d+,\s*"(\w+)"', body)}
            found[f"{package}::{name}"] = Class(bases, properties, "constructors(" not in body)
    for path in table_files("Shapes.h"):
        for package, name, body in functions("shape", path):
            shaped = found[f"{package}::{name}"]
            for element, rest in re.findall(rf'\belement\("([^"]*)"\)((?:\s*\.\w+(?:<[^>]*>)?{ARGUMENTS})*)', body):
                dest = re.search(r"\.ifDest\(((?:\s*\"[^\"]*\")+)\s*,\s*\"([^\"]*)\"\s*\)", rest)
                shaped.elements.append((element, *((joined(dest[1]), dest[2]) if dest else ("", ""))))
            for form, property_, text in re.findall(
                    rf'\b({FORMS})\s*\(\s*"(\w+)"\s*(?:,((?:\s*"[^"]*")+))?\s*\)', body):
                shaped.places.append((property_, form, joined(text)))
    return found


def items():
    """{enumeration: [text]} of all Shapes.h."""
    return {f"{package}::{name}": re.findall(r'"([^"]*)"', body)
            for path in table_files("Shapes.h") for package, name, body in functions("items", path)}


# ---- where the classes stand -------------------------------------------------------------------------------


class Walk:
    """All elements that objects may be, from the root of a file inwards."""

    def __init__(self, tables):
        self.tables = tables
        self.classes = classes()
        self.concrete = defaultdict(list)  # class -> itself and the classes derived from it, without abstract ones
        for name, each in self.classes.items():
            if not each.is_abstract or each.elements:  # one abstract class has an element
                for base in self.with_bases(name):
                    self.concrete[base].append(name)
        self.types = defaultdict(set)  # class -> types of the elements that its objects may be
        self.ends = defaultdict(set)  # (class that has a place in its rows, place) -> types at the end of the path
        waiting = [("common::AUTOSAR", "AUTOSAR")]
        while waiting:
            name, type_ = waiting.pop()
            if type_ not in self.types[name]:
                self.types[name].add(type_)
                waiting += self.contained(name, type_)

    def with_bases(self, name):
        """The class and all its bases, the class first, each base behind all that derive from it."""
        order = []
        for base in reversed(self.classes[name].bases if name in self.classes else []):
            order = [each for each in self.with_bases(base) if each not in order] + order
        return [name, *order]

    def places(self, name):
        """(class that has it in its rows, place, whether no class before has one for the property)"""
        spoken = set()
        for each in self.with_bases(name):
            mine = self.classes[each].places if each in self.classes else []
            yield from ((each, place, place[0] not in spoken) for place in mine)
            spoken.update(property_ for property_, _, _ in mine)

    def type_of(self, name, property_):
        for each in self.with_bases(name):
            if each in self.classes and property_ in self.classes[each].properties:
                return self.classes[each].properties[property_]
        return pytest.fail(f"{name} has no property {property_}")

    def follow(self, type_, path):
        """The types at the end of a path."""
        found = {type_}
        for step in path.replace("*", "").split("/") if path else ():
            found = {place.type for each in found if each in self.tables.types
                     for place in self.tables.types[each].places if place.name == step}
        return found

    def contained(self, name, type_):
        """(class, type) of the objects below an element. Notes where the places lead."""
        for declaring, place, counts in self.places(name):
            property_, form, path = place
            if form == "attribute":
                attributes = self.tables.types[type_].attributes
                self.ends[declaring, place] |= {attributes[path].value} if path in attributes else set()
            elif form in ("text", "reference"):
                self.ends[declaring, place] |= self.follow(type_, path)
            elif form in ("role", "inside", "inlined"):
                for end in self.follow(type_, path):
                    below = list(self.below(form, end, self.type_of(name, property_)))
                    self.ends[declaring, place] |= {end} if below else set()
                    yield from below if counts else ()

    def below(self, form, end, class_):
        """(class, type) of the objects of a class at the end of a path."""
        if form != "inside":
            return ((each, end) for each in self.concrete[class_])
        return ((each, place.type) for each in self.concrete[class_]
                for element, _, _ in self.classes[each].elements
                for place in self.tables.types[end].places if place.name == element)


# ---- the tests ---------------------------------------------------------------------------------------------

# Two texts of the format that are plain strings, although a class has an enumeration for them.
PLAIN = {"SCHEDULING-POLICY", "TRANSPORT-PROTOCOL"}
LONGEST = 40  # a longer list names only the elements that have a class


def is_ordered(type_):
    """Whether the order of the elements is binding: it is not where a group may have them in any order."""
    return type_.content in ("sequence", "choice") and "bag" not in type_.groups.values()


def may_repeat(type_, place):
    return type_.content == "bag" or place.multiplicity == "0..*"


def is_text(type_):
    return type_.content in ("characters", "mixed") and "DEST" not in type_.attributes


def type_names(tables):
    """{type: names of the elements that have it}."""
    names = defaultdict(set)
    for type_ in tables.types.values():
        for place in type_.places:
            names[place.type].add(place.name)
    names["AUTOSAR"].add("AUTOSAR")
    return names


if facts.folder():

    @pytest.fixture(scope="module")
    def tables():
        return facts.load(facts.folder())

    @pytest.fixture(scope="module")
    def walk(tables):
        return Walk(tables)

    def type_of_row(tables, row):
        return tables.types.get(row.replace("@", "@*") if row.endswith("@") else row)

    def test_all_rows_are_read():
        text = source(SOURCE / "arplatform" / "Content.h")
        assert len(content_rows()) == text.count("{") - 2 > 0  # the namespace and the array
        text = source(SOURCE / "arplatform" / "Shapes.h")
        assert len(release_rows()[0]) == text.count("{") - 2 > 0
        text = "".join(map(source, table_files("Shapes.h")))
        assert len(items()) == text.count("constexpr auto items(") > 0
        found = classes().values()
        assert sum(len(each.elements) for each in found) == len(re.findall(r"\belement\(", text)) > 0
        assert sum(len(each.places) for each in found) == len(re.findall(rf"\b(?:{FORMS}) *\(", text)) > 0
        dests = sum(bool(dest) for each in found for _, _, dest in each.elements)
        assert dests == text.count(".ifDest(") > 0
        text = "".join(map(source, table_files("Table.h")))
        assert len(found) == text.count("constexpr auto row(") > 0
        assert sum(len(each.properties) for each in found) == len(re.findall(r"\b(?:one|optional|many)<", text)) > 0

    def test_each_content_row_is_a_type_of_the_format(tables):
        assert [row for row in content_rows() if type_of_row(tables, row) is None] == []

    def test_the_order_of_a_content_row_is_binding_where_the_format_says_so(tables):
        assert [row for row, (ordered, _) in content_rows().items()
                if ordered != is_ordered(type_of_row(tables, row))] == []

    def test_the_items_of_a_content_row_are_those_of_the_format(tables):
        rows = content_rows()
        kinds = {type_of_row(tables, row).id: row for row in rows}
        known = {element for each in classes().values() for element, _, _ in each.elements}
        faults = []
        for row, (_, found) in rows.items():
            type_ = type_of_row(tables, row)
            is_long = type_.content in ("bag", "mixed") and len(type_.places) > LONGEST
            expected = [(place.name, kinds.get(place.type, ""), may_repeat(type_, place), place.releases)
                        for place in type_.places if not is_long or place.name in known]
            faults += [f"{row}: {each} is wrong or at the wrong place" for each in found if each not in expected]
            faults += [f"{row}: {each} is missing" for each in expected if each not in found]
            if not faults and found != expected:
                faults.append(f"{row}: the order of the items")
        assert faults == []

    def test_the_releases_are_those_of_the_format(tables):
        rows, _ = release_rows()
        table = [line for line in facts.rows(facts.folder() / "releases.tsv")]
        assert [(number, schema) for number, _, schema, _ in rows] == [(int(line[0]), line[2]) for line in table]
        for (number, name, _, others), line in zip(rows, table, strict=True):
            for each in [name, *others]:
                if each.endswith(".xsd"):
                    assert tables.release_of(each) == 1 << (number - 1), each
                else:
                    assert each.removeprefix("R") in re.findall(r"[0-9][0-9.-]+", line[3]), each

    def test_the_usual_release_is_a_release():
        rows, usual = release_rows()
        assert usual in [number for number, _, _, _ in rows]

    def test_each_element_of_a_class_is_an_element_or_a_dest_of_the_format(tables):
        known = tables.names.union(*(type_.denoted_by for type_ in tables.types.values()))
        assert [(name, element) for name, each in classes().items()
                for element, _, _ in each.elements if element not in known] == []

    def test_each_element_of_a_class_stands_where_objects_of_the_class_may_stand(walk):
        names = type_names(walk.tables)
        for type_ in walk.tables.types.values():  # what is named by its role has a name that is only used in DEST
            names[type_.id] |= type_.denoted_by - walk.tables.names
        assert [(name, element) for name, each in walk.classes.items() for element, _, _ in each.elements
                if not any(element in names[type_] for type_ in walk.types[name])] == []

    def test_each_place_leads_to_an_element_or_attribute_of_the_format(walk):
        assert [(name, *place) for name, each in walk.classes.items() for place in each.places
                if place[1] in ("text", "attribute", "role", "inside", "reference", "inlined")
                and not walk.ends[name, place]] == []

    def test_each_reference_at_a_place_is_one_in_the_format(walk):
        assert [(name, *place) for (name, place), ends in walk.ends.items()
                if place[1] == "reference" and place[2]
                and not any("DEST" in walk.tables.types[end].attributes for end in ends)] == []

    def test_each_text_at_a_place_is_one_in_the_format(walk):
        assert [(name, *place) for (name, place), ends in walk.ends.items()
                if place[1] == "text"
                and not any(is_text(walk.tables.types[end]) for end in ends)] == []

    def test_each_dest_that_chooses_a_class_is_one_of_the_reference(walk):
        faults = []
        for name, each in walk.classes.items():
            for element, path, dest in each.elements:
                ends = {end for type_ in walk.types[name] for end in walk.follow(type_, path)} if path else set()
                values = [walk.tables.types[end].attributes["DEST"].value
                          for end in ends if "DEST" in walk.tables.types[end].attributes]
                if path and not any(dest in walk.tables.values[value].items for value in values):
                    faults.append((name, element, path, dest))
        assert faults == []

    def test_each_text_of_an_enumeration_is_one_where_the_enumeration_stands(walk):
        values = walk.tables.values
        kinds = defaultdict(set)  # enumeration -> kinds of text at its places
        plain = set()
        for (name, (property_, form, path)), ends in walk.ends.items():
            type_ = walk.type_of(name, property_)
            if form == "text" and path.rpartition("/")[2] in PLAIN:
                plain.add(type_)
            elif form in ("text", "attribute"):
                kinds[type_] |= ends if form == "attribute" else {walk.tables.types[end].value for end in ends}
        everywhere = {id_ for id_, value in values.items() if value.kind == "enum"}
        assert [(enumeration, text) for enumeration, texts in items().items() if enumeration not in plain
                for text in texts if text and not any(
                    text in values[kind].items or values[kind].kind == "unsigned" and text.isdecimal()
                    for kind in kinds[enumeration] or everywhere)] == []
