"""Searching objects by name, by class, and by the references to them."""

from __future__ import annotations

import K7Q
import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Callable

    from K7Q import ImmutableClassObject, ImmutableModel, Mention, Model
del TYPE_CHECKING

__all__: list[str] = []


@_method
def find(model: ImmutableModel, path: str, /) -> ImmutableClassObject | None:
    """Returns the first object with that qualified name, in the order of containment; None if there is none.

    A qualified name consists of the names of the owners, from the root down, and the object's own name:
    "/Brakes/BrakeController/Behavior/Step10ms". Owners without a name are skipped.
    """
    return _host.find(model, path)


@_method
def find_all(model: ImmutableModel, path: str, /) -> list[ImmutableClassObject]:
    """A list of all objects with that qualified name, in the order of containment."""
    return _host.findAll(model, path)


@_method
def instances(model: ImmutableModel, cls: type[ImmutableClassObject], /) -> list[ImmutableClassObject]:
    """A list of the objects of a class and of its subclasses. The cost does not depend on the size of the
    model.

    Ordered by class in order of registration, then by creation.
    """
    return _host.instances(model, cls)


@_method
def objects(model: ImmutableModel, /) -> list[ImmutableClassObject]:
    """A list of all objects of the model. The order of two objects stays the same when others are added or
    removed."""
    return _host.objects(model)


def qualified_name(self: ImmutableClassObject) -> str:
    """The names of the object's owners and its own, as in "/Brakes/Controller"; "" if the object has no
    name."""
    return _host.qualifiedName(self)


@_method
def referrers(self: ImmutableClassObject, /) -> list[Mention]:
    """A list of the references to the object, each with the referring object and the property.

    The object's owner is not included: use the property Owner. The cost is linear in the length of the list.
    """
    return [K7Q.Mention(*each) for each in _host.referrers(self)]


class _Find:
    """The attribute `find` of K7Q.Model: model.find(path) finds an object, K7Q.Model.find(uri) a bound
    model."""

    # The type depends on whether it is read from the class or from an object, so the stub has a line of its
    # own.
    stub = ("find: _Find  # type: ignore[assignment]",)

    def __get__(self, model: Model | None, cls: type) -> Callable[[str], ImmutableModel | ImmutableClassObject | None]:
        if model is None:
            return _host.boundModel
        bound: Callable[[str], ImmutableClassObject | None] = find.__get__(model)
        return bound


_host.extend("K7Q.ImmutableModel", {"find": find, "find_all": find_all, "instances": instances, "objects": objects})
_host.extend("K7Q.Model", {"find": _Find()})
_host.extend("K7Q.ImmutableClassObject", {"qualifiedName": property(qualified_name), "referrers": referrers})
