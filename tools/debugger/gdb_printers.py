"""Shows objects, texts, names, lists and steps in gdb, in a build with debug information (`--preset debug`):

    (gdb) source tools/debugger/gdb_printers.py
    (gdb) print *instance
    $1 = common.Package 'Brakes' (number 3)
"""

import re
import sys
from pathlib import Path

import gdb

sys.path.append(str(Path(__file__).resolve().parent))
import shown  # noqa: E402


class Value:
    def __init__(self, value):
        self.value = value

    def field(self, name):
        return Value(self.value[name])

    def element(self, index):
        return Value(self.value[index])

    def deref(self):
        return Value(self.value.dereference())

    def number(self):
        return int(self.value)

    def address(self):
        return int(self.value.address)

    @staticmethod
    def memory(address, size):
        return gdb.selected_inferior().read_memory(address, size).tobytes() if size else b""


class Printer:
    def __init__(self, show, value):
        self.show, self.value = show, Value(value)

    def to_string(self):
        return self.show(self.value)


def printer_for(value):
    type_name = str(value.type.strip_typedefs().unqualified())
    for pattern, show in shown.TYPES.items():
        if re.match(pattern, type_name):
            return Printer(show, value)
    return None


gdb.pretty_printers.append(printer_for)
