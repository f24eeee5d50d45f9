"""A first model: packages, documentation and variants of a brake controller, built, read back and changed.

    ./tarvelon run examples/first_model.py
"""

import K7Q
from Tarvelon.metamodel.arplatform import common, documentation, variant

LANGUAGES = {"EN": "Limit of the brake torque lowered", "DE": "Grenze des Bremsmoments gesenkt"}


def paragraph(model, texts):
    """The same sentence in several languages."""
    result = documentation.MultiLanguageOverviewParagraph(model)
    for language, text in texts.items():
        entry = documentation.LOverviewParagraph(model)
        entry.language = language
        entry.Body = text
        result.L2.append(entry)
    return result


def long_name(model, texts):
    """A long name in several languages."""
    result = documentation.MultiLanguageLongName(model)
    for language, text in texts.items():
        entry = documentation.LLongName(model)
        entry.language = language
        entry.Body = text
        result.L4.append(entry)
    return result


def history(model):
    """Administrative data with two revisions; the second says what was changed, and why, in two languages."""
    first = documentation.DocRevision(model, "2026-03-02")
    first.revisionLabel = "1.0.0"
    first.issuedBy = "brakes team"
    first.state = "released"

    second = documentation.DocRevision(model, "2026-11-21")
    second.revisionLabel = "1.1.0"
    second.revisionLabelP1 = first.revisionLabel
    change = documentation.Modification(model, paragraph(model, LANGUAGES))
    change.reason = paragraph(model, {"EN": "Result of the winter tests", "DE": "Ergebnis der Wintertests"})
    second.modification.append(change)

    data = common.AdminData(model)
    data.language = "EN"
    data.docRevision += [first, second]
    return data


def tool_data(model):
    """Data of a tool that the standard does not know: a group with values and a nested group."""
    group = common.Sdg(model, "build-tool")
    group.sdgCaption = common.SdgCaption(model, "BuildSettings")
    group.sdgContents.append(common.Sd(model, "compiler", "gcc 12.2"))
    nested = common.Sdg(model, "options")
    nested.sdgContents.append(common.Sd(model, "optimisation", "-O2"))
    group.sdgContents.append(nested)
    return group


def variants(model, package):
    """A system constant, its values for two vehicles, and the variant that picks one of them."""
    wheels = variant.SystemConst(model, "DrivenWheels")
    package.PackagedElement.append(wheels)
    for name, value in (("FrontWheelDrive", 2.0), ("AllWheelDrive", 4.0)):
        values = variant.SystemConstValueSet(model, name)
        values.SysConstValue.append(variant.SystemConstValue(model, value, wheels))
        package.PackagedElement.append(values)

    chosen = variant.PredefinedVariant(model, "Estate")
    chosen.SysConstValueSet.append(package.PackagedElement[-1])
    package.PackagedElement.append(chosen)
    return wheels


def variation_point(model, wheels):
    """What exists in all-wheel-drive vehicles alone, decided when the code is generated."""
    time = variant.BindingTimeKind.CodeGenerationTime
    condition = variant.ConditionByFormula(model, time, "DrivenWheels == 4")
    condition.SysConst.append(wheels)
    point = variant.VariationPoint(model, "OnlyAllWheelDrive")
    point.Condition = condition
    return point


def build(model):
    """The whole model; returns its root."""
    root = common.AUTOSAR(model)
    root.Name = "Vehicle"
    root.ArxmlFilePackaging = common.ArxmlFilePackagingKind.SingleFile

    brakes = common.Package(model, "Brakes")
    brakes.longName = long_name(model, {"EN": "Brake system", "DE": "Bremsanlage"})
    brakes.desc = paragraph(model, {"EN": "Everything that stops the vehicle"})
    root.PackagedElement.append(brakes)

    modes = common.Package(model, "Modes")
    constants = common.Package(model, "Variants")
    brakes.PackagedElement += [modes, constants]
    brakes.ReferenceBase.append(common.ReferenceBase(model, True, "default", brakes))
    brakes.ReferenceBase.append(common.ReferenceBase(model, False, "variants", constants))

    group = common.ModeDeclarationGroup(model, "BrakeMode")
    for name, value in (("Released", 0), ("Applied", 1), ("Locked", 2)):
        mode = common.ModeDeclaration(model, name)
        mode.Value = value
        group.Mode.append(mode)
    group.InitialMode = group.Mode[0]
    modes.PackagedElement.append(group)

    brakes.adminData = history(model)
    brakes.adminData.sdg.append(tool_data(model))
    point = variation_point(model, variants(model, constants))
    print("variation point:", point.Name, "if", point.Condition.Body, "at", point.Condition.BindingTime)
    return root


def label(element):
    """One line about an element: its class, its name, and what is worth knowing of it."""
    name = getattr(element, "Name", "")
    line = type(element).__name__ + (f" {name}" if name else "")
    if isinstance(element, variant.SystemConstValue):
        line += f" {element.SysConst.Name} = {element.Value:g}"
    elif isinstance(element, common.ReferenceBase):
        line += f" {element.ShortLabel} -> {element.Package.Name}"
        line += " (default)" if element.IsDefault else ""
    elif isinstance(element, common.Sd):
        line += f" {element.gid} = {element.Value}"
    elif isinstance(element, common.Sdg):
        line += f" {element.gid}"
    elif isinstance(element, documentation.DocRevision):
        line += f" {element.revisionLabel} of {element.date}"
    elif isinstance(element, documentation.LanguageSpecific):
        line += f" {element.language}: {element.Body}"
    return line


def print_tree(element, depth=0):
    """The element and everything that it holds."""
    print("  " * depth + label(element))
    for owned in element.OwnedElement:
        print_tree(owned, depth + 1)


def main():
    with K7Q.Model.create() as model:
        root = build(model)
        print_tree(root)

        # Read back what was written.
        brakes = root.PackagedElement[0]
        revision = brakes.adminData.docRevision[-1]
        for text in revision.modification[0].change.L2:
            print(f"change in {text.language}: {text.Body}")

        # Change it: a new category, one mode fewer, another default.
        brakes.category = "SAFETY"
        modes = brakes.PackagedElement[0].PackagedElement[0]
        modes.Mode.remove(modes.Mode[-1])
        modes.InitialMode = modes.Mode[1]
        print("modes:", ", ".join(mode.Name for mode in modes.Mode), "- initially", modes.InitialMode.Name)
        brakes.category = None
        print("category now:", repr(brakes.category))

        # An immutable view reads and refuses to write.
        view = brakes.asImmutable()
        print("same object:", view == brakes)
        try:
            view.category = "OPEN"
        except K7Q.Exception as refused:
            print("refused:", refused)

    try:
        brakes.Name
    except K7Q.Exception as refused:
        print("after close:", refused)


if __name__ == "__main__":
    main()
