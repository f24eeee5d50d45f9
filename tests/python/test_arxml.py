"""ARXML files: what is not changed keeps its bytes, an edit changes its own lines, and problems have a place."""

import difflib
import random
import re
import sys
from pathlib import Path

import pytest

import K7Q
import Tarvelon
from Tarvelon.metamodel import types
from Tarvelon.metamodel.arplatform import behavior, common, component, interface, port

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "arxml"))
import facts  # noqa: E402

def needs_tables(test):
    """Leaves a test out where the tables of the format are missing (TARVELON_ARXML_FACTS)."""
    return test if facts.folder() else None


def fault(reason):
    """Marks a test that shows a known fault."""
    return pytest.mark.xfail(strict=True, reason=reason)


HEAD = """\
<?xml version="1.0" encoding="UTF-8"?>
<AUTOSAR xmlns="http://autosar.org/schema/r4.0" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" \
xsi:schemaLocation="http://autosar.org/schema/r4.0 AUTOSAR_00051.xsd">
"""
DEMO = HEAD + """\
  <AR-PACKAGES>
    <AR-PACKAGE>
      <SHORT-NAME>Types</SHORT-NAME>
      <ELEMENTS>
        <IMPLEMENTATION-DATA-TYPE>
          <SHORT-NAME>uint16</SHORT-NAME>
          <CATEGORY>VALUE</CATEGORY>
        </IMPLEMENTATION-DATA-TYPE>
        <IMPLEMENTATION-DATA-TYPE>
          <SHORT-NAME>uint8</SHORT-NAME>
          <CATEGORY>VALUE</CATEGORY>
        </IMPLEMENTATION-DATA-TYPE>
      </ELEMENTS>
    </AR-PACKAGE>
    <AR-PACKAGE>
      <SHORT-NAME>Demo</SHORT-NAME>
      <ELEMENTS>
        <SENDER-RECEIVER-INTERFACE>
          <SHORT-NAME>SpeedIf</SHORT-NAME>
          <IS-SERVICE>false</IS-SERVICE>
          <DATA-ELEMENTS>
            <VARIABLE-DATA-PROTOTYPE>
              <SHORT-NAME>Speed</SHORT-NAME>
              <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">/Types/uint16</TYPE-TREF>
              <INIT-VALUE>
                <NUMERICAL-VALUE-SPECIFICATION>
                  <VALUE>0x1F</VALUE>
                </NUMERICAL-VALUE-SPECIFICATION>
              </INIT-VALUE>
            </VARIABLE-DATA-PROTOTYPE>
          </DATA-ELEMENTS>
        </SENDER-RECEIVER-INTERFACE>
        <CAN-FRAME>
          <SHORT-NAME>Frame</SHORT-NAME>
          <FRAME-LENGTH>8</FRAME-LENGTH>
        </CAN-FRAME>
        <APPLICATION-SW-COMPONENT-TYPE UUID="42">
          <SHORT-NAME>Sensor</SHORT-NAME>
          <PORTS>
            <R-PORT-PROTOTYPE>
              <SHORT-NAME>In</SHORT-NAME>
              <REQUIRED-COM-SPECS>
                <NONQUEUED-RECEIVER-COM-SPEC>
                  <DATA-ELEMENT-REF DEST="VARIABLE-DATA-PROTOTYPE">/Demo/SpeedIf/Speed</DATA-ELEMENT-REF>
                  <ALIVE-TIMEOUT>0.5</ALIVE-TIMEOUT>
                  <ENABLE-UPDATE>true</ENABLE-UPDATE>
                </NONQUEUED-RECEIVER-COM-SPEC>
              </REQUIRED-COM-SPECS>
              <REQUIRED-INTERFACE-TREF DEST="SENDER-RECEIVER-INTERFACE">/Demo/SpeedIf</REQUIRED-INTERFACE-TREF>
            </R-PORT-PROTOTYPE>
          </PORTS>
          <INTERNAL-BEHAVIORS>
            <SWC-INTERNAL-BEHAVIOR>
              <SHORT-NAME>Behavior</SHORT-NAME>
              <EVENTS>
                <TIMING-EVENT>
                  <SHORT-NAME>Every10ms</SHORT-NAME>
                  <START-ON-EVENT-REF DEST="RUNNABLE-ENTITY">/Demo/Sensor/Behavior/Step</START-ON-EVENT-REF>
                  <PERIOD>1.0E-2</PERIOD>
                </TIMING-EVENT>
              </EVENTS>
              <RUNNABLES>
                <RUNNABLE-ENTITY>
                  <SHORT-NAME>Step</SHORT-NAME>
                  <DATA-READ-ACCESSS>
                    <VARIABLE-ACCESS>
                      <SHORT-NAME>Read</SHORT-NAME>
                      <ACCESSED-VARIABLE>
                        <AUTOSAR-VARIABLE-IREF>
                          <PORT-PROTOTYPE-REF DEST="R-PORT-PROTOTYPE">/Demo/Sensor/In</PORT-PROTOTYPE-REF>
                          <TARGET-DATA-PROTOTYPE-REF DEST="VARIABLE-DATA-PROTOTYPE">/Demo/SpeedIf/Speed\
</TARGET-DATA-PROTOTYPE-REF>
                        </AUTOSAR-VARIABLE-IREF>
                      </ACCESSED-VARIABLE>
                    </VARIABLE-ACCESS>
                  </DATA-READ-ACCESSS>
                  <SYMBOL>step</SYMBOL>
                </RUNNABLE-ENTITY>
                <RUNNABLE-ENTITY>
                  <SHORT-NAME>Stop</SHORT-NAME>
                  <SYMBOL>stop</SYMBOL>
                </RUNNABLE-ENTITY>
              </RUNNABLES>
            </SWC-INTERNAL-BEHAVIOR>
          </INTERNAL-BEHAVIORS>
        </APPLICATION-SW-COMPONENT-TYPE>
      </ELEMENTS>
    </AR-PACKAGE>
  </AR-PACKAGES>
</AUTOSAR>
"""


def document(content, schema="AUTOSAR_00051.xsd"):
    """A file with the content of one package named P."""
    head = HEAD.replace("AUTOSAR_00051.xsd", schema)
    lines = "".join(f"      {line}\n" for line in content.strip("\n").split("\n"))
    return (f"{head}  <AR-PACKAGES>\n    <AR-PACKAGE>\n      <SHORT-NAME>P</SHORT-NAME>\n{lines}"
            "    </AR-PACKAGE>\n  </AR-PACKAGES>\n</AUTOSAR>\n")


def elements(content):
    return document("<ELEMENTS>\n" + "".join(f"  {each}\n" for each in content.strip("\n").split("\n")) +
                    "</ELEMENTS>")


LAYOUTS = {
    "two blanks": lambda text: text,
    "four blanks": lambda text: re.sub("^ +", lambda found: found[0] * 2, text, flags=re.M),
    "tabs": lambda text: re.sub("^ +", lambda found: "\t" * (len(found[0]) // 2), text, flags=re.M),
    "no indentation": lambda text: re.sub("^ +", "", text, flags=re.M),
    "CRLF": lambda text: text.replace("\n", "\r\n"),
    "one line": lambda text: re.sub(">\n *<", "><", text),
    "one line behind the declaration": lambda text: text[:39] + re.sub(">\n *<", "><", text[39:]),
}


@pytest.fixture
def load(tmp_path):
    """Loads a text or bytes."""

    def run(content, **options):
        path = tmp_path / "in.arxml"
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return K7Q.Model.load(path, **options)

    return run


@pytest.fixture
def saved(tmp_path):
    """The bytes of a saved model."""

    def run(model, **options):
        path = tmp_path / "out.arxml"
        model.save(path, **options)
        return path.read_bytes()

    return run


@pytest.fixture
def kept(load, saved):
    """Loads and saves; nothing may change."""

    def run(content, **options):
        content = content if isinstance(content, bytes) else content.encode()
        assert saved(load(content, **options)) == content

    return run


@pytest.fixture
def edit(load, saved):
    """Loads a text, edits the model, saves it; returns the new text."""

    def run(text, change):
        model = load(text)
        change(model)
        return saved(model).decode()

    return run


def changes(before, after):
    """The lines that went and those that came."""
    lines = list(difflib.ndiff(before.splitlines(True), after.splitlines(True)))
    return [[line[2:].rstrip("\n") for line in lines if line[0] == mark] for mark in "-+"]


def places(text, part):
    """Line and column of a part of a text."""
    before = text[:text.index(part)]
    return before.count("\n") + 1, len(before) - before.rfind("\n")


def differences(model, again):
    """What differs, without what no file has: the order of opposites, and objects that only exist in a model."""
    lines = str(Tarvelon.diff(model, again)).splitlines()
    return [line for line in lines if not re.search(r"\.instanceMapping |\.Events: |^no differences", line)]


# The same bytes


@pytest.mark.parametrize("layout", LAYOUTS)
@pytest.mark.parametrize("ending", ["\n", "", "\n\n\n", "  "])
def test_a_file_keeps_its_layout(kept, layout, ending):
    kept(LAYOUTS[layout](DEMO.rstrip("\n") + ending))


@pytest.mark.parametrize("encoding, declared, mark", [
    ("utf-8", "UTF-8", b"\xef\xbb\xbf"), ("utf-8", "utf-8", b""), ("utf-16-le", "UTF-16", b"\xff\xfe"),
    ("utf-16-be", "UTF-16", b"\xfe\xff"), ("latin-1", "ISO-8859-1", b""), ("ascii", "US-ASCII", b"")])
def test_a_file_keeps_its_encoding(kept, load, encoding, declared, mark):
    text = DEMO.replace("UTF-8", declared)
    if encoding != "ascii":
        text = text.replace("<AUTOSAR ", "<!-- Größe -->\n<AUTOSAR ").replace("VALUE</CAT", "Ä</CAT")
        assert load(mark + text.encode(encoding)).find("/Types/uint16").Category == "Ä"
    kept(mark + text.encode(encoding))


@pytest.mark.parametrize("encoding, declared, mark, written", [
    ("utf-8", "UTF-8", b"\xef\xbb\xbf", "€ß"), ("utf-16-le", "UTF-16", b"\xff\xfe", "€ß𝄞"),
    ("utf-16-be", "UTF-16", b"\xfe\xff", "€ß𝄞"), ("latin-1", "ISO-8859-1", b"", "&#8364;ß"),
    pytest.param("ascii", "US-ASCII", b"", "&#8364;&#223;")])
def test_an_edited_file_keeps_its_encoding(load, saved, encoding, declared, mark, written):
    text = DEMO.replace("UTF-8", declared)
    model = load(mark + text.encode(encoding))
    value = "€ß𝄞" if "𝄞" in written else "€ß"
    model.find("/Types/uint16").Category = value
    new = saved(model)
    assert new == mark + text.replace("VALUE", written, 1).encode(encoding)
    assert load(new).find("/Types/uint16").Category == value


def test_a_file_without_a_declaration_is_kept(kept):
    kept(DEMO.partition("\n")[2])


SPELLINGS = [
    ('UUID="42"', "UUID='42'"), ('DEST="R-PORT-PROTOTYPE"', "DEST = 'R-PORT-PROTOTYPE' "),
    ('UUID="42"', 'UUID="42" S="checksum" T="2024-05-01T10:00:00Z"'),
    ('UUID="42"', 'T="2024-05-01" UUID="42"\n   S="&lt;a&gt;"'),
    ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY\n>VALUE</CATEGORY  >"),
    ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY>\n  VALUE\n  </CATEGORY>"),
    ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY>VAL<!-- inside -->UE</CATEGORY>"),
    ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY>VA<![CDATA[LU]]>E</CATEGORY>"),
    ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY>V&#65;L&#x55;E&amp;&lt;&gt;&quot;&apos;</CATEGORY>"),
    ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY></CATEGORY>"), ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY/>"),
    ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY />"), ("<CATEGORY>VALUE</CATEGORY>", "<CATEGORY>  </CATEGORY>"),
    ("<SHORT-NAME>In</SHORT-NAME>", "<SHORT-NAME><![CDATA[In]]></SHORT-NAME>"),
    ("<PERIOD>1.0E-2", "<PERIOD>.01"), ("<PERIOD>1.0E-2", "<PERIOD>0010.0e-3"),
    ("<PERIOD>1.0E-2", "<PERIOD>  0.010  "), ("<PERIOD>1.0E-2", "<PERIOD>INF"),
    ("<PERIOD>1.0E-2", "<PERIOD>1e-2"), ("<PERIOD>1.0E-2", "<PERIOD>+1."), ("0x1F", ".0"), ("0x1F", "INF"),
    ("0x1F", "-INF"), ("0x1F", "NaN"), ("0x1F", "010"), ("0x1F", "0b101"), ("0x1F", "0X1f"), ("0x1F", "+5"),
    ("0x1F", "1.0E-3"), ("0x1F", "18446744073709551615"), ("0x1F", "0.1000000000000000055511151231257827"),
    ("<IS-SERVICE>false", "<IS-SERVICE>0"), ("<ENABLE-UPDATE>true", "<ENABLE-UPDATE>1"),
    ("<AR-PACKAGES>", "<!-- one --><?tool a=b?>\n\n<AR-PACKAGES>"),
    ("</AR-PACKAGES>", "<!-- last --></AR-PACKAGES><?tool?><!-- later -->"),
    ("</AUTOSAR>\n", "</AUTOSAR>\n<!-- behind -->\n<?tool behind?>\n"),
    ("<AUTOSAR ", "<!-- before -->\n<?tool before?>\n<AUTOSAR "),
    ("<PORTS>", "<!-- between -->\n\n\n          <PORTS>   <!-- same line -->"),
    ("</PORTS>", "  <!-- last -->\n          </PORTS>"),
    ("<ELEMENTS>", "<ELEMENTS>\n\n<?tool in a list?>\n\n"),
    ("<CAN-FRAME>", '<VENDOR-THING a="1"><B>x</B>&amp; text <C/></VENDOR-THING>\n        <CAN-FRAME>'),
    ("<SYMBOL>step", "<VENDOR>x</VENDOR><SYMBOL>step"),
    ("<CATEGORY>VALUE</CATEGORY>", '<CATEGORY>VALUE</CATEGORY><ADMIN-DATA><SDGS><SDG GID="a"><SD GID="x">  1 '
     '</SD><SDG GID="b"><SD xml:space="preserve"> 2\n </SD></SDG><SD/></SDG></SDGS></ADMIN-DATA>'),
    ("<CATEGORY>VALUE</CATEGORY>", '<DESC><L-2 L="EN">how <E>fast</E><SUB>now</SUB> it goes</L-2></DESC>'),
    ("/Types/uint16<", "/Somewhere/Else<"), ("/Types/uint16<", "   /Types/uint16\n <"),
    ("/Demo/SpeedIf/Speed<", "/Demo/SpeedIf/Gone<"), ("/Demo/Sensor/In<", "/Demo/Sensor<"),
    (">/Types/uint16<", "><"), (">/Types/uint16</TYPE-TREF>", "/>"),
    (' DEST="SENDER-RECEIVER-INTERFACE"', ' DEST="PORT-INTERFACE"'),
    ("/Types/uint16<", "/Types/&#117;int16<"), ("/Types/uint16<", "/Types/<![CDATA[uint16]]><"),
    ("/Types/uint16<", "/Types/<!-- x -->uint16<"),
    ("AUTOSAR_00051.xsd", "autosar_00051.xsd"), ("AUTOSAR_00051.xsd", "schema/AUTOSAR_00051.xsd"),
    ("AUTOSAR_00051.xsd", "AUTOSAR_00051_STRICT.xsd"), ("r4.0 AUTOSAR_00051.xsd", "r4.0\n\tAUTOSAR_00051.xsd "),
]


@pytest.mark.parametrize("old, new", SPELLINGS, ids=range(len(SPELLINGS)))
def test_every_spelling_is_kept(kept, old, new):
    assert old in DEMO
    kept(DEMO.replace(old, new, 1))


BASES = document("""
<REFERENCE-BASES>
  <REFERENCE-BASE>
    <SHORT-LABEL>types</SHORT-LABEL>
    <IS-DEFAULT>false</IS-DEFAULT>
    <PACKAGE-REF DEST="AR-PACKAGE">/P/Types</PACKAGE-REF>
  </REFERENCE-BASE>
  <REFERENCE-BASE>
    <SHORT-LABEL>default</SHORT-LABEL>
    <IS-DEFAULT>true</IS-DEFAULT>
    <PACKAGE-REF DEST="AR-PACKAGE">/P</PACKAGE-REF>
  </REFERENCE-BASE>
</REFERENCE-BASES>
<ELEMENTS>
  <SENDER-RECEIVER-INTERFACE>
    <SHORT-NAME>If</SHORT-NAME>
    <DATA-ELEMENTS>
      <VARIABLE-DATA-PROTOTYPE>
        <SHORT-NAME>A</SHORT-NAME>
        <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE" BASE="types">uint8</TYPE-TREF>
      </VARIABLE-DATA-PROTOTYPE>
      <VARIABLE-DATA-PROTOTYPE>
        <SHORT-NAME>B</SHORT-NAME>
        <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">Types/uint8</TYPE-TREF>
      </VARIABLE-DATA-PROTOTYPE>
      <VARIABLE-DATA-PROTOTYPE>
        <SHORT-NAME>C</SHORT-NAME>
        <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE" BASE="nowhere">uint8</TYPE-TREF>
      </VARIABLE-DATA-PROTOTYPE>
    </DATA-ELEMENTS>
  </SENDER-RECEIVER-INTERFACE>
</ELEMENTS>
<AR-PACKAGES>
  <AR-PACKAGE>
    <SHORT-NAME>Types</SHORT-NAME>
    <ELEMENTS>
      <IMPLEMENTATION-DATA-TYPE>
        <SHORT-NAME>uint8</SHORT-NAME>
      </IMPLEMENTATION-DATA-TYPE>
      <IMPLEMENTATION-DATA-TYPE>
        <SHORT-NAME>uint16</SHORT-NAME>
      </IMPLEMENTATION-DATA-TYPE>
    </ELEMENTS>
  </AR-PACKAGE>
</AR-PACKAGES>
""")


def test_relative_references_are_resolved_and_kept(load, kept):
    model = load(BASES)
    uint8 = model.find("/P/Types/uint8")
    assert [each.Type for each in model.find("/P/If").DataElements] == [uint8, uint8, None]
    kept(BASES)


def test_the_target_of_a_relative_reference_can_be_renamed_and_changed(edit):
    def change(model):
        model.find("/P/Types/uint8").Name = "byte"
    assert changes(BASES, edit(BASES, change))[1] == [
        '              <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE" BASE="types">byte</TYPE-TREF>',
        '              <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">Types/byte</TYPE-TREF>',
        "              <SHORT-NAME>byte</SHORT-NAME>"]

    def retarget(model):
        model.find("/P/If/A").Type = model.find("/P/Types/uint16")
    assert changes(BASES, edit(BASES, retarget))[1] == [
        '              <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE" BASE="types">uint16</TYPE-TREF>']


def test_a_renamed_package_changes_the_base_and_what_leads_through_it(edit):
    def change(model):
        model.find("/P/Types").Name = "T"
    assert changes(BASES, edit(BASES, change))[1] == [
        '          <PACKAGE-REF DEST="AR-PACKAGE">/P/T</PACKAGE-REF>',
        '              <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">T/uint8</TYPE-TREF>',
        "          <SHORT-NAME>T</SHORT-NAME>"]


# Every object is changed and changed back, so all texts are compared with the values of the model.


def touch(model):
    for each in model.objects():
        for row in type(each).MetaProperty():
            name = row.name()
            if row.isReadOnly() or row.isContainment() or not hasattr(each, name):
                continue
            value = getattr(each, name)
            if isinstance(value, str):
                setattr(each, name, value + "x")
                setattr(each, name, value)
            elif hasattr(value, "append") and len(value) > 1:
                first = value[0]
                del value[0]
                value.insert(0, first)


@pytest.mark.parametrize("old, new", SPELLINGS, ids=range(len(SPELLINGS)))
def test_every_spelling_is_kept_when_all_is_changed_and_changed_back(load, saved, old, new):
    text = DEMO.replace(old, new, 1)
    model = load(text)
    touch(model)
    assert saved(model).decode() == text


@pytest.mark.parametrize("layout", LAYOUTS)
def test_a_file_keeps_its_layout_when_all_is_changed_and_changed_back(load, saved, layout):
    text = LAYOUTS[layout](DEMO)
    model = load(text)
    touch(model)
    assert saved(model).decode() == text


# Edits. Each is made in each layout; the result is the edited text in that layout.

STEP, STOP, BEHAVIOR = "/Demo/Sensor/Behavior/Step", "/Demo/Sensor/Behavior/Stop", "/Demo/Sensor/Behavior"
STOP_LINES = """\
                <RUNNABLE-ENTITY>
                  <SHORT-NAME>Stop</SHORT-NAME>
                  <SYMBOL>stop</SYMBOL>
                </RUNNABLE-ENTITY>
"""
UINT8_LINES = """\
        <IMPLEMENTATION-DATA-TYPE>
          <SHORT-NAME>uint8</SHORT-NAME>
          <CATEGORY>VALUE</CATEGORY>
        </IMPLEMENTATION-DATA-TYPE>
"""


def without(text, first, behind):
    """The text without what stands between two places."""
    begin = text.index(first)
    return text[:begin] + text[text.index(behind, begin):]


def before(text, place, new):
    assert text.count(place) == 1
    return text.replace(place, new + place)


def make(cls, model, name, **values):
    made = cls(model)
    made.Name = name
    for each, value in values.items():
        setattr(made, each, value)
    return made


def set_a_text(model):
    model.find(STOP).symbol = "a<b>&\"c' d"


def set_a_boolean(model):
    model.find("/Demo/SpeedIf").IsService = True


def set_a_number(model):
    model.find("/Demo/Sensor/Behavior/Every10ms").Period = 0.25


def set_another_target(model):
    model.find("/Demo/SpeedIf/Speed").Type = model.find("/Types/uint8")


def set_a_new_value(model):
    model.find(STEP).canBeInvokedConcurrently = True


def set_a_new_category(model):
    model.find("/Demo/Sensor").category = "C"


def unset_a_text(model):
    model.find("/Types/uint8").Category = ""


def unset_a_reference(model):
    model.find("/Demo/SpeedIf/Speed").Type = None


def destroy_an_object(model):
    model.find("/Demo/SpeedIf/Speed").InitValue.destroy()


def rename_a_target(model):
    model.find("/Demo/SpeedIf").Name = "Other"


def rename_a_package(model):
    model.find("/Demo").Name = "D"


def insert_first(model):
    model.find(BEHAVIOR).Runnables.insert(1, make(behavior.Runnable, model, "New", symbol="new"))


def insert_second(model):
    model.find(BEHAVIOR).Runnables.insert(2, make(behavior.Runnable, model, "New", symbol="new"))


def append_with_a_reference(model):
    event = make(behavior.TimingEvent, model, "Late", Period=0.5, StartOnEvent=model.find(STOP))
    model.find(BEHAVIOR).Events.append(event)


def add_a_package(model):
    package = make(common.Package, model, "New")
    package.PackagedElement.append(make(type(model.find("/Types/uint8")), model, "bit"))
    model.roots()[0].PackagedElement.append(package)


def add_the_first_of_a_list(model):
    model.find("/Demo/Sensor").SenderPorts.append(
        make(port.DataSenderPort, model, "Out", Interface=model.find("/Demo/SpeedIf")))


def add_the_first_object_of_a_role(model):
    model.find("/Demo/Sensor").adminData = data = common.AdminData(model)
    data.language = "EN"


def remove(model):
    model.find(STOP).destroy()


def remove_the_last_of_a_list(model):
    model.find("/Demo/Sensor/Behavior/Every10ms").destroy()


def remove_a_package(model):
    model.find("/Types").destroy()


def reorder(model):
    runnables = model.find(BEHAVIOR).Runnables
    stop = runnables[1]
    runnables.remove(stop)
    runnables.insert(1, stop)


def reorder_packages(model):
    packages = model.roots()[0].PackagedElement
    types = packages[0]
    packages.remove(types)
    packages.append(types)


def move(model):
    model.find("/Demo").PackagedElement.append(model.find("/Types/uint8"))


def move_a_target(model):
    model.find("/Types").PackagedElement.append(model.find("/Demo/SpeedIf"))


RUNNABLE_STEP = """\
                <RUNNABLE-ENTITY>
                  <SHORT-NAME>Step"""
RUNNABLE_STOP = RUNNABLE_STEP.replace("Step", "Stop")
NEW_LINES = STOP_LINES.replace("Stop", "New").replace("stop", "new")
INTERFACE_LINES = DEMO[DEMO.index("        <SENDER-RECEIVER-INTERFACE>"):DEMO.index("        <CAN-FRAME>")]
TYPES_LINES = DEMO[DEMO.index("    <AR-PACKAGE>"):DEMO.index("    <AR-PACKAGE>", 500)]
EDITS = [
    (set_a_text, DEMO.replace(">stop<", ">a&lt;b&gt;&amp;\"c' d<")),
    (set_a_boolean, DEMO.replace("SERVICE>false", "SERVICE>true")),
    (set_a_number, DEMO.replace("1.0E-2", "0.25")),
    (set_another_target, DEMO.replace("/Types/uint16", "/Types/uint8")),
    (set_a_new_value, before(DEMO, "                  <DATA-READ-ACCESSS>\n",
     "                  <CAN-BE-INVOKED-CONCURRENTLY>true</CAN-BE-INVOKED-CONCURRENTLY>\n")),
    (set_a_new_category, before(DEMO, "          <PORTS>\n", "          <CATEGORY>C</CATEGORY>\n")),
    (unset_a_text, DEMO.replace(UINT8_LINES, without(UINT8_LINES, "          <CAT", "        </"))),
    (unset_a_reference, without(DEMO, "              <TYPE-TREF", "              <INIT")),
    (destroy_an_object, without(DEMO, "              <INIT", "            </VARIABLE")),
    (rename_a_target, DEMO.replace("SpeedIf", "Other")),
    (rename_a_package, DEMO.replace("/Demo/", "/D/").replace(">Demo<", ">D<")),
    (insert_first, before(DEMO, RUNNABLE_STEP, NEW_LINES)),
    (insert_second, before(DEMO, RUNNABLE_STOP, NEW_LINES)),
    (append_with_a_reference, before(DEMO, "              </EVENTS>\n", """\
                <TIMING-EVENT>
                  <SHORT-NAME>Late</SHORT-NAME>
                  <START-ON-EVENT-REF DEST="RUNNABLE-ENTITY">/Demo/Sensor/Behavior/Stop</START-ON-EVENT-REF>
                  <PERIOD>0.5</PERIOD>
                </TIMING-EVENT>
""")),
    (add_a_package, before(DEMO, "  </AR-PACKAGES>\n", """\
    <AR-PACKAGE>
      <SHORT-NAME>New</SHORT-NAME>
      <ELEMENTS>
        <IMPLEMENTATION-DATA-TYPE>
          <SHORT-NAME>bit</SHORT-NAME>
        </IMPLEMENTATION-DATA-TYPE>
      </ELEMENTS>
    </AR-PACKAGE>
""")),
    (add_the_first_of_a_list, before(DEMO, "          </PORTS>\n", """\
            <P-PORT-PROTOTYPE>
              <SHORT-NAME>Out</SHORT-NAME>
              <PROVIDED-INTERFACE-TREF DEST="SENDER-RECEIVER-INTERFACE">/Demo/SpeedIf</PROVIDED-INTERFACE-TREF>
            </P-PORT-PROTOTYPE>
""")),
    (add_the_first_object_of_a_role, before(DEMO, "          <PORTS>\n", """\
          <ADMIN-DATA>
            <LANGUAGE>EN</LANGUAGE>
          </ADMIN-DATA>
""")),
    (remove, DEMO.replace(STOP_LINES, "")),
    (remove_the_last_of_a_list, without(DEMO, "              <EVENTS>", "              <RUNNABLES>")),
    (remove_a_package, without(DEMO.replace(TYPES_LINES, ""), "              <TYPE-TREF", "              <INIT")),
    (reorder, before(DEMO.replace(STOP_LINES, ""), RUNNABLE_STEP, STOP_LINES)),
    (reorder_packages, before(DEMO.replace(TYPES_LINES, ""), "  </AR-PACKAGES>\n", TYPES_LINES)),
    (move, DEMO.replace(UINT8_LINES, "").replace("        </APPLICATION-SW-COMPONENT-TYPE>\n",
     "        </APPLICATION-SW-COMPONENT-TYPE>\n" + UINT8_LINES)),
    (move_a_target, DEMO.replace(INTERFACE_LINES, "").replace(UINT8_LINES, UINT8_LINES + INTERFACE_LINES)
     .replace("/Demo/SpeedIf", "/Types/SpeedIf")),
]


@pytest.mark.parametrize("layout", LAYOUTS)
@pytest.mark.parametrize("change, wanted", EDITS, ids=[change.__name__ for change, _ in EDITS])
def test_an_edit_changes_its_own_lines(edit, change, wanted, layout):
    lay_out = LAYOUTS[layout]
    assert edit(lay_out(DEMO), change) == lay_out(wanted)


@pytest.mark.parametrize("layout", LAYOUTS)
@pytest.mark.parametrize("change", [change for change, _ in EDITS])
def test_an_edit_that_is_undone_changes_nothing(load, saved, change, layout):
    text = LAYOUTS[layout](DEMO)
    model = load(text)
    model.history = 100
    change(model)
    while model.undo():
        pass
    assert saved(model).decode() == text


@pytest.mark.parametrize("change", [change for change, _ in EDITS])
def test_an_edit_that_is_rolled_back_changes_nothing(load, saved, change):
    model = load(DEMO)
    with model.transaction() as transaction:
        change(model)
        transaction.rollback()
    assert saved(model).decode() == DEMO


@pytest.mark.parametrize("change, wanted", EDITS, ids=[change.__name__ for change, _ in EDITS])
def test_an_edit_that_is_done_again_is_saved(load, saved, change, wanted):
    model = load(DEMO)
    model.history = 100
    change(model)
    while model.undo():
        pass
    saved(model)
    while model.redo():
        pass
    assert saved(model).decode() == wanted


@pytest.mark.parametrize("change", [change for change, _ in EDITS])
def test_an_edited_model_is_the_loaded_model(load, saved, change):
    model = load(DEMO)
    change(model)
    content = saved(model)
    again = load(content)
    assert str(Tarvelon.diff(model, again)) == "no differences"
    assert saved(again) == content


@pytest.mark.parametrize("path", ["/Types", "/Types/uint16", "/Demo", "/Demo/SpeedIf", "/Demo/SpeedIf/Speed",
                                  "/Demo/Sensor", "/Demo/Sensor/In", "/Demo/Sensor/Behavior", STEP])
def test_a_destroyed_object_that_comes_back_has_its_old_text(load, saved, path):
    model = load(DEMO)
    model.history = 1
    model.find(path).destroy()
    assert saved(model, lenient=True).decode() != DEMO
    model.undo()
    assert saved(model).decode() == DEMO


# Edits beside comments, foreign content and blank lines

TYPE = "<IMPLEMENTATION-DATA-TYPE>\n  <SHORT-NAME>{}</SHORT-NAME>\n</IMPLEMENTATION-DATA-TYPE>"
A, B, C = (TYPE.format(each) for each in "ABC")
FRAME = "<CAN-FRAME>\n  <SHORT-NAME>F</SHORT-NAME>\n</CAN-FRAME>"


def add_c(model):
    model.find("/P").PackagedElement.append(make(types.ImplementationDataType, model, "C"))


def insert_c(model):
    model.find("/P").PackagedElement.insert(2, make(types.ImplementationDataType, model, "C"))


def remove_a(model):
    model.find("/P/A").destroy()


def remove_b(model):
    model.find("/P/B").destroy()


def remove_a_and_b(model):
    model.find("/P/A").destroy()
    model.find("/P/B").destroy()


def exchange(model):
    sequence = model.find("/P").PackagedElement
    first = sequence[0]
    sequence.remove(first)
    sequence.append(first)


BESIDE = [
    (add_c, document("<ELEMENTS/>"), elements(C)),
    (add_c, document("<ELEMENTS></ELEMENTS>"), elements(C)),
    (add_c, document("<ELEMENTS>\n</ELEMENTS>"), elements(C)),
    (add_c, document("<CATEGORY>x</CATEGORY>"),
     elements(C).replace("      <ELEMENTS>", "      <CATEGORY>x</CATEGORY>\n      <ELEMENTS>")),
    (add_c, document("<AR-PACKAGES/>"),
     elements(C).replace("      </ELEMENTS>\n", "      </ELEMENTS>\n      <AR-PACKAGES/>\n")),
    (add_c, elements(FRAME), elements(f"{FRAME}\n{C}")),
    (add_c, elements(f"{A}\n{FRAME}"), elements(f"{A}\n{C}\n{FRAME}")),
    (add_c, elements(f"{A}\n<!-- end -->"), elements(f"{A}\n{C}\n<!-- end -->")),
    (insert_c, elements(f"{A}\n<!-- about B -->\n{B}"), elements(f"{A}\n{C}\n<!-- about B -->\n{B}")),
    (remove_a, elements(f"{A}\n<!-- about B -->\n{B}"), elements(f"<!-- about B -->\n{B}")),
    (remove_a, elements(f"<!-- about all -->\n{A}\n{B}"), elements(f"<!-- about all -->\n{B}")),
    (remove_b, elements(f"{A} <!-- about A -->\n{B}"), elements(f"{A} <!-- about A -->")),
    (remove_b, elements(f"{A}\n{B}\n<!-- end -->"), elements(f"{A}\n<!-- end -->")),
    (remove_b, elements(f"{A}\n\n\n{B}\n\n\n{C}"), elements(f"{A}\n\n\n{C}")),
    (remove_a, elements(f"{A}\n{FRAME}"), elements(FRAME)),
    (remove_a_and_b, elements(f"{A}\n{B}"), document("")),
    (remove_a_and_b, elements(f"{A}\n{FRAME}\n{B}"), elements(FRAME)),
    (remove_a_and_b, elements(f"{A}\n<!-- keep -->\n{B}"), elements("<!-- keep -->")),
    (exchange, elements(f"{A}\n<!-- here -->\n{B}"), elements(f"{B}\n<!-- here -->\n{A}")),
    (exchange, elements(f"{A}\n{FRAME}\n{B}\n{C}"), elements(f"{B}\n{FRAME}\n{C}\n{A}")),
]


@pytest.mark.parametrize("change, text, wanted", BESIDE, ids=[
    f"{change.__name__} {number}" for number, (change, *_) in enumerate(BESIDE)])
def test_neighbours_keep_their_place(edit, change, text, wanted):
    text, wanted = (each.replace("      \n", "") for each in (text, wanted))
    assert edit(text, change) == wanted


@pytest.mark.parametrize("text, tail", [("  <AR-PACKAGES/>\n</AUTOSAR>\n", "\n"), ("</AUTOSAR>\n", "\n"),
                                        ("<AR-PACKAGES></AR-PACKAGES></AUTOSAR>", "")])
def test_the_first_package_of_a_file(load, saved, text, tail):
    model = load(HEAD + text)
    model.roots()[0].PackagedElement.append(make(common.Package, model, "P"))
    again = load(saved(model))
    assert [each.Name for each in again.roots()[0].PackagedElement] == ["P"]
    assert saved(model).decode().startswith(HEAD)
    assert saved(model).decode().endswith("</AUTOSAR>" + tail)


def test_a_new_value_keeps_the_attributes_of_its_element(edit):
    text = DEMO.replace("<SYMBOL>stop</SYMBOL>", "<SYMBOL BLUEPRINT-VALUE='x' S=\"1\" >  stop </SYMBOL>")
    assert edit(text, lambda model: setattr(model.find(STOP), "symbol", "new")) == text.replace("  stop ", "new")


def test_a_removed_value_keeps_the_comment_before_it(edit):
    text = DEMO.replace("<SYMBOL>stop", "<!-- c -->\n                  <SYMBOL>stop")
    wanted = text.replace("                  <SYMBOL>stop</SYMBOL>\n", "")
    assert edit(text, lambda model: setattr(model.find(STOP), "symbol", "")) == wanted


def test_a_moved_object_keeps_its_foreign_content(edit):
    text = DEMO.replace("<SYMBOL>stop</SYMBOL>", "<SYMBOL>stop</SYMBOL> <VENDOR>x</VENDOR><!-- c -->")
    lines = STOP_LINES.replace("<SYMBOL>stop</SYMBOL>", "<SYMBOL>stop</SYMBOL> <VENDOR>x</VENDOR><!-- c -->")
    assert edit(text, reorder) == before(text.replace(lines, ""), RUNNABLE_STEP, lines)


@pytest.mark.parametrize("kept", ["<!-- keep -->", "<VENDOR/>"])
def test_a_list_stays_while_it_has_other_content(edit, kept):
    text = DEMO.replace("<EVENTS>", f"<EVENTS>{kept}")
    lines = text[text.index("                <TIMING-EVENT>"):text.index("              </EVENTS>")]
    assert edit(text, remove_the_last_of_a_list) == text.replace(lines, "")


def test_the_instruction_in_a_list_stays_when_its_last_object_goes(edit):
    assert "<?keep?>" in edit(DEMO.replace("<EVENTS>", "<EVENTS><?keep?>"), remove_the_last_of_a_list)


@pytest.mark.parametrize("text", ["<ELEMENTS>\n  <!-- here -->\n</ELEMENTS>", "<ELEMENTS><!-- here --></ELEMENTS>"])
def test_the_comment_in_an_empty_list_stays_when_an_object_comes(edit, text):
    assert "<!-- here -->" in edit(document(text), add_c)


def test_an_empty_value_in_a_wrapper_stays_when_its_object_changes(edit):
    text = DEMO.replace("              <TYPE-TREF", "              <SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS>"
                        "<SW-DATA-DEF-PROPS-CONDITIONAL><DISPLAY-FORMAT/></SW-DATA-DEF-PROPS-CONDITIONAL>"
                        "</SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>\n              <TYPE-TREF")
    assert edit(text, set_another_target) == text.replace("/Types/uint16", "/Types/uint8")


@pytest.mark.parametrize("behind", [
    "", "\n                  <!-- c -->",
    pytest.param("\n                  <VENDOR/>")],
    ids=["nothing", "comment", "unknown"])
def test_a_new_value_stands_where_the_schema_wants_it(edit, behind):
    text = DEMO.replace("<SYMBOL>step</SYMBOL>", f"<SYMBOL>step</SYMBOL>{behind}")
    assert edit(text, set_a_new_value) == before(
        text, "                  <DATA-READ-ACCESSS>\n",
        "                  <CAN-BE-INVOKED-CONCURRENTLY>true</CAN-BE-INVOKED-CONCURRENTLY>\n")


def test_a_new_value_stands_before_the_comment_of_a_removed_one(load, edit):
    text = DEMO.replace("<SYMBOL>step", "<!-- c -->\n                  <SYMBOL>step")

    def change(model):
        model.find(STEP).symbol = ""
        model.find(STEP).canBeInvokedConcurrently = True
    assert load(edit(text, change)).find(STEP).canBeInvokedConcurrently


def test_an_object_is_laid_out_like_its_neighbours_on_one_line(edit):
    line = A.replace("\n", "").replace("  ", "")
    text = document(f"<ELEMENTS>{line}</ELEMENTS>")
    assert edit(text, add_c) == document(f"<ELEMENTS>{line}{line.replace('>A<', '>C<')}</ELEMENTS>")


def retarget_the_base(model):
    model.find("/P").ReferenceBase[0].Package = model.find("/P")


def relabel_the_base(model):
    model.find("/P").ReferenceBase[0].ShortLabel = "other"


def destroy_the_base(model):
    model.find("/P").ReferenceBase[0].destroy()


def move_away_from_the_base(model):
    package = make(common.Package, model, "Q")
    model.roots()[0].PackagedElement.append(package)
    package.PackagedElement.append(model.find("/P/If"))


def give_another_package_the_name_of_the_base(model):
    model.find("/P/Types").Name = "T"
    package = make(common.Package, model, "Types")
    model.find("/P").PackagedElement.append(package)
    package.PackagedElement.append(make(types.ImplementationDataType, model, "new"))
    model.find("/P/If/A").Type = model.find("/P/Types/new")


@pytest.mark.parametrize("change", [retarget_the_base, relabel_the_base, destroy_the_base, move_away_from_the_base,
                                    give_another_package_the_name_of_the_base])
def test_a_relative_reference_keeps_its_target_when_the_base_changes(load, saved, change):
    model = load(BASES)
    change(model)
    wanted = [each.Type and each.Type.qualifiedName for each in model.instances(interface.FlowData)]
    again = load(saved(model))
    assert [each.Type and each.Type.qualifiedName for each in again.instances(interface.FlowData)] == wanted


@pytest.mark.parametrize("text", ["/Elsewhere/x", "uint16"])
def test_a_reference_without_a_target_can_be_set(edit, text):
    text = DEMO.replace("/Types/uint16<", f"{text}<")
    assert changes(text, edit(text, set_another_target)) == [
        [re.search("^.*TYPE-TREF.*$", text, re.M)[0]],
        ['              <TYPE-TREF DEST="IMPLEMENTATION-DATA-TYPE">/Types/uint8</TYPE-TREF>']]


# Problems: each has a line, a column, the path of the object, and what is to be done.


def problems_of(load, text):
    with pytest.raises(K7Q.WrongFile) as caught:
        load(text)
    return caught.value.problems


CALIBRATION = DEMO.replace(
    "              <TYPE-TREF", "              <SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS>"
    "<SW-DATA-DEF-PROPS-CONDITIONAL><SW-CALIBRATION-ACCESS>WRITE</SW-CALIBRATION-ACCESS>"
    "</SW-DATA-DEF-PROPS-CONDITIONAL></SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>\n              <TYPE-TREF")
MODE = elements("""\
<MODE-DECLARATION-GROUP>
  <SHORT-NAME>G</SHORT-NAME>
  <MODE-DECLARATIONS>
    <MODE-DECLARATION>
      <SHORT-NAME>M</SHORT-NAME>
      <VALUE>NUMBER</VALUE>
    </MODE-DECLARATION>
  </MODE-DECLARATIONS>
</MODE-DECLARATION-GROUP>""")
CALIBRATION_ITEMS = "expected one of READ-ONLY, READ-WRITE, NOT-ACCESSIBLE, got 'WRITE'"
# (text, what is replaced, by what, where the problem is: the beginning of this text, what is said)
WRONG_CONTENT = [
    (DEMO, "<SHORT-NAME>SpeedIf</SHORT-NAME>", "", "<SENDER-RECEIVER-INTERFACE>",
     "/Demo: <SENDER-RECEIVER-INTERFACE> has no SHORT-NAME; add one"),
    (DEMO, "<SHORT-NAME>uint8<", "<SHORT-NAME  >uint16<", "<SHORT-NAME  >",
     "/Types/uint16: the SHORT-NAME 'uint16' stands twice here; rename one of the elements"),
    (DEMO, "<SHORT-NAME>Sensor<", "<SHORT-NAME  >SpeedIf<", "<SHORT-NAME  >",
     "/Demo/SpeedIf: the SHORT-NAME 'SpeedIf' stands twice here; rename one of the elements"),
    (DEMO, "<SYMBOL>stop</SYMBOL>", "<SYMBOL>stop</SYMBOL><CATEGORY>c</CATEGORY>", "<CATEGORY>c",
     "/Demo/Sensor/Behavior/Stop: <CATEGORY> stands in the wrong place; move it before <SYMBOL>"),
    (DEMO, "<SYMBOL>stop</SYMBOL>", "<SYMBOL>stop</SYMBOL><SYMBOL>more</SYMBOL>", "<SYMBOL>more",
     "/Demo/Sensor/Behavior/Stop: <SYMBOL> stands twice; remove all but one"),
    (DEMO, "<PORTS>", "<PORTS></PORTS><PORTS>", "<PORTS>\n",
     "/Demo/Sensor: <PORTS> stands twice; remove all but one"),
    (DEMO.replace("00051", "4-0-1"), "VALUE</CATEGORY>",
     "VALUE</CATEGORY><BLUEPRINT-POLICYS></BLUEPRINT-POLICYS>",
     "<BLUEPRINT", "/Types/uint16: <BLUEPRINT-POLICYS> is not in the release 4.0.1 of the file; "
     "it is in 4.2.1 to R25-11"),
]
WRONG_VALUES = [
    (DEMO, "SERVICE>false", "SERVICE>no", "no</IS", "/Demo/SpeedIf", "IsService: expected true or false, got 'no'"),
    (DEMO, "1.0E-2", "ten", "ten<", "/Demo/Sensor/Behavior/Every10ms", "Period: expected a number, got 'ten'"),
    (DEMO, "1.0E-2", "0,01", "0,01<", "/Demo/Sensor/Behavior/Every10ms", "Period: expected a number, got '0,01'"),
    (DEMO, "1.0E-2", "1e999", "1e999<", "/Demo/Sensor/Behavior/Every10ms",
     "Period: expected a number, got '1e999', which is out of range"),
    (MODE, "NUMBER", "99999999999", "99999999999", "/P/G/M", "Value: expected a whole number from -2147483648 to "
     "2147483647, got '99999999999', which is out of range"),
    (MODE, "NUMBER", "1.5", "1.5<", "/P/G/M",
     "Value: expected a whole number from -2147483648 to 2147483647, got '1.5'"),
    (CALIBRATION, "WRITE", "WRITE", "WRITE<", "/Demo/SpeedIf/Speed", f"SwCalibrationAccess: {CALIBRATION_ITEMS}"),
]


@pytest.mark.parametrize("text, old, new, at, said", WRONG_CONTENT, ids=range(len(WRONG_CONTENT)))
def test_wrong_content_is_refused_with_its_place(load, text, old, new, at, said):
    text = text.replace(old, new, 1)
    (line, column, problem), = problems_of(load, text)
    assert (line, column) == places(text, at)
    assert problem == said


@pytest.mark.parametrize("text, old, new, at, path, said", WRONG_VALUES, ids=range(len(WRONG_VALUES)))
def test_a_wrong_value_is_refused_with_its_place(load, text, old, new, at, path, said):
    text = text.replace(old, new, 1)
    (line, column, problem), = problems_of(load, text)
    assert (line, column) == places(text, at)
    assert problem.endswith(said)


@pytest.mark.parametrize("text, old, new, at, path, said", WRONG_VALUES, ids=range(len(WRONG_VALUES)))
def test_a_wrong_value_is_refused_with_the_path_of_its_object(load, text, old, new, at, path, said):
    (_, _, problem), = problems_of(load, text.replace(old, new, 1))
    assert problem.startswith(path)


@pytest.mark.parametrize("old, new, said", [
    ("autosar.org/schema/r4.0", "autosar.org/3.1.4",
     "the file is of AUTOSAR 3 (namespace 'http://autosar.org/3.1.4'), which is another format; "
     "convert it to AUTOSAR 4 first"),
    ('xmlns="http://autosar.org/schema/r4.0"', 'xmlns="urn:x"',
     "expected the namespace 'http://autosar.org/schema/r4.0', got 'urn:x'"),
    ("AUTOSAR_00051", "AUTOSAR_00099",
     "the schema 'AUTOSAR_00099.xsd' is none of the releases 4.0.1 to R25-11; the file is taken for R22-11"),
])
def test_another_format_is_refused(load, old, new, said):
    (_, _, problem), = problems_of(load, DEMO.replace(old, new))
    assert problem == said


@pytest.mark.parametrize("old, new", [('xmlns="http://autosar.org/schema/r4.0"', 'xmlns="urn:x"'),
                                      ("AUTOSAR_00051", "AUTOSAR_00099")])
def test_another_format_is_refused_at_the_root_element(load, old, new):
    text = DEMO.replace(old, new)
    (line, _, _), = problems_of(load, text)
    assert line == places(text, "<AUTOSAR")[0]


def test_an_unknown_root_element_is_named(load):
    text = DEMO.replace("<AUTOSAR ", "<AUTOSARX ").replace("</AUTOSAR>", "</AUTOSARX>")
    (line, _, problem), = problems_of(load, text)
    assert line == 2 and "AUTOSARX" in problem


@pytest.mark.parametrize("old, new, at, said", [
    ("</PORTS>", "</PORT>", "</PORT>", "expected the end tag </PORTS>"),
    ('UUID="42"', 'UUID="42" UUID="42"', None, "an attribute stands twice"),
    ("VALUE<", "&foo;<", "&foo;", "'&' begins an unknown reference; write '&amp;' for the character itself"),
    ("VALUE<", "a & b<", "& b", "'&' begins an unknown reference; write '&amp;' for the character itself"),
    ("VALUE<", "a\x01<", "\x01", "the text has a character that XML does not allow"),
    ("</AUTOSAR>\n", "</AUTOSAR>x", "x\0", "expected nothing behind the root element"),
    ("</AUTOSAR>\n", "", None, "the file ends inside of <AUTOSAR>"),
])
def test_what_is_not_well_formed_is_refused(load, old, new, at, said):
    text = DEMO.replace(old, new, 1)
    for lenient in (False, True):
        with pytest.raises(K7Q.WrongFile) as caught:
            load(text, lenient=lenient)
        (line, column, problem), = caught.value.problems
        assert problem == f"the file is not well-formed XML: {said}"
        if at is not None:
            assert (line, column) == places(text + "\0", at)


@pytest.mark.parametrize("declaration", ["<!DOCTYPE AUTOSAR>", '<!DOCTYPE AUTOSAR [<!ENTITY x "y">]>'])
def test_a_document_type_is_refused(load, declaration):
    text = DEMO.replace("<AUTOSAR ", f"{declaration}\n<AUTOSAR ")
    for lenient in (False, True):
        with pytest.raises(K7Q.WrongFile, match="line 2, column .*document type.*remove"):
            load(text, lenient=lenient)


def nested(depth):
    return (HEAD + "<AR-PACKAGES><AR-PACKAGE><SHORT-NAME>a</SHORT-NAME>" * depth +
            "</AR-PACKAGE></AR-PACKAGES>" * depth + "</AUTOSAR>\n")


@pytest.mark.parametrize("depth", [500, 5000, 50000])
def test_too_deep_nesting_is_refused(load, depth):
    with pytest.raises(K7Q.WrongFile, match="elements are nested deeper than 1000 levels"):
        load(nested(depth), lenient=True)


def test_the_deepest_nesting_is_kept(kept):
    kept(nested(499))


def wrong_in_many_ways():
    return CALIBRATION.replace("1.0E-2", "ten").replace("<SHORT-NAME>uint8<", "<SHORT-NAME>uint16<") \
        .replace("SERVICE>false", "SERVICE>no").replace("<SHORT-NAME>Every10ms</SHORT-NAME>", "") \
        .replace("<SYMBOL>stop</SYMBOL>", "<SYMBOL>stop</SYMBOL><CATEGORY>c</CATEGORY>")


def test_all_problems_are_told_at_once_in_the_order_of_the_file(load):
    found = problems_of(load, wrong_in_many_ways())
    told = ["'uint16' stands twice", "IsService:", "SwCalibrationAccess:", "has no SHORT-NAME", "Period:",
            "<CATEGORY> stands in the wrong place"]
    assert len(found) == len(told)
    assert all(part in each.text for part, each in zip(told, found))
    assert found == tuple(sorted(found, key=lambda each: each[:2]))


def test_a_lenient_load_has_the_rest_and_lists_the_problems(load):
    text = wrong_in_many_ways()
    model = load(text, lenient=True)
    assert model.problems == problems_of(load, text)
    assert [each.Name for each in model.find("/Types").PackagedElement] == ["uint16", "uint16"]
    assert model.find("/Demo/SpeedIf/Speed").Type == model.find("/Types/uint16")
    assert model.find(STOP).symbol == "stop"


WRONG = [text.replace(old, new, 1) for text, old, new, *_ in WRONG_CONTENT + WRONG_VALUES] + [wrong_in_many_ways()]
LOST = {"<PORTS></PORTS>": "the empty list is lost"}


@pytest.mark.parametrize("text", WRONG, ids=range(len(WRONG)))
def test_wrong_content_is_kept_when_nothing_changes(kept, text):
    kept(text, lenient=True)


@pytest.mark.parametrize("text", [
    pytest.param(text, id=str(number), marks=[fault(reason) for part, reason in LOST.items() if part in text])
    for number, text in enumerate(WRONG)])
def test_wrong_content_is_kept_when_its_object_is_changed_and_changed_back(load, saved, text):
    model = load(text, lenient=True)
    touch(model)
    assert saved(model).decode() == text


@pytest.mark.parametrize("new", [
    pytest.param("<SHORT-NAME/>", id="empty"),
    pytest.param("<SHORT-NAME>&#117;int16</SHORT-NAME>", id="the same in another spelling"),
])
def test_a_wrong_name_is_refused(load, new):
    problem, = problems_of(load, DEMO.replace("<SHORT-NAME>uint8</SHORT-NAME>", new))
    assert "SHORT-NAME" in problem.text


@pytest.mark.parametrize("old, new", [
    pytest.param(' DEST="SENDER-RECEIVER-INTERFACE"', "", id="no DEST"),
    pytest.param(' DEST="SENDER-RECEIVER-INTERFACE"', ' DEST="FOO"', id="unknown DEST"),
    pytest.param('              <REQUIRED-INTERFACE-TREF DEST="SENDER-RECEIVER-INTERFACE">/Demo/SpeedIf'
                 '</REQUIRED-INTERFACE-TREF>\n', "", id="no interface"),
])
def test_a_port_that_no_class_fits_is_foreign_content(load, old, new):
    assert old in DEMO
    assert "R-PORT-PROTOTYPE" in load(DEMO.replace(old, new)).foreign()


def test_a_port_whose_interface_is_destroyed_is_not_lost_silently(load, saved):
    model = load(DEMO)
    model.find("/Demo/SpeedIf").destroy()
    try:
        again = load(saved(model), lenient=True)
    except K7Q.WrongValue:
        return
    assert again.find("/Demo/Sensor/In") is not None or again.problems


# Releases

RELEASES = {
    "4.0.1": "AUTOSAR_4-0-1.xsd", "4.0.2": "AUTOSAR_4-0-2.xsd", "4.0.3": "AUTOSAR_4-0-3.xsd",
    "4.1.1": "AUTOSAR_4-1-1.xsd", "4.1.2": "AUTOSAR_4-1-2.xsd", "4.1.3": "AUTOSAR_4-1-3.xsd",
    "4.2.1": "AUTOSAR_4-2-1.xsd", "4.2.2": "AUTOSAR_4-2-2.xsd", "4.3.0": "AUTOSAR_4-3-0.xsd",
    "R17-03": "AUTOSAR_00042.xsd", "R17-10": "AUTOSAR_00043.xsd", "4.3.1": "AUTOSAR_00044.xsd",
    "R18-03": "AUTOSAR_00045.xsd", "4.4.0": "AUTOSAR_00046.xsd", "R19-03": "AUTOSAR_00047.xsd",
    "R19-11": "AUTOSAR_00048.xsd", "R20-11": "AUTOSAR_00049.xsd", "R21-11": "AUTOSAR_00050.xsd",
    "R22-11": "AUTOSAR_00051.xsd", "R23-11": "AUTOSAR_00052.xsd", "R24-11": "AUTOSAR_00053.xsd",
    "R25-11": "AUTOSAR_00054.xsd"}


def small_model():
    """A model made of objects alone, of what every release has."""
    model = K7Q.Model.create()
    root = common.AUTOSAR(model)
    package = make(common.Package, model, "P")
    root.PackagedElement.append(package)
    number = make(types.ImplementationDataType, model, "uint8", Category="VALUE")
    speed = make(interface.SenderReceiverInterface, model, "Speed", IsService=False)
    speed.DataElements.append(make(interface.FlowData, model, "value", Type=number))
    sensor = make(component.AtomicComponent, model, "Sensor", Kind=component.AtomicComponentKind.Application)
    package.PackagedElement += [number, speed, sensor]
    sensor.SenderPorts.append(make(port.DataSenderPort, model, "Out", Interface=speed))
    sensor.Behavior = make(behavior.ApplicationComponentBehavior, model, "Behavior")
    sensor.Behavior.Runnables.append(make(behavior.Runnable, model, "Step", symbol="step"))
    sensor.Behavior.Events.append(make(behavior.TimingEvent, model, "Timer", Period=0.01,
                                       StartOnEvent=sensor.Behavior.Runnables[0]))
    return model


@pytest.mark.parametrize("release", RELEASES)
def test_a_new_model_is_saved_in_every_release(load, saved, release):
    model = small_model()
    content = saved(model, release=release)
    assert f'{RELEASES[release]}"'.encode() in content
    again = load(content)
    assert differences(model, again) == []
    assert saved(again) == content


@needs_tables
@pytest.mark.parametrize("release", RELEASES)
def test_a_saved_model_is_right_in_every_release(load, saved, release):
    known = facts.load(facts.folder())
    assert known.check(saved(small_model(), release=release), complete=True) == []
    assert known.check(saved(load(DEMO), release=release), complete=True) == []


@needs_tables
def test_the_releases_are_those_of_the_schemas():
    assert [each[0] for each in facts.load(facts.folder()).releases] == [
        each.lower().removesuffix(".xsd") for each in RELEASES.values()]


@pytest.mark.parametrize("layout", LAYOUTS)
@pytest.mark.parametrize("release", RELEASES)
def test_another_release_changes_the_name_of_the_schema_alone(load, saved, release, layout):
    text = LAYOUTS[layout](DEMO)
    content = saved(load(text), release=release).decode()
    assert content == text.replace("AUTOSAR_00051.xsd", RELEASES[release])
    assert saved(load(content), release="R22-11").decode() == text


def test_a_new_model_has_the_usual_release(saved):
    assert b"AUTOSAR_00051.xsd" in saved(small_model())


def test_a_loaded_model_keeps_its_release(load, saved):
    text = DEMO.replace("AUTOSAR_00051", "AUTOSAR_4-2-2")
    model = load(text)
    set_a_new_value(model)
    assert b"AUTOSAR_4-2-2.xsd" in saved(model)


NEWER = DEMO.replace("        <CAN-FRAME>", """\
        <SERVICE-INTERFACE>
          <SHORT-NAME>Service</SHORT-NAME>
        </SERVICE-INTERFACE>
        <CAN-FRAME>""").replace("VALUE</CATEGORY>\n", """\
VALUE</CATEGORY>
          <BLUEPRINT-POLICYS></BLUEPRINT-POLICYS>
""", 1)


def test_what_a_release_does_not_have_is_refused_and_nothing_is_written(load, tmp_path):
    model = load(NEWER)
    with pytest.raises(K7Q.WrongValue) as caught:
        model.save(tmp_path / "new.arxml", release="4.0.3")
    text = str(caught.value)
    assert text.startswith("cannot save as ARXML 4.0.3: 2 problems, so nothing was written\n")
    assert "/Types/uint16: <BLUEPRINT-POLICYS> is not in the release 4.0.3; it is in 4.2.1 to R25-11" in text
    assert "/Demo/Service: " in text
    assert not (tmp_path / "new.arxml").exists()


def test_a_class_that_a_release_does_not_have_is_refused_with_its_releases(load, saved):
    with pytest.raises(K7Q.WrongValue, match="/Demo/Service: .*R17-03 to R25-11"):
        saved(load(NEWER), release="4.0.3")


def test_what_a_release_does_not_have_is_left_out_of_a_lenient_file(load, saved):
    assert saved(load(NEWER), release="4.0.3", lenient=True).decode() == DEMO.replace("00051", "4-0-3")


@pytest.mark.parametrize("release", ["4.0.4", "R22", "AUTOSAR", "5"])
def test_an_unknown_release_is_refused_with_the_known_ones(load, tmp_path, release):
    with pytest.raises(K7Q.WrongValue, match=f"there is no release '{release}'; there are {', '.join(RELEASES)}"):
        load(DEMO).save(tmp_path / "new.arxml", release=release)
    assert not (tmp_path / "new.arxml").exists()


@pytest.mark.parametrize("name", ["a.txt", "a.xml", "a.arxml.bak"])
def test_an_unknown_suffix_is_refused_with_the_known_ones(load, tmp_path, name):
    with pytest.raises(K7Q.WrongValue, match=r"expected the suffix '\.arxml' or '\.xmi'"):
        load(DEMO).save(tmp_path / name)
    assert not (tmp_path / name).exists()


def test_a_release_is_refused_for_another_format(load, tmp_path):
    with pytest.raises(K7Q.WrongValue, match="a release is only for .arxml files"):
        load(DEMO).save(tmp_path / "a.xmi", release="4.3.0")


def test_objects_outside_of_the_root_are_refused(load, saved):
    model = load(DEMO)
    make(common.Package, model, "Lost")
    with pytest.raises(K7Q.WrongValue, match="1 object has no owner, the first of .*Package"):
        saved(model)



# Random editing


class Editor:
    """Makes random edits that a correct file can have."""

    def __init__(self, model, chance):
        self.model, self.chance, self.number = model, chance, 0

    def name(self):
        self.number += 1
        return f"n{self.number}_{self.chance.randrange(10**6)}"

    def some(self, cls):
        found = self.model.instances(cls)
        return self.chance.choice(found) if found else None

    def place(self, sequence, made):
        """Inserts anywhere; a file has all packages of a package behind its other elements."""
        elements = sum(not isinstance(each, common.Package) for each in sequence)
        first, last = (elements, len(sequence)) if isinstance(made, common.Package) else (0, elements)
        sequence.insert(self.chance.randint(first, last) + 1, made)

    def add_package(self):
        owner = self.chance.choice([self.model.roots()[0], self.some(common.Package)])
        self.place(owner.PackagedElement, make(common.Package, self.model, self.name()))

    def add_type(self):
        made = make(types.ImplementationDataType, self.model, self.name(), Category="VALUE")
        self.place(self.some(common.Package).PackagedElement, made)

    def add_interface(self):
        made = make(interface.SenderReceiverInterface, self.model, self.name())
        self.place(self.some(common.Package).PackagedElement, made)

    def add_data(self):
        if owner := self.some(interface.SenderReceiverInterface):
            self.place(owner.DataElements, make(interface.FlowData, self.model, self.name(),
                                                Type=self.some(types.ImplementationDataType)))

    def add_component(self):
        made = make(component.AtomicComponent, self.model, self.name(),
                    Kind=component.AtomicComponentKind.Application)
        self.place(self.some(common.Package).PackagedElement, made)
        made.Behavior = make(behavior.ApplicationComponentBehavior, self.model, self.name())

    def add_port(self):
        owner, target = self.some(component.AtomicComponent), self.some(interface.SenderReceiverInterface)
        if owner and target:
            kind, ports = self.chance.choice([(port.DataReceiverPort, owner.ReceiverPorts),
                                              (port.DataSenderPort, owner.SenderPorts)])
            self.place(ports, make(kind, self.model, self.name(), Interface=target))

    def add_runnable(self):
        if owner := self.some(behavior.ApplicationComponentBehavior):
            made = make(behavior.Runnable, self.model, self.name(), symbol=self.name())
            self.place(owner.Runnables, made)

    def add_event(self):
        if owner := self.some(behavior.ApplicationComponentBehavior):
            made = make(behavior.TimingEvent, self.model, self.name(), Period=self.chance.random())
            if len(owner.Runnables):
                made.StartOnEvent = self.chance.choice(list(owner.Runnables))
            self.place(owner.Events, made)

    def add_area(self):
        if owner := self.some(behavior.ApplicationComponentBehavior):
            self.place(owner.exclusiveArea, make(behavior.ExclusiveArea, self.model, self.name()))

    def change_areas(self):
        each, area = self.some(behavior.Runnable), self.some(behavior.ExclusiveArea)
        if each and area:
            if area in each.canEnterExclusiveArea:
                each.canEnterExclusiveArea.remove(area)
            else:
                self.place(each.canEnterExclusiveArea, area)

    def rename(self):
        self.chance.choice([each for each in self.model.objects() if getattr(each, "Name", "")]).Name = self.name()

    def set_values(self):
        if each := self.some(behavior.Runnable):
            each.symbol = self.chance.choice(["", "s", self.name()])
            each.canBeInvokedConcurrently = self.chance.random() < 0.5
        if each := self.some(behavior.TimingEvent):
            each.Period = self.chance.choice([0.01, 1, 1e-9, 12345.5, self.chance.random()])
        if each := self.some(types.ImplementationDataType):
            each.Category = self.chance.choice(["", "VALUE", "ARRAY"])

    def set_target(self):
        if each := self.some(interface.FlowData):
            each.Type = self.chance.choice([None, self.some(types.ImplementationDataType)])
        if each := self.some(behavior.TimingEvent):
            each.StartOnEvent = self.chance.choice([None, *each.Owner.Runnables])

    def destroy(self):
        kinds = (common.Package, types.ImplementationDataType, interface.SenderReceiverInterface, interface.FlowData,
                 port.DataReceiverPort, port.DataSenderPort, behavior.Runnable, behavior.TimingEvent)
        found = [each for kind in kinds for each in self.model.instances(kind)]
        if not found:
            return
        each = self.chance.choice(found)
        for user in [] if isinstance(each, common.Package) else each.referrers():
            if isinstance(user[0], (port.DataReceiverPort, port.DataSenderPort)):
                return  # a port without an interface has no class in a file
        if not isinstance(each, common.Package) or not len(each.PackagedElement):
            each.destroy()

    def move(self):
        each = self.some(self.chance.choice([types.ImplementationDataType, interface.SenderReceiverInterface,
                                             component.AtomicComponent, common.Package]))
        owner = self.some(common.Package)
        above = owner
        while above is not None and above != each:
            above = above.Owner
        if each and above is None and each.Owner != owner:
            self.place(owner.PackagedElement, each)

    def move_a_runnable(self):
        each, owner = self.some(behavior.Runnable), self.some(behavior.ApplicationComponentBehavior)
        if each and owner and each.Owner != owner:
            each.Events.clear()
            self.place(owner.Runnables, each)

    def reorder(self):
        owner = self.some(self.chance.choice([common.Package, behavior.ApplicationComponentBehavior]))
        if owner:
            sequence = owner.PackagedElement if isinstance(owner, common.Package) else owner.Runnables
            if len(sequence) > 1:
                each = self.chance.choice(list(sequence))
                sequence.remove(each)
                self.place(sequence, each)

    def undo(self):
        for _ in range(self.chance.randint(1, 5)):
            self.model.undo()
        if self.chance.random() < 0.3:
            self.model.redo()

    def step(self):
        name = self.chance.choice(STEPS)
        if name == "undo":
            return self.undo()
        with self.model.transaction() as transaction:
            getattr(self, name)()
            if self.chance.random() < 0.1:
                transaction.rollback()


STEPS = [name for name, each in vars(Editor).items()
         if callable(each) and name not in ("__init__", "name", "some", "place", "step")]
# Comments, foreign content and references without a target, which must survive all edits.
WILD = DEMO.replace("        <CAN-FRAME>", "        <!-- a frame -->\n        <CAN-FRAME>") \
    .replace("              </EVENTS>", "                <!-- more events -->\n              </EVENTS>")


@pytest.mark.parametrize("layout", ["two blanks", "CRLF", "one line"])
@pytest.mark.parametrize("seed", range(20))
def test_a_randomly_edited_model_is_saved_as_it_is(load, saved, seed, layout):
    known = facts.load(facts.folder()) if facts.folder() else None
    chance = random.Random(seed)
    model = load(LAYOUTS[layout](WILD))
    for _ in range(8):
        model.history = 100
        editor = Editor(model, chance)
        for _ in range(chance.randint(1, 12)):
            editor.step()
        content = saved(model)
        again = load(content)
        assert differences(model, again) == []
        assert saved(again) == content
        if known:
            assert known.check(content, complete=True) == []
        if layout != "one line":
            assert not re.search(rb"\n[ \r]*\n", content), "a blank line"
        if chance.random() < 0.5:
            model = again


# Copies


def test_a_copy_of_a_model_is_saved_with_the_same_bytes(load, saved):
    assert saved(load(DEMO).clone()).decode() == DEMO


def test_a_copy_of_an_object_has_its_foreign_content(load, saved):
    text = DEMO.replace("<SYMBOL>", "<VENDOR>x</VENDOR><SYMBOL>")
    model = load(text)
    copy = model.find(STEP).clone()
    copy.Name = "Copy"
    model.find("/Demo/Sensor/Behavior").Runnables.append(copy)
    content = saved(model).decode()
    assert content.count("<VENDOR>x</VENDOR>") == text.count("<VENDOR>x</VENDOR>") + 1
    assert load(content).find("/Demo/Sensor/Behavior/Copy").foreign[0].tag == "VENDOR"


def test_the_original_of_a_copy_keeps_its_place(load, saved):
    model = load(DEMO)
    copy = model.find("/Demo").clone()
    copy.Name = "Copy"
    model.roots()[0].PackagedElement.append(copy)
    assert saved(model).decode().startswith(DEMO[:DEMO.rindex("    </AR-PACKAGE>")])


# Names


@pytest.mark.parametrize("name", ["a b", "1a", "_a", "ä", "a/b", "<a>", "a" * 129])
def test_a_name_that_no_file_can_have_is_refused(load, saved, name):
    model = load(DEMO)
    model.find(STEP).Name = name
    with pytest.raises(K7Q.WrongValue, match="cannot be a SHORT-NAME"):
        saved(model)


def test_an_empty_name_is_refused(load, saved):
    model = load(DEMO)
    model.find(STEP).Name = ""
    with pytest.raises(K7Q.WrongValue, match="the name is empty; set Name"):
        saved(model)


def test_a_reference_in_another_spelling_finds_its_target(load, kept):
    kept(DEMO.replace(">/Types/uint16<", ">/Types/&#117;int16<"))
    assert load(DEMO.replace(">/Types/uint16<", ">/Types/&#117;int16<")).unresolved() == []


FORMULA = """\
<AR-PACKAGE>
  <SHORT-NAME>C</SHORT-NAME>
  <ELEMENTS>
    <SW-SYSTEMCONST>
      <SHORT-NAME>X</SHORT-NAME>
    </SW-SYSTEMCONST>
    <SENDER-RECEIVER-INTERFACE>
      <SHORT-NAME>I</SHORT-NAME>
      <DATA-ELEMENTS>
        <VARIABLE-DATA-PROTOTYPE>
          <SHORT-NAME>D</SHORT-NAME>
          <VARIATION-POINT>
            <SHORT-LABEL>v</SHORT-LABEL>
            <SW-SYSCOND BINDING-TIME="PRE-COMPILE-TIME"><SYSC-REF DEST="SW-SYSTEMCONST">/C/X</SYSC-REF> &gt; 1</SW-SYSCOND>
          </VARIATION-POINT>
        </VARIABLE-DATA-PROTOTYPE>
      </DATA-ELEMENTS>
    </SENDER-RECEIVER-INTERFACE>
  </ELEMENTS>
</AR-PACKAGE>
"""


@pytest.mark.parametrize("path, name, old, new", [("/C", "D", "/C/X", "/D/X"), ("/C/X", "Y", "X<", "Y<")])
def test_a_formula_follows_the_constants_that_it_refers_to(load, saved, path, name, old, new):
    text = DEMO.replace("  <AR-PACKAGES>\n", "  <AR-PACKAGES>\n" + FORMULA, 1)
    model = load(text)
    model.find(path).Name = name
    content = saved(model).decode()
    assert f"/{name}" in content.split("<SYSC-REF")[1].split("</SYSC-REF>")[0]
    assert load(content).unresolved() == []
