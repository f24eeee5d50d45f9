"""Saving models to files and loading them."""

from __future__ import annotations

import os
import sys
import time

import K7Q
import _tarvelon_host as _host
from K7Q._methods import method as _method

TYPE_CHECKING = False  # importing typing takes longer than importing this whole package
if TYPE_CHECKING:
    from typing import Any

    from K7Q import (FileProblem, ForeignContent, ImmutableClassObject, ImmutableModel, Model, UnresolvedReference,
                     _Path, _Paths, _Progress)
del TYPE_CHECKING

__all__ = ["FileError", "WrongFile"]


class FileError(_host.Exception, OSError):
    """A file or folder cannot be read or written. `errno` and `filename` give the reason and the path."""

    def __str__(self) -> str:
        return str(self.args[0]) if self.args else ""


class WrongFile(_host.WrongValue):
    """A file does not contain a model, or the model has errors.

    `problems` contains at most the first thousand, each as a `K7Q.FileProblem`; `count` is the number of all.
    """

    problems: tuple[FileProblem, ...] = ()
    count: int = 0

    def _fill(self, problems: list[tuple[int, int, str]], count: int) -> None:
        self.problems = tuple(K7Q.FileProblem(*each) for each in problems)
        self.count = count


class _Bar:
    """A progress bar: one line on a terminal, shown when the work takes longer than a second.

    Errors while writing to the terminal are ignored, so that they do not end the work.
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
    """Returns the progress callable in a context manager: the given one, else a bar on a terminal, else
    None."""
    if progress is not None and not callable(progress):
        raise _host.WrongType(f"{verb}: expected progress to be callable, got {type(progress).__name__}")
    if progress is not None or not _is_terminal(sys.stderr):
        return _NoBar(progress)
    name = os.path.basename(os.fsdecode(path))
    return _Bar(f"{verb} {name if len(name) <= _LONGEST else name[:_LONGEST - 3] + '...'}")


_LONGEST = 30  # characters of a file name in a progress bar; then the bar fits into 80 columns


def _is_terminal(stream: object) -> bool:
    """Whether the stream is a terminal. False for a closed stream and for an object that is not really a
    stream."""
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
    raise _host.WrongValue(f"{function}: expected a path that the file system accepts, got {name!r}")


_BACK: Any = object()  # stands for no path: the files from which the model was loaded


@_method
def _save(
    self: ImmutableModel,
    path: _Path = _BACK,
    *,
    release: str | None = None,
    lenient: bool = False,
    progress: _Progress | None = None,
) -> list[str] | None:
    """Writes the model to a file: as ARXML if its suffix is `.arxml`, as XMI if it is `.xmi` or missing.

    `release` is the AUTOSAR release of an ARXML file, such as "R22-11" or "4.3.0". Without it, it is the release of
    the file from which the model was loaded, and R22-11 for any other model. Values that the release does not have
    raise K7Q.WrongValue, which lists them; with lenient=True they are left out of the file. In an ARXML file that
    was loaded, only the lines of what has changed differ.

    Without a path, a model that was loaded from ARXML files is written back to them: those alone in which something
    has changed, and none if one of them cannot be written. Returns the list of their paths.

    The file is replaced atomically: at any time it has either the old or the new contents. Mode, owner and
    attributes of an existing file are kept if the system allows it; a symbolic link stays a link. `progress`
    is called with the fraction done, from 0 to 1. If it raises, saving is cancelled. Without `progress`, a
    terminal shows a progress bar when saving takes longer than a second. Raises K7Q.WrongValue if the suffix
    is unknown, K7Q.FileError (an OSError) if the file cannot be written.
    """
    if path is _BACK:
        if release is not None:
            raise _host.WrongValue("save: each file keeps its release; to save in another one, name the file")
        with _watched(progress, "saving", "the files") as watch:
            return _host.saveBack(self, watch, bool(lenient))  # type: ignore[arg-type]
    name = _path(path, "save")
    if release is not None and not isinstance(release, str):
        raise _host.WrongType(f"save: expected the name of a release, got {type(release).__name__}")
    with _watched(progress, "saving", name) as watch:
        _host.saveModel(self, name, watch, release, bool(lenient))
    return None


def _load(
    path: _Path | _Paths, *, lenient: bool = False, progress: _Progress | None = None
) -> Model:
    """Returns a new model with the contents of a file, ARXML or XMI: the content decides. The model is bound to no URI.

    A list or tuple of ARXML files gives one model of all of them, and so does a folder with all `.arxml` files in it
    and below. References may lead from one file into another.

    Raises K7Q.WrongFile if the file has problems; the exception lists all of them with their places. With
    lenient=True the correct parts are loaded, and `model.problems` lists the problems. `progress` is the same
    as for save(). Raises K7Q.FileError (an OSError) if the file cannot be read.
    """
    if isinstance(path, (list, tuple)):
        names = [_path(each, "load") for each in path]
        with _watched(progress, "loading", f"{len(names)} files") as watch:
            return _host.loadModel(names, bool(lenient), watch)
    name = _path(path, "load")
    with _watched(progress, "loading", name) as watch:
        return _host.loadModel(name, bool(lenient), watch)


def _foreign_of(asked: ImmutableModel | ImmutableClassObject) -> list[ForeignContent]:
    return [K7Q.ForeignContent(tag, name, path, file, line, xml)
            for tag, name, path, _, file, line, xml in _host.foreignOf(asked)]


def _foreign(self: ImmutableClassObject) -> list[ForeignContent]:
    """What the object has in its ARXML file that has no class: a list of K7Q.ForeignContent.

    Content inside of contained objects belongs to those.
    """
    return _foreign_of(self)


@_method
def _foreign_counts(self: ImmutableModel) -> dict[str, int]:
    """How many elements without a class the ARXML files of the model have, by element name, most frequent first."""
    counts: dict[str, int] = {}
    for each in _host.foreignOf(self):
        counts[each[0]] = counts.get(each[0], 0) + 1
    return dict(sorted(counts.items(), key=lambda entry: (-entry[1], entry[0])))


@_method
def _unresolved(self: ImmutableModel | ImmutableClassObject) -> list[UnresolvedReference]:
    """The references of an ARXML file whose targets are not in the model: a list of K7Q.UnresolvedReference."""
    return [K7Q.UnresolvedReference(tag, target, dest, path, file, line)
            for tag, target, path, dest, file, line, _ in _host.unresolvedOf(self)]


def _files(self: ImmutableModel) -> list[str]:
    """The paths of the ARXML files from which the model was loaded. Empty for any other model."""
    return _host.filesOf(self)


def _file(self: ImmutableClassObject) -> str:
    """The path of the ARXML file in which the object stands, for a new object that of its owner; "" if there is none."""
    return _host.fileOf(self)


def _problems_of(self: Model) -> tuple[FileProblem, ...]:
    """The problems of the file, if the model was loaded with lenient=True: a tuple of K7Q.FileProblem.

    Only the first thousand are kept. If there are more, the last entry says how many.
    """
    problems, count = _host.problemsOf(self)
    more = count - len(problems)
    if more > 0:
        problems.append((*problems[-1][:2], f"and {more} more problems, which are not shown"))
    return tuple(K7Q.FileProblem(*each) for each in problems)


@_method
def _roots(self: ImmutableModel) -> list[ImmutableClassObject]:
    """A list of the objects without an owner, in the order in which a file stores them at its top level."""
    return _host.rootsOf(self)


_host.extend("K7Q.ImmutableModel", {"save": _save, "roots": _roots, "foreign": _method(_foreign_counts, "foreign"),
                                    "unresolved": _unresolved, "files": property(_files)})
_host.extend("K7Q.ImmutableClassObject", {"foreign": property(_foreign), "unresolved": _unresolved,
                                          "file": property(_file)})
_host.extend("K7Q.Model", {"load": staticmethod(_method(_load, is_static=True)), "problems": property(_problems_of)})
