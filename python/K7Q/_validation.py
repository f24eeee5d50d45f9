"""What is wrong with a model: the library's rules, and those that a script adds."""

from __future__ import annotations

from _thread import _local  # type: ignore[attr-defined]  # threading itself is slow to import

import K7Q
import _tarvelon_host as _host
from K7Q._methods import function as _function
from K7Q._methods import method as _method

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from collections.abc import Callable, Iterator

    from K7Q import ImmutableClassObject, ImmutableModel, Problem, Rule, _Found, _Object
del TYPE_CHECKING

__all__ = ["forget_rule", "rule", "rules"]

_SEVERITIES = ("error", "warning")
_FAILED = "rule-failed"  #: the rule that is broken by a rule that raises


_added: dict[str, Rule] = {}


class _Running(_local):  # type: ignore[misc]
    """What runs on a thread: other threads validate meanwhile, with all rules."""

    rules = 0  #: functions of rules, one inside another


_running = _Running()


def _class_name(cls: object) -> str:
    if isinstance(cls, type) and issubclass(cls, K7Q.ImmutableClassObject):
        name = cls.__name__.removeprefix("Immutable")
        return f"{cls.__module__}.{name}"
    given = cls.__name__ if isinstance(cls, type) else type(cls).__name__
    raise _host.WrongType(
        f"K7Q.rule, argument 2: expected a class of the metamodel, as in behavior.Runnable, got {given}"
    )


@_function
def rule(
    id: str, of: type[_Object], severity: str = "error"
) -> Callable[[Callable[[_Object], _Found]], Callable[[_Object], _Found]]:
    """Adds a rule for all objects of a class, and of the classes below it; decorates the rule's function.

        @K7Q.rule("symbol-prefix", behavior.Runnable, severity="warning")
        def has_our_prefix(runnable):
            "symbols of runnables begin with Bbw_"
            if not runnable.symbol.startswith("Bbw_"):
                yield "symbol", "expected a symbol that begins with Bbw_; rename the function"

    The function is called with each object and gives nothing, a message, a (property, message), or several
    of them. From then on `validate()` of every model runs it, behind the library's rules, in the order in
    which rules were added. A rule of the same id takes the place of the one before. One that raises is
    reported as a problem of the rule "rule-failed", and the pass goes on. When a rule calls `validate()` itself,
    that runs the library's rules alone.
    """
    if not isinstance(id, str) or not id:
        raise _host.WrongType(f"K7Q.rule, argument 1: expected the rule's id, a text, got {id!r}")
    if severity not in _SEVERITIES:
        raise _host.WrongValue(f"K7Q.rule: expected the severity 'error' or 'warning', got {severity!r}")
    if id == _FAILED or any(each.id == id for each in _library()):
        raise _host.WrongValue(f"K7Q.rule: the library has a rule '{id}'; choose another id")
    name = _class_name(of)

    def add(function: Callable[[_Object], _Found]) -> Callable[[_Object], _Found]:
        if not callable(function):
            raise _host.WrongType(f"K7Q.rule '{id}': expected a function of one object, got {function!r}")
        title = str(getattr(function, "__doc__", None) or getattr(function, "__name__", id)).strip()
        _added.pop(id, None)
        _added[id] = K7Q.Rule(id, severity, title.partition("\n")[0], function, name)
        return function

    return add


@_function
def forget_rule(id: str) -> None:
    """Takes a rule out that a script has added."""
    if not isinstance(id, str) or id not in _added:
        raise _host.UnknownName(f"no script has added a rule '{id}'; there are {', '.join(_added) or 'none'}")
    del _added[id]


@_function
def rules() -> list[Rule]:
    """A list of all rules: those of the library, then those that scripts have added."""
    return [*_library(), *_added.values(), _failed()]


def _library() -> list[Rule]:
    return [K7Q.Rule(*each) for each in _host.validationRules()]


def _failed() -> Rule:
    return K7Q.Rule(_FAILED, "error", "a rule of a script runs to its end")


def _messages(found: _Found) -> Iterator[tuple[str, str]]:
    """The (property, message) pairs of what a function of a rule gave."""
    if found is None:
        return
    if not isinstance(found, (str, tuple)) and not hasattr(found, "__iter__"):
        raise TypeError(f"expected messages or (property, message) pairs, got {found!r}")
    for each in [found] if isinstance(found, (str, tuple)) else found:
        pair = ("", each) if isinstance(each, str) else each
        is_pair = isinstance(pair, tuple) and len(pair) == 2 and all(isinstance(part, str) for part in pair)
        if not is_pair or not pair[1]:
            raise TypeError(f"expected a message or a (property, message) pair, got {each!r}")
        yield pair[0], pair[1]


def _run(rule: Rule, target: ImmutableClassObject | ImmutableModel, is_model: bool) -> Iterator[Problem]:
    for element in _host.validatedObjects(target, is_model, rule.of):
        if not element.isvalid():  # a rule has destroyed it
            continue
        path = _host.pathOf(element)
        found: list[tuple[str, Rule, str]] = []
        _running.rules += 1
        try:
            assert rule.function is not None
            for name, message in _messages(rule.function(element)):
                found.append((name, rule, message))
        except Exception as error:
            text = f"the rule '{rule.id}' failed: {type(error).__name__}: {error}; mend its function"
            found.append(("", _failed(), text))
        finally:
            _running.rules -= 1
        for name, by, message in found:
            yield K7Q.Problem(element, path, name, by.id, by.severity, message)


def _problems(target: ImmutableClassObject | ImmutableModel, is_model: bool) -> list[Problem]:
    problems = [K7Q.Problem(*each) for each in _host.validate(target, is_model)]
    # A rule that asks in turn is answered by the library: its own would ask again without end.
    for each in () if _running.rules else tuple(_added.values()):
        problems.extend(_run(each, target, is_model))
    return problems


def _validate_model(self: ImmutableModel, /) -> list[Problem]:
    """Every problem of the model, as a list of K7Q.Problem; empty when nothing is wrong.

    Problems of one object stand together, objects in order of ownership; those of rules that scripts have
    added (`K7Q.rule`) come behind. The same model gives the same list.
    """
    return _problems(self, True)


def _validate_object(self: ImmutableClassObject, /) -> list[Problem]:
    """Every problem of the object and of all that it holds, as a list of K7Q.Problem.

    The list is the part of the model's that is about them, without names that clash with others outside.
    """
    return _problems(self, False)


_host.extend("K7Q.ImmutableModel", {"validate": _method(_validate_model, "validate")})
_host.extend("K7Q.ImmutableClassObject", {"validate": _method(_validate_object, "validate")})
