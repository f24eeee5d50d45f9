"""Python code that the host calls in the middle of its work, and that destroys the objects the host is
using."""

import gc
import weakref

import pytest

import K7Q
from Tarvelon.metamodel.arplatform import common, manifest, variant


@pytest.fixture
def texts(model):
    texts = variant.PostBuildVariantCondition(model).ValueVariationPoint
    texts += ["a", "b", "c"]
    return texts


@pytest.fixture
def protocols(model):
    """A property's sequence of enumeration values."""
    protocols = manifest.DdsEventDeployment(model).TransportProtocol
    protocols += [*list(manifest.TransportLayerProtocolEnum)[:2]] * 2
    return protocols


class Doing:
    """An object that runs Python code when the host converts it into a value."""

    def __init__(self, action, result=0):
        self.action, self.result = action, result

    def __index__(self):
        self.action()
        return self.result

    def __eq__(self, other):
        self.action()
        return False

    def __iter__(self):
        yield "x"
        self.action()
        yield "y"

    def __fspath__(self):
        self.action()
        return self.result

    __hash__ = None


REMOVALS = {
    "erase of a place": lambda s, p: s.erase(p),
    "erase of a range": lambda s, p: s.erase(s.begin(), s.end()),
    "erase of an index": lambda s, p: s.erase(1),
    "clear": lambda s, p: s.clear(),
    "pop_front": lambda s, p: s.pop_front(),
    "removeAll": lambda s, p: s.removeAll(s[0]),
    "del": lambda s, p: s.__delitem__(0),
}


@pytest.mark.parametrize("name", REMOVALS)
def test_a_listener_drops_the_iterators_of_what_goes(model, protocols, name):
    held = [protocols.begin() for _ in range(50)]
    place, kept = protocols.begin(), weakref.ref(held[0])

    def drop(changes):
        held.clear()
        gc.collect()

    with model.listen(drop):
        REMOVALS[name](protocols, place)
    assert kept() is None
    with pytest.raises(K7Q.StaleIterator):
        place.item()


def test_a_listener_does_not_read_through_the_iterator_of_what_goes(model, protocols):
    place, errors = protocols.begin(), []

    def read(changes):
        try:
            place.item()
        except K7Q.StaleIterator as error:
            errors.append(error)

    with model.listen(read):
        protocols.pop_front()
    assert len(errors) == 1


def test_a_held_iterator_that_is_stale_hinders_no_removal(protocols):
    place = protocols.begin()
    protocols.pop_back()
    with pytest.raises(K7Q.StaleIterator):
        place.item()
    assert protocols.removeAll(protocols[0]) == 2


ENDINGS = {
    "the object is destroyed": lambda model, texts: model.objects()[0].destroy(),
    "the model is closed": lambda model, texts: model.close(),
    "the sequence is emptied": lambda model, texts: texts.clear(),
}
USES = {
    "in": lambda s, value: value in s,
    "index": lambda s, value: s.index(value),
    "index from": lambda s, value: s.index("c", value),
    "count": lambda s, value: s.count(value),
    "remove": lambda s, value: s.remove(value),
    "[]": lambda s, value: s[value],
    "[:]": lambda s, value: s[value:],
    "[] =": lambda s, value: s.__setitem__(value, "z"),
    "del []": lambda s, value: s.__delitem__(value),
    "del [:]": lambda s, value: s.__delitem__(slice(value, None)),
    "pop": lambda s, value: s.pop(value),
    "at": lambda s, value: s.at(value),
    "insert": lambda s, value: s.insert(value, "z"),
    "erase": lambda s, value: s.erase(value),
    "extend": lambda s, value: s.extend(value),
}


@pytest.mark.parametrize("ending", ENDINGS)
@pytest.mark.parametrize("use", USES)
def test_what_a_sequence_stands_on_goes_while_an_argument_is_asked(model, texts, use, ending):
    done = []

    def end():
        if not done:
            done.append(True)
            ENDINGS[ending](model, texts)

    try:
        USES[use](texts, Doing(end))
    except (K7Q.Exception, IndexError, ValueError):
        pass
    assert done
    if model.isvalid() and texts.__repr__().endswith("destroyed>") is False:
        texts += ["again"]
        assert texts[-1] == "again"


@pytest.mark.parametrize("ending", list(ENDINGS)[:2])
def test_an_object_goes_while_its_new_value_is_asked(model, texts, ending):
    mode = common.ModeDeclaration(model)
    with pytest.raises(K7Q.Exception):
        mode.Value = Doing(lambda: mode.destroy() if "object" in ending else model.close(), 3)


def test_a_model_is_closed_while_its_path_is_asked(model, package, tmp_path):
    with pytest.raises(K7Q.Exception):
        model.save(Doing(model.close, str(tmp_path / "a.xmi")))
        model.save(tmp_path / "b.xmi")


@pytest.mark.parametrize("ending", [lambda package: package.destroy(), lambda package: package.getModel().close()])
def test_the_progress_of_a_save_takes_the_model_away(model, package, tmp_path, ending):
    package.PackagedElement += [common.Package(model, f"P{index}") for index in range(20_000)]
    with pytest.raises(K7Q.Exception):
        model.save(tmp_path / "a.xmi", progress=lambda done: ending(package))
    assert not (tmp_path / "a.xmi").exists()


def test_a_rule_takes_the_model_away(model, package):
    common.Package(model, "Q")

    @K7Q.rule("taking-away", common.Package)
    def take(element):
        element.getModel().close()

    try:
        with pytest.raises(K7Q.Exception):
            model.validate()
            model.validate()
    finally:
        K7Q.forget_rule("taking-away")


def test_the_callback_of_a_weak_reference_asks_for_what_just_went(model, package):
    found = []
    sequence = package.PackagedElement
    watch = weakref.ref(sequence, lambda _: found.append(package.PackagedElement))
    del sequence
    assert watch() is None and found[0] is package.PackagedElement


def test_a_finaliser_in_the_collector_asks_for_a_class_that_is_being_made(python):
    code = """
import gc
import K7Q
from Tarvelon.metamodel.arplatform import behavior
class Late:
    def __del__(self):
        behavior.TimingEvent, behavior.Event
        self.model and self.model.objects()
model = K7Q.Model.create()
def leave():
    late = Late(); late.self = late; late.model = model
gc.set_threshold(1)
for index in range(200):
    leave()
for index, name in enumerate(dir(behavior)):
    leave()
    cls = getattr(behavior, name)
    assert cls is getattr(behavior, name)
event = behavior.TimingEvent(model)
assert type(event) is behavior.TimingEvent and isinstance(event, behavior.Event)
"""
    assert python(code) == ""


def test_a_finaliser_in_the_collector_looks_at_lists_that_are_being_filled(python):
    code = """
import gc
import K7Q
from Tarvelon.metamodel.arplatform import behavior, common
model = K7Q.Model.create()
package = common.Package(model, "P")
for index in range(300):
    common.Sdx(model, package)
    behavior.TimingEvent(model, -1.0, f"E{index}")
class Looking:
    def __del__(self):
        for each in gc.get_objects():
            if type(each) in (list, tuple) and each:
                each[0], each[-1]
def leave():
    looking = Looking(); looking.self = looking
for asked in (package.referrers, model.validate, model.objects):
    for threshold in (10, 50, 100, 250):
        leave()
        gc.set_threshold(threshold)
        found = asked()
        gc.set_threshold(0)
        assert len(found) >= 300
"""
    assert python(code) == ""
