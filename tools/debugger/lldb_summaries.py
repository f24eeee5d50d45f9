"""Shows objects, texts, names, lists and steps in lldb, in a build with debug information (`--preset debug`):

    (lldb) command script import tools/debugger/lldb_summaries.py
    (lldb) frame variable *instance
"""

import sys
from pathlib import Path

import lldb

sys.path.append(str(Path(__file__).resolve().parent))
import shown  # noqa: E402


class Value:
    def __init__(self, value):
        self.value = value

    def field(self, name):
        return Value(self.value.GetChildMemberWithName(name))

    def element(self, index):
        return Value(self.value.GetChildAtIndex(index))

    def deref(self):
        return Value(self.value.Dereference())

    def number(self):
        return self.value.GetValueAsUnsigned()

    def address(self):
        return self.value.GetLoadAddress()

    def memory(self, address, size):
        return self.value.GetProcess().ReadMemory(address, size, lldb.SBError()) if size else b""


def _summary(show):
    def summary(value, _dictionary):
        value = value.GetNonSyntheticValue()
        return show(Value(value.Dereference() if value.GetType().IsReferenceType() else value))

    return summary


name, text, instance, word_list, step = map(_summary, (shown.name, shown.text, shown.instance, shown.word_list, shown.step))


def __lldb_init_module(debugger, _dictionary):
    for pattern, show in shown.TYPES.items():
        own = pattern.strip("^$")
        debugger.HandleCommand(f'type summary add --skip-pointers --regex "^(const )?{own}( &)?$" --python-function {__name__}.{show.__name__}')
