"""Data types, units, constraints and constants in ARXML files."""

import re
import sys
from pathlib import Path

import pytest

import K7Q
from Tarvelon.metamodel import foundation, types
from Tarvelon.metamodel.arplatform import common, interface

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "arxml"))
import facts  # noqa: E402


def needs_tables(test):
    """Leaves a test out where the tables of the format are missing (TARVELON_ARXML_FACTS)."""
    return test if facts.folder() else None


HEAD = """\
<?xml version="1.0" encoding="UTF-8"?>
<AUTOSAR xmlns="http://autosar.org/schema/r4.0" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" \
xsi:schemaLocation="http://autosar.org/schema/r4.0 AUTOSAR_00051.xsd">
<AR-PACKAGES><AR-PACKAGE><SHORT-NAME>P</SHORT-NAME><ELEMENTS>
"""
TAIL = "\n</ELEMENTS></AR-PACKAGE></AR-PACKAGES>\n</AUTOSAR>\n"


def props(content):
    return ("<SW-DATA-DEF-PROPS><SW-DATA-DEF-PROPS-VARIANTS><SW-DATA-DEF-PROPS-CONDITIONAL>\n" + content +
            "\n</SW-DATA-DEF-PROPS-CONDITIONAL></SW-DATA-DEF-PROPS-VARIANTS></SW-DATA-DEF-PROPS>")


ELEMENTS = {
    "PhysicalDimension": """\
<PHYSICAL-DIMENSION><SHORT-NAME>Speed</SHORT-NAME>
<LENGTH-EXP>1</LENGTH-EXP>
<TIME-EXP>-1</TIME-EXP>
</PHYSICAL-DIMENSION>""",
    "Unit": """\
<UNIT><SHORT-NAME>KmPerHour</SHORT-NAME>
<DISPLAY-NAME>km/h</DISPLAY-NAME>
<FACTOR-SI-TO-UNIT>3.6</FACTOR-SI-TO-UNIT>
<OFFSET-SI-TO-UNIT>0</OFFSET-SI-TO-UNIT>
<PHYSICAL-DIMENSION-REF DEST="PHYSICAL-DIMENSION">/P/Speed</PHYSICAL-DIMENSION-REF>
</UNIT>""",
    "UnitGroup": """\
<UNIT-GROUP><SHORT-NAME>Metric</SHORT-NAME>
<UNIT-REFS><UNIT-REF DEST="UNIT">/P/KmPerHour</UNIT-REF></UNIT-REFS>
</UNIT-GROUP>""",
    "CompuMethod": """\
<COMPU-METHOD><SHORT-NAME>Method</SHORT-NAME>
<CATEGORY>SCALE_LINEAR_AND_TEXTTABLE</CATEGORY>
<DISPLAY-FORMAT>%5.2f</DISPLAY-FORMAT>
<UNIT-REF DEST="UNIT">/P/KmPerHour</UNIT-REF>
<COMPU-INTERNAL-TO-PHYS>
<COMPU-SCALES>
<COMPU-SCALE><SHORT-LABEL>Linear</SHORT-LABEL>
<LOWER-LIMIT INTERVAL-TYPE="CLOSED">0</LOWER-LIMIT>
<UPPER-LIMIT INTERVAL-TYPE="OPEN">65535</UPPER-LIMIT>
<COMPU-RATIONAL-COEFFS>
<COMPU-NUMERATOR><V>0</V><V>1.0E-2</V></COMPU-NUMERATOR>
<COMPU-DENOMINATOR><V>1</V></COMPU-DENOMINATOR>
</COMPU-RATIONAL-COEFFS>
</COMPU-SCALE>
<COMPU-SCALE>
<SYMBOL>METHOD_INVALID</SYMBOL>
<DESC><L-2 L="EN">No value</L-2></DESC>
<MASK>0xFFFFFFFF</MASK>
<LOWER-LIMIT>65535</LOWER-LIMIT>
<UPPER-LIMIT>65535</UPPER-LIMIT>
<COMPU-CONST><VT>Invalid</VT></COMPU-CONST>
</COMPU-SCALE>
</COMPU-SCALES>
<COMPU-DEFAULT-VALUE><V>0x10</V></COMPU-DEFAULT-VALUE>
</COMPU-INTERNAL-TO-PHYS>
</COMPU-METHOD>""",
    "DataConstr": """\
<DATA-CONSTR><SHORT-NAME>Limits</SHORT-NAME>
<DATA-CONSTR-RULES>
<DATA-CONSTR-RULE>
<CONSTR-LEVEL>0</CONSTR-LEVEL>
<PHYS-CONSTRS>
<LOWER-LIMIT INTERVAL-TYPE="INFINITE">-INF</LOWER-LIMIT>
<UPPER-LIMIT>1.5</UPPER-LIMIT>
<UNIT-REF DEST="UNIT">/P/KmPerHour</UNIT-REF>
</PHYS-CONSTRS>
<INTERNAL-CONSTRS>
<LOWER-LIMIT INTERVAL-TYPE="CLOSED">0</LOWER-LIMIT>
<UPPER-LIMIT INTERVAL-TYPE="CLOSED">18446744073709551615</UPPER-LIMIT>
<SCALE-CONSTRS>
<SCALE-CONSTR VALIDITY="NOT-VALID">
<SHORT-LABEL>Hole</SHORT-LABEL>
<LOWER-LIMIT>10</LOWER-LIMIT>
<UPPER-LIMIT>20</UPPER-LIMIT>
</SCALE-CONSTR>
</SCALE-CONSTRS>
<MONOTONY>STRICTLY-INCREASING</MONOTONY>
</INTERNAL-CONSTRS>
</DATA-CONSTR-RULE>
</DATA-CONSTR-RULES>
</DATA-CONSTR>""",
    "SwBaseType": """\
<SW-BASE-TYPE><SHORT-NAME>Base</SHORT-NAME>
<CATEGORY>FIXED_LENGTH</CATEGORY>
<BASE-TYPE-SIZE>16</BASE-TYPE-SIZE>
<BASE-TYPE-ENCODING>NONE</BASE-TYPE-ENCODING>
<MEM-ALIGNMENT>2</MEM-ALIGNMENT>
<BYTE-ORDER>MOST-SIGNIFICANT-BYTE-LAST</BYTE-ORDER>
<NATIVE-DECLARATION>unsigned short</NATIVE-DECLARATION>
</SW-BASE-TYPE>""",
    "SwRecordLayout": """\
<SW-RECORD-LAYOUT><SHORT-NAME>Layout</SHORT-NAME>
<SW-RECORD-LAYOUT-GROUP><SHORT-LABEL>Kept</SHORT-LABEL></SW-RECORD-LAYOUT-GROUP>
</SW-RECORD-LAYOUT>""",
    "ImplementationDataType": """\
<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>Structure</SHORT-NAME>
<CATEGORY>STRUCTURE</CATEGORY>
""" + props("""\
<SW-ADDR-METHOD-REF DEST="SW-ADDR-METHOD">/P/Code</SW-ADDR-METHOD-REF>
<BASE-TYPE-REF DEST="SW-BASE-TYPE">/P/Base</BASE-TYPE-REF>
<SW-CALIBRATION-ACCESS>READ-ONLY</SW-CALIBRATION-ACCESS>
<COMPU-METHOD-REF DEST="COMPU-METHOD">/P/Method</COMPU-METHOD-REF>
<DATA-CONSTR-REF DEST="DATA-CONSTR">/P/Limits</DATA-CONSTR-REF>
<SW-IMPL-POLICY>MEASUREMENT-POINT</SW-IMPL-POLICY>
<INVALID-VALUE>
<NUMERICAL-VALUE-SPECIFICATION><VALUE>0xFF</VALUE></NUMERICAL-VALUE-SPECIFICATION>
</INVALID-VALUE>""") + """
<IS-STRUCT-WITH-OPTIONAL-ELEMENT>true</IS-STRUCT-WITH-OPTIONAL-ELEMENT>
<SUB-ELEMENTS>
<IMPLEMENTATION-DATA-TYPE-ELEMENT><SHORT-NAME>List</SHORT-NAME>
<CATEGORY>ARRAY</CATEGORY>
<SUB-ELEMENTS>
<IMPLEMENTATION-DATA-TYPE-ELEMENT><SHORT-NAME>Entry</SHORT-NAME>
<CATEGORY>TYPE_REFERENCE</CATEGORY>
<ARRAY-SIZE>4</ARRAY-SIZE>
<ARRAY-SIZE-SEMANTICS>FIXED-SIZE</ARRAY-SIZE-SEMANTICS>
""" + props("""\
<IMPLEMENTATION-DATA-TYPE-REF DEST="IMPLEMENTATION-DATA-TYPE">/P/Structure</IMPLEMENTATION-DATA-TYPE-REF>""") + """
</IMPLEMENTATION-DATA-TYPE-ELEMENT>
</SUB-ELEMENTS>
</IMPLEMENTATION-DATA-TYPE-ELEMENT>
<IMPLEMENTATION-DATA-TYPE-ELEMENT><SHORT-NAME>Pointer</SHORT-NAME>
<CATEGORY>DATA_REFERENCE</CATEGORY>
<IS-OPTIONAL>true</IS-OPTIONAL>
""" + props("""\
<SW-POINTER-TARGET-PROPS>
<TARGET-CATEGORY>VALUE</TARGET-CATEGORY>
""" + props("""\
<BASE-TYPE-REF DEST="SW-BASE-TYPE">/P/Base</BASE-TYPE-REF>""") + """
</SW-POINTER-TARGET-PROPS>""") + """
</IMPLEMENTATION-DATA-TYPE-ELEMENT>
</SUB-ELEMENTS>
<SYMBOL-PROPS><SHORT-NAME>Symbol</SHORT-NAME><SYMBOL>structure_t</SYMBOL></SYMBOL-PROPS>
<TYPE-EMITTER>RTE</TYPE-EMITTER>
</IMPLEMENTATION-DATA-TYPE>""",
    "ApplicationPrimitiveDataType": """\
<APPLICATION-PRIMITIVE-DATA-TYPE><SHORT-NAME>Velocity</SHORT-NAME>
<CATEGORY>VALUE</CATEGORY>
""" + props("""\
<COMPU-METHOD-REF DEST="COMPU-METHOD">/P/Method</COMPU-METHOD-REF>
<SW-INTENDED-RESOLUTION>0.5</SW-INTENDED-RESOLUTION>
<SW-RECORD-LAYOUT-REF DEST="SW-RECORD-LAYOUT">/P/Layout</SW-RECORD-LAYOUT-REF>
<UNIT-REF DEST="UNIT">/P/KmPerHour</UNIT-REF>""") + """
</APPLICATION-PRIMITIVE-DATA-TYPE>""",
    "ApplicationArrayDataType": """\
<APPLICATION-ARRAY-DATA-TYPE><SHORT-NAME>Row</SHORT-NAME>
<CATEGORY>ARRAY</CATEGORY>
<DYNAMIC-ARRAY-SIZE-PROFILE>VSA_LINEAR</DYNAMIC-ARRAY-SIZE-PROFILE>
<ELEMENT><SHORT-NAME>Cell</SHORT-NAME>
<CATEGORY>VALUE</CATEGORY>
<TYPE-TREF DEST="APPLICATION-PRIMITIVE-DATA-TYPE">/P/Velocity</TYPE-TREF>
<ARRAY-SIZE-HANDLING>ALL-INDICES-SAME-ARRAY-SIZE</ARRAY-SIZE-HANDLING>
<ARRAY-SIZE-SEMANTICS>VARIABLE-SIZE</ARRAY-SIZE-SEMANTICS>
<MAX-NUMBER-OF-ELEMENTS>8</MAX-NUMBER-OF-ELEMENTS>
</ELEMENT>
</APPLICATION-ARRAY-DATA-TYPE>""",
    "ApplicationRecordDataType": """\
<APPLICATION-RECORD-DATA-TYPE><SHORT-NAME>Pair</SHORT-NAME>
<ELEMENTS>
<APPLICATION-RECORD-ELEMENT><SHORT-NAME>First</SHORT-NAME>
<TYPE-TREF DEST="APPLICATION-ARRAY-DATA-TYPE">/P/Row</TYPE-TREF>
</APPLICATION-RECORD-ELEMENT>
<APPLICATION-RECORD-ELEMENT><SHORT-NAME>Second</SHORT-NAME>
<TYPE-TREF DEST="APPLICATION-PRIMITIVE-DATA-TYPE">/P/Velocity</TYPE-TREF>
<IS-OPTIONAL>true</IS-OPTIONAL>
</APPLICATION-RECORD-ELEMENT>
</ELEMENTS>
</APPLICATION-RECORD-DATA-TYPE>""",
    "ConstantSpecification": """\
<CONSTANT-SPECIFICATION><SHORT-NAME>Default</SHORT-NAME>
<VALUE-SPEC><RECORD-VALUE-SPECIFICATION><FIELDS>
<CONSTANT-REFERENCE><SHORT-LABEL>Self</SHORT-LABEL>
<CONSTANT-REF DEST="CONSTANT-SPECIFICATION">/P/Default</CONSTANT-REF>
</CONSTANT-REFERENCE>
<NOT-AVAILABLE-VALUE-SPECIFICATION>
<DEFAULT-PATTERN>0xFFFFFFFF</DEFAULT-PATTERN>
</NOT-AVAILABLE-VALUE-SPECIFICATION>
<REFERENCE-VALUE-SPECIFICATION>
<REFERENCE-VALUE-REF DEST="APPLICATION-RECORD-ELEMENT">/P/Pair/First</REFERENCE-VALUE-REF>
</REFERENCE-VALUE-SPECIFICATION>
<APPLICATION-VALUE-SPECIFICATION>
<CATEGORY>CURVE</CATEGORY>
<SW-AXIS-CONTS>
<SW-AXIS-CONT>
<CATEGORY>STD_AXIS</CATEGORY>
<UNIT-REF DEST="UNIT">/P/KmPerHour</UNIT-REF>
<SW-AXIS-INDEX>1</SW-AXIS-INDEX>
<SW-ARRAYSIZE><V>2</V></SW-ARRAYSIZE>
<SW-VALUES-PHYS><V>0</V><V>1.50</V></SW-VALUES-PHYS>
</SW-AXIS-CONT>
</SW-AXIS-CONTS>
<SW-VALUE-CONT>
<UNIT-DISPLAY-NAME>km/h</UNIT-DISPLAY-NAME>
<SW-ARRAYSIZE><V>2</V></SW-ARRAYSIZE>
<SW-VALUES-PHYS><VT>low</VT><VT>high</VT></SW-VALUES-PHYS>
</SW-VALUE-CONT>
</APPLICATION-VALUE-SPECIFICATION>
</FIELDS></RECORD-VALUE-SPECIFICATION></VALUE-SPEC>
</CONSTANT-SPECIFICATION>""",
    "SwAddrMethod": """\
<SW-ADDR-METHOD><SHORT-NAME>Code</SHORT-NAME></SW-ADDR-METHOD>""",
}
FILE = HEAD + "\n".join(ELEMENTS.values()) + TAIL


@pytest.fixture
def file(tmp_path):
    path = tmp_path / "types.arxml"
    path.write_text(FILE, encoding="utf-8")
    return path


@pytest.fixture
def model(file):
    return K7Q.Model.load(file)


def find(model, path):
    found = model.find(path)
    assert found is not None, path
    return found


def faults(path):
    return [] if facts.folder() is None else facts.load(facts.folder()).check(path.read_bytes())


def saved(model, tmp_path):
    path = tmp_path / "saved.arxml"
    model.save(path)
    return path.read_text(encoding="utf-8")


def changed_lines(before, after):
    old, new = before.splitlines(), after.splitlines()
    return [each for each in old if each not in new], [each for each in new if each not in old]


def test_each_element_becomes_an_object_of_its_class(model):
    package = model.instances(common.Package)[0]
    assert [type(each).__name__ for each in package.PackagedElement] == list(ELEMENTS)


@needs_tables
def test_the_file_of_these_tests_keeps_to_the_format(file):
    assert faults(file) == []


def test_a_loaded_file_is_saved_with_the_same_bytes(model, tmp_path):
    assert saved(model, tmp_path) == FILE


def test_a_unit_has_its_factor_and_dimension(model):
    unit = find(model, "/P/KmPerHour")
    assert (unit.DisplayName, unit.FactorSiToUnit, unit.OffsetSiToUnit) == ("km/h", 3.6, 0)
    assert (unit.PhysicalDimension.LengthExp, unit.PhysicalDimension.TimeExp) == (1, -1)
    assert list(find(model, "/P/Metric").Unit) == [unit]


def test_a_computation_method_has_its_scales(model):
    method = find(model, "/P/Method")
    linear, invalid = method.CompuInternalToPhys.CompuScale
    assert method.UnitRef == find(model, "/P/KmPerHour") and method.DisplayFormat == "%5.2f"
    assert list(linear.CompuRationalCoeffs.CompuNumerator) == ["0", "1.0E-2"]
    assert list(linear.CompuRationalCoeffs.CompuDenominator) == ["1"]
    assert linear.UpperLimit.Value == "65535" and linear.UpperLimit.IntervalType == types.IntervalTypeEnum.Open
    assert (linear.ShortLabel, invalid.Symbol, invalid.Mask) == ("Linear", "METHOD_INVALID", 0xFFFFFFFF)
    assert invalid.CompuConst.Vt == "Invalid" and method.CompuInternalToPhys.CompuDefaultValue.V == 16


def test_a_data_constraint_keeps_the_digits_of_its_limits(model):
    rule = find(model, "/P/Limits").DataConstrRule[0]
    assert rule.InternalConstrs.UpperLimit.Value == "18446744073709551615"
    assert rule.PhysConstrs.LowerLimit.Value == "-INF"
    assert rule.PhysConstrs.LowerLimit.IntervalType == types.IntervalTypeEnum.Infinite
    assert rule.PhysConstrs.Unit == find(model, "/P/KmPerHour")
    assert rule.InternalConstrs.ScaleConstr[0].Validity == types.ScaleConstrValidityEnum.NotValid
    assert rule.InternalConstrs.Monotony == types.MonotonyEnum.StrictlyIncreasing


def test_an_implementation_type_has_what_its_properties_say(model):
    kind = find(model, "/P/Structure")
    assert kind.BaseType == find(model, "/P/Base") and kind.CompuMethod == find(model, "/P/Method")
    assert kind.SwDataDefProps.DataConstr == find(model, "/P/Limits")
    assert kind.SwDataDefProps.SwImplPolicy == types.SwImplPolicyEnum.MeasurementPoint
    assert kind.SwDataDefProps.SwAddrMethod == find(model, "/P/Code")
    assert kind.SwDataDefProps.InvalidValue.Value == 255
    assert kind.SwDataDefProps.BaseType is None and kind.SwDataDefProps.CompuMethod is None
    assert (kind.SymbolProps.Symbol, kind.TypeEmitter) == ("structure_t", "RTE")


def test_an_implementation_type_has_its_elements(model):
    kind = find(model, "/P/Structure")
    entry = find(model, "/P/Structure/List/Entry")
    assert [each.Name for each in kind.SubElements] == ["List", "Pointer"]
    assert (entry.ArraySize, entry.ArraySizeSemantics) == (4, types.ArraySizeSemanticsEnum.FixedSize)
    assert entry.SwDataDefProps.ImplementationDataType == kind
    target = kind.SubElements[1].SwDataDefProps.SwPointerTargetProps
    assert target.TargetCategory == "VALUE" and target.SwDataDefProps.BaseType == find(model, "/P/Base")


def test_an_application_type_has_its_elements(model):
    row, pair = find(model, "/P/Row"), find(model, "/P/Pair")
    assert row.Element.Type == find(model, "/P/Velocity") and row.Element.MaxNumberOfElements == 8
    assert row.Element.ArraySizeHandling == types.ArraySizeHandlingEnum.AllIndicesSameArraySize
    assert [each.Type for each in pair.Elements] == [row, find(model, "/P/Velocity")]
    assert isinstance(row, types.ApplicationCompositeDataType) and isinstance(pair, foundation.ValueType)


def test_a_constant_has_values_of_all_kinds(model):
    constant = find(model, "/P/Default")
    reference, missing, pointer, curve = constant.ValueSpec.Field
    assert reference.Constant == constant and reference.ShortLabel == "Self"
    assert missing.DefaultPattern == 0xFFFFFFFF
    assert pointer.ReferenceValue == find(model, "/P/Pair/First")
    assert list(curve.SwAxisCont[0].SwValuesPhys.V) == ["0", "1.50"]
    assert list(curve.SwValueCont.SwValuesPhys.Vt) == ["low", "high"]
    assert curve.SwValueCont.UnitDisplayName == "km/h" and list(curve.SwValueCont.SwArraysize) == ["2"]


EDITS = {
    "a base type beside properties": (
        lambda model: setattr(find(model, "/P/Base"), "Name", "Word"),
        "<SW-BASE-TYPE><SHORT-NAME>Base</SHORT-NAME>", "<SW-BASE-TYPE><SHORT-NAME>Word</SHORT-NAME>"),
    "a reference of the type itself": (
        lambda model: setattr(find(model, "/P/Structure"), "CompuMethod", None),
        '<COMPU-METHOD-REF DEST="COMPU-METHOD">/P/Method</COMPU-METHOD-REF>', None),
    "a property of the type's properties": (
        lambda model: setattr(find(model, "/P/Structure").SwDataDefProps, "SwImplPolicy",
                              types.SwImplPolicyEnum.Fixed),
        "<SW-IMPL-POLICY>MEASUREMENT-POINT</SW-IMPL-POLICY>", "<SW-IMPL-POLICY>FIXED</SW-IMPL-POLICY>"),
    "a limit": (
        lambda model: setattr(find(model, "/P/Limits").DataConstrRule[0].PhysConstrs.UpperLimit, "Value", "2.5"),
        "<UPPER-LIMIT>1.5</UPPER-LIMIT>", "<UPPER-LIMIT>2.5</UPPER-LIMIT>"),
    "the kind of a limit": (
        lambda model: setattr(find(model, "/P/Method").CompuInternalToPhys.CompuScale[0].UpperLimit,
                              "IntervalType", types.IntervalTypeEnum.Closed),
        '<UPPER-LIMIT INTERVAL-TYPE="OPEN">65535</UPPER-LIMIT>',
        '<UPPER-LIMIT INTERVAL-TYPE="CLOSED">65535</UPPER-LIMIT>'),
    "the text of a scale": (
        lambda model: setattr(find(model, "/P/Method").CompuInternalToPhys.CompuScale[1].CompuConst, "Vt", "None"),
        "<COMPU-CONST><VT>Invalid</VT></COMPU-CONST>", "<COMPU-CONST><VT>None</VT></COMPU-CONST>"),
}


@pytest.mark.parametrize("edit, before, after", EDITS.values(), ids=EDITS)
def test_an_edit_changes_its_own_line(model, tmp_path, edit, before, after):
    edit(model)
    gone, added = changed_lines(FILE, saved(model, tmp_path))
    assert before in (gone or FILE) and (after is None or after in added)
    assert len([each for each in added if "/P/Word" not in each]) == (after is not None)


def make(model):
    """A new package T with a base type and an implementation type in it."""
    root = model.instances(common.AUTOSAR)[0]
    package = common.Package(model, "T")
    root.PackagedElement.append(package)
    base, kind = types.SwBaseType(model, "Byte"), types.ImplementationDataType(model, "Kind")
    package.PackagedElement.append(base)
    package.PackagedElement.append(kind)
    return base, kind


BASE = '<BASE-TYPE-REF DEST="SW-BASE-TYPE">/T/Byte</BASE-TYPE-REF>'


@pytest.mark.parametrize("own, inner, other", [
    (True, False, False), (False, True, False), (True, True, False), (True, False, True), (False, True, True)])
def test_a_base_type_is_written_once(model, tmp_path, own, inner, other):
    base, kind = make(model)
    if own:
        kind.BaseType = base
    if inner or other:
        kind.SwDataDefProps = types.SwDataDefProps(model)
    if inner:
        kind.SwDataDefProps.BaseType = base
    if other:
        kind.SwDataDefProps.SwAlignment = "8"
    text = saved(model, tmp_path)
    inside = re.search("<SHORT-NAME>Kind</SHORT-NAME>(.*)</IMPLEMENTATION-DATA-TYPE>", text, re.S)[1]
    assert inside.count(BASE) == 1 and inside.count("<SW-ALIGNMENT>8</SW-ALIGNMENT>") == other
    loaded = find(K7Q.Model.load(tmp_path / "saved.arxml"), "/T/Kind")
    assert loaded.BaseType.Name == "Byte" and loaded.SwDataDefProps.BaseType is None


def test_a_base_type_that_its_owner_contradicts_is_refused(model, tmp_path):
    base, kind = make(model)
    kind.BaseType = base
    kind.SwDataDefProps = types.SwDataDefProps(model)
    kind.SwDataDefProps.BaseType = find(model, "/P/Base")
    with pytest.raises(K7Q.Exception, match="BaseType is not written, since its owner has another BaseType; "
                                            "set only one of the two"):
        saved(model, tmp_path)


def test_properties_can_be_removed_without_the_base_type(model, tmp_path):
    find(model, "/P/Structure").SwDataDefProps.destroy()
    saved(model, tmp_path)
    loaded = K7Q.Model.load(tmp_path / "saved.arxml")
    kind = find(loaded, "/P/Structure")
    assert kind.BaseType == find(loaded, "/P/Base") and kind.SwDataDefProps.DataConstr is None


def test_a_reference_to_an_array_element_names_its_class(model, tmp_path):
    find(model, "/P/Default").ValueSpec.Field[2].ReferenceValue = find(model, "/P/Row").Element
    assert ('<REFERENCE-VALUE-REF DEST="APPLICATION-ARRAY-ELEMENT">/P/Row/Cell</REFERENCE-VALUE-REF>'
            in saved(model, tmp_path))
    assert faults(tmp_path / "saved.arxml") == []


def test_the_base_type_moves_from_the_owner_to_the_properties(model, tmp_path):
    kind = find(model, "/P/Structure")
    kind.SwDataDefProps.BaseType, kind.BaseType = kind.BaseType, None
    assert saved(model, tmp_path) == FILE


def test_further_variants_of_properties_are_kept(tmp_path):
    variant = "<SW-DATA-DEF-PROPS-CONDITIONAL>\n<SW-ALIGNMENT>8</SW-ALIGNMENT>\n</SW-DATA-DEF-PROPS-CONDITIONAL>"
    element = ("<IMPLEMENTATION-DATA-TYPE><SHORT-NAME>A</SHORT-NAME>\n" +
               props("<SW-ALIGNMENT>4</SW-ALIGNMENT>").replace(
                   "</SW-DATA-DEF-PROPS-VARIANTS>", variant + "</SW-DATA-DEF-PROPS-VARIANTS>") +
               "\n</IMPLEMENTATION-DATA-TYPE>")
    path = tmp_path / "variants.arxml"
    path.write_text(HEAD + element + TAIL, encoding="utf-8")
    model = K7Q.Model.load(path)
    kind = find(model, "/P/A")
    assert kind.SwDataDefProps.SwAlignment == "4"
    kind.SwDataDefProps.SwAlignment = "2"
    assert saved(model, tmp_path) == (HEAD + element + TAIL).replace("T>4<", "T>2<")


def test_a_limit_may_be_a_formula(tmp_path):
    limit = ('<LOWER-LIMIT>2 * <SYSC-REF DEST="SW-SYSTEMCONST">/P/Size</SYSC-REF></LOWER-LIMIT>')
    path = tmp_path / "formula.arxml"
    path.write_text(FILE.replace('<LOWER-LIMIT INTERVAL-TYPE="CLOSED">0</LOWER-LIMIT>', limit), encoding="utf-8")
    model = K7Q.Model.load(path)
    assert find(model, "/P/Limits").DataConstrRule[0].InternalConstrs.LowerLimit.Value == "2 * Size"
    assert limit in saved(model, tmp_path)


def test_new_objects_keep_to_the_format(model, tmp_path):
    """A copy of all objects that were loaded is written as new elements."""
    root = model.instances(common.AUTOSAR)[0]
    copied = root.PackagedElement[0].clone()
    copied.Name = "Q"
    root.PackagedElement.append(copied)
    text = saved(model, tmp_path)
    loaded = K7Q.Model.load(tmp_path / "saved.arxml")
    again = find(loaded, "/Q/Structure/List/Entry")
    assert again.ArraySize == 4 and find(loaded, "/Q/Structure").BaseType == find(loaded, "/Q/Base")
    assert faults(tmp_path / "saved.arxml") == []
    assert text.count("<COMPU-SCALE>") == 4


def typed(model, type, value):
    """Data of a type, with an initial value."""
    data = interface.VariableData(model, "%d", "Data")
    data.Type, data.InitValue = type, value
    return data


def number(model, value):
    return foundation.NumericalValueSpecification(model, value)


def text(model, value):
    return foundation.TextValueSpecification(model, value)


def array(model, *values):
    whole = foundation.ArrayValueSpecification(model)
    whole.Element.extend(values)
    return whole


def record(model, *values):
    whole = foundation.RecordValueSpecification(model)
    whole.Field.extend(values)
    return whole


def added(model, element):
    """The element, in the package P: only what has an owner is compared."""
    model.find("/P").PackagedElement.append(element)
    return element


def found(data):
    """The rules that the values of data break, and where."""
    assert "dangling-reference" not in [each.rule for each in data.validate()]
    return [(each.rule, f"{each.path}.{each.property}".partition("Data.")[2]) for each in data.validate()
            if each.rule in ("array-length", "data-constraint", "table-text")]


@pytest.fixture
def limited(model):
    """The application type with physical limits up to 1.5."""
    kind = find(model, "/P/Velocity")
    kind.SwDataDefProps.DataConstr = find(model, "/P/Limits")
    return kind


def test_a_number_of_an_application_type_keeps_the_physical_limits(model, limited):
    assert found(typed(model, limited, number(model, 1.5))) == []
    assert found(typed(model, limited, number(model, -1e300))) == []
    assert found(typed(model, limited, number(model, 1.6))) == [("data-constraint", "InitValue.Value")]


def test_a_number_of_an_implementation_type_keeps_the_internal_limits(model):
    kind = added(model, types.ImplementationDataType(model, "Byte"))
    kind.SwDataDefProps = types.SwDataDefProps(model)
    kind.SwDataDefProps.DataConstr = find(model, "/P/Limits")
    assert found(typed(model, kind, number(model, 1.6))) == []
    assert found(typed(model, kind, number(model, -1))) == [("data-constraint", "InitValue.Value")]


@pytest.mark.parametrize("limit, kind, fits", [
    ("0x10", "Closed", True), ("0b1111", "Closed", False), ("020", "Closed", True), ("16", "Open", False),
    ("1.6E1", "Closed", True), ("1", "Infinite", True), ("-INF", "Closed", False), ("INF", "Closed", True),
    ("2 * Size", "Closed", True), ("", "Closed", True)])
def test_a_limit_may_be_written_in_many_ways(model, limited, limit, kind, fits):
    upper = find(model, "/P/Limits").DataConstrRule[0].PhysConstrs.UpperLimit
    upper.Value, upper.IntervalType = limit, getattr(types.IntervalTypeEnum, kind)
    assert (found(typed(model, limited, number(model, 16))) == []) == fits


def test_limits_of_another_level_need_not_be_kept(model, limited):
    find(model, "/P/Limits").DataConstrRule[0].ConstrLevel = 1
    assert found(typed(model, limited, number(model, 1000))) == []


def test_the_invalid_value_may_be_beyond_the_limits(model, limited):
    limited.SwDataDefProps.InvalidValue = number(model, 255)
    assert found(typed(model, limited, number(model, 255))) == []
    assert found(typed(model, limited, number(model, 254))) == [("data-constraint", "InitValue.Value")]


def test_a_reference_to_a_type_has_the_limits_of_that_type(model):
    kind, other = (added(model, types.ImplementationDataType(model, name)) for name in ("Kind", "Other"))
    for each in (kind, other):
        each.SwDataDefProps = types.SwDataDefProps(model)
    kind.SwDataDefProps.ImplementationDataType = other
    other.SwDataDefProps.DataConstr = find(model, "/P/Limits")
    assert found(typed(model, kind, number(model, -1))) == [("data-constraint", "InitValue.Value")]
    other.SwDataDefProps.ImplementationDataType = kind
    assert found(typed(model, kind, number(model, -1))) == [("data-constraint", "InitValue.Value")]
    other.SwDataDefProps.DataConstr = None
    assert found(typed(model, kind, number(model, -1))) == []


def test_an_array_of_variable_size_may_be_shorter(model, limited):
    row = find(model, "/P/Row")
    assert found(typed(model, row, array(model))) == []
    assert found(typed(model, row, array(model, *(number(model, 0) for _ in range(8))))) == []
    assert found(typed(model, row, array(model, *(number(model, 0) for _ in range(9))))) == [
        ("array-length", "InitValue.Element")]
    row.Element.ArraySizeSemantics = types.ArraySizeSemanticsEnum.FixedSize
    assert found(typed(model, row, array(model))) == [("array-length", "InitValue.Element")]


def test_what_stands_inside_of_a_value_is_compared_too(model, limited):
    value = record(model, array(model, number(model, 0), number(model, 2)), number(model, 3))
    assert found(typed(model, find(model, "/P/Pair"), value)) == [
        ("data-constraint", "InitValue.Field[0].Element[1].Value"), ("data-constraint", "InitValue.Field[1].Value")]


def test_a_structure_is_compared_member_by_member(model):
    value = record(model, array(model, *(number(model, 0) for _ in range(3))), number(model, 0))
    assert found(typed(model, find(model, "/P/Structure"), value)) == [("array-length", "InitValue.Field[0].Element")]


def test_a_value_of_a_union_has_one_of_its_members(model):
    kind = find(model, "/P/Structure")
    kind.Category = "UNION"
    assert found(typed(model, kind, record(model, array(model), number(model, 0)))) == []


def test_a_constant_is_compared_where_it_is_used(model, limited):
    constant = added(model, types.ConstantSpecification(model, "Fast"))
    constant.ValueSpec = number(model, 100)
    problems = typed(model, limited, types.ConstantReference(model, constant)).validate()
    assert [str(each) for each in problems if each.rule == "data-constraint"] == [
        "error: /Data.InitValue.Constant: the constant does not fit here: expected a number up to 1.5, as the "
        "constraint /P/Limits says; found 100; change the number, or refer to another type [data-constraint]"]
    assert found(constant) == []


def test_constants_that_refer_to_each_other_are_no_circle(model):
    constant = find(model, "/P/Default")
    assert found(typed(model, find(model, "/P/Pair"), types.ConstantReference(model, constant))) == []


@pytest.mark.parametrize("value, fits", [
    ("Invalid", True), ("METHOD_INVALID", True), ("Linear", True), ("Other", False)])
def test_a_text_stands_in_the_table_of_its_type(model, value, fits):
    for kind in (find(model, "/P/Velocity"), find(model, "/P/Structure")):
        assert (found(typed(model, kind, text(model, value))) == []) == fits


def test_a_text_of_a_type_without_a_table_may_be_any(model):
    find(model, "/P/Method").CompuInternalToPhys.CompuScale[1].CompuConst.destroy()
    assert found(typed(model, find(model, "/P/Velocity"), text(model, "Other"))) == []


def test_the_type_of_a_value_may_be_incomplete(model):
    row = types.ApplicationArrayDataType(model, "Empty")
    for kind in (row, types.ImplementationDataType(model, "Bare"), types.ApplicationRecordDataType(model, "None")):
        added(model, kind)
        for value in (array(model, number(model, 1)), record(model, number(model, 1)), text(model, "x")):
            assert found(typed(model, kind, value)) == []
    row.Element = types.ApplicationArrayElement(model, "Element")
    assert found(typed(model, row, array(model, number(model, 1)))) == []
