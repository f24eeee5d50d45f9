"""The checker of .arxml files: right files written by hand, and a wrong one for each kind of fault."""

import subprocess
import sys
import time
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parent))
import facts  # noqa: E402

needs_tables = pytest.mark.skipif(
    facts.folder() is None, reason="the tables of the .arxml format are missing (TARVELON_ARXML_FACTS)")

HEAD = """<?xml version="1.0" encoding="utf-8"?>
<AUTOSAR xmlns="http://autosar.org/schema/r4.0" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
  xsi:schemaLocation="http://autosar.org/schema/r4.0 SCHEMA"><AR-PACKAGES>
<AR-PACKAGE><SHORT-NAME>P</SHORT-NAME><ELEMENTS>
"""
TAIL = """
</ELEMENTS></AR-PACKAGE></AR-PACKAGES></AUTOSAR>
"""
R4_0_1 = "AUTOSAR_4-0-1.xsd"
R4_2_1 = "AUTOSAR_4-2-1.xsd"
R4_2_2 = "AUTOSAR_4-2-2.xsd"
R4_3_0 = "AUTOSAR_4-3-0.xsd"
R22_11 = "AUTOSAR_00051.xsd"

# Groups, mixed and verbatim texts, an element that moved later
RIGHT_4_0_1 = """
<SW-BASE-TYPE UUID="f1"><SHORT-NAME>uint8</SHORT-NAME><CATEGORY>FIXED_LENGTH</CATEGORY>
  <BASE-TYPE-SIZE>0x8</BASE-TYPE-SIZE><BASE-TYPE-ENCODING> NONE </BASE-TYPE-ENCODING>
  <BYTE-ORDER>OPAQUE</BYTE-ORDER>
  <NATIVE-DECLARATION>unsigned  char</NATIVE-DECLARATION></SW-BASE-TYPE>
<!-- a comment -->
<COMPU-METHOD><SHORT-NAME>Linear</SHORT-NAME><COMPU-INTERNAL-TO-PHYS><COMPU-SCALES>
  <COMPU-SCALE><LOWER-LIMIT INTERVAL-TYPE="CLOSED">0</LOWER-LIMIT>
    <COMPU-CONST><VT>  off  </VT></COMPU-CONST></COMPU-SCALE></COMPU-SCALES>
</COMPU-INTERNAL-TO-PHYS></COMPU-METHOD>
"""

# Documentation, free data, references inside the file and out of it
RIGHT_4_3_0 = """
<SENDER-RECEIVER-INTERFACE><SHORT-NAME>Speed</SHORT-NAME>
  <DESC><L-2 L="EN">how <E>fast</E><SUB>now</SUB> it goes</L-2><L-2 L="DE">wie schnell</L-2></DESC>
  <ADMIN-DATA><SDGS><SDG GID="a"><SD>  1 </SD><SDG><SD GID="b" xml:space="preserve"/></SDG><SD/></SDG></SDGS>
  </ADMIN-DATA>
  <DATA-ELEMENTS><VARIABLE-DATA-PROTOTYPE><SHORT-NAME>value</SHORT-NAME>
    <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">/Elsewhere/uint8</TYPE-TREF><INIT-VALUE>
      <NUMERICAL-VALUE-SPECIFICATION><VALUE>1.5E-3</VALUE></NUMERICAL-VALUE-SPECIFICATION></INIT-VALUE>
  </VARIABLE-DATA-PROTOTYPE></DATA-ELEMENTS></SENDER-RECEIVER-INTERFACE>
<APPLICATION-SW-COMPONENT-TYPE><SHORT-NAME>Sensor</SHORT-NAME>
  <PORTS><P-PORT-PROTOTYPE><SHORT-NAME>Out</SHORT-NAME>
    <PROVIDED-COM-SPECS><NONQUEUED-SENDER-COM-SPEC>
      <DATA-ELEMENT-REF DEST="VARIABLE-DATA-PROTOTYPE">/P/Speed/value</DATA-ELEMENT-REF>
    </NONQUEUED-SENDER-COM-SPEC></PROVIDED-COM-SPECS>
    <PROVIDED-INTERFACE-TREF DEST="SENDER-RECEIVER-INTERFACE">/P/Speed</PROVIDED-INTERFACE-TREF>
  </P-PORT-PROTOTYPE></PORTS>
  <INTERNAL-BEHAVIORS><SWC-INTERNAL-BEHAVIOR><SHORT-NAME>Behavior</SHORT-NAME><RUNNABLES>
    <RUNNABLE-ENTITY><SHORT-NAME>Run</SHORT-NAME><MINIMUM-START-INTERVAL>1.0E-3</MINIMUM-START-INTERVAL>
      <SYMBOL>_run</SYMBOL></RUNNABLE-ENTITY></RUNNABLES></SWC-INTERNAL-BEHAVIOR></INTERNAL-BEHAVIORS>
</APPLICATION-SW-COMPONENT-TYPE>
"""

# Variants of one name, a formula, DEST of a base class, an element of the adaptive platform
RIGHT_R22_11 = """
<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>A</SHORT-NAME><VARIATION-POINT/></IMPLEMENTATION-DATA-TYPE>
<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>A</SHORT-NAME><VARIATION-POINT/></IMPLEMENTATION-DATA-TYPE>
<IMPLEMENTATION-DATA-TYPE S="x" T="2024-05-01T10:00:00Z"><SHORT-NAME NAME-PATTERN="B{n}">B</SHORT-NAME>
  <IS-STRUCT-WITH-OPTIONAL-ELEMENT>true</IS-STRUCT-WITH-OPTIONAL-ELEMENT>
  <SUB-ELEMENTS><IMPLEMENTATION-DATA-TYPE-ELEMENT><SHORT-NAME>A</SHORT-NAME>
    <ARRAY-SIZE BINDING-TIME="PRE-COMPILE-TIME">
      <SYSC-REF DEST="SW-SYSTEMCONST">/C/N</SYSC-REF> + 1</ARRAY-SIZE>
  </IMPLEMENTATION-DATA-TYPE-ELEMENT></SUB-ELEMENTS></IMPLEMENTATION-DATA-TYPE>
<DATA-TYPE-MAPPING-SET><SHORT-NAME>M</SHORT-NAME><DATA-TYPE-MAPS><DATA-TYPE-MAP>
  <IMPLEMENTATION-DATA-TYPE-REF DEST="ABSTRACT-IMPLEMENTATION-DATA-TYPE">/P/B</IMPLEMENTATION-DATA-TYPE-REF>
</DATA-TYPE-MAP></DATA-TYPE-MAPS></DATA-TYPE-MAPPING-SET>
<SERVICE-INTERFACE><SHORT-NAME>S</SHORT-NAME></SERVICE-INTERFACE>
"""


def file_of(schema, body):
    """A whole file. The body begins in line 5, inside the ELEMENTS of the package /P."""
    return (HEAD.replace("SCHEMA", schema) + body + TAIL).encode()


def named(tag, name, content=""):
    return f"<{tag}><SHORT-NAME>{name}</SHORT-NAME>{content}</{tag}>"


def nested(tags, content):
    """The content inside elements, `A/B` is B inside A."""
    tags = tags.split("/")
    return "".join(f"<{each}>" for each in tags) + content + "".join(f"</{each}>" for each in reversed(tags))


def base_type_of_a(path, dest="SW-BASE-TYPE"):
    """The data type A, whose reference begins in line 6."""
    reference = f"\n<BASE-TYPE-REF DEST='{dest}'>{path}</BASE-TYPE-REF>"
    tags = "SW-DATA-DEF-PROPS/SW-DATA-DEF-PROPS-VARIANTS/SW-DATA-DEF-PROPS-CONDITIONAL"
    return named("IMPLEMENTATION-DATA-TYPE", "A", nested(tags, reference))


def event_with_period(content):
    event = named("PERIODIC-EVENT-TRIGGERING", "E", nested("PERIOD", content))
    return named("SWC-TIMING", "T", nested("TIMING-GUARANTEES", event))


def bsw_event_with_period(period):
    event = named("BSW-TIMING-EVENT", "T", f"\n<PERIOD>{period}</PERIOD>")
    behavior = named("BSW-INTERNAL-BEHAVIOR", "B", nested("EVENTS", event))
    return named("BSW-MODULE-DESCRIPTION", "M", nested("INTERNAL-BEHAVIORS", behavior))


def documentation_with_entry(content):
    table = nested("TABLE/TGROUP/TBODY/ROW/ENTRY", content)
    return named("DOCUMENTATION", "D", nested("DOCUMENTATION-CONTENT", table))


def debouncing(content):
    needs = named("DIAGNOSTIC-EVENT-NEEDS", "N", nested("DIAG-EVENT-DEBOUNCE-ALGORITHM", content))
    dependency = named("SWC-SERVICE-DEPENDENCY", "D", nested("SERVICE-NEEDS", needs))
    behavior = named("SWC-INTERNAL-BEHAVIOR", "B", nested("SERVICE-DEPENDENCYS", dependency))
    return named("APPLICATION-SW-COMPONENT-TYPE", "C", nested("INTERNAL-BEHAVIORS", behavior))


# kind of fault: schema, body, line, column, path, text
WRONG = {
    "unknown element": (
        R4_0_1, "\n  <WIDGET><SHORT-NAME/></WIDGET>",
        6, 3, "/P", "WIDGET is not an element of the format"),
    "element of another parent": (
        R4_0_1, "<RUNNABLE-ENTITY/>",
        5, 1, "/P", "RUNNABLE-ENTITY may not stand in ELEMENTS"),
    "element in a text": (
        R4_0_1, "<SYSTEM><SHORT-NAME>S<E/></SHORT-NAME></SYSTEM>",
        5, 22, "/P/S", "E may not stand in SHORT-NAME"),
    "element of a later release": (
        R4_0_1, "<SERVICE-INTERFACE/>",
        5, 1, "/P", "SERVICE-INTERFACE may stand in ELEMENTS only in Adaptive 17-03 to R25-11, not in 4.0.1"),
    "element of an earlier release": (
        R22_11, "<SW-MC-BASE-TYPE/>",
        5, 1, "/P", "SW-MC-BASE-TYPE may stand in ELEMENTS only in 4.0.1, not in R22-11"),
    "order": (
        R4_3_0, named("SYSTEM", "S", "<PNC-VECTOR-LENGTH>1</PNC-VECTOR-LENGTH>\n<CATEGORY>X</CATEGORY>"),
        6, 1, "/P/S", "CATEGORY must stand before PNC-VECTOR-LENGTH in SYSTEM"),
    "order around a group": (
        R4_3_0, named("SYSTEM", "S", nested(
            "ADMIN-DATA/SDGS/SDG", "<SD>1</SD>\n" + named("SDG-CAPTION", "C"))),
        6, 1, "/P/S/C", "SDG-CAPTION must stand before SD in SDG"),
    "multiplicity": (
        R4_3_0, named("SYSTEM", "S", "<CATEGORY>X</CATEGORY>\n<CATEGORY>X</CATEGORY>"),
        6, 1, "/P/S", "CATEGORY stands more than once in SYSTEM"),
    "two of a choice": (
        R4_3_0, named("CONSTANT-SPECIFICATION", "C", nested(
            "VALUE-SPEC", "<TEXT-VALUE-SPECIFICATION/>\n<NUMERICAL-VALUE-SPECIFICATION/>")),
        6, 1, "/P/C",
        "NUMERICAL-VALUE-SPECIFICATION and TEXT-VALUE-SPECIFICATION may not both stand in VALUE-SPEC"),
    "two of a choice inside a sequence": (
        R4_0_1, named("SW-BASE-TYPE", "B", "<BASE-TYPE-SIZE>8</BASE-TYPE-SIZE>\n"
                      "<MAX-BASE-TYPE-SIZE>8</MAX-BASE-TYPE-SIZE>"),
        6, 1, "/P/B", "MAX-BASE-TYPE-SIZE and BASE-TYPE-SIZE may not both stand in SW-BASE-TYPE"),
    "empty choice": (
        R4_3_0, named("CONSTANT-SPECIFICATION", "C", "\n<VALUE-SPEC/>"),
        6, 1, "/P/C", "VALUE-SPEC lacks one of APPLICATION-RULE-BASED-VALUE-SPECIFICATION, "
        "APPLICATION-VALUE-SPECIFICATION, ARRAY-VALUE-SPECIFICATION ..."),
    "no name": (
        R4_0_1, "\n<SYSTEM UUID='1'/>",
        6, 1, "/P", "SYSTEM lacks SHORT-NAME"),
    "text between elements": (
        R4_0_1, named("SYSTEM", "S", "\n  stray \n"),
        6, 3, "/P/S", 'text in SYSTEM, which holds elements only: "stray"'),
    "unknown attribute": (
        R4_0_1, "<SYSTEM color='red'><SHORT-NAME>S</SHORT-NAME></SYSTEM>",
        5, 1, "/P/S", "SYSTEM has no attribute color"),
    "attribute of a later release": (
        R4_0_1, "<SYSTEM>\n<SHORT-NAME NAME-PATTERN='x'>S</SHORT-NAME></SYSTEM>",
        6, 1, "/P/S", "SHORT-NAME has the attribute NAME-PATTERN only in 4.0.3 to R25-11, not in 4.0.1"),
    "missing attribute": (
        R4_0_1, named("SYSTEM", "S", "<DESC>\n<L-2>x</L-2></DESC>"),
        6, 1, "/P/S", "L-2 lacks the attribute L"),
    "pattern of an attribute": (
        R4_0_1, "<SYSTEM T='today'><SHORT-NAME>S</SHORT-NAME></SYSTEM>",
        5, 1, "/P/S", 'SYSTEM, attribute T: "today" is not of the kind date'),
    "pattern of a text": (
        R4_0_1, "<SYSTEM>\n<SHORT-NAME> 9 \n </SHORT-NAME></SYSTEM>",
        6, 1, "/P/9", 'SHORT-NAME: "9" is not of the kind identifier'),
    "pattern that matches a part only": (
        R4_3_0, named("SYSTEM", "S", "\n<PNC-VECTOR-LENGTH>0x1G</PNC-VECTOR-LENGTH>"),
        6, 1, "/P/S", 'PNC-VECTOR-LENGTH: "0x1G" is not of the kind positive-integer'),
    "length": (
        R4_0_1, named("SYSTEM", "a" * 129),
        5, 9, "/P/" + "a" * 129,
        f'SHORT-NAME: "{"a" * 57}..." has 129 bytes, but identifier has at most 128'),
    "float": (
        R4_3_0, bsw_event_with_period("0x1"),
        6, 1, "/P/M/B/T", 'PERIOD: "0x1" is not of the kind float'),
    "unsigned": (
        R4_3_0, event_with_period("\n<CSE-CODE>-1</CSE-CODE>"),
        6, 1, "/P/T/E", 'CSE-CODE: "-1" is not of the kind unsigned'),
    "enumeration": (
        R4_0_1, named("SW-BASE-TYPE", "B", "\n<BYTE-ORDER>BIG</BYTE-ORDER>"),
        6, 1, "/P/B", 'BYTE-ORDER: "BIG" is not in enum:BYTE-ORDER'),
    "enumeration of an attribute": (
        R4_0_1, named("SYSTEM", "S", "<DESC>\n<L-2 L='XX'>x</L-2></DESC>"),
        6, 1, "/P/S", 'L-2, attribute L: "XX" is not in enum:LANGUAGE'),
    "item of a later release": (
        R4_2_2, named("BSW-MODULE-ENTRY", "E", "\n<CALL-TYPE>CALLOUT</CALL-TYPE>"),
        6, 1, "/P/E", 'CALL-TYPE: "CALLOUT" is in enum:CALL-TYPE only in 4.3.0 to R25-11, not in 4.2.2'),
    "DEST": (
        R4_0_1, base_type_of_a("/X", "UNIT"),
        6, 1, "/P/A", 'BASE-TYPE-REF, attribute DEST: "UNIT" is not in dest:SW-BASE-TYPE'),
    "DEST of a later release": (
        R4_3_0, named("APPLICATION-SW-COMPONENT-TYPE", "C", nested("PORTS", named(
            "P-PORT-PROTOTYPE", "X",
            "\n<PROVIDED-INTERFACE-TREF DEST='SERVICE-INTERFACE'>/X</PROVIDED-INTERFACE-TREF>"))),
        6, 1, "/P/C/X", 'PROVIDED-INTERFACE-TREF, attribute DEST: "SERVICE-INTERFACE" is in '
        "dest:PORT-INTERFACE only in Adaptive 17-03 to R25-11, not in 4.3.0"),
    "DEST of another class": (
        R4_0_1, base_type_of_a("/P/A"),
        6, 1, "/P/A", 'BASE-TYPE-REF, attribute DEST: "SW-BASE-TYPE" does not denote /P/A, '
        "which is IMPLEMENTATION-DATA-TYPE"),
    "reference": (
        R4_0_1, base_type_of_a("/P//B"),
        6, 1, "/P/A", 'BASE-TYPE-REF: "/P//B" is not of the kind reference'),
    "same name": (
        R4_0_1, named("SYSTEM", "S") + "\n" + named("UNIT", "S"),
        6, 1, "/P/S", "the SYSTEM in line 5 has the same path"),
    "same name in two lists of one object": (
        R4_3_0, named("APPLICATION-SW-COMPONENT-TYPE", "C", nested("PORTS", named("P-PORT-PROTOTYPE", "X"))
                      + "<PORT-GROUPS>\n" + named("PORT-GROUP", "X") + "</PORT-GROUPS>"),
        6, 1, "/P/C/X", "the P-PORT-PROTOTYPE in line 5 has the same path"),
    "same name, only one with a variation point": (
        R4_3_0, named("UNIT", "S", "<VARIATION-POINT/>") + "\n" + named("UNIT", "S"),
        6, 1, "/P/S", "the UNIT in line 5 has the same path"),
}


@pytest.fixture
def tables():
    return facts.load(facts.folder())


@needs_tables
@pytest.mark.parametrize(
    "schema, body", [(R4_0_1, RIGHT_4_0_1), (R4_3_0, RIGHT_4_3_0), (R22_11, RIGHT_R22_11)],
    ids=["4.0.1", "4.3.0", "R22-11"])
def test_a_right_file_has_no_fault(tables, schema, body):
    assert tables.check(file_of(schema, body)) == []


@needs_tables
@pytest.mark.parametrize("kind", WRONG)
def test_a_mistake_gives_one_fault_with_its_place(tables, kind):
    schema, body, *expected = WRONG[kind]
    assert [tuple(fault) for fault in tables.check(file_of(schema, body))] == [tuple(expected)]


@needs_tables
@pytest.mark.parametrize("schema, body", [
    (R4_3_0, bsw_event_with_period(" .5e-3 ")), (R4_3_0, bsw_event_with_period("-INF")),
    (R4_3_0, event_with_period("<CSE-CODE>3</CSE-CODE>")), (R4_3_0, named("SYSTEM", "a" * 128)),
    (R4_3_0, named("SYSTEM", "S") + named("SYSTEM", "s")),
    (R4_3_0, base_type_of_a("B")), (R4_3_0, named("BSW-MODULE-ENTRY", "E", "<CALL-TYPE>CALLOUT</CALL-TYPE>")),
])
def test_what_is_just_right_is_no_fault(tables, schema, body):
    assert tables.check(file_of(schema, body)) == []


@needs_tables
def test_a_target_outside_the_file_is_a_fault_only_if_the_file_is_complete(tables):
    data = file_of(R4_3_0, RIGHT_4_3_0)
    assert tables.check(data) == []
    assert tables.check(data, complete=True) == [
        (11, 5, "/P/Speed/value", "TYPE-TREF: no target /Elsewhere/uint8 in the file")]


@needs_tables
@pytest.mark.parametrize("dest", sorted(facts.BASES_OF_ALL))
def test_the_bases_of_all_named_classes_denote_any_target(tables, dest):
    data = nested("ADMIN-DATA/SDGS/SDG", f"<SDX-REF DEST='{dest}'>/P</SDX-REF>")
    assert tables.check(file_of(R4_3_0, named("UNIT", "U", data)), complete=True) == []


@needs_tables
@pytest.mark.parametrize("root, text", [
    ("<MSRSW/>", "the root must be AUTOSAR, not MSRSW"),
    ('<AUTOSAR xmlns="http://autosar.org/3.2.1"/>',
     'the namespace must be http://autosar.org/schema/r4.0, not "http://autosar.org/3.2.1"'),
    ('<AUTOSAR xmlns="http://autosar.org/schema/r4.0"/>', 'xsi:schemaLocation "" names no known release'),
    ('<AUTOSAR xmlns="http://autosar.org/schema/r4.0" xsi:schemaLocation="a AUTOSAR_5-0-0.xsd"/>',
     'xsi:schemaLocation "a AUTOSAR_5-0-0.xsd" names no known release'),
    ('<AUTOSAR xmlns="http://autosar.org/schema/r4.0" xsi:schemaLocation="a AUTOSAR_00051.xsd"/>',
     "AUTOSAR lacks the attribute xmlns:xsi"),
    ("<AUTOSAR", "not well-formed XML: unclosed token"),
], ids=["name", "namespace", "no release", "unknown release", "attribute", "broken"])
def test_a_wrong_root_is_the_only_fault(tables, root, text):
    assert tables.check(b"\n" + root.encode()) == [(2, 1, "/", text)]


@needs_tables
@pytest.mark.parametrize("encoding", ["otf-8", "utf-7"])
def test_an_encoding_that_cannot_be_read_is_a_fault(tables, encoding):
    data = file_of(R4_0_1, "").replace(b"utf-8", encoding.encode(), 1)
    assert tables.check(data) == [(1, 1, "/", f'the encoding "{encoding}" is not supported')]


@needs_tables
def test_the_faults_before_broken_xml_are_kept(tables):
    data = file_of(R4_0_1, "<WIDGET/>\n\u00e4</ELEMENT>")
    assert [(fault.line, fault.column, fault.text) for fault in tables.check(data)] == [
        (5, 1, "WIDGET is not an element of the format"),
        (6, 1, 'text in ELEMENTS, which holds elements only: "\u00e4"'),
        (6, 4, "not well-formed XML: mismatched tag")]


@needs_tables
def test_faults_are_in_the_order_of_the_file(tables):
    body = "<SYSTEM><CATEGORY>9</CATEGORY></SYSTEM>\n" + named("UNIT", "9") + "<WIDGET/>"
    assert [(fault.line, fault.text) for fault in tables.check(file_of(R4_0_1, body))] == [
        (5, "SYSTEM lacks SHORT-NAME"), (5, 'CATEGORY: "9" is not of the kind identifier-unlimited'),
        (6, 'SHORT-NAME: "9" is not of the kind identifier'), (6, "WIDGET is not an element of the format")]


@needs_tables
@pytest.mark.parametrize("schema, name", [
    ("AUTOSAR_4-0-1.xsd", "4.0.1"), ("AUTOSAR_4-0-3_STRICT.xsd", "4.0.3"), ("autosar_00050.xsd", "R21-11"),
    ("schema/AUTOSAR_00054.xsd", "R25-11"), ("AUTOSAR_4-3-1.xsd", "Classic 4.3.1"),
    ("AUTOSAR_4-4-0.xsd", "Classic 4.4.0 / Adaptive 18-10"), ("AUTOSAR_4-5-0.xsd", "R19-11"),
    ("autosar.xsd", "R25-11")])
def test_a_release_is_known_by_all_its_spellings(tables, schema, name):
    release = tables.release_of(f"http://autosar.org/schema/r4.0\n {schema} ")
    assert tables.name_of(release) == name


@needs_tables
def test_a_byte_order_mark_and_a_comment_may_stand_before_the_root(tables):
    data = file_of(R4_0_1, RIGHT_4_0_1).replace(b"?>\n", b"?><!-- x -->\n")
    assert tables.check(b"\xef\xbb\xbf" + data) == []


@needs_tables
def test_an_entry_of_a_table_was_a_bag_before_it_was_a_sequence(tables):
    mixed_up = documentation_with_entry("<VERBATIM/><P/><VERBATIM/><P/>")
    assert tables.check(file_of(R4_2_1, mixed_up)) == []
    assert tables.check(file_of(R4_2_2, mixed_up)) == []
    late = documentation_with_entry("<P/>\n<BGCOLOR>red</BGCOLOR>")
    assert tables.check(file_of(R4_2_2, late)) == [(6, 1, "/P/D", "BGCOLOR must stand before P in ENTRY")]


@needs_tables
def test_a_role_that_was_an_object_before_was_a_sequence_then(tables):
    algorithm = debouncing("<SHORT-NAME>A</SHORT-NAME><CATEGORY>X</CATEGORY>")
    assert tables.check(file_of(R4_0_1, algorithm)) == []
    assert tables.check(file_of(R4_3_0, debouncing(named("DIAG-EVENT-DEBOUNCE-COUNTER-BASED", "A")))) == []


@needs_tables
def test_elements_are_counted(tables):
    counted = tables.elements(file_of(R4_3_0, RIGHT_4_3_0))
    assert (counted["SD"], counted["SHORT-NAME"], counted["AUTOSAR"], counted["SYSTEM"]) == (3, 7, 1, 0)


@needs_tables
def test_the_tables_are_read_once_and_fast():
    start = time.perf_counter()
    facts.Facts(facts.folder())
    assert time.perf_counter() - start < 5
    assert facts.load(facts.folder()) is facts.load(facts.folder())


def test_there_is_no_folder_without_its_tables(tmp_path, monkeypatch):
    monkeypatch.setenv("TARVELON_ARXML_FACTS", str(tmp_path))
    assert facts.folder() is None
    for table in facts.TABLES:
        (tmp_path / table).write_text("")
    assert facts.folder() == tmp_path


def run(*arguments):
    command = [sys.executable, facts.__file__, *arguments]
    return subprocess.run(command, capture_output=True, text=True, check=False)


@needs_tables
def test_the_command_prints_the_faults_of_its_files(tmp_path):
    right, wrong = tmp_path / "right.arxml", tmp_path / "wrong.arxml"
    right.write_bytes(file_of(R4_3_0, RIGHT_4_3_0))
    wrong.write_bytes(file_of(R4_3_0, "<WIDGET/>"))
    assert run(str(right)).returncode == 0
    result = run(str(right), str(wrong))
    assert (result.returncode, result.stdout) == (
        1, f"{wrong}:5:1: /P: WIDGET is not an element of the format\n")
    assert run("--complete", str(right)).returncode == 1
    assert run(str(tmp_path / "none.arxml")).returncode == 2
