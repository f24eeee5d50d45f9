"""The metamodel as the pages tell it: packages with their classes, made of what the host publishes."""

from dataclasses import dataclass, field
from importlib import import_module

import Tarvelon  # noqa: F401  brings the metamodel in
import _tarvelon_host as host
from Tarvelon import describe

PLATFORM = "Tarvelon.metamodel.arplatform"
BELOW = ("Tarvelon.metamodel.foundation", "Tarvelon.metamodel.types")  # what the platform builds upon

# Types of values, as scripts know them.
PYTHON_TYPES = {"char": "str", "char vector": "str", "int32 scalar": "int", "double scalar": "float",
                "logical scalar": "bool"}


def shown(name):
    """The type of a value or an argument: Python's own, or a class as `behavior.Runnable`."""
    plain = host.plainType(name)
    return PYTHON_TYPES.get(plain, plain)


@dataclass
class Property:
    name: str
    type: str
    number: str
    is_read_only: bool
    role: str  # holds, refers, or nothing of a value
    narrows: bool = False  # of an inherited one, which it gives a narrower type; it is set through that one


@dataclass
class Entry:
    """A class or an enumeration."""

    record: dict
    purpose: str
    package: str
    bases: list = field(default_factory=list)
    subclasses: list = field(default_factory=list)
    constructors: list = field(default_factory=list)  # of [(argument, type), ...]
    properties: list = field(default_factory=list)
    reads: list = field(default_factory=list)  # of (method, property)
    literals: list = field(default_factory=list)
    uses: list = field(default_factory=list)  # of (entry, property): those that have this type

    @property
    def name(self):
        return self.record["name"]

    @property
    def short(self):
        return describe.short(self.record["fullName"])

    @property
    def is_enumeration(self):
        return self.record["description"] == describe.ENUMERATION

    @property
    def first_sentence(self):
        return self.purpose.partition(". ")[0].rstrip(".") + "."


@dataclass
class Package:
    full_name: str
    purpose: str
    entries: list

    @property
    def name(self):
        return self.full_name.rpartition(".")[2]


def constructors_of(record):
    made = [each["arguments"] for each in record["methods"] if each["kind"] == "constructor"]
    names = host.documentation(record["fullName"])["constructors"]
    return [list(zip(name, map(shown, types), strict=True)) for name, types in zip(names, made, strict=True)]


def properties_of(record, package):
    """The properties that the class declares itself, and behind them those that it gives a narrower type."""
    full_name = record["fullName"]
    descriptions = getattr(import_module(package), record["name"]).MetaProperty()
    reader = host.describe(f"{package}.Immutable{record['name']}")
    properties = []
    for each in reader["properties"]:
        described = descriptions[each["name"][0].upper() + each["name"][1:]]
        role = ("holds" if described.isContainment() else "refers") if each["kind"] == "ClassObject" else ""
        number = describe.MULTIPLICITY[each["multiplicity"]]
        properties.append(Property(each["name"], shown(each["type"]), number, described.isReadOnly(), role))
    known = {each.name[0].upper() + each.name[1:] for each in properties}
    properties += [narrowed(each) for each in descriptions
                   if each.owner().fullName() == full_name and each.name() not in known]
    return properties


def narrowed(described):
    number = "0..*" if described.upperBound() < 0 else f"{described.lowerBound()}..1".replace("1..1", "1")
    role = "holds" if described.isContainment() else "refers"
    return Property(described.name(), shown(described.type()), number, described.isReadOnly(), role, True)


def reads_of(record, properties):
    """The methods that read by kind, each with the property that it selects from."""
    inherited = {each["name"] for base in describe.lineage(record)[1:] for each in base["methods"]}
    for method in record["methods"]:
        if method["kind"] != "instance" or method["arguments"] or method["name"] in inherited:
            continue
        element = shown(method["result"])
        yield method["name"], next(each.name for each in properties if each.type == element)


def entry_of(record, package):
    entry = Entry(record, host.documentation(record["fullName"])["purpose"], package)
    if entry.is_enumeration:
        entry.literals = describe.literals(record)
        return entry
    entry.bases = [name for name in record["superclasses"][1:] if not name.startswith("K7Q.")]
    entry.constructors = constructors_of(record)
    entry.properties = properties_of(record, package)
    entry.reads = list(reads_of(record, entry.properties))
    return entry


def package_of(full_name):
    records = host.describe(full_name)["classes"]
    names = {each["name"] for each in records}
    return Package(full_name, host.documentation(full_name)["purpose"], [
        entry_of(each, full_name) for each in records
        if each["description"] == describe.ENUMERATION or f"{each['name']}MetaProperty" in names])


def load():
    """All packages, those of the platform first, with their entries connected to one another."""
    platform = [each["name"] for each in host.describe(PLATFORM)["packages"]]
    packages = [package_of(name) for name in [*platform, *BELOW]]
    entries = {each.short: each for package in packages for each in package.entries}
    for entry in entries.values():
        entry.bases = [entries[describe.short(name)] for name in entry.bases]
        for base in entry.bases:
            base.subclasses.append(entry)
        for each in entry.properties:
            if each.type in entries:
                entries[each.type].uses.append((entry, each))
    return packages


def ancestors(entry):
    """All bases, the nearest first, each once."""
    order, queue = [], list(entry.bases)
    while queue:
        base = queue.pop(0)
        if base not in order:
            order.append(base)
            queue += base.bases
    return order


def descendants(entry):
    """All that derive from it, each once, by short name."""
    found = {}
    for each in entry.subclasses:
        found |= {each.short: each, **descendants(each)}
    return found
