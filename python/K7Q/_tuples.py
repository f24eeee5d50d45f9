"""NamedTuple like in `typing`, because importing `typing` would take longer than importing this whole
package."""

from collections import namedtuple as _namedtuple

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import NamedTuple as NamedTuple
else:

    class _Maker(type):
        """Converts a class with annotations into a named tuple with the members of the class."""

        def __new__(cls, name, bases, members):
            kinds = members.pop("__annotations__")
            defaults = [members.pop(each) for each in kinds if each in members]
            made = _namedtuple(name, list(kinds), defaults=defaults)
            made.__annotations__ = kinds
            for each, value in members.items():
                setattr(made, each, value)
            return made

    NamedTuple = type.__new__(_Maker, "NamedTuple", (), {})
