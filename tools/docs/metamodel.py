"""The data for the pages of the metamodel: packages with their classes, made from what the host publishes."""

from dataclasses import dataclass, field
from importlib import import_module

import Tarvelon  # noqa: F401  loads the metamodel
import _tarvelon_host as host
from Tarvelon import describe

PLATFORM = "Tarvelon.metamodel.arplatform"
BELOW = ("Tarvelon.metamodel.foundation", "Tarvelon.metamodel.types")  # used by the packages of the platform

# The Python types of scalar values.
PYTHON_TYPES = {"char": "str", "char vector": "str", "int32 scalar": "int", "double scalar": "float",
                "logical scalar": "bool"}


def shown(name):
    """The type of a value or an argument: a Python type, or a class in the form `behavior.Runnable`."""
    plain = host.plainType(name)
    return PYTHON_TYPES.get(plain, plain)


@dataclass
class Property:
    name: str
    type: str
    number: str
    is_read_only: bool
    role: str  # "holds", "refers", or "" for a plain value
    narrows: bool = False  # gives an inherited property a narrower type; it is set through that property


@dataclass
class Entry:
    """A class or an enumeration."""

    record: dict
    purpose: str
    package: str
    bases: list = field(default_factory=list)
    subclasses: list = field(default_factory=list)
    constructors: list = field(default_factory=list)  # each is [(argument, type), ...]
    properties: list = field(default_factory=list)
    reads: list = field(default_factory=list)  # each is (method, property)
    literals: list = field(default_factory=list)
    uses: list = field(default_factory=list)  # each is (entry, property), for the properties of this type

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
    """The properties that the class itself declares, then inherited ones to which it gives a narrower
    type."""
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
    """The methods that return the values of one kind, each with the name of its property."""
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
    """All packages, first those of the platform, with the links between their entries."""
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
    """All base classes without duplicates, nearest first."""
    order, queue = [], list(entry.bases)
    while queue:
        base = queue.pop(0)
        if base not in order:
            order.append(base)
            queue += base.bases
    return order


def descendants(entry):
    """All subclasses without duplicates, by short name."""
    found = {}
    for each in entry.subclasses:
        found |= {each.short: each, **descendants(each)}
    return found
