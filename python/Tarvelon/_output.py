"""The output of the commands."""

from __future__ import annotations

import io
import json
import os
import sys
from collections.abc import Callable, Iterator
from itertools import repeat


def to_json(record: object) -> str:
    """A JSON text. Characters that the terminal's encoding may not have are escaped."""
    encoding = getattr(sys.stdout, "encoding", None) or "utf-8"
    is_utf8 = encoding.lower().replace("-", "").startswith("utf8")
    return "".join(_pieces(record, json.JSONEncoder(ensure_ascii=not is_utf8).encode))


_DEEPEST = 128  #: deeper levels are not indented further, as in to_json() of a model


def _pieces(value: object, encode: Callable[[object], str]) -> Iterator[str]:
    """The text of json.dumps(value, indent=1) in pieces. Not recursive, so the depth is not limited."""
    opened: list[tuple[Iterator[tuple[str, object]], str]] = []  # per level: next members, and its end
    while True:
        if isinstance(value, dict) and value:
            opened.append((((f"{encode(key)}: ", each) for key, each in value.items()), "}"))
            yield "{"
        elif isinstance(value, list) and value:
            opened.append((zip(repeat(""), value), "]"))
            yield "["
        else:
            yield encode(value)
        separator = "" if isinstance(value, (dict, list)) and value else ","
        member = None
        while opened and (member := next(opened[-1][0], None)) is None:
            _, end = opened.pop()
            yield f"\n{' ' * min(len(opened), _DEEPEST)}{end}"
            separator = ","
        if member is None:
            return
        yield f"{separator}\n{' ' * min(len(opened), _DEEPEST)}{member[0]}"
        value = member[1]


def print_text(text: str) -> bool:
    """Prints a text. Characters that the terminal's encoding does not have are escaped. False if writing
    fails."""
    if isinstance(sys.stdout, io.TextIOWrapper):
        sys.stdout.reconfigure(errors="backslashreplace")
    try:
        print(text, flush=True)
        return True
    except OSError as error:
        # Python must not try to write the rest of the buffer when it exits.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        if isinstance(error, BrokenPipeError):  # the reader has closed the pipe, as `head` does
            return True
        print(f"tarvelon: the output cannot be written: {error.strerror}", file=sys.stderr)
        return False
