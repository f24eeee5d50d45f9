"""The pages of the metamodel as reStructuredText: one for each package, and their index."""

import itertools
import re

from metamodel import PLATFORM, ancestors, descendants

EVERYTHING = 100  # a base class with at least so many subclasses is not listed: it would be in every list


def text(words):
    """The words, with the markup characters escaped."""
    return re.sub(r"([\\*`|]|_(?=\W|$))", r"\\\1", words)


def link(entry, words=None):
    return f":py:class:`{words or entry.short} <{entry.short}>`"


def near(entry, package):
    """A link to a class. Within the class's own package it shows only the short name."""
    return link(entry, entry.name if entry.package == package else None)


def heading(words, line):
    return [words, line * len(words), ""]


def indented(lines, depth=1):
    return [("   " * depth + line).rstrip() for line in lines]


def table(header, rows):
    if not rows:
        return []
    lines = [".. list-table::", "   :header-rows: 1", "   :widths: auto", ""]
    for row in [header, *rows]:
        lines += [f"   {'* -' if index == 0 else '  -'} {cell}" for index, cell in enumerate(row)]
    return [*lines, ""]


class PackagePage:
    def __init__(self, package, entries):
        self.package = package
        self.entries = entries  # by short name, of all packages

    def near(self, entry):
        return near(entry, self.package.full_name)

    def type(self, name):
        entry = self.entries.get(name)
        return self.near(entry) if entry else f"``{name}``"

    def lines(self):
        parent = self.package.full_name.rpartition(".")[0]
        lines = heading(self.package.name, "=") + [".. highlight:: none", ""]
        lines += [text(self.package.purpose), "", ".. code-block:: python", "",
                  f"   from {parent} import {self.package.name}", ""]
        for title, chosen in (("Classes", False), ("Enumerations", True)):
            entries = [each for each in self.package.entries if each.is_enumeration == chosen]
            if entries:
                rows = [(link(each, each.name), text(each.first_sentence)) for each in entries]
                lines += heading(title, "-") + table(("Name", "What it is"), rows)
                for each in entries:
                    lines += self.entry(each)
        return lines

    def entry(self, entry):
        body = [text(entry.purpose), ""]
        if entry.is_enumeration:
            body += self.uses(entry) + [""]
            body += table(("Value", "Literal"), [(str(value), f"``{name}``")
                                                 for value, name in enumerate(entry.literals)])
        else:
            body += self.relations(entry) + [""] + self.constructors(entry) + self.properties(entry)
        return [f".. py:class:: {entry.short}", "", *indented(body), ""]

    def relations(self, entry):
        lines = []
        if entry.bases:
            lines.append(f":Bases: {', '.join(map(self.near, entry.bases))}")
        if entry.subclasses:
            lines.append(f":Subclasses: {', '.join(map(self.near, entry.subclasses))}")
        return lines + self.uses(entry)

    def uses(self, entry):
        """The properties that have this type, by their role."""
        lines = []
        for role, title in (("holds", "Held by"), ("refers", "Referred to by"), ("", "Used by")):
            found = [f"{self.near(user)}.{text(each.name)}" for user, each in entry.uses if each.role == role]
            if found:
                lines.append(f":{title}: {', '.join(found)}")
        wider = [self.near(base) for base in ancestors(entry)
                 if base.uses and len(descendants(base)) < EVERYTHING]
        if wider:
            lines.append(f":Also used as: {', '.join(wider)}")
        return lines

    def constructors(self, entry):
        if not entry.constructors:
            return ["*Abstract:* there are objects of its subclasses alone.", ""]
        lines = []
        for arguments in entry.constructors:
            shown = [text(name) if name == "model" else f"{text(name)}: {self.argument(kind)}"
                     for name, kind in arguments]
            lines.append(f"{text(entry.name)}({', '.join(shown)})")
        return [".. parsed-literal::", "   :class: constructors", "", *indented(lines), ""]

    def argument(self, name):
        entry = self.entries.get(name)
        return link(entry) if entry else name

    def properties(self, entry):
        rows = []
        for each in entry.properties:
            access = "read-only" if each.is_read_only else "writable"
            role = {"holds": "holds", "refers": "refers to"}.get(each.role, "")
            note = f"{role}, narrower than inherited" if each.narrows else role
            rows.append((f"``{each.name}``", self.type(each.type), text(each.number), access, note))
        lines = table(("Property", "Type", "Number", "Access", "Role"), rows)
        if entry.reads:
            lines += ["Read by kind:", ""]
            lines += [f"* ``{method}()``: those of ``{name}`` that are of this kind"
                      for method, name in entry.reads]
            lines.append("")
        known = {each.name for each in entry.properties}
        inherited = []
        for base in ancestors(entry):
            names = [each.name for each in base.properties if each.name not in known and not each.narrows]
            known.update(names)
            if names:
                inherited.append(f"* {self.near(base)}: {', '.join(map(text, names))}")
        return lines + (["Inherited from", "", *inherited, ""] if inherited else [])


INTRODUCTION = """\
How do I connect two ports, add a runnable, place a component on an ECU? :doc:`/docs/howto` shows it, each in
a few lines that run. What every object, sequence and enumeration can do stands in :doc:`/docs/python`.

How to read the pages
---------------------

A class lists what it is made from, its properties, and where it is used. *Held by* names the properties that
own objects of the class: an object belongs to one place, and goes with it. *Referred to by* names those that
only point at them. *Also used as* names the bases that properties ask for: where one of them fits, the class
fits as well.

Number is how many values a property has: 1, at most one (0..1), or any number (0..\\*), which is a sequence.
Types are Python's own or classes of the metamodel. A class is made with its arguments in their order, by the
class itself, ``behavior.Runnable(model, "PedalSensor_sample", "Sample")``, or by a factory, which knows the
model: ``factory.create(behavior.Runnable, "PedalSensor_sample", "Sample")``.
"""


def package_table(packages):
    rows = [(f":doc:`{each.name}`", text(each.purpose)) for each in packages]
    return table(("Package", "What it holds"), rows)


def index_lines(packages):
    platform = [each for each in packages if each.full_name.startswith(PLATFORM)]
    below = [each for each in packages if each not in platform]
    entries = [each for package in platform for each in package.entries]
    classes = sum(not each.is_enumeration for each in entries)
    lines = [*heading("The metamodel", "="),
             f"{classes} classes and {len(entries) - classes} enumerations in {len(platform)} packages.", "",
             *INTRODUCTION.splitlines(), ""]
    lines += heading("Packages", "-")
    lines += package_table(platform)
    lines += ["They build upon two packages that stand beside them:", ""]
    lines += package_table(below)
    lines += [".. toctree::", "   :hidden:", "", *(f"   {each.name}" for each in packages), ""]
    lines += heading("All classes and enumerations", "-")
    everything = [each for package in packages for each in package.entries]
    ordered = sorted(everything, key=lambda each: each.name.lower())
    for letter, group in itertools.groupby(ordered, key=lambda each: each.name[0].upper()):
        lines += [f".. rubric:: {letter}", "", ".. hlist::", "   :columns: 2", ""]
        lines += [f"   * {link(each, each.name)} ({each.short.partition('.')[0]})" for each in group] + [""]
    return lines


def pages(packages, root_purpose):
    """The text of each page, by its file name without suffix."""
    entries = {each.short: each for package in packages for each in package.entries}
    made = {package.name: PackagePage(package, entries).lines() for package in packages}
    made["index"] = index_lines(packages)
    made["index"][3:3] = [text(root_purpose), ""]
    return {name: "\n".join(lines) for name, lines in made.items()}
