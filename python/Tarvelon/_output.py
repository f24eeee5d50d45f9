"""What the commands print."""

from __future__ import annotations

import io
import json
import os
import sys


def to_json(record: object) -> str:
    """A text of JSON, with escapes for what the terminal's encoding may not have."""
    encoding = getattr(sys.stdout, "encoding", None) or "utf-8"
    return json.dumps(record, indent=1, ensure_ascii=not encoding.lower().replace("-", "").startswith("utf8"))


def print_text(text: str) -> bool:
    """Prints a text, with escapes for what the terminal's encoding has not. Whether that went well."""
    if isinstance(sys.stdout, io.TextIOWrapper):
        sys.stdout.reconfigure(errors="backslashreplace")
    try:
        print(text, flush=True)
        return True
    except OSError as error:
        # What is left in the buffer must not be tried again at the end.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        if isinstance(error, BrokenPipeError):  # the reader, `head` say, has seen enough
            return True
        print(f"tarvelon: the output cannot be written: {error.strerror}", file=sys.stderr)
        return False
