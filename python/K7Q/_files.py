"""Models in files."""

import os
import sys
import time
import weakref
from typing import NamedTuple

import _tarvelon_host as _host

__all__ = ["FileError", "FileProblem", "WrongFile"]


class FileProblem(NamedTuple):
    """Something that is wrong with a file: where, both counted from 1, and what."""

    line: int
    column: int
    text: str

    def __str__(self):
        return f"line {self.line}, column {self.column}: {self.text}"


class FileError(_host.Exception, OSError):
    """A file or folder that cannot be read or written; `errno` and `filename` say which and why."""

    def __str__(self):
        return str(self.args[0]) if self.args else ""


class WrongFile(_host.WrongValue):
    """A file that holds no model, or not a right one.

    `problems` are the first thousand of them, each a `K7Q.FileProblem`; `count` says how many there are.
    """

    problems = ()
    count = 0

    def _fill(self, problems, count):
        self.problems = tuple(FileProblem(*each) for each in problems)
        self.count = count


class _Bar:
    """One line on a terminal that shows how far a work has come, once it takes longer than a second."""

    WIDTH = 30

    def __init__(self, what):
        self._what = what
        self._begin = time.monotonic()
        self._drawn = ""

    def __call__(self, done):
        if time.monotonic() - self._begin < 1:
            return
        full = int(done * self.WIDTH)
        line = f"{self._what} [{'#' * full}{'.' * (self.WIDTH - full)}] {int(100 * done):3} %"
        if line != self._drawn:
            sys.stderr.write("\r" + line)
            sys.stderr.flush()
            self._drawn = line

    def __enter__(self):
        return self

    def __exit__(self, kind, error, traceback):
        if self._drawn:
            sys.stderr.write("\r" + " " * len(self._drawn) + "\r")
            sys.stderr.flush()


class _NoBar:
    def __init__(self, progress):
        self._progress = progress

    def __enter__(self):
        return self._progress

    def __exit__(self, kind, error, traceback):
        pass


def _watched(progress, verb, path):
    """The callable that is told of the progress: the one that was given, a bar on a terminal, or None."""
    if progress is not None and not callable(progress):
        raise _host.WrongType(f"{verb}: expected progress to be callable, got {type(progress).__name__}")
    if progress is not None or sys.stderr is None or not sys.stderr.isatty():
        return _NoBar(progress)
    return _Bar(f"{verb} {os.path.basename(os.fsdecode(path))}")


def _path(path, function):
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


def _save(self, path, *, progress=None):
    """save(path, *, progress=None): writes the model to a file, as XMI.

    At every instant the file is the old or the new one; it keeps its mode, and a symbolic link keeps pointing
    at it. `progress` is called with how much is done, from 0 to 1; what it raises cancels. Without it, a
    terminal shows a bar when saving takes over a second.
    K7Q.FileError, also an OSError, for what cannot be written.
    """
    path = _path(path, "save")
    with _watched(progress, "saving", path) as watch:
        _host.saveModel(self, path, watch)


# A model's host object lives while something of it is held, and ends with it.
_problems = weakref.WeakKeyDictionary()


def _load(path, *, lenient=False, progress=None):
    """load(path, *, lenient=False, progress=None): a new model with what a file holds, bound to no URI.

    K7Q.WrongFile for a file with problems, with all of them and their places; with lenient=True what is right
    is loaded, and `model.problems` has the rest. `progress` as with save().
    K7Q.FileError, also an OSError, for what cannot be read.
    """
    path = _path(path, "load")
    with _watched(progress, "loading", path) as watch:
        model, problems, _ = _host.loadModel(path, bool(lenient), watch)
    if problems:
        _problems[model] = tuple(FileProblem(*each) for each in problems)
    return model


def _problems_of(self):
    """What was wrong with the file that the model was leniently loaded from: a tuple of K7Q.FileProblem."""
    return _problems.get(self, ())


def _roots(self):
    """roots(): a list of the objects that nothing holds, in the order in which a file has them at its top."""
    return _host.rootsOf(self)


_host.extend("K7Q.Model", {"save": _save, "load": staticmethod(_load), "problems": property(_problems_of),
                           "roots": _roots})
_host.extend("K7Q.ImmutableModel", {"save": _save, "roots": _roots})
