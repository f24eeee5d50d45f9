"""Validation: finds problems of a model with the library's rules and with rules that scripts add."""

from __future__ import annotations

from _thread import _local  # type: ignore[attr-defined]  # importing threading would be slow

import K7Q
import _tarvelon_host as _host
from K7Q._methods import function as _function
from K7Q._methods import method as _method

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from collections.abc import Callable, Iterator

    from K7Q import ImmutableClassObject, ImmutableModel, Problem, Rule, _Found, _Object
del TYPE_CHECKING

__all__ = ["forget_rule", "rule", "rules"]

_SEVERITIES = ("error", "warning")
_FAILED = "rule-failed"  #: the id of the rule that is reported when the function of a rule raises


_added: dict[str, Rule] = {}


class _Running(_local):  # type: ignore[misc]
    """Thread-local state. Other threads can validate at the same time, with all rules."""

    rules = 0  #: the number of rule functions that are running (nested calls)


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
    """Adds a validation rule for all objects of a class and of its subclasses. Use it to decorate the
    function.

        @K7Q.rule("symbol-prefix", behavior.Runnable, severity="warning")
        def has_our_prefix(runnable):
            "symbols of runnables begin with Bbw_"
            if not runnable.symbol.startswith("Bbw_"):
                yield "symbol", "expected a symbol that begins with Bbw_; rename the function"

    The function is called with each object. It returns or yields nothing, a message, a (property, message)
    pair, or several of them. From now on `validate()` of every model runs the rule: after the library's
    rules, in the order in which rules were added. A rule replaces an earlier rule with the same id.

    If the function raises, a problem of the rule "rule-failed" is reported and validation continues. If a
    rule itself calls `validate()`, only the library's rules are run.
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
    """Removes a rule that a script has added. Raises K7Q.UnknownName if there is no such rule."""
    if not isinstance(id, str) or id not in _added:
        raise _host.UnknownName(f"no script has added a rule '{id}'; there are {', '.join(_added) or 'none'}")
    del _added[id]


@_function
def rules() -> list[Rule]:
    """A list of all rules: the library's rules, the rules that scripts have added, and "rule-failed"."""
    return [*_library(), *_added.values(), _failed()]


def _library() -> list[Rule]:
    return [K7Q.Rule(*each) for each in _host.validationRules()]


def _failed() -> Rule:
    return K7Q.Rule(_FAILED, "error", "the function of a script's rule raises no exception")


def _messages(found: _Found) -> Iterator[tuple[str, str]]:
    """The (property, message) pairs in the result of a rule's function. Raises TypeError for other
    results."""
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
            text = f"the rule '{rule.id}' failed: {type(error).__name__}: {error}; correct its function"
            found.append(("", _failed(), text))
        finally:
            _running.rules -= 1
        for name, by, message in found:
            yield K7Q.Problem(element, path, name, by.id, by.severity, message)


def _problems(target: ImmutableClassObject | ImmutableModel, is_model: bool) -> list[Problem]:
    problems = [K7Q.Problem(*each) for each in _host.validate(target, is_model)]
    # Inside a rule function only the library's rules are used; otherwise the rule would call itself without
    # end.
    for each in () if _running.rules else tuple(_added.values()):
        problems.extend(_run(each, target, is_model))
    return problems


def _validate_model(self: ImmutableModel, /) -> list[Problem]:
    """Returns all problems of the model, as a list of K7Q.Problem; empty if there are none.

    The problems of one object are adjacent; objects are in the order of containment. Problems of rules that
    scripts have added (`K7Q.rule`) come last. The same model always gives the same list.
    """
    return _problems(self, True)


def _validate_object(self: ImmutableClassObject, /) -> list[Problem]:
    """Returns all problems of the object and of the objects it contains, as a list of K7Q.Problem.

    These are the same problems as in the model's list, except name clashes with objects outside this object.
    """
    return _problems(self, False)


_host.extend("K7Q.ImmutableModel", {"validate": _method(_validate_model, "validate")})
_host.extend("K7Q.ImmutableClassObject", {"validate": _method(_validate_object, "validate")})
