"""A first model: builds, reads and changes packages, documentation and variants of a brake controller.

    ./tarvelon run examples/first_model.py
"""

from typing import TypeVar

import K7Q
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import Factory, common, documentation, variant

Element = TypeVar("Element", bound=foundation.PackageableElement)
LANGUAGES = {"EN": "Limit of the brake torque lowered", "DE": "Grenze des Bremsmoments gesenkt"}


def paragraph(factory: Factory, texts: dict[str, str]) -> documentation.MultiLanguageOverviewParagraph:
    """The same sentence in several languages."""
    result = factory.create("documentation.MultiLanguageOverviewParagraph")
    for language, text in texts.items():
        entry = factory.create("documentation.LOverviewParagraph")
        entry.language = language
        entry.Body = text
        result.L2.append(entry)
    return result


def long_name(factory: Factory, texts: dict[str, str]) -> documentation.MultiLanguageLongName:
    """A long name in several languages."""
    result = factory.create("documentation.MultiLanguageLongName")
    for language, text in texts.items():
        entry = factory.create("documentation.LLongName")
        entry.language = language
        entry.Body = text
        result.L4.append(entry)
    return result


def history(factory: Factory) -> common.AdminData:
    """Administrative data with two revisions. The second one describes a change and its reason in two languages."""
    first = factory.create("documentation.DocRevision", "2026-03-02")
    first.revisionLabel = "1.0.0"
    first.issuedBy = "brakes team"
    first.state = "released"

    second = factory.create("documentation.DocRevision", "2026-11-21")
    second.revisionLabel = "1.1.0"
    second.revisionLabelP1 = first.revisionLabel
    change = factory.create("documentation.Modification", paragraph(factory, LANGUAGES))
    change.reason = paragraph(factory, {"EN": "Result of the winter tests", "DE": "Ergebnis der Wintertests"})
    second.modification.append(change)

    data = factory.create("common.AdminData")
    data.language = "EN"
    data.docRevision += [first, second]
    return data


def tool_data(factory: Factory) -> common.Sdg:
    """Tool-specific data outside the standard: a group with values and a nested group."""
    group = factory.create("common.Sdg", "build-tool")
    group.sdgCaption = factory.create("common.SdgCaption", "BuildSettings")
    group.sdgContents.append(factory.create("common.Sd", "compiler", "gcc 12.2"))
    nested = factory.create("common.Sdg", "options")
    nested.sdgContents.append(factory.create("common.Sd", "optimisation", "-O2"))
    group.sdgContents.append(nested)
    return group


def variants(factory: Factory, package: common.Package) -> variant.SystemConst:
    """A system constant, its values for two vehicles, and a variant that selects one of the values."""
    wheels = factory.create("variant.SystemConst", "DrivenWheels")
    package.PackagedElement.append(wheels)
    for name, value in (("FrontWheelDrive", 2.0), ("AllWheelDrive", 4.0)):
        values = factory.create("variant.SystemConstValueSet", name)
        values.SysConstValue.append(factory.create("variant.SystemConstValue", value, wheels))
        package.PackagedElement.append(values)

    chosen = factory.create("variant.PredefinedVariant", "Estate")
    chosen.SysConstValueSet.append(values)
    package.PackagedElement.append(chosen)
    return wheels


def variation_point(factory: Factory, wheels: variant.SystemConst) -> variant.VariationPoint:
    """The condition of an element that exists only in all-wheel-drive vehicles; evaluated when code is generated."""
    time = variant.BindingTimeKind.CodeGenerationTime
    condition = factory.create("variant.ConditionByFormula", time, "DrivenWheels == 4")
    condition.SysConst.append(wheels)
    point = factory.create("variant.VariationPoint", "OnlyAllWheelDrive")
    point.Condition = condition
    return point


def build(factory: Factory) -> common.AUTOSAR:
    """Builds the whole model; returns its root."""
    root = factory.create("common.AUTOSAR")
    root.Name = "Vehicle"
    root.ArxmlFilePackaging = common.ArxmlFilePackagingKind.SingleFile

    brakes = factory.create("common.Package", "Brakes")
    brakes.longName = long_name(factory, {"EN": "Brake system", "DE": "Bremsanlage"})
    brakes.desc = paragraph(factory, {"EN": "Everything that stops the vehicle"})
    root.PackagedElement.append(brakes)

    modes = factory.create("common.Package", "Modes")
    constants = factory.create("common.Package", "Variants")
    brakes.PackagedElement += [modes, constants]
    brakes.ReferenceBase.append(factory.create("common.ReferenceBase", True, "default", brakes))
    brakes.ReferenceBase.append(factory.create("common.ReferenceBase", False, "variants", constants))

    group = factory.create("common.ModeDeclarationGroup", "BrakeMode")
    for name, value in (("Released", 0), ("Applied", 1), ("Locked", 2)):
        mode = factory.create("common.ModeDeclaration", name)
        mode.Value = value
        group.Mode.append(mode)
    group.InitialMode = group.Mode[0]
    modes.PackagedElement.append(group)

    brakes.adminData = history(factory)
    brakes.adminData.sdg.append(tool_data(factory))
    point = variation_point(factory, variants(factory, constants))
    if condition := point.Condition:
        print("variation point:", point.Name, "if", condition.Body, "at", condition.BindingTime)
    return root


def label(element: foundation.Element) -> str:
    """One line about an element: its class, its name and its main values."""
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


def print_tree(element: foundation.Element, depth: int = 0) -> None:
    """Prints the element and everything that it contains."""
    print("  " * depth + label(element))
    for owned in element.OwnedElement:
        print_tree(owned, depth + 1)


def named(package: foundation.Package, kind: type[Element], name: str) -> Element:
    """The element of a package that has that class and that name."""
    return next(each for each in package.PackagedElement if isinstance(each, kind) and each.Name == name)


def main() -> None:
    with Factory.createNewModel() as model:
        factory = Factory.createNewFactory(model)
        root = build(factory)
        print_tree(root)

        # A model made by `createNewModel` has a URI. The whole program can find the model by its URI.
        print("found by its URI:", K7Q.Model.find(model.getUri()) is model)

        # Read the values back.
        brakes = named(root, common.Package, "Brakes")
        if data := brakes.adminData:
            for text in data.docRevision[-1].modification[0].change.L2:
                print(f"change in {text.language}: {text.Body}")

        # Change the model: another category, one mode fewer, another initial mode.
        brakes.category = "SAFETY"
        modes = named(named(brakes, common.Package, "Modes"), common.ModeDeclarationGroup, "BrakeMode")
        modes.Mode.remove(modes.Mode[-1])
        modes.InitialMode = modes.Mode[1]
        print("modes:", ", ".join(mode.Name for mode in modes.Mode), "- initially", modes.InitialMode.Name)
        del brakes.category
        print("category now:", repr(brakes.category))

        # An immutable view can be read, and refuses changes.
        view = brakes.asImmutable()
        print("same object:", view == brakes)
        try:
            view.category = "OPEN"  # type: ignore[misc]  # mypy refuses it as well
        except K7Q.Exception as refused:
            print("refused:", refused)

    try:
        brakes.Name
    except K7Q.Exception as refused:
        print("after close:", refused)


if __name__ == "__main__":
    main()
