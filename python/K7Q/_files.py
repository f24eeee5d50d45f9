"""Models in files."""

from __future__ import annotations

import os
import sys
import time

import K7Q
import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # an import of typing would take longer than all of this
if TYPE_CHECKING:
    from K7Q import FileProblem, ImmutableClassObject, ImmutableModel, Model, _Path, _Progress
del TYPE_CHECKING

__all__ = ["FileError", "WrongFile"]


class FileError(_host.Exception, OSError):
    """A file or folder that cannot be read or written; `errno` and `filename` say which and why."""

    def __str__(self) -> str:
        return str(self.args[0]) if self.args else ""


class WrongFile(_host.WrongValue):
    """A file that holds no model, or not a right one.

    `problems` are the first thousand of them, each a `K7Q.FileProblem`; `count` says how many there are.
    """

    problems: tuple[FileProblem, ...] = ()
    count: int = 0

    def _fill(self, problems: list[tuple[int, int, str]], count: int) -> None:
        self.problems = tuple(K7Q.FileProblem(*each) for each in problems)
        self.count = count


class _Bar:
    """One line on a terminal that shows how far a work has come, once it takes longer than a second.

    A terminal that is gone meanwhile is no reason to end the work.
    """

    WIDTH = 30

    def __init__(self, what: str) -> None:
        self._what = what
        self._begin = time.monotonic()
        self._drawn = ""

    def __call__(self, done: float) -> None:
        if time.monotonic() - self._begin < 1:
            return
        full = int(done * self.WIDTH)
        line = f"{self._what} [{'#' * full}{'.' * (self.WIDTH - full)}] {int(100 * done):3} %"
        if line != self._drawn:
            self._draw(line)
            self._drawn = line

    @staticmethod
    def _draw(line: str) -> None:
        try:
            sys.stderr.write("\r" + line)
            sys.stderr.flush()
        except (OSError, ValueError):
            pass

    def __enter__(self) -> _Progress:
        return self

    def __exit__(self, kind: object, error: object, traceback: object) -> None:
        if self._drawn:
            self._draw(" " * len(self._drawn) + "\r")


class _NoBar:
    def __init__(self, progress: _Progress | None) -> None:
        self._progress = progress

    def __enter__(self) -> _Progress | None:
        return self._progress

    def __exit__(self, kind: object, error: object, traceback: object) -> None:
        pass


def _watched(progress: _Progress | None, verb: str, path: str | bytes) -> _Bar | _NoBar:
    """The callable that is told of the progress: the one that was given, a bar on a terminal, or None."""
    if progress is not None and not callable(progress):
        raise _host.WrongType(f"{verb}: expected progress to be callable, got {type(progress).__name__}")
    if progress is not None or not _is_terminal(sys.stderr):
        return _NoBar(progress)
    name = os.path.basename(os.fsdecode(path))
    return _Bar(f"{verb} {name if len(name) <= _LONGEST else name[:_LONGEST - 3] + '...'}")


_LONGEST = 30  # name in a bar, which takes one line of 80 columns


def _is_terminal(stream: object) -> bool:
    """False as well for what stands in for a stream and is none, and for one that was closed."""
    try:
        return bool(stream.isatty())  # type: ignore[attr-defined]
    except (AttributeError, ValueError):
        return False


def _path(path: _Path, function: str) -> str | bytes:
    try:
        name = os.fspath(path)
    except TypeError:
        raise _host.WrongType(f"{function}: expected a path, got {type(path).__name__}") from None
    try:
        if b"\0" not in os.fsencode(name):
            return name
    except UnicodeEncodeError:
        pass
    raise _host.WrongValue(f"{function}: expected a path that the system can have, got {name!r}")


@_method
def _save(self: ImmutableModel, path: _Path, *, progress: _Progress | None = None) -> None:
    """Writes the model to a file, as XMI.

    At every instant the file is the old or the new one; it keeps its mode, owner and attributes as far as the
    system lets, and a symbolic link keeps pointing at it. K7Q.WrongValue for a suffix other than `.xmi`.
    `progress` is called with how much is done, from 0 to 1; what it raises cancels. Without it, a
    terminal shows a bar when saving takes over a second.
    K7Q.FileError, also an OSError, for what cannot be written.
    """
    name = _path(path, "save")
    with _watched(progress, "saving", name) as watch:
        _host.saveModel(self, name, watch)


def _load(path: _Path, *, lenient: bool = False, progress: _Progress | None = None) -> Model:
    """A new model with what a file holds, bound to no URI.

    K7Q.WrongFile for a file with problems, with all of them and their places; with lenient=True what is right
    is loaded, and `model.problems` has the rest. `progress` as with save().
    K7Q.FileError, also an OSError, for what cannot be read.
    """
    name = _path(path, "load")
    with _watched(progress, "loading", name) as watch:
        return _host.loadModel(name, bool(lenient), watch)


def _problems_of(self: Model) -> tuple[FileProblem, ...]:
    """What was wrong with the file that the model was leniently loaded from: a tuple of K7Q.FileProblem.

    Behind the first thousand stands how many more there are.
    """
    problems, count = _host.problemsOf(self)
    more = count - len(problems)
    if more > 0:
        problems.append((*problems[-1][:2], f"and {more} more problems, which are not shown"))
    return tuple(K7Q.FileProblem(*each) for each in problems)


@_method
def _roots(self: ImmutableModel) -> list[ImmutableClassObject]:
    """A list of the objects that nothing holds, in the order in which a file has them at its top."""
    return _host.rootsOf(self)


_host.extend("K7Q.ImmutableModel", {"save": _save, "roots": _roots})
_host.extend("K7Q.Model", {"load": staticmethod(_method(_load, is_static=True)), "problems": property(_problems_of)})
