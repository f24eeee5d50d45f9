"""Frozen views stay frozen: nothing reached from a frozen view can be written."""

import os
import random

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import Factory, behavior, common, manifest, variant

SEEDS = range(int(os.environ.get("TARVELON_SEEDS", 20)))


@pytest.fixture
def model():
    with Factory.createNewModel() as model:
        outer, inner = common.Package(model, "Outer"), common.Package(model, "Inner")
        outer.PackagedElement.append(inner)
        constant = variant.SystemConst(model, "C")
        inner.PackagedElement.append(constant)
        common.Sdx(model, constant)
        step = behavior.Runnable(model, "Step", "Step")
        behavior.TimingEvent(model, 0.01, "Every").StartOnEvent = step
        variant.PostBuildVariantCondition(model).ValueVariationPoint.append("a")
        manifest.DdsEventDeployment(model).TransportProtocol.append(list(manifest.TransportLayerProtocolEnum)[0])
        yield model


def flat(found):
    """The host's objects in the result of a call."""
    if isinstance(found, K7Q.ImmutableObject) or hasattr(found, "begin"):
        yield found
    elif isinstance(found, (list, tuple)):
        for each in found:
            yield from flat(each)


def ways(view, frozen):
    """Functions that get other views from a view."""
    yield lambda: type(view).cast(view)
    for name in ("asImmutable", "asMutable", "getModel", "getContainer", "objects", "roots", "referrers", "begin", "end",
                 "front", "back", "item", "clone", "validate"):
        method = getattr(view, name, None)
        if method and not (name == "clone" and isinstance(view, K7Q.ImmutableObject)):
            yield method
    if hasattr(view, "asDeviant"):
        yield lambda: view.asDeviant(frozen)
        yield lambda: view.asDeviant(None)
        if hasattr(view, "getModel"):
            yield lambda: view.asDeviant(view.getModel())
        for cls in (K7Q.ImmutableObject, K7Q.Object, K7Q.ImmutableClassObject, K7Q.ClassObject, common.Identifiable,
                    common.ImmutableIdentifiable, common.Package, common.ImmutablePackage):
            yield lambda cls=cls: cls.cast(view)
        for name in ("PackagedElement", "OwnedElement", "Owner", "Namespace", "sdx", "StartOnEvent", "Events",
                     "ValueVariationPoint", "TransportProtocol"):
            if hasattr(view, name):
                yield lambda name=name: getattr(view, name)
    if isinstance(view, K7Q.ImmutableModel):
        yield lambda: [view.find(path) for path in ("/Outer", "/Outer/Inner", "/Outer/Inner/C", "/Step")]
        yield lambda: view.find_all("/Outer/Inner")
        yield lambda: view.instances(common.Package)
        yield lambda: Factory.createNewFactory(view)
    if hasattr(view, "begin"):
        yield lambda: list(view)
        yield lambda: view[0]
        yield lambda: view[:]


def require_frozen(view):
    """Tries all ways of writing. All must be refused, and the reason must always be the view."""
    if isinstance(view, K7Q.Model):
        writes = [lambda: view.transaction(), lambda: view.undo(), lambda: setattr(view, "history", 3),
                  lambda: common.Package(view, "new"), lambda: view.close(), lambda: view.setUri("x")]
    elif isinstance(view, K7Q.ClassObject):
        writes = [view.destroy, view.clone]
        writes += [lambda: setattr(view, "Name", "y")] if hasattr(view, "Name") else []
    elif hasattr(view, "push_back"):
        writes = [view.clear, view.pop_back]
    else:
        writes = []
    for write in writes:
        with pytest.raises(K7Q.Exception):
            write()


@pytest.mark.parametrize("seed", SEEDS)
def test_no_chain_of_views_gives_one_that_can_be_written(model, seed):
    choose = random.Random(seed)
    frozen = model.frozen()
    before = model.to_json()
    told = []
    for _ in range(10):
        view = choose.choice([frozen, choose.choice(model.objects()).asDeviant(frozen)])
        for _ in range(15):
            if isinstance(view, K7Q.Model) and not told:
                view.listen(told.append)
            try:
                found = list(flat(choose.choice(list(ways(view, frozen)))()))
            except K7Q.Exception:
                continue
            for each in found:
                require_frozen(each)
            view = choose.choice(found) if found else view
    assert model.to_json() == before and told == []


def test_a_frozen_listener_is_told_of_frozen_objects(model):
    told = []
    package = model.find("/Outer")
    with package.asDeviant(model.frozen()).getModel().listen(told.extend):
        package.PackagedElement.append(common.Package(model, "new"))
    with package.asDeviant(model.frozen()).listen(told.extend):
        package.PackagedElement.pop_back()
    assert {each.kind for each in told} == {"made", "set", "added", "removed"}
    for each in told:
        require_frozen(each.object)
        require_frozen(each.before)
        require_frozen(each.after)


def test_the_model_itself_gives_the_object_that_can_be_written(model):
    package = model.find("/Outer")
    frozen = package.asDeviant(model.frozen())
    assert frozen.asImmutable().asMutable() is frozen
    assert frozen.asDeviant(None) is frozen
    assert frozen.asImmutable().asDeviant(model).asMutable() is package
    frozen.asDeviant(model).Name = "Renamed"
    assert package.Name == "Renamed"


def test_a_copy_in_another_model_is_not_frozen(model):
    copy = model.frozen().clone()
    copy.find("/Outer").Name = "Copy"
    assert copy.find("/Copy") and model.find("/Outer")
