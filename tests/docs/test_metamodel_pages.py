"""The contents of the metamodel's pages, before Sphinx makes a site of them."""

import functools

import pytest

import metamodel
import pages


@functools.lru_cache(maxsize=None)
def packages():
    return metamodel.load()


@functools.lru_cache(maxsize=None)
def entries():
    return {each.short: each for package in packages() for each in package.entries}


@functools.lru_cache(maxsize=None)
def all_pages():
    return pages.pages(packages(), "The root.")


def page(name):
    return all_pages()[name]


@functools.lru_cache(maxsize=None)
def section(short):
    """The section of a page for one class."""
    text = page(short.partition(".")[0])
    return text.partition(f".. py:class:: {short}\n")[2].partition(".. py:class:: ")[0]


def test_each_class_and_enumeration_of_the_platform_is_there_once():
    platform = [each for each in packages() if each.full_name.startswith(metamodel.PLATFORM)]
    listed = [each for package in platform for each in package.entries]

    assert len(platform) == 13
    assert len({each.short for each in listed}) == len(listed) == 284 + 28
    assert sum(each.is_enumeration for each in listed) == 28
    for package in platform:
        text = page(package.name)
        assert all(text.count(f".. py:class:: {each.short}\n") == 1 for each in package.entries)


def test_a_class_tells_its_purpose_constructors_and_where_it_is_used():
    text = section("behavior.Runnable")

    assert "A piece of a component's behavior that the run-time environment starts on events. " in text
    assert ":Bases: :py:class:`common.Identifiable <common.Identifiable>`\n" in text
    holder = ":py:class:`ApplicationComponentBehavior <behavior.ApplicationComponentBehavior>`"
    assert f":Held by: {holder}.Runnables\n" in text
    assert ":Referred to by: :py:class:`Event <behavior.Event>`.StartOnEvent, " in text
    assert "      Runnable(model)\n      Runnable(model, symbol: str, name: str)\n" in text
    assert "* ``implicitWrite()``: those of ``dataAccess`` that are of this kind\n" in text


@pytest.mark.parametrize("short, row", [
    ("behavior.ApplicationComponentBehavior",
     ["``Runnables``", ":py:class:`Runnable <behavior.Runnable>`", "0..\\*", "writable", "holds"]),
    ("behavior.Event",
     ["``StartOnEvent``", ":py:class:`Runnable <behavior.Runnable>`", "0..1", "writable", "refers to"]),
    ("component.Component",
     ["``Port``", ":py:class:`port.Port <port.Port>`", "0..\\*", "read-only", "holds"]),
    ("behavior.TimingEvent", ["``Period``", "``float``", "1", "writable", ""]),
    ("manifest.Process",
     ["``LogTraceLogMode``", ":py:class:`LogTraceLogModeEnum <manifest.LogTraceLogModeEnum>`", "0..\\*",
      "writable", ""]),
    ("instance.FlowDataPortInstanceRef",
     ["``DataElements``", ":py:class:`interface.FlowData <interface.FlowData>`", "1", "writable",
      "refers to, narrower than inherited"]),
])
def test_a_property_tells_type_number_access_and_role(short, row):
    lines = [line.strip() for line in section(short).splitlines()]
    first, *rest = row
    place = lines.index(f"* - {first}")

    told = [line.removeprefix("- ") for line in lines[place + 1:place + 5]]
    assert told == [each or "-" for each in rest]


def test_an_abstract_class_and_an_enumeration_say_so():
    assert "*Abstract:* " in section("behavior.Event") and "Event(" not in section("behavior.Event")
    assert ":Used by: :py:class:`IrvData <behavior.IrvData>`.Kind\n" in section("behavior.IrvKind")
    assert "      * - 1\n        - ``Explicit``\n" in section("behavior.IrvKind")


def test_every_property_stands_on_its_page_and_every_use_leads_back():
    exposed = 0
    for short, entry in entries().items():
        for each in entry.properties:
            assert f"* - ``{each.name}``" in section(short)
            exposed += not each.narrows and entry.package.startswith(metamodel.PLATFORM)
            if each.type in entries():
                assert f"`.{each.name}" in section(each.type)
    assert exposed == 494


def test_the_index_links_every_class_and_the_guide():
    text = page("index")

    assert "284 classes and 28 enumerations in 13 packages." in text
    assert ":doc:`/docs/howto`" in text
    assert all(f"<{short}>`" in text for short in entries())


@pytest.mark.parametrize("words, escaped", [
    ("0..*", "0..\\*"), ("a_b", "a_b"), ("name_", "name\\_"), ("`x` |y|", "\\`x\\` \\|y\\|"),
])
def test_words_mean_nothing_to_the_markup(words, escaped):
    assert pages.text(words) == escaped
