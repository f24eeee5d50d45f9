"""A call gives the same result whatever was called before. Each order of calls runs in another process."""

import json
import random

import pytest

# Expressions that return an object, model, sequence, iterator or description from what START has created.
WAYS = """
common.ImmutableIdentifiable.cast(p)
common.ImmutablePackage.cast(p)
common.Identifiable.cast(p)
common.Package.cast(p)
common.ImmutableIdentifiable.cast(p.asImmutable())
common.ImmutablePackage.cast(p.asDeviant(model.frozen()))
common.Package.cast(p.asDeviant(model.frozen()))
foundation.ImmutableElement.cast(p)
foundation.Package.cast(p)
p.asImmutable()
p.asImmutable().asMutable()
p.asDeviant(model.frozen())
p.asDeviant(model.frozen()).asImmutable()
p.asImmutable().asDeviant(model)
c.Owner
c.asImmutable().Owner
c.getContainer()
c.asImmutable().getContainer()
c.Namespace
p.getModel()
p.asImmutable().getModel()
p.asDeviant(model.frozen()).getModel()
model.frozen()
model.find("/P")
model.frozen().find("/P")
model.find_all("/P")[0]
model.instances(common.Package)[0]
model.frozen().instances(common.Package)[0]
model.objects()[0]
model.frozen().roots()[0]
p.referrers()[0].object
p.asImmutable().referrers()[0].object
p.PackagedElement
p.asImmutable().PackagedElement
p.asDeviant(model.frozen()).PackagedElement
p.PackagedElement[0]
p.asImmutable().PackagedElement[0]
p.PackagedElement.front()
p.PackagedElement.begin()
p.asImmutable().PackagedElement.begin()
p.PackagedElement.begin().item()
p.asImmutable().PackagedElement.begin().item()
p.OwnedElement
p.OwnedElement[0]
x.sdx
x.asImmutable().sdx
p.Visibility
p.asImmutable().Visibility
d.TransportProtocol
d.TransportProtocol[0]
d.asImmutable().TransportProtocol.begin()
e.validate()[0].object
e.asImmutable().validate()[0].object
common.Package.MetaClass()
common.ImmutablePackage.MetaClass()
common.Package.MetaClass().superclasses()
common.Package.MetaClass().superclasses()[0]
common.Package.MetaClass().properties()[0]
common.Package.MetaProperty()
common.Package.MetaProperty().Category()
p.getMetaType()
p.asImmutable().getMetaType()
common.MetaPackage()
common.MetaPackage().classes()[0]
variant.BindingTimeKind.LinkTime.getMetaType()
Factory.createNewFactory(model)
Factory.cast(Factory.createNewFactory(model))
ImmutableFactory.cast(Factory.createNewFactory(model))
K7Q.Model.uris()
told(lambda: setattr(p, "Name", "P")).object
told(lambda: x.destroy()).object
p.clone()
p.asImmutable().clone(K7Q.Model.create())
variant.SequenceOfBindingTimeKind.make(model)
common.SequenceOfPackage.make(model)
""".split("\n")[1:-1]

PROGRAM = """
import json, sys
import K7Q
from Tarvelon.metamodel import foundation
from Tarvelon.metamodel.arplatform import Factory, ImmutableFactory, behavior, common, manifest, variant

model = Factory.createNewModel()
p = common.Package(model, "P")
common.Package(model, "P")
c = variant.SystemConst(model, "C")
p.PackagedElement.append(c)
x = common.Sdx(model, p)
e = behavior.TimingEvent(model, -1.0, "E")
d = manifest.DdsEventDeployment(model)
d.TransportProtocol.append(list(manifest.TransportLayerProtocolEnum)[0])

def told(change):
    found = []
    with model.listen(found.extend):
        change()
    return found[-1]

def shown(value):
    kind = type(value)
    return f"{kind.__module__}.{kind.__qualname__}", len([each for each in dir(value) if each[0] != "_"])

order, keeps = json.loads(sys.argv[1])
held, answers = [], {}
for way in order:
    value = eval(way)
    answers[way] = shown(value)
    if keeps:
        held.append(value)
print(json.dumps(answers))
"""


def run(python, order, keeps):
    argument = json.dumps([order, keeps])
    return json.loads(python(PROGRAM.replace("sys.argv[1]", repr(argument))))


def test_each_way_gives_an_object_of_the_same_class_in_each_order(python):
    last = [way for way in WAYS if "destroy" in way]
    ways = [way for way in WAYS if way not in last]
    expected = run(python, ways + last, True)
    assert len(expected) == len(WAYS)
    for seed in range(4):
        shuffled = random.Random(seed).sample(ways, len(ways))
        found = run(python, shuffled + last, seed % 2 == 0)
        assert {way: found[way] for way in WAYS} == expected, f"seed {seed}"


@pytest.mark.parametrize("way", WAYS[:9])
def test_a_cast_comes_first(python, way):
    """Nothing else has used the view before: the cast returns the object under its own class."""
    kind = "ImmutablePackage" if "Immutable" in way.partition(".cast")[0] else "Package"
    assert run(python, [way], True)[way][0].rpartition(".")[2] == kind
