"""Finding objects by name, by class and by who refers to them."""

from __future__ import annotations

import K7Q
import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from collections.abc import Callable

    from K7Q import ImmutableClassObject, ImmutableModel, Mention, Model
del TYPE_CHECKING

__all__: list[str] = []


@_method
def find(model: ImmutableModel, path: str, /) -> ImmutableClassObject | None:
    """The first object of that qualified name in owner order, None if there is none.

    A qualified name is the names of the holders from the root down and the object's own:
    "/Brakes/BrakeController/Behavior/Step10ms". Holders without a name are passed over.
    """
    return _host.find(model, path)


@_method
def find_all(model: ImmutableModel, path: str, /) -> list[ImmutableClassObject]:
    """All objects of that qualified name, in owner order."""
    return _host.findAll(model, path)


@_method
def instances(model: ImmutableModel, cls: type[ImmutableClassObject], /) -> list[ImmutableClassObject]:
    """The objects of a class and of those below it, without a walk over the model.

    Class by class in the order of registration, within a class in the order in which they were made.
    """
    return _host.instances(model, cls)


@_method
def objects(model: ImmutableModel, /) -> list[ImmutableClassObject]:
    """All objects of the model, in an order that changes only where objects come and go."""
    return _host.objects(model)


def qualified_name(self: ImmutableClassObject) -> str:
    """The names of the object's holders and its own, "/Brakes/Controller"; "" for one without a name."""
    return _host.qualifiedName(self)


@_method
def referrers(self: ImmutableClassObject, /) -> list[Mention]:
    """Who refers to the object, and by which property.

    The holder is not among them: it is the object's Owner. The cost is that of what is found.
    """
    return [K7Q.Mention(*each) for each in _host.referrers(self)]


class _Find:
    """`model.find(path)` finds an object; of the class, `K7Q.Model.find(uri)` finds a bound model."""

    # Of two kinds, told by what it is asked of: what a type stub says of it.
    stub = ("find: _Find  # type: ignore[assignment]",)

    def __get__(self, model: Model | None, cls: type) -> Callable[[str], ImmutableModel | ImmutableClassObject | None]:
        if model is None:
            return _host.boundModel
        bound: Callable[[str], ImmutableClassObject | None] = find.__get__(model)
        return bound


_host.extend("K7Q.ImmutableModel", {"find": find, "find_all": find_all, "instances": instances, "objects": objects})
_host.extend("K7Q.Model", {"find": _Find()})
_host.extend("K7Q.ImmutableClassObject", {"qualifiedName": property(qualified_name), "referrers": referrers})
