"""A program that mypy --strict accepts. It is also run, and then checks each type that it states."""

from collections.abc import Iterable
from pathlib import Path
from tempfile import TemporaryDirectory
from typing import assert_type

import K7Q
import Tarvelon
from Tarvelon.metamodel import arplatform, foundation
from Tarvelon.metamodel.arplatform import Factory, ImmutableFactory, behavior, common, instance, variant


def properties(model: K7Q.Model) -> None:
    runnable = behavior.Runnable(model, "sym", "name")
    runnable.canBeInvokedConcurrently = True
    assert_type(runnable.symbol, str)
    assert_type(runnable.canBeInvokedConcurrently, bool)
    assert_type(runnable.SwAddrMethod, common.SwAddrMethod | None)
    assert_type(runnable.asImmutable().SwAddrMethod, common.ImmutableSwAddrMethod | None)
    assert_type(runnable.Visibility, foundation.VisibilityKind)
    runnable.SwAddrMethod = common.SwAddrMethod(model, "Code")
    runnable.SwAddrMethod = None
    runnable.category = "FAST"
    del runnable.category
    mode = common.ModeDeclaration(model, "Applied")
    assert_type(mode.Value, int | None)
    mode.Value = 1
    mode.Value = None
    event = behavior.TimingEvent(model, 1, "Every1s")  # a float takes an int
    event.StartOnEvent = runnable
    assert_type(event.Period, float)


def views(package: common.Package) -> None:
    view = package.asImmutable()
    assert_type(view, common.ImmutablePackage)
    assert_type(view.asMutable(), common.Package)
    assert_type(view.PackagedElement, foundation.ImmutableSequenceOfImmutablePackageableElement)
    assert_type(package.PackagedElement, foundation.SequenceOfPackageableElement)
    assert_type(package.OwnedElement, foundation.ImmutableSequenceOfElement)
    assert_type(package.getModel(), K7Q.Model)
    assert_type(package.asDeviant(package.getModel().frozen()), common.Package)
    assert_type(package.getContainer(), K7Q.ClassObject | None)


def sequences(package: common.Package, element: common.Package) -> None:
    elements = package.PackagedElement
    elements.append(element)
    elements += [element]
    package.PackagedElement += [element]
    elements.extend([element])
    assert_type(elements[0], foundation.PackageableElement)
    assert_type(elements[0:], list[foundation.PackageableElement])
    assert_type(elements.at(1), foundation.PackageableElement)
    assert_type(list(elements), list[foundation.PackageableElement])
    assert_type([each.Name for each in elements], list[str])
    assert_type(sorted(elements, key=lambda each: each.Name)[0].Name, str)
    assert_type(next(reversed(elements)), foundation.PackageableElement)
    assert_type((len(elements), element in elements, elements.index(element)), tuple[int, bool, int])
    assert_type(elements.begin(), foundation.PackageableElementIterator)
    assert_type(elements.begin().item(), foundation.PackageableElement)
    assert_type(elements.begin() == elements.begin().clone(), bool)
    elements[0] = element
    del elements[0]
    elements.insert(1, element)
    assert_type(elements.insert(elements.begin(), element), foundation.PackageableElementIterator)
    assert_type(elements.pop(), foundation.PackageableElement)
    names: Iterable[foundation.ImmutableElement] = package.asImmutable().OwnedElement
    assert_type([each for each in names], list[foundation.ImmutableElement])


def enumerations(model: K7Q.Model) -> None:
    LinkTime = variant.BindingTimeKind.LinkTime
    assert_type(LinkTime, variant.BindingTimeKind)
    assert_type([each for each in variant.BindingTimeKind], list[variant.BindingTimeKind])
    assert_type(variant.BindingTimeKind.fromString("LinkTime") < LinkTime, bool)
    times = variant.SequenceOfBindingTimeKind.make(model)
    times += [LinkTime]
    assert_type(max(times), variant.BindingTimeKind)
    assert_type(times.removeAll(LinkTime), int)
    assert_type(f"{LinkTime:>20}{LinkTime.toString()}", str)


def factories(factory: Factory) -> None:
    package = factory.create("common.Package", "Brakes")
    assert_type(package, common.Package)
    assert_type(factory.create(common.Package, "Seats"), common.Package)
    assert_type(factory.createmetamodelarplatformcommonPackage(), common.Package)
    name = "common.Package" if package.Name else "common.AUTOSAR"
    assert_type(factory.create(name), K7Q.ClassObject)
    assert_type(factory.createFromString("common.Package"), K7Q.Object)
    assert_type(ImmutableFactory.cast(factory), ImmutableFactory | None)


def descriptions(package: common.Package) -> None:
    properties = package.MetaProperty()
    assert_type([each.name() for each in properties], list[str])
    assert_type(properties["Category"].owner().isAbstract(), bool)
    assert_type(common.Package.MetaProperty().Category(), K7Q.ImmutableProperty)
    assert_type(len(properties) + properties["Category"].upperBound(), int)
    assert_type([each.name() for each in package.MetaClass().superclasses()], list[str])
    assert_type([each.lowerBound() for each in package.MetaClass().properties()], list[int])
    assert_type([each.classes()[0].isAbstract() for each in arplatform.MetaPackage().subPackages()], list[bool])


def methods(model: K7Q.Model) -> None:
    runnable = behavior.Runnable(model, "sym", "name")
    assert_type(runnable.implicitWrite(), behavior.SequenceOfFlowDataAccess)
    assert_type([each.instanceRef for each in runnable.implicitWrite()], list[instance.FlowDataPortInstanceRef])
    assert_type(behavior.Runnable.cast(runnable), K7Q.Object | None)
    assert_type(runnable.isvalid(), bool)


def searches(model: K7Q.Model, package: common.Package) -> None:
    assert_type(model.find("/Brakes"), K7Q.ClassObject | None)
    assert_type(model.find_all("/Brakes"), list[K7Q.ClassObject])
    assert_type(model.instances(common.Package), list[common.Package])
    assert_type(package.referrers(), list[K7Q.Mention])
    assert_type([each.property for each in package.referrers()], list[str])
    assert_type(package.asImmutable().qualifiedName, str)


def changes(model: K7Q.Model, package: common.Package) -> None:
    model.history = 10
    heard: list[K7Q.Change] = []
    with model.listen(heard.extend), model.transaction() as transaction:
        package.category = "OPEN"
        assert_type(transaction, K7Q.Transaction)
        transaction.commit()
    assert_type([(each.kind, each.index) for each in heard], list[tuple[str, int]])
    assert_type((model.undo(), model.redo(), model.undoable), tuple[bool, bool, int])
    assert_type((model.undo_label, model.redo_label), tuple[str, str])


def files(folder: Path) -> None:
    model = K7Q.Model.create()
    model.save(folder / "brakes.xmi")
    loaded = K7Q.Model.load(str(folder / "brakes.xmi"), progress=lambda done: None)
    assert_type(loaded, K7Q.Model)
    assert_type([each.line for each in loaded.problems], list[int])
    assert_type(loaded.roots(), list[K7Q.ClassObject])
    assert_type(loaded.frozen().roots(), list[K7Q.ImmutableClassObject])


def copies(model: K7Q.Model, package: common.Package) -> None:
    assert_type(package.clone(), common.Package)
    assert_type(package.clone(package, property="PackagedElement"), common.Package)
    assert_type(model.clone(), K7Q.Model)
    assert_type(Tarvelon.diff(model.clone(), model).changed, list[Tarvelon.Changed])
    assert_type([each.path for each in Tarvelon.diff(model.clone(), model)[0:2]], list[str])
    assert_type(package.to_json(indent=None), str)


def validation(model: K7Q.Model) -> None:
    @K7Q.rule("symbol-prefix", behavior.Runnable, severity="warning")
    def has_our_prefix(runnable: behavior.Runnable) -> Iterable[tuple[str, str]]:
        """symbols of runnables begin with Brk_"""
        if not runnable.symbol.startswith("Brk_"):
            yield "symbol", "expected a symbol that begins with Brk_"

    assert_type([each.path for each in model.validate()], list[str])
    K7Q.forget_rule("symbol-prefix")
    assert_type([each.title for each in K7Q.rules()], list[str])


def errors(package: common.Package) -> None:
    try:
        package.PackagedElement.at(9)
    except (K7Q.WrongType, K7Q.StaleIterator) as error:
        assert_type(error, K7Q.WrongType | K7Q.StaleIterator)
    except K7Q.Exception as error:
        assert_type(error, K7Q.Exception)


def main() -> None:
    with Factory.createNewModel() as model:
        assert_type(model, K7Q.Model)
        assert_type(Tarvelon.__version__, str)
        assert_type(K7Q.models(), list[K7Q.Model])
        assert_type(K7Q.Model.find(model.getUri()), K7Q.Model | None)
        assert_type([each for each in K7Q.Model.uris()], list[str])
        factory = Factory.createNewFactory(model)
        package, element = factory.create("common.Package", "Brakes"), common.Package(model, "Wheels")
        properties(model)
        views(package)
        sequences(package, element)
        enumerations(model)
        factories(factory)
        descriptions(package)
        methods(model)
        searches(model, package)
        changes(model, package)
        copies(model, package)
        validation(model)
        errors(package)
        with TemporaryDirectory() as folder:
            files(Path(folder))


if __name__ == "__main__":
    main()
