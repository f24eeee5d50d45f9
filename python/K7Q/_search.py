"""Finding objects by name, by class and by who refers to them."""

from typing import NamedTuple

import _tarvelon_host as _host


class Mention(NamedTuple):
    """One reference to an object: who refers, and by which property."""

    object: object
    property: str


def _find(model, path):
    """find(path): the first object of that qualified name in owner order, None if there is none.

    A qualified name is the names of the holders from the root down and the object's own:
    "/Brakes/BrakeController/Behavior/Step10ms". Holders without a name are passed over.
    """
    return _host.find(model, path)


def _find_all(model, path):
    """find_all(path): a list of all objects of that qualified name, in owner order."""
    return _host.findAll(model, path)


def _instances(model, cls):
    """instances(cls): a list of the objects of a class and of those below it, without a walk over the model.

    Class by class in the order of registration, within a class in the order in which they were made.
    """
    return _host.instances(model, cls)


def _objects(model):
    """objects(): a list of all objects of the model, in an order that changes only where objects come and go."""
    return _host.objects(model)


def _qualified_name(self):
    """The names of the object's holders and its own, "/Brakes/Controller"; "" for a class without Name."""
    return _host.qualifiedName(self)


def _referrers(self):
    """referrers(): a list of who refers to the object, as Mention(object, property).

    The holder is not among them: it is the object's Owner. The cost is that of what is found.
    """
    return [Mention(*each) for each in _host.referrers(self)]


class _Find:
    """`model.find(path)` finds an object; of the class, `K7Q.Model.find(uri)` finds a bound model."""

    __doc__ = _find.__doc__

    def __get__(self, model, cls):
        return _host.boundModel if model is None else _find.__get__(model)


for each, name in ((_find, "find"), (_find_all, "find_all"), (_instances, "instances"), (_objects, "objects"),
                   (_referrers, "referrers")):
    each.__name__ = each.__qualname__ = name

_host.extend("K7Q.ImmutableModel", {"find": _find, "find_all": _find_all, "instances": _instances,
                                    "objects": _objects})
_host.extend("K7Q.Model", {"find": _Find()})
_host.extend("K7Q.ImmutableClassObject", {"qualifiedName": property(_qualified_name), "referrers": _referrers})
